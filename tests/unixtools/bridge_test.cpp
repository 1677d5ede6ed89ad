// The system version test, the bundle loaders, and the classic branch in
// which every tool refuses to run.
#include <gtest/gtest.h>

#include <cstdio>
#include <vitrail/unixtools.h>

#include "helpers.h"

using namespace unixtools_test;

TEST(SystemVersion, VersionAndMacOSXTest) {
    struct Row {
        int32_t version;
        OSErr result;
        int32_t expectVersion;
        Boolean expectX;
    };
    const Row rows[] = {
        {0x1045, 0, 0x1045, 1}, {0x1000, 0, 0x1000, 1}, {0x0FFF, 0, 0x0FFF, 0},
        {0x0922, 0, 0x0922, 0}, {0x1045, -5551, 0, 0},  {0x1045, platform::fnfErr, 0, 0},
    };
    for (const Row &r : rows) {
        platform::SetSystemVersionForTesting(r.version, r.result);
        EXPECT_EQ(MACOSVersion(), r.expectVersion) << std::hex << r.version << " " << r.result;
        EXPECT_EQ(RunningOnCarbonX(), r.expectX) << std::hex << r.version << " " << r.result;
    }
    platform::ResetSystemVersionForTesting();
    EXPECT_EQ(MACOSVersion(), platform::kDefaultSystemVersion);
    EXPECT_EQ(RunningOnCarbonX(), 1);
}

TEST(Bundles, SystemFrameworkReachesThePipeFunctions) {
    CFStringRef name = vitrail_cf_string("System.framework");
    CFBundleRef bundle = nullptr;
    ASSERT_EQ(LoadFrameworkBundleSystem(name, &bundle), 0);
    ASSERT_NE(bundle, nullptr);
    for (const char *f : {"popen", "fread", "fwrite", "pclose"})
        EXPECT_NE(vitrail_bundle_function(bundle, f), nullptr) << f;
    EXPECT_EQ(vitrail_bundle_function(bundle, "no_such_function_here"), nullptr);

    // The functions found by name work: read a command's output through them.
    auto open = reinterpret_cast<FILE *(*)(const char *, const char *)>(
        vitrail_bundle_function(bundle, "popen"));
    auto read = reinterpret_cast<size_t (*)(void *, size_t, size_t, FILE *)>(
        vitrail_bundle_function(bundle, "fread"));
    auto close = reinterpret_cast<int (*)(FILE *)>(vitrail_bundle_function(bundle, "pclose"));
    FILE *pipe = open("printf hello", "r");
    ASSERT_NE(pipe, nullptr);
    char out[16] = {};
    EXPECT_EQ(read(out, 1, sizeof out - 1, pipe), 5u);
    EXPECT_EQ(close(pipe), 0);
    EXPECT_STREQ(out, "hello");
    vitrail_cf_release(bundle);
    vitrail_cf_release(name);
}

TEST(Bundles, FailuresAnswerMinus4960AndANullBundle) {
    CFStringRef unknown = vitrail_cf_string("Nothing.framework");
    CFStringRef system = vitrail_cf_string("System.framework");
    auto sentinel = reinterpret_cast<CFBundleRef>(&unknown);
    struct Row {
        const char *what;
        OSStatus (*load)(CFStringRef, CFBundleRef *);
        CFStringRef name;
    };
    const Row rows[] = {
        {"unknown framework", LoadFrameworkBundleSystem, unknown},
        {"null name", LoadFrameworkBundleSystem, nullptr},
        {"local domain holds nothing", LoadFrameworkBundle, system},
    };
    for (const Row &r : rows) {
        CFBundleRef bundle = sentinel;
        EXPECT_EQ(r.load(r.name, &bundle), -4960) << r.what;
        EXPECT_EQ(bundle, nullptr) << r.what;
    }
    EXPECT_EQ(LoadFrameworkBundleSystem(system, nullptr), -4960);
    EXPECT_EQ(vitrail_cf_string(nullptr), nullptr);
    vitrail_cf_release(nullptr);
    vitrail_cf_release(unknown);
    vitrail_cf_release(system);
}

// On a classic system nothing runs: every tool answers as if it failed.
TEST(ClassicSystemBranch, EveryToolRefuses) {
    Scratch scratch;
    std::string file = scratch.touch("f.txt");
    std::string folder = scratch.mkdir("dir");
    std::string marker = scratch.path("ran");
    platform::SetSystemVersionForTesting(0x0922);
    char buffer[8] = "keep";
    EXPECT_EQ(BSDInvokeTool(("touch '" + marker + "'").c_str(), buffer, sizeof buffer), -1);
    EXPECT_STREQ(buffer, "keep");
    EXPECT_EQ(BSDInvokeToolWr(("cat > '" + marker + "'").c_str(), "x"), -1);
    EXPECT_EQ(BSDInvokeToolPr(("touch '" + marker + "'").c_str(), [](const char *) { return 0; }),
              -1);
    EXPECT_EQ(BSDIsExisting(file.c_str()), 0);
    EXPECT_EQ(BSDRemove(file.c_str()), -1);
    EXPECT_EQ(BSDRemove_psw(file.c_str(), "pw"), -1);
    EXPECT_EQ(BSDSCopy(file.c_str(), folder.c_str()), -1);
    EXPECT_EQ(BSDCopy(file.c_str(), folder.c_str()), -1);
    EXPECT_EQ(BSDCopy_psw(file.c_str(), folder.c_str(), "pw"), -1);
    EXPECT_EQ(BSDkill("anything"), -1);
    EXPECT_EQ(BSDtestProcess("sh"), 0);
    EXPECT_EQ(BSDopen(file.c_str()), -1);
    char table[2][256] = {"keep", "keep"};
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.root().c_str(), 2, ""), 0);
    EXPECT_STREQ(table[0], "keep");
    BSDcr = 5;
    EXPECT_EQ(BSDDir_ProcessFiles(scratch.root().c_str(), "", [](const char *) { return 1; }), 0);
    EXPECT_EQ(BSDcr, 5); // the globals of the last scan stay
    scratch.volume("Data");
    EXPECT_EQ(BSDMACchmodrwx("Data"), -1);
    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(fs::exists(marker));
    EXPECT_FALSE(fs::exists(scratch.path("dir/f.txt")));
    platform::ResetSystemVersionForTesting();
}
