// File and process commands: existence, removal, copies (also under a
// stand-in sudo), finding and stopping processes, and hostile names that must
// reach every command (opening documents too) intact and never run.
#include <gtest/gtest.h>

#include <vitrail/unixtools.h>

#include "helpers.h"

using namespace unixtools_test;

TEST(IsExistingAndRemove, FilesFoldersAndMissingPaths) {
    Scratch scratch;
    const std::pair<std::string, int32_t> rows[] = {
        {scratch.touch("f.txt"), 0},   {scratch.touch("tree/sub/g.txt"), 0},
        {scratch.path("tree"), 0},     {scratch.mkdir("empty"), 0},
        {scratch.path("missing"), -1}, {"", -1},
    };
    for (const auto &[path, removed] : rows) {
        EXPECT_EQ(BSDIsExisting(path.c_str()), removed == 0) << path;
        EXPECT_EQ(BSDRemove(path.c_str()), removed) << path;
        EXPECT_EQ(BSDIsExisting(path.c_str()), 0) << path;
    }
    EXPECT_EQ(BSDIsExisting(nullptr), 0);
    EXPECT_EQ(BSDRemove(nullptr), -1);
}

TEST(Copy, CopiesIntoTheFolderReplacingAnOldCopy) {
    Scratch scratch;
    std::string source = scratch.touch("a/b/report", "new");
    std::string folder = scratch.mkdir("c");
    scratch.touch("c/report", "old");
    EXPECT_EQ(BSDCopy(source.c_str(), folder.c_str()), 0);
    EXPECT_EQ(scratch.read("c/report"), "new");
    scratch.touch("c/report", "old");
    EXPECT_EQ(BSDCopy(source.c_str(), (folder + "/").c_str()), 0);
    EXPECT_EQ(scratch.read("c/report"), "new");

    // A whole folder, then a refused copy of it into its own parent.
    scratch.touch("a/b/more.txt", "m");
    EXPECT_EQ(BSDCopy(scratch.path("a/b").c_str(), folder.c_str()), 0);
    EXPECT_EQ(scratch.read("c/b/more.txt"), "m");
    EXPECT_EQ(BSDCopy(scratch.path("a/b").c_str(), scratch.path("a").c_str()), -1);
    EXPECT_EQ(scratch.read("a/b/report"), "new");

    EXPECT_EQ(BSDSCopy(source.c_str(), scratch.mkdir("d").c_str()), 0);
    EXPECT_EQ(scratch.read("d/report"), "new");
    EXPECT_NE(BSDSCopy(scratch.path("missing").c_str(), folder.c_str()), 0);
}

TEST(Copy, NeverRemovesTheDestinationFolder) {
    Scratch scratch;
    std::string folder = scratch.mkdir("dest");
    scratch.touch("dest/keep.txt", "k");
    scratch.touch("src/x.txt");
    const std::string sources[] = {
        scratch.path("src") + "/",
        scratch.path("src") + "/.",
        scratch.path("src") + "/..",
        folder,
        folder + "/",
        scratch.path("missing"),
        "",
    };
    for (const std::string &s : sources) {
        EXPECT_EQ(BSDCopy(s.c_str(), folder.c_str()), -1) << s;
        EXPECT_EQ(scratch.read("dest/keep.txt"), "k") << s;
    }
    EXPECT_EQ(BSDCopy(scratch.path("src/x.txt").c_str(), scratch.path("missing").c_str()), -1);
    EXPECT_EQ(BSDCopy(nullptr, folder.c_str()), -1);
    EXPECT_TRUE(fs::exists(scratch.path("src/x.txt")));
    EXPECT_FALSE(fs::exists(scratch.path("dest/dest")));
    // Nor into a folder inside the source.
    EXPECT_EQ(BSDCopy(scratch.path("src").c_str(), scratch.mkdir("src/in").c_str()), -1);
    EXPECT_FALSE(fs::exists(scratch.path("src/in/src")));
}

TEST(Sudo, PasswordGoesToStandardInput) {
    Scratch scratch;
    std::string bin = scratch.mkdir("bin");
    // A stand-in sudo: runs the command only when the password read is "pw".
    WriteScript(bin + "/sudo", "IFS= read -r pw\n[ \"$pw\" = pw ] || exit 1\nexec \"$@\"\n");
    PathFirst path(bin);
    std::string file = scratch.touch("f.txt");
    EXPECT_EQ(BSDRemove_psw(file.c_str(), "wrong"), -1);
    EXPECT_TRUE(fs::exists(file));
    EXPECT_EQ(BSDRemove_psw(file.c_str(), "pw"), 0);
    EXPECT_FALSE(fs::exists(file));

    std::string source = scratch.touch("s/report", "new");
    std::string folder = scratch.mkdir("d");
    scratch.touch("d/report", "old");
    EXPECT_EQ(BSDCopy_psw(source.c_str(), folder.c_str(), "wrong"), -1);
    EXPECT_EQ(scratch.read("d/report"), "old");
    EXPECT_EQ(BSDCopy_psw(source.c_str(), folder.c_str(), "pw"), 0);
    EXPECT_EQ(scratch.read("d/report"), "new");
}

TEST(Hostile, QuotesAndSubstitutionsNeverRun) {
    Scratch scratch;
    InFolder here(scratch.root());
    const std::string names[] = {"a'; touch x; '", "$(touch y)", "`touch z`", "b\"; touch x; \""};
    std::string folder = scratch.mkdir("into");
    std::string bin = scratch.mkdir("bin");
    std::string log = scratch.path("open.log");
    WriteScript(bin + "/xdg-open", "printf '%s|' \"$@\" > '" + log + "'\n");
    PathFirst path(bin);
    for (const std::string &name : names) {
        std::string file = scratch.mkdir("src") + "/" + name;
        std::ofstream(file) << "data";
        EXPECT_EQ(BSDIsExisting(file.c_str()), 1) << name;
        EXPECT_EQ(BSDCopy(file.c_str(), folder.c_str()), 0) << name;
        EXPECT_EQ(scratch.read(folder + "/" + name), "data") << name;
        EXPECT_EQ(BSDopen(file.c_str()), 0) << name;
        EXPECT_EQ(scratch.read(log), file + "|") << name;
        EXPECT_EQ(BSDtestProcess(name.c_str()), 0) << name;
        EXPECT_NE(BSDkill(name.c_str()), -1) << name;
        char table[4][256] = {};
        EXPECT_EQ(BSDDir_FindFiles(table, folder.c_str(), 4, name.c_str()), 1) << name;
        EXPECT_EQ(table[0], name);
        EXPECT_EQ(BSDRemove(file.c_str()), 0) << name;
        EXPECT_FALSE(fs::exists(file)) << name;
    }
    for (const char *marker : {"x", "y", "z"}) EXPECT_FALSE(fs::exists(scratch.path(marker)));
    EXPECT_EQ(BSDopen(nullptr), -1);
}

// Relative paths beginning with "-" name files, never options.
TEST(Hostile, DashPathsAreNeverOptions) {
    Scratch scratch;
    InFolder here(scratch.root());
    EXPECT_EQ(BSDIsExisting("-l"), 0);
    scratch.touch("-rf");
    EXPECT_EQ(BSDIsExisting("-rf"), 1);
    EXPECT_EQ(BSDRemove("-rf"), 0);
    EXPECT_FALSE(fs::exists(scratch.path("-rf")));
    scratch.touch("-tdst", "from dash");
    scratch.touch("src", "plain");
    scratch.mkdir("dst");
    scratch.mkdir("into");
    BSDSCopy("-tdst", "into"); // not "copy into dst"
    EXPECT_EQ(scratch.read("into/-tdst"), "from dash");
    EXPECT_FALSE(fs::exists(scratch.path("dst/src")));
}

TEST(Processes, FindsAndStopsOnlyItsOwnChild) {
    Scratch scratch;
    NamedChild child(scratch.root());
    NamedChild other(scratch.root());
    ASSERT_GT(child.pid(), 0);
    ASSERT_GT(other.pid(), 0);
    EXPECT_EQ(BSDtestProcess(child.name().c_str()), 1);
    EXPECT_EQ(BSDtest, 1);
    EXPECT_EQ(BSDtestProcess((child.name() + "zz").c_str()), 0);
    EXPECT_EQ(BSDtest, 0);

    int status = BSDkill(child.name().c_str());
    EXPECT_TRUE(WIFEXITED(status)) << status;
    EXPECT_EQ(child.reap(), SIGTERM);
    EXPECT_EQ(BSDtestProcess(child.name().c_str()), 0);
    EXPECT_EQ(kill(other.pid(), 0), 0) << "a process of another name survives";

    EXPECT_EQ(BSDkill(""), -1);
    EXPECT_EQ(BSDkill(nullptr), -1);
    EXPECT_EQ(BSDtestProcess(""), 0);
}

TEST(Processes, KillActsOnTheLeadingNumberOnly) {
    Scratch scratch;
    NamedChild child(scratch.root());
    ASSERT_GT(child.pid(), 0);
    // Lines that name no process to stop, including this test's own.
    const std::string lines[] = {"", "abc 12", "12x ? S", "-9 x",
                                 std::to_string(getpid()) + " ? S"};
    for (const std::string &line : lines) EXPECT_EQ(BSDprocessf(line.c_str()), 0) << line;
    EXPECT_EQ(BSDprocessf(nullptr), 0);
    EXPECT_EQ(kill(child.pid(), 0), 0);
    EXPECT_EQ(BSDprocessf(("  " + std::to_string(child.pid()) + " ?  S  0:00 x").c_str()), 0);
    EXPECT_EQ(child.reap(), SIGTERM);
}
