// Folder listings (files only, executables, links, case-insensitive
// filters) and the two sorts of file tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <vitrail/files.h>

#include "support/temp_volumes.h"

namespace fs = std::filesystem;

namespace {

struct DirTest : ::testing::Test {
    vitrail_test::TempVolumes vols;
    void SetUp() override {
        vols.write("Vol/dir/a.ini", "aaaa");
        vols.write("Vol/dir/B.INI", "bb");
        vols.write("Vol/dir/c.txt", "c");
        vols.write("Vol/dir/script.ini", "#!/bin/sh\n");
        fs::permissions(vols.root() / "Vol/dir/script.ini", fs::perms::owner_exec,
                        fs::perm_options::add);
        fs::create_directories(vols.root() / "Vol/dir/sub.ini");
        fs::create_symlink("a.ini", vols.root() / "Vol/dir/link.ini");
    }
    std::set<std::string> Find(const char *pattern, int16_t max, int16_t *count) {
        std::vector<std::array<char, 256>> table(size_t(std::max<int16_t>(max, 1)));
        auto *slots = reinterpret_cast<char(*)[256]>(table.data());
        *count = Dir_FindFiles(slots, "Vol:dir", max, pattern);
        std::set<std::string> out;
        for (int16_t i = 0; i < std::min(*count, max); ++i) out.insert(slots[i]);
        return out;
    }
};

TEST_F(DirTest, FindFilesMatchesAnyCaseAndSkipsFolders) {
    struct Row {
        const char *pattern;
        int16_t count;
        std::set<std::string> names;
    } rows[] = {
        {"*.ini", 4, {"Vol:dir:a.ini", "Vol:dir:B.INI", "Vol:dir:script.ini"}},
        {"*.INI*", 4, {"Vol:dir:a.ini", "Vol:dir:B.INI", "Vol:dir:script.ini"}},
        {"b", 1, {"Vol:dir:B.INI"}},
        {"txt", 1, {"Vol:dir:c.txt"}},
        {"*", 5, {"Vol:dir:a.ini", "Vol:dir:B.INI", "Vol:dir:c.txt", "Vol:dir:script.ini"}},
        {"zzz", 0, {}},
    };
    for (const Row &r : rows) {
        int16_t count = 0;
        std::set<std::string> got = Find(r.pattern, 10, &count);
        EXPECT_EQ(count, r.count) << r.pattern;
        // the link is listed as a file, with whatever mark ls gives it
        auto link = std::find_if(got.begin(), got.end(), [](const std::string &s) {
            return s.rfind("Vol:dir:link", 0) == 0;
        });
        if (link != got.end()) got.erase(link);
        EXPECT_EQ(got, r.names) << r.pattern;
    }
}

TEST_F(DirTest, FindFilesStoresOnlyMaxCount) {
    int16_t count = 0;
    std::set<std::string> got = Find("", 2, &count);
    EXPECT_EQ(count, 5);
    EXPECT_EQ(got.size(), 2u);
    char untouched[1][256] = {"keep"};
    EXPECT_EQ(Dir_FindFiles(untouched, "Vol:nowhere", 1, "*"), 0);
    EXPECT_STREQ(untouched[0], "keep");
    EXPECT_EQ(Dir_FindFiles(untouched, nullptr, 1, "*"), 0);
}

std::vector<std::string> seen;
int32_t Collect(const char *name) {
    seen.push_back(name);
    return 0;
}
int32_t StopAtFirst(const char *name) {
    seen.push_back(name);
    return 7;
}

TEST_F(DirTest, ProcessFilesHandsBareNames) {
    seen.clear();
    EXPECT_EQ(Dir_ProcessFiles("Vol:dir", "*.txt", Collect), 0);
    EXPECT_EQ(seen, std::vector<std::string>{"c.txt"});
    seen.clear();
    EXPECT_EQ(Dir_ProcessFiles("Vol:dir", "ini", StopAtFirst), 7);
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_EQ(Dir_ProcessFiles("Vol:nowhere", "", StopAtFirst), 0);
}

TEST(DirSort, ByName) {
    struct Row {
        std::vector<std::string> in, out;
        int16_t exchanges;
    } rows[] = {
        {{}, {}, 0},
        {{"b"}, {"b"}, 0},
        {{"a", "b", "c"}, {"a", "b", "c"}, 0},
        {{"c", "b", "a"}, {"a", "b", "c"}, 3},
        {{"b", "a", "a"}, {"a", "a", "b"}, 2},
        {{"B", "a"}, {"B", "a"}, 0}, // byte order
    };
    for (const Row &r : rows) {
        char table[4][256] = {};
        for (size_t i = 0; i < r.in.size(); ++i) std::strcpy(table[i], r.in[i].c_str());
        EXPECT_EQ(Dir_SortFiles(table, int16_t(r.in.size())), r.exchanges);
        for (size_t i = 0; i < r.out.size(); ++i) EXPECT_EQ(table[i], r.out[i]);
    }
    char table[2][256] = {"b", "a"};
    EXPECT_EQ(Dir_SortFiles(table, -3), 0);
    EXPECT_EQ(Dir_SortFiles(nullptr, 2), 0);
}

TEST_F(DirTest, BySizeLargestFirst) {
    vols.write("Vol/dir/e1", "x");
    vols.write("Vol/dir/e2", "y");
    char table[6][256] = {"Vol:dir:c.txt", "Vol:dir:e1",    "Vol:dir:missing",
                          "Vol:dir:B.INI", "Vol:dir:a.ini", "Vol:dir:e2"};
    EXPECT_GT(Dir_SortSizeFiles(table, 6), 0);
    EXPECT_STREQ(table[0], "Vol:dir:a.ini");
    EXPECT_STREQ(table[1], "Vol:dir:B.INI");
    EXPECT_STREQ(table[2], "Vol:dir:c.txt"); // equal sizes keep their order
    EXPECT_STREQ(table[3], "Vol:dir:e1");
    EXPECT_STREQ(table[4], "Vol:dir:e2");
    EXPECT_STREQ(table[5], "Vol:dir:missing");
    for (const DATA_FILE &slot : DATA_FILE_TAB) EXPECT_EQ(slot.iMode, -1); // all closed
}

} // namespace
