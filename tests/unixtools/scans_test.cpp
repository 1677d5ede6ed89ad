// Unix folder scans into a table and through a callback, and opening a
// path to everybody.
#include <gtest/gtest.h>

#include <cstring>
#include <sys/stat.h>
#include <vector>
#include <vitrail/unixtools.h>

#include "helpers.h"

using namespace unixtools_test;

namespace {

// A folder with a.ini, b.txt, an executable "script" and a folder "c.ini".
std::string MakeFolder(const Scratch &scratch) {
    scratch.touch("dir/a.ini");
    scratch.touch("dir/b.txt");
    std::string script = scratch.touch("dir/script");
    fs::permissions(script, fs::perms::owner_all);
    scratch.mkdir("dir/c.ini");
    return scratch.path("dir");
}

std::vector<std::string> g_names;
int32_t g_answer = 0;

int32_t TakeName(const char *name) {
    g_names.emplace_back(name);
    return g_answer;
}

} // namespace

// Both scans list the same matching files, never folders.
TEST(FindAndProcessFiles, ListMatchingFilesButNeverFolders) {
    Scratch scratch;
    std::string dir = MakeFolder(scratch);
    const struct {
        const char *pattern;
        std::vector<std::string> names;
    } rows[] = {
        {".ini", {"a.ini"}}, {"A.INI", {"a.ini"}}, {"", {"a.ini", "b.txt", "script"}},
        {"scr", {"script"}}, {"nothing", {}},
    };
    for (const auto &r : rows) {
        char table[8][256] = {};
        int16_t n = BSDDir_FindFiles(table, dir.c_str(), 8, r.pattern);
        std::vector<std::string> got(table, table + std::max<int16_t>(n, 0));
        EXPECT_EQ(got, r.names) << r.pattern;
        g_names.clear();
        g_answer = 0;
        EXPECT_EQ(BSDDir_ProcessFiles(dir.c_str(), r.pattern, TakeName), 0);
        EXPECT_EQ(g_names, r.names) << r.pattern;
        EXPECT_EQ(BSDnNbFic, int(r.names.size())) << r.pattern;
    }
    EXPECT_EQ(BSDDir_ProcessFiles_fPtr, TakeName);
}

TEST(FindFiles, CountsBeyondTheTableAndRefusesMissingFolders) {
    Scratch scratch;
    scratch.touch("dir/x1.ini");
    scratch.touch("dir/x2.ini");
    scratch.touch("dir/x3.ini");
    scratch.touch("dir/-x");
    char table[2][256] = {"", "sentinel"};
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("dir").c_str(), 1, "ini"), 3);
    EXPECT_STREQ(table[0], "x1.ini");
    EXPECT_STREQ(table[1], "sentinel");
    EXPECT_EQ(BSDDir_FindFiles(nullptr, scratch.path("dir").c_str(), 0, "ini"), 3);
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("dir").c_str(), -4, "ini"), 3);
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("dir").c_str(), 2, "-x"), 1);
    EXPECT_STREQ(table[0], "-x");

    std::strcpy(table[0], "untouched");
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("missing").c_str(), 2, ""), 0);
    EXPECT_EQ(BSDDir_FindFiles(table, "", 2, ""), 0);
    EXPECT_EQ(BSDDir_FindFiles(table, nullptr, 2, ""), 0);
    EXPECT_STREQ(table[0], "untouched");
}

// A name holding a line feed is left out, never listed as its pieces; a
// real file named like a piece still is.
TEST(FindAndProcessFiles, LeaveOutNamesHoldingALineFeed) {
    Scratch scratch;
    scratch.touch("nl/a\nb.ini");
    scratch.touch("nl/x\nkeep.ini");
    scratch.touch("nl/keep.ini");
    fs::permissions(scratch.touch("nl/run\nme"), fs::perms::owner_all);
    char table[8][256] = {};
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("nl").c_str(), 8, ""), 1);
    EXPECT_STREQ(table[0], "keep.ini");
    g_names.clear();
    g_answer = 0;
    BSDDir_ProcessFiles(scratch.path("nl").c_str(), "", TakeName);
    EXPECT_EQ(g_names, std::vector<std::string>{"keep.ini"});
}

TEST(FindFiles, ReadsOnlyWhatTheTableCanHold) {
    Scratch scratch;
    // 300 names of 9 characters (10 bytes a line): a 1-slot table reads 255
    // bytes of the listing, so 25 whole names and part of the 26th.
    for (int i = 0; i < 300; ++i) scratch.touch("many/f" + std::to_string(1000 + i) + ".ini");
    char table[1][256];
    EXPECT_EQ(BSDDir_FindFiles(table, scratch.path("many").c_str(), 1, ""), 26);
    EXPECT_EQ(BSDDir_FindFiles(nullptr, scratch.path("many").c_str(), 0, ""), 26);
}

TEST(ProcessFiles, DeliversNamesUntilTheCallbackStops) {
    Scratch scratch;
    std::string dir = MakeFolder(scratch);
    g_names.clear();
    g_answer = 1;
    EXPECT_EQ(BSDDir_ProcessFiles(dir.c_str(), "", TakeName), 1);
    EXPECT_EQ(g_names, std::vector<std::string>{"a.ini"});
    EXPECT_EQ((std::pair<int, int>(BSDcr, BSDnNbFic)), std::make_pair(1, 1));

    // A scan that finds nothing answers 0 after one that ended on 1.
    EXPECT_EQ(BSDDir_ProcessFiles(dir.c_str(), "nothing", TakeName), 0);
    EXPECT_EQ((std::pair<int, int>(BSDcr, BSDnNbFic)), std::make_pair(0, 0));

    EXPECT_EQ(BSDDir_ProcessFiles(scratch.path("missing").c_str(), "", TakeName), 0);
    EXPECT_EQ(BSDDir_ProcessFiles("", "", TakeName), 0);
    EXPECT_EQ(BSDDir_ProcessFiles(dir.c_str(), "", nullptr), 0);
}

TEST(ProcessFiles, LineHandlerSkipsFoldersAndDropsTheExecutableMark) {
    g_names.clear();
    g_answer = 7;
    BSDDir_ProcessFiles_fPtr = TakeName;
    BSDnNbFic = 0;
    const std::pair<const char *, int32_t> rows[] = {
        {"sub/", 0}, {"script*", 7}, {"dir/name.ini", 7}, {"link@", 7}, {"", 0}, {"*", 0},
    };
    for (const auto &[line, answer] : rows) EXPECT_EQ(BSDDir_ProcessFiles_f(line), answer) << line;
    EXPECT_EQ(g_names, (std::vector<std::string>{"script", "name.ini", "link@"}));
    EXPECT_EQ(BSDnNbFic, 3);
    BSDDir_ProcessFiles_fPtr = nullptr;
    EXPECT_EQ(BSDDir_ProcessFiles_f("file"), 0);
}

TEST(Chmodrwx, OpensAPathToEverybody) {
    Scratch scratch;
    scratch.volume("Data");
    chmod(scratch.touch("Data/f.txt").c_str(), 0600);
    chmod(scratch.mkdir("Data/sub").c_str(), 0700);
    const std::pair<const char *, int32_t> rows[] = {
        {"f.txt", 0}, {"sub", 0}, {"missing", -1}, {nullptr, -1}};
    for (const auto &[name, result] : rows) {
        std::string file = name ? name : std::string(300, 'n'); // too long: refused
        EXPECT_EQ(BSDMACchmodrwx(("Data:" + file).c_str()), result) << file;
        struct stat st {};
        if (result == 0) {
            EXPECT_EQ(stat(scratch.path("Data/" + file).c_str(), &st), 0);
            EXPECT_EQ(st.st_mode & 07777, 0777u) << file;
        }
    }
    EXPECT_EQ(BSDMACchmodrwx(nullptr), -1);
}
