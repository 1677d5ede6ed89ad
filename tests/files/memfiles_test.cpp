// Memory files: allocation sizes, growth, reads, re-reads, seeks, pointers
// and the slot table with its high-water mark.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vitrail/files.h>

namespace {

// Closes every memory file a test left open.
struct MFilTest : ::testing::Test {
    void TearDown() override {
        for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
        DATA_MFIL_ID = -1;
    }
};

TEST_F(MFilTest, OpenAllocatesTheLargestOfSizeMinimumAndMinSize) {
    struct Row {
        int32_t size, minSize, alloc;
    } rows[] = {{1, 1, 4096}, {1, 10000, 10000}, {5000, 0, 5000}, {4096, 0, 4096}, {0, -5, 4096}};
    for (const Row &r : rows) {
        int32_t h = MFil_Open("", r.size, r.minSize);
        ASSERT_EQ(h, 0);
        EXPECT_EQ(DATA_MFIL_TAB[h].lAlloc, r.alloc) << r.size << " " << r.minSize;
        EXPECT_EQ(DATA_MFIL_TAB[h].iMode, 2);
        EXPECT_EQ(MFil_Size(h), 0);
        EXPECT_EQ(MFil_GetPos(h), 0);
        MFil_Close(h);
    }
}

TEST_F(MFilTest, WriteGrowsByAtLeast4096) {
    struct Row {
        int32_t count, alloc;
    } rows[] = {{100, 8186}, {5000, 9090}, {6, 4096}};
    std::string bytes(5000, 'x');
    for (const Row &r : rows) {
        int32_t h = MFil_Open("", 1, 1);
        ASSERT_EQ(MFil_Write(h, bytes.data(), 4090), 4090);
        ASSERT_EQ(MFil_Write(h, bytes.data(), r.count), r.count);
        EXPECT_EQ(DATA_MFIL_TAB[h].lAlloc, r.alloc);
        EXPECT_EQ(MFil_Size(h), 4090 + r.count);
        MFil_Close(h);
    }
}

TEST_F(MFilTest, ReadReReadSeekAndOverwrite) {
    int32_t h = MFil_Open("", 1, 1);
    char buf[16] = {};
    EXPECT_EQ(MFil_Write(h, "abc", 3), 3);
    EXPECT_EQ(MFil_Lseek(h, 0), 0);
    EXPECT_EQ(MFil_Read(h, buf, 10), 3);
    EXPECT_EQ(std::string(buf, 3), "abc");
    EXPECT_EQ(MFil_Read(h, buf, 10), 0);
    EXPECT_EQ(MFil_Lseek(h, 3), 0);
    EXPECT_EQ(MFil_Lseek(h, 4), -1);
    EXPECT_EQ(MFil_Lseek(h, -1), -1);
    EXPECT_EQ(MFil_GetPos(h), 3);

    MFil_Lseek(h, 1);
    EXPECT_EQ(MFil_Write(h, "XYZW", 4), 4); // overwrites then appends
    EXPECT_EQ(MFil_Size(h), 5);
    MFil_Lseek(h, 4);
    std::memset(buf, 0, sizeof buf);
    EXPECT_EQ(MFil_Re_Read(h, buf, 10), 4);
    EXPECT_EQ(std::string(buf), "aXYZ");
    EXPECT_EQ(MFil_GetPos(h), 4);
    EXPECT_EQ(MFil_Re_Read(h, buf, 2), 2);
    EXPECT_EQ(std::string(buf, 2), "YZ");
    EXPECT_EQ(MFil_GetPos(h), 4);
    EXPECT_EQ(MFil_Read(h, buf, -1), 0);
    EXPECT_EQ(MFil_Write(h, buf, -1), 0);
    EXPECT_EQ(MFil_Re_Read(h, buf, -1), 0);
    EXPECT_EQ(MFil_GetPos(h), 4);
    MFil_Close(h);
}

TEST_F(MFilTest, LockPtrStaysInsideTheContent) {
    int32_t h = MFil_Open("", 1, 1);
    EXPECT_EQ(MFil_LockPtr(h, 0), nullptr);
    MFil_Write(h, "abc", 3);
    auto *base = static_cast<char *>(DATA_MFIL_TAB[h].hMem);
    EXPECT_EQ(MFil_LockPtr(h, 2), base + 2);
    EXPECT_EQ(MFil_LockPtr(h, 3), nullptr);
    EXPECT_EQ(MFil_LockPtr(h, -1), nullptr);
    EXPECT_EQ(MFil_UnLockPtr(h), 0);
    MFil_Close(h);
}

// A source inside the file's own block is read where the block is after
// growing, and may overlap the bytes it replaces.
TEST_F(MFilTest, WriteFromItsOwnBlock) {
    int32_t h = MFil_Open("", 1, 1);
    std::string text(4000, 'a');
    text += "0123456789";
    MFil_Write(h, text.data(), int32_t(text.size()));
    const char *digits = static_cast<const char *>(MFil_LockPtr(h, 4000));
    EXPECT_EQ(MFil_Write(h, digits, 10), 10); // grows and moves the block
    EXPECT_EQ(std::string(static_cast<char *>(DATA_MFIL_TAB[h].hMem) + 4000, 20),
              "01234567890123456789");
    MFil_Lseek(h, 4002);
    EXPECT_EQ(MFil_Write(h, MFil_LockPtr(h, 4000), 6), 6); // overlapping
    EXPECT_EQ(std::string(static_cast<char *>(DATA_MFIL_TAB[h].hMem) + 4000, 10), "0101234589");
    const char *end = static_cast<const char *>(MFil_LockPtr(h, 4019));
    EXPECT_EQ(MFil_Write(h, end, DATA_MFIL_TAB[h].lAlloc), 0); // runs past the block
    EXPECT_EQ(MFil_Size(h), 4020);
}

TEST_F(MFilTest, SlotTableAndMark) {
    int32_t h[5];
    for (int32_t i = 0; i < 5; ++i) EXPECT_EQ(h[i] = MFil_Open("", 1, 1), i);
    EXPECT_EQ(MFil_Open("", 1, 1), -1);
    EXPECT_EQ(DATA_MFIL_ID, 4);
    MFil_Close(1);
    EXPECT_EQ(DATA_MFIL_ID, 4);
    EXPECT_EQ(MFil_Open("", 1, 1), 1); // the scan finds the freed slot
    MFil_Close(4);
    MFil_Close(3);
    EXPECT_EQ(DATA_MFIL_ID, 2);
    EXPECT_EQ(MFil_Open("", 1, 1), 3);
    MFil_Close(0); // not the top: the mark stays
    EXPECT_EQ(DATA_MFIL_ID, 3);
}

TEST_F(MFilTest, BadHandlesAndFreeSlotsAreRefused) {
    char buf[4];
    for (int32_t bad : {-1, 5, 1000, 0}) {
        EXPECT_EQ(MFil_Read(bad, buf, 4), 0);
        EXPECT_EQ(MFil_Write(bad, "abcd", 4), 0);
        EXPECT_EQ(MFil_Lseek(bad, 0), -1);
        EXPECT_EQ(MFil_LockPtr(bad, 0), nullptr);
        EXPECT_EQ(MFil_Close(bad), 0);
        EXPECT_EQ(MFil_Size(bad), 0);
    }
}

TEST(GlobalMemory, ShimsOverTheHeap) {
    HGLOBAL m = GlobalAlloc(0, 4);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(GlobalLock(m), m);
    std::memcpy(GlobalLock(m), "abcd", 4);
    EXPECT_EQ(GlobalUnlock(m), 0);
    m = GlobalReAlloc(m, 100000, 0);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(std::memcmp(m, "abcd", 4), 0);
    EXPECT_EQ(GlobalAlloc(0, -1), nullptr);
    EXPECT_EQ(GlobalReAlloc(m, -1, 0), nullptr);
    EXPECT_EQ(GlobalFree(m), nullptr);
}

} // namespace
