// Memory files: allocation and growth, a long sequence of operations
// against a byte-vector model, writes from the file's own block, the slot
// table with its high-water mark, and the global memory shims.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <vitrail/files.h>

namespace {

// Closes every memory file a test left open.
struct MFilTest : ::testing::Test {
    void TearDown() override {
        for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
        DATA_MFIL_ID = -1;
    }
};

TEST_F(MFilTest, OpenAndGrow) {
    const struct {
        int32_t size, minSize, alloc;
    } opens[] = {{1, 1, 4096}, {1, 10000, 10000}, {5000, 0, 5000}, {0, -5, 4096}};
    for (const auto &r : opens) {
        const int32_t h = MFil_Open("", r.size, r.minSize);
        EXPECT_TRUE(h == 0 && DATA_MFIL_TAB[h].lAlloc == r.alloc && DATA_MFIL_TAB[h].iMode == 2 &&
                    MFil_Size(h) == 0 && MFil_GetPos(h) == 0)
            << r.size << " " << r.minSize;
        MFil_Close(h);
    }
    const std::string bytes(5000, 'x');
    for (const auto &r : {std::pair{100, 8186}, std::pair{5000, 9090}, std::pair{6, 4096}}) {
        const int32_t h = MFil_Open("", 1, 1);
        EXPECT_EQ(MFil_Write(h, bytes.data(), 4090) + MFil_Write(h, bytes.data(), r.first),
                  4090 + r.first);
        EXPECT_EQ(DATA_MFIL_TAB[h].lAlloc, r.second); // by at least 4096 past the position
        MFil_Close(h);
    }
}

// Writes, reads, re-reads and seeks of every length around the growth
// points; the file always holds the model's bytes, size and position.
TEST_F(MFilTest, SequenceAgainstModel) {
    const int32_t h = MFil_Open("", 1, 1);
    std::vector<char> model;
    int32_t pos = 0;
    uint32_t seed = 1;
    char io[9000];
    for (int step = 0; step < 3000; ++step) {
        seed = seed * 1103515245u + 12345u;
        const int32_t n = int32_t(seed >> 8) % 6000 - (step % 50 == 0 ? 6001 : 0);
        switch ((seed >> 4) % 4) {
        case 0: // write, negative counts refused
            std::memset(io, char(step), sizeof io);
            ASSERT_EQ(MFil_Write(h, io, n), std::max(n, 0));
            if (n <= 0) break;
            model.resize(std::max(model.size(), size_t(pos + n)));
            std::fill_n(model.begin() + pos, n, char(step));
            pos += n;
            break;
        case 1: {
            const int32_t got = std::max(0, std::min(n, int32_t(model.size()) - pos));
            ASSERT_EQ(MFil_Read(h, io, n), got);
            ASSERT_TRUE(std::equal(io, io + got, model.begin() + pos));
            pos += got;
            break;
        }
        case 2: {
            const int32_t got = std::max(0, std::min(n, pos));
            ASSERT_EQ(MFil_Re_Read(h, io, n), got);
            ASSERT_TRUE(std::equal(io, io + got, model.begin() + pos - got));
            break;
        }
        case 3:
            ASSERT_EQ(MFil_Lseek(h, n / 2), n >= 0 && n / 2 <= int32_t(model.size()) ? 0 : -1);
            if (n >= 0 && n / 2 <= int32_t(model.size())) pos = n / 2;
        }
        ASSERT_TRUE(MFil_Size(h) == int32_t(model.size()) && MFil_GetPos(h) == pos) << step;
        const auto *block = static_cast<char *>(DATA_MFIL_TAB[h].hMem);
        ASSERT_TRUE(std::equal(model.begin(), model.end(), block));
        ASSERT_TRUE(model.empty() ||
                    MFil_LockPtr(h, int32_t(model.size()) - 1) == block + model.size() - 1);
    }
    EXPECT_EQ(MFil_LockPtr(h, int32_t(model.size())), nullptr);
    EXPECT_EQ(MFil_LockPtr(h, -1), nullptr);
    EXPECT_EQ(MFil_UnLockPtr(h), 0);
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
    for (int32_t bad : {-1, 5, 1000, 0})
        EXPECT_TRUE(MFil_Read(bad, buf, 4) == 0 && MFil_Write(bad, "abcd", 4) == 0 &&
                    MFil_Lseek(bad, 0) == -1 && !MFil_LockPtr(bad, 0) && MFil_Close(bad) == 0 &&
                    MFil_Size(bad) == 0 && MFil_GetPos(bad) == 0)
            << bad;
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
