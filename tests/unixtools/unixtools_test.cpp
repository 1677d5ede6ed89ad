// The shell tools: the system version test and bundle loaders, the three
// invokers, file and process commands (hostile names and paths beginning
// with "-" reach them intact), folder scans, and the classic system on
// which every tool refuses to run.
#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <deque>
#include <filesystem>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <vitrail/unixtools.h>

#include "platform/toolbox/gestalt.h"
#include "support/temp_volumes.h"

extern char **environ;

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// A scratch folder (the volumes root); PATH, the current folder and the
// system version are given back at the end.
struct Unix : ::testing::Test {
    vitrail_test::TempVolumes vols;
    const std::string path = getenv("PATH");
    const fs::path cwd = fs::current_path();
    std::deque<std::string> held; // keeps the texts P hands out

    void TearDown() override {
        setenv("PATH", path.c_str(), 1), fs::current_path(cwd);
        platform::ResetSystemVersionForTesting();
    }
    const char *P(const std::string &r) { return held.emplace_back(vols.root() / r).c_str(); }
    const char *Touch(std::string r, std::string_view b = "x") { return vols.write(r, b), P(r); }
    const char *Dir(const std::string &r) { return fs::create_directories(P(r)), P(r); }
    std::string Read(const std::string &r) const { return vols.read(r); }
    // An executable shell script in <root>/bin, that folder first on PATH.
    void Script(const std::string &name, const std::string &body) {
        fs::permissions(Touch("bin/" + name, "#!/bin/sh\n" + body), fs::perms::owner_all);
        setenv("PATH", (P("bin") + (":" + path)).c_str(), 1);
    }
};

Names lines;
size_t stopAfter = 0;
int32_t Take(const char *line) {
    return lines.emplace_back(line), lines.size() == stopAfter;
}
// The lines (or names) handed to Take by `run`, stopping after `stop` of them.
template <class Run>
Names Taken(Run run, size_t stop = 0) {
    lines.clear(), stopAfter = stop, run();
    return lines;
}

// Output captured into a buffer, text fed to standard input (a command that
// reads nothing does not kill the host), lines of at most 8192 characters
// delivered until the callback answers non-zero.
TEST_F(Unix, Invokers) {
    char buffer[9] = "keepkeep";
    EXPECT_TRUE(BSDInvokeTool("printf abc", buffer, 0) != -1 && !std::strcmp(buffer, "keepkeep"));
    BSDInvokeTool("printf abcdefghijkl", buffer, 4); // the rest is discarded
    EXPECT_TRUE(!std::strcmp(buffer, "abc") && buffer[4] == 'k');

    EXPECT_EQ(WEXITSTATUS(BSDInvokeTool("exit 3", nullptr, 0)), 3); // the wait status
    EXPECT_TRUE(BSDInvokeTool(nullptr, buffer, 8) == -1 && BSDInvokeToolPr("true", nullptr) == -1);
    const std::string out = "cat > '" + std::string(P("out")) + "'";
    EXPECT_TRUE(BSDInvokeToolWr(out.c_str(), "secret") == 0 && Read("out") == "secret");
    EXPECT_TRUE(BSDInvokeToolWr(out.c_str(), nullptr) == 0 && Read("out").empty());
    EXPECT_TRUE(WIFEXITED(BSDInvokeToolWr("exit 0", std::string(1 << 20, 'z').c_str())));

    // clang-format off
    const std::pair<std::string, Names> rows[] = {
        {"printf 'a\\n\\nb'", {"a", "", "b"}}, {"printf ''", {}}, {"printf '\\n'", {""}},
        {"printf '%08200d\\nnext' 0", {std::string(8192, '0'), "next"}}};
    // clang-format on
    for (const auto &[command, want] : rows)
        EXPECT_EQ(Taken([&] { BSDInvokeToolPr(command.c_str(), Take); }), want) << command;
    EXPECT_EQ(Taken([] { BSDInvokeToolPr("yes", Take); }, 2), (Names{"y", "y"}));
}

// Removal leaves nothing; copies replace an old copy and check it exists,
// never copy a folder into itself or onto the destination, never remove
// the destination. The password goes to a stand-in sudo's standard input.
TEST_F(Unix, ExistenceRemovalAndCopies) {
    for (const char *p : {Touch("f"), Touch("tree/sub/g"), P("tree"), Dir("empty")})
        EXPECT_TRUE(BSDIsExisting(p) == 1 && BSDRemove(p) == 0 && !fs::exists(p)) << p;
    EXPECT_TRUE(!BSDIsExisting(nullptr) && BSDRemove("") == -1 && BSDRemove(nullptr) == -1);

    const char *report = Touch("a/b/report", "new"), *dest = Dir("dest");
    for (const std::string into : {"dest", "dest/"})
        EXPECT_TRUE(Touch("dest/report", "old") && BSDCopy(report, P(into)) == 0 &&
                    Read("dest/report") == "new");
    EXPECT_TRUE(BSDCopy(P("a/b"), dest) == 0 && Read("dest/b/report") == "new");
    for (const char *source : {P("a/"), P("a/."), P("a/b/.."), P("missing"), "", dest, P("dest/")})
        EXPECT_TRUE(BSDCopy(source, dest) == -1 && Read("dest/report") == "new") << source;
    EXPECT_EQ(BSDCopy(P("a/b"), P("a")) + BSDCopy(report, P("no")) + BSDCopy(nullptr, dest), -3);
    EXPECT_TRUE(BSDSCopy(nullptr, dest) == -1 && !fs::exists(P("no")));
    EXPECT_TRUE(BSDSCopy(report, Dir("d")) == 0 && Read("d/report") == "new");

    Script("sudo", "IFS= read -r pw\n[ \"$pw\" = pw ] || exit 1\nexec \"$@\"\n");
    Touch("d/report", "old");
    EXPECT_TRUE(BSDCopy_psw(report, P("d"), "no") == -1 && Read("d/report") == "old");
    EXPECT_TRUE(BSDCopy_psw(report, P("d"), "pw") == 0 && Read("d/report") == "new");
    EXPECT_TRUE(BSDRemove_psw(report, "no") == -1 && BSDRemove_psw(report, "pw") == 0 &&
                !fs::exists(report));
}

// Quotes and substitutions in names never run; relative paths beginning
// with "-" name files, never options.
TEST_F(Unix, HostileNamesAndDashPaths) {
    fs::current_path(vols.root());
    Script("xdg-open", "printf '%s|' \"$@\" > '" + std::string(P("open.log")) + "'\n");
    for (std::string name : {"a'; touch x; '", "$(touch y)", "`touch z`", "b\"; touch x; \""}) {
        const char *file = Touch("src/" + name, "data");
        char table[2][256] = {};
        EXPECT_TRUE(BSDIsExisting(file) && BSDCopy(file, Dir("into")) == 0 &&
                    Read("into/" + name) == "data" && BSDopen(file) == 0 &&
                    Read("open.log") == file + std::string("|") && !BSDtestProcess(name.c_str()) &&
                    BSDDir_FindFiles(table, P("into"), 2, name.c_str()) == 1 && table[0] == name &&
                    BSDRemove(file) == 0)
            << name;
    }
    EXPECT_FALSE(fs::exists("x") || fs::exists("y") || fs::exists("z") || BSDopen(nullptr) != -1);
    Touch("-rf"), Touch("-tdst", "dash"), Dir("dst");
    EXPECT_TRUE(BSDIsExisting("-rf") == 1 && BSDRemove("-rf") == 0 && !fs::exists("-rf"));
    BSDSCopy("-tdst", P("into")); // not "copy into dst"
    EXPECT_TRUE(Read("into/-tdst") == "dash" && !fs::exists(P("dst/into")));
}

// Only processes whose command holds the name are found (not by a name
// found in another column) and stopped; never this test itself.
TEST_F(Unix, ProcessesFoundAndStopped) {
    const std::string name = "vtk" + std::to_string(getpid());
    pid_t children[2] = {};
    for (int k = 0; k < 2; ++k) {
        fs::copy_file("/bin/sleep", P(name + "ab"[k]));
        char *argv[] = {const_cast<char *>(P(name + "ab"[k])), const_cast<char *>("30"), nullptr};
        posix_spawn(&children[k], argv[0], nullptr, nullptr, argv, environ);
    }
    EXPECT_TRUE(BSDtestProcess((name + "a").c_str()) == 1 && BSDtest == 1);
    EXPECT_TRUE(BSDtestProcess((name + "az").c_str()) == 0 && BSDtest == 0 && !BSDtestProcess("?"));
    int status = 0;
    EXPECT_TRUE(WIFEXITED(BSDkill((name + "a").c_str())) &&
                waitpid(children[0], &status, 0) == children[0] && WTERMSIG(status) == SIGTERM &&
                kill(children[1], 0) == 0);
    EXPECT_TRUE(BSDkill("") == -1 && BSDkill(nullptr) == -1 && BSDtestProcess("") == 0);
    EXPECT_TRUE(BSDprocessf((std::to_string(getpid()) + " ? S").c_str()) == 0 && // not itself
                BSDprocessf(nullptr) == 0 && kill(children[1], 0) == 0);
    EXPECT_TRUE(WIFEXITED(BSDkill((name + "b").c_str())) && waitpid(children[1], &status, 0) > 0);
}

// Both scans list the same matching files (any case; through a link to the
// folder too), never folders, nor names holding a line feed (a file named
// like one of their pieces is listed). Counts go beyond the table, which
// takes only what it can hold.
TEST_F(Unix, FolderScans) {
    for (const char *f : {"dir/a.ini", "dir/b.txt", "dir/a\nkeep.ini", "dir/keep.ini", "dash/-x"})
        Touch(f);
    for (const char *x : {"dir/script", "dir/run\nme"}) fs::permissions(Touch(x), fs::perms(0700));
    const char *dir = P("dir");
    Dir("dir/c.ini"), fs::create_directory_symlink(dir, P("link"));
    // clang-format off
    const std::pair<const char *, Names> rows[] = {{".INI", {"a.ini", "keep.ini"}},
        {"", {"a.ini", "b.txt", "keep.ini", "script"}}, {"zz", {}}};
    // clang-format on
    for (const auto &[pattern, names] : rows) {
        char table[8][256];
        const int16_t n = BSDDir_FindFiles(table, P("link"), 8, pattern);
        EXPECT_EQ(Names(table, table + std::max<int16_t>(n, 0)), names) << pattern;
        EXPECT_EQ(Taken([&] { EXPECT_EQ(BSDDir_ProcessFiles(dir, pattern, Take), 0); }), names);
        EXPECT_TRUE(BSDnNbFic == int16_t(names.size()) && BSDDir_ProcessFiles_fPtr == Take);
    }
    EXPECT_EQ(Taken([&] { EXPECT_EQ(BSDDir_ProcessFiles(dir, "", Take), 1); }, 1), Names{"a.ini"});
    EXPECT_TRUE(BSDcr == 1 && BSDDir_ProcessFiles(dir, "zz", Take) == 0 && BSDcr == 0 &&
                BSDDir_ProcessFiles(dir, "", nullptr) == 0);

    char table[2][256] = {"", "keep"};
    EXPECT_TRUE(BSDDir_FindFiles(table, dir, 1, "ini") == 2 && !std::strcmp(table[1], "keep"));
    EXPECT_EQ(BSDDir_FindFiles(nullptr, dir, 0, "ini") + BSDDir_FindFiles(table, dir, -4, "ini"),
              4);
    EXPECT_TRUE(BSDDir_FindFiles(table, P("dash"), 1, "-x") == 1 && !std::strcmp(table[0], "-x"));
    EXPECT_EQ(BSDDir_FindFiles(table, P("no"), 2, "") + BSDDir_FindFiles(table, nullptr, 2, ""), 0);
    // 300 names of 9 characters (10 bytes a line): one slot reads 255 bytes, 26 names.
    for (int i = 0; i < 300; ++i) Touch("many/f" + std::to_string(1000 + i) + ".ini");
    EXPECT_EQ(BSDDir_FindFiles(table, P("many"), 1, ""), 26);

    chmod(Touch("Data/f"), 0600); // opened to everybody
    struct stat st {};
    EXPECT_TRUE(BSDMACchmodrwx("Data:f") == 0 && !stat(P("Data/f"), &st) &&
                (st.st_mode & 0777) == 0777);
    EXPECT_TRUE(BSDMACchmodrwx("Data:missing") == -1 && BSDMACchmodrwx(nullptr) == -1);
}

// Mac OS X from version 10.0.0 on. On a classic system nothing runs: every
// tool answers as if it failed and the globals of the last scan stay.
TEST_F(Unix, SystemVersionBundlesAndTheClassicSystem) {
    // version, query result, then MACOSVersion and RunningOnCarbonX
    int32_t rows[][4] = {{0x1000, 0, 0x1000, 1}, {0x0FFF, 0, 0x0FFF, 0}, {0x1045, -5551, 0, 0}};
    for (const auto &r : rows) {
        platform::SetSystemVersionForTesting(r[0], OSErr(r[1]));
        EXPECT_TRUE(MACOSVersion() == r[2] && RunningOnCarbonX() == r[3]) << std::hex << r[0];
    }
    // Failures answer -4960 and a null bundle: the local domain holds nothing.
    CFStringRef system = vitrail_cf_string("System.framework");
    CFBundleRef none = reinterpret_cast<CFBundleRef>(&system), bundle = none;
    EXPECT_TRUE(LoadFrameworkBundle(system, &bundle) == -4960 && !bundle &&
                LoadFrameworkBundleSystem(nullptr, &(bundle = none)) == -4960 && !bundle &&
                LoadFrameworkBundleSystem(system, nullptr) == -4960);
    vitrail_cf_release(system);

    const char *file = Touch("f"), *dir = Dir("d");
    const std::string ran = "touch '" + std::string(P("ran")) + "'";
    platform::SetSystemVersionForTesting(0x0922), BSDcr = 5; // the scan globals must stay
    char buffer[8] = "keep", table[1][256] = {"keep"};

    EXPECT_TRUE(BSDInvokeTool(ran.c_str(), buffer, 8) == -1 &&
                BSDInvokeToolWr(ran.c_str(), "x") == -1 &&
                BSDInvokeToolPr(ran.c_str(), Take) == -1 && !std::strcmp(buffer, "keep"));
    EXPECT_TRUE(BSDIsExisting(file) == 0 && BSDRemove(file) == -1 && BSDCopy(file, dir) == -1 &&
                BSDkill("sh") == -1 && BSDtestProcess("sh") == 0 && BSDopen(file) == -1);
    EXPECT_TRUE(BSDDir_FindFiles(table, dir, 1, "") == 0 && !std::strcmp(table[0], "keep") &&
                BSDDir_ProcessFiles(dir, "", Take) == 0 && BSDcr == 5);
    EXPECT_TRUE(fs::exists(file) && !fs::exists(P("ran")) && !fs::exists(P("d/f")));
}

} // namespace
