// The file handle table: slot policy and mark, modes, clipped reads,
// re-reads, writes into existing files, seeks, set-end and the path tests.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <vitrail/files.h>

#include "support/temp_volumes.h"

namespace {

struct FileTableTest : ::testing::Test {
    vitrail_test::TempVolumes vols;
    void SetUp() override {
        vols.volume("Vol");
        for (const char *n : {"a", "b", "c", "d", "e", "f"})
            vols.write(std::string("Vol/") + n, "0123456789");
    }
    void TearDown() override {
        for (int32_t h = 4; h >= 0; --h) File_Close(h);
        DATA_FILE_ID = -1;
    }
};

TEST_F(FileTableTest, FiveSlotsAndTheMark) {
    const char *names[] = {"Vol:a", "Vol:b", "Vol:c", "Vol:d", "Vol:e"};
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(File_Open(names[i], 1, 0), i);
    EXPECT_EQ(File_Close(1), 0);
    EXPECT_EQ(DATA_FILE_ID, 2);
    EXPECT_EQ(File_Open("Vol:d", 1, 0), 3);
    EXPECT_EQ(File_Close(3), 0);
    EXPECT_EQ(File_Close(2), 0);
    EXPECT_EQ(DATA_FILE_ID, 1);
    EXPECT_EQ(File_Open("Vol:c", 1, 0), 2); // slot 1 waits for the scan
    EXPECT_EQ(File_Open("Vol:d", 1, 0), 3);
    EXPECT_EQ(File_Open("Vol:e", 1, 0), 4);
    EXPECT_EQ(File_Open("Vol:a", 1, 0), 1);
    EXPECT_EQ(File_Open("Vol:f", 1, 0), -1);
    EXPECT_EQ(File_Close(1), 0);
    EXPECT_EQ(File_Close(1), -1); // already free
    EXPECT_EQ(File_Open("Vol:f", 1, 0), 1);
}

TEST_F(FileTableTest, OpenResults) {
    struct Row {
        const char *path;
        int32_t bRead, bWrite, result, mode;
    } rows[] = {
        {"Vol:a", 1, 0, 0, 0},         {"Vol:a", 0, 1, 0, 1},     {"Vol:a", 1, 1, 0, 2},
        {"Vol:a", 0, 0, -3, -1},       {"Vol:a", -1, -1, -3, -1}, {"Vol:missing", 1, 0, -2, -1},
        {"Vol:missing", 1, 1, -2, -1}, {"Vol", 1, 0, -2, -1},     {"Nowhere:x", 0, 1, -2, -1},
    };
    for (const Row &r : rows) {
        int32_t h = File_Open(r.path, r.bRead, r.bWrite);
        EXPECT_EQ(h, r.result) << r.path << " " << r.bRead << r.bWrite;
        EXPECT_EQ(DATA_FILE_TAB[0].iMode, r.mode) << r.path;
        if (h >= 0) {
            EXPECT_EQ(File_Size(h), 10);
            EXPECT_EQ(std::string(DATA_FILE_TAB[h].szName), r.path);
            File_Close(h);
        }
        DATA_FILE_ID = -1;
    }
    EXPECT_EQ(File_Open(nullptr, 1, 0), -2);
    EXPECT_EQ(File_Open(std::string(144, 'x').c_str(), 1, 0), -2);
}

TEST_F(FileTableTest, ReadsAreClippedAndReReadsGoBack) {
    int32_t h = File_Open("Vol:a", 1, 0);
    char buf[128] = {};
    EXPECT_EQ(File_Read(h, buf, 3), 3);
    EXPECT_EQ(File_Re_Read(h, buf, 5), 3);
    EXPECT_EQ(std::string(buf, 3), "012");
    EXPECT_EQ(File_GetPos(h), 3);
    EXPECT_EQ(File_Read(h, buf, 100), 7);
    EXPECT_EQ(std::string(buf, 7), "3456789");
    EXPECT_EQ(File_Read(h, buf, 100), 0);
    EXPECT_EQ(File_Re_Read(h, buf, 2), 2);
    EXPECT_EQ(std::string(buf, 2), "89");
    EXPECT_EQ(File_Write(h, "xyz", 3), 0);
    EXPECT_EQ(File_GetPos(h), 10);
    EXPECT_EQ(File_Read(h, buf, -1), 0);
    EXPECT_EQ(File_Lseek(h, 4), 0);
    EXPECT_EQ(File_Read(h, buf, 2), 2);
    EXPECT_EQ(std::string(buf, 2), "45");
    EXPECT_EQ(File_Lseek(h, 11), -1);
    EXPECT_EQ(File_Lseek(h, -1), -1);
    EXPECT_EQ(File_GetPos(h), 6);
}

TEST_F(FileTableTest, WriteOnlyKeepsTheContentsAndOverwrites) {
    int32_t h = File_Open("Vol:a", 0, 1);
    EXPECT_EQ(File_Size(h), 10);
    EXPECT_EQ(File_GetPos(h), 0);
    char buf[4];
    EXPECT_EQ(File_Read(h, buf, 4), 0);
    EXPECT_EQ(File_Write(h, "abc", 3), 3);
    EXPECT_EQ(File_GetPos(h), 3);
    File_Close(h);
    EXPECT_EQ(vols.read("Vol/a"), "abc3456789");

    h = File_Open("Vol:new", 0, 1); // created
    EXPECT_EQ(File_Size(h), 0);
    EXPECT_EQ(File_Write(h, "hello", 5), 5);
    EXPECT_EQ(File_Size(h), 5);
    EXPECT_EQ(File_SetEOF(h, 2), 0);
    EXPECT_EQ(File_GetPos(h), 2);
    EXPECT_EQ(File_Write(h, "!", 1), 1);
    EXPECT_EQ(File_SetEOF(h, -1), -1);
    File_Close(h);
    EXPECT_EQ(vols.read("Vol/new"), "he!");
}

TEST_F(FileTableTest, BadHandlesAreRefused) {
    char buf[4];
    for (int32_t bad : {-1, 5, 77, 2}) {
        EXPECT_EQ(File_Read(bad, buf, 4), 0);
        EXPECT_EQ(File_Re_Read(bad, buf, 4), 0);
        EXPECT_EQ(File_Write(bad, "abcd", 4), 0);
        EXPECT_EQ(File_Lseek(bad, 0), -1);
        EXPECT_EQ(File_SetEOF(bad, 0), -1);
        EXPECT_EQ(File_Close(bad), -1);
        EXPECT_EQ(File_Size(bad), 0);
    }
}

TEST_F(FileTableTest, PathTestsAndMakeDir) {
    vols.write("Vol/dir/inner", "x");
    struct Row {
        const char *path;
        int32_t file, dir;
    } rows[] = {{"Vol:a", 1, 0}, {"Vol:dir", 0, 1},   {"Vol:dir:inner", 1, 0}, {"Vol:zz", 0, 0},
                {"Vol", 0, 0},   {"Nowhere:a", 0, 0}, {"Vol:", 0, 1},          {"Vol:a:b", 0, 0}};
    for (const Row &r : rows) {
        EXPECT_EQ(File_Is_Existing(r.path), r.file) << r.path;
        EXPECT_EQ(Dir_Is_Existing(r.path), r.dir) << r.path;
    }
    EXPECT_EQ(File_Is_Existing(nullptr), 0);
    EXPECT_EQ(Dir_Is_Existing(std::string(256, 'x').c_str()), 0);

    EXPECT_EQ(MakeDir("Vol:made"), 1);
    EXPECT_TRUE(std::filesystem::is_directory(vols.root() / "Vol/made"));
    EXPECT_EQ(MakeDir("Vol:made"), 0);
    EXPECT_EQ(MakeDir("Vol:a"), 0);
    EXPECT_EQ(MakeDir("Vol:no:such"), 0);
    EXPECT_EQ(MakeDir(nullptr), 0);
}

TEST_F(FileTableTest, PartialPathsAreRelativeToTheCurrentFolder) {
    auto previous = std::filesystem::current_path();
    std::filesystem::current_path(vols.root() / "Vol");
    EXPECT_EQ(File_Is_Existing("a"), 1);
    EXPECT_EQ(File_Is_Existing(":a"), 1);
    EXPECT_EQ(MakeDir(":sub"), 1);
    std::filesystem::current_path(vols.root() / "Vol/sub");
    EXPECT_EQ(File_Is_Existing("::a"), 1);
    std::filesystem::current_path(previous);
}

TEST_F(FileTableTest, SlashInANameShowsAsColon) {
    vols.write("Vol/x:y", "1");
    EXPECT_EQ(File_Is_Existing("Vol:x/y"), 1);
}

} // namespace
