// Counted-field helpers: copies at the exact size and one byte short,
// comparisons with and without wildcards, the growable buffer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <vitrail/strings.h>

namespace {

TEST(Sz, Copy) {
    struct Row {
        uint32_t size, n;
        int32_t result;
        const char *out; // of "########"
    } rows[] = {{3, 5, 0, "ABC#####"},
                {5, 5, 1, "ABCDE###"},
                {4, 5, 0, "ABCD####"},
                {0, 5, 0, "########"},
                {8, 0, 1, "########"}};
    for (const Row &r : rows) {
        for (auto fn : {szcopy, szcopy_overlap}) {
            char dst[9] = "########";
            EXPECT_EQ(fn(dst, r.size, "ABCDE", r.n), r.result) << r.size << "," << r.n;
            EXPECT_STREQ(dst, r.out) << r.size << "," << r.n;
        }
    }
    char up[] = "ABCDEF", down[] = "ABCDEF";
    EXPECT_EQ(szcopy_overlap(up + 2, 4, up, 4), 1);
    EXPECT_STREQ(up, "ABABCD");
    EXPECT_EQ(szcopy_overlap(down, 4, down + 2, 4), 1);
    EXPECT_STREQ(down, "CDEFEF");
    char f[] = " 1 2 ";
    EXPECT_EQ(szcnum(f, 4), 1);
    EXPECT_STREQ(f, "0102 ");
}

TEST(Sz, Compare) {
    struct Row {
        const char *a;
        uint32_t la;
        const char *b;
        uint32_t lb;
        int32_t comp, ex, ex2, incl;
    } rows[] = {{"ABC", 3, "ABC", 3, 1, 1, 1, 1},   {"AB", 2, "ABC", 3, 0, 0, 0, 1},
                {"A?C", 3, "ABC", 3, 0, 1, 1, 0},   {"ABC", 3, "A?C", 3, 0, 1, 1, 0},
                {"ABD", 3, "ABC", 3, 0, 0, 0, 0},   {"AB*", 3, "ABXYZ", 5, 0, 0, 1, 0},
                {"AB*", 3, "AB", 2, 0, 0, 1, 0},    {"AB*", 3, "ABCD", 4, 0, 0, 1, 0},
                {"AB*", 3, "A", 1, 0, 0, 0, 0},     {"AB*", 3, "AC", 2, 0, 0, 0, 0},
                {"AB", 2, "AB*", 3, 0, 0, 1, 1},    {"ABXYZ", 5, "AC*", 3, 0, 0, 0, 0},
                {"A?*", 3, "AQRS", 4, 0, 0, 1, 0},  {"AB*", 3, "ABC*", 4, 0, 0, 1, 0},
                {"", 0, "", 0, 1, 1, 1, 1},         {"", 0, "A", 1, 0, 0, 0, 1},
                {"A", 1, "", 0, 0, 0, 0, 0},        {"*", 1, "", 0, 0, 0, 1, 0},
                {"*", 1, "ANY", 3, 0, 0, 1, 0},     {"", 0, "*", 1, 0, 0, 1, 1},
                {"BC", 2, "ABC", 3, 0, 0, 0, 1},    {"CD", 2, "ABC", 3, 0, 0, 0, 0},
                {"A\0C", 3, "A\0C", 3, 1, 1, 1, 1}, {"A\0C", 3, "A\0D", 3, 0, 0, 0, 0}};
    for (const Row &r : rows) {
        std::string what = std::string(r.a, r.la) + "|" + std::string(r.b, r.lb);
        EXPECT_EQ(szcomp(r.a, r.la, r.b, r.lb), r.comp) << "szcomp " << what;
        EXPECT_EQ(szcompex(r.a, r.la, r.b, r.lb), r.ex) << "szcompex " << what;
        EXPECT_EQ(szcompex2(r.a, r.la, r.b, r.lb), r.ex2) << "szcompex2 " << what;
        EXPECT_EQ(szincl(r.a, r.la, r.b, r.lb), r.incl) << "szincl " << what;
    }
}

TEST(Sz, CopyTerminated) {
    struct Row {
        const char *start; // dst before: a string, then '#' up to 16 bytes
        uint32_t size, n;
        bool concat;
        int32_t result;
        const char *out;
    } rows[] = {{"", 4, 10, false, 0, "ABC"},        {"", 11, 10, false, 1, "ABCDEFGHIJ"},
                {"", 10, 10, false, 0, "ABCDEFGHI"}, {"", 1, 10, false, 0, ""},
                {"z", 5, 0, false, 1, ""},           {"ab", 6, 3, true, 1, "abABC"},
                {"ab", 5, 3, true, 0, "abAB"},       {"ab", 3, 3, true, 0, "ab"},
                {"abc", 8, 0, true, 1, "abc"}};
    for (const Row &r : rows) {
        char dst[16];
        std::memset(dst, '#', sizeof dst);
        std::strcpy(dst, r.start);
        auto fn = r.concat ? szconcat_0t : szcopy_0t;
        EXPECT_EQ(fn(dst, r.size, "ABCDEFGHIJ", r.n), r.result) << r.start << r.size << r.n;
        EXPECT_STREQ(dst, r.out) << r.start << r.size << r.n;
        EXPECT_EQ(dst[11], '#');
    }
    // Size 0 writes nothing; no terminator within size cuts the text.
    char dst[8];
    std::memset(dst, 'a', sizeof dst);
    EXPECT_EQ(szcopy_0t(dst, 0, "X", 1), 0);
    EXPECT_EQ(szconcat_0t(dst, 0, "X", 1), 0);
    EXPECT_EQ(dst[0], 'a');
    EXPECT_EQ(szconcat_0t(dst, 5, "XYZ", 3), 0);
    EXPECT_STREQ(dst, "aaaa");
    EXPECT_EQ(dst[5], 'a');
}

TEST(Sz, GrowableBuffer) {
    struct Buffer {
        char *buf = nullptr;
        uint32_t cap = 0;
        ~Buffer() { std::free(buf); }
    } b;
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 0, "", 0), 1);
    EXPECT_EQ(b.cap, 0u);
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 0, "0123456789AB", 12), 1);
    EXPECT_EQ(b.cap, 12u);
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 8, "wxyz", 4), 1); // exactly fits
    EXPECT_EQ(std::string(b.buf, b.cap), "01234567wxyz");
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 10, "ABCDEFGH", 8), 1); // 2 x (12 + 8)
    EXPECT_EQ(b.cap, 40u);
    EXPECT_EQ(std::string(b.buf, 18), "01234567wxABCDEFGH");
    const std::string q(41, 'q');
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 0, q.c_str(), 41), 1); // exactly the size asked
    EXPECT_EQ(std::string(b.buf, b.cap), q);
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 41, "!", 1), 1); // at the very end
    EXPECT_EQ(b.cap, 84u);

    // Refusals leave buffer, capacity and contents as they were.
    char *before = b.buf;
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 85, "x", 1), 0);
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 84, nullptr, 1), 0);
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 1, "x", UINT32_MAX), 0);
    EXPECT_EQ(szcopyex(nullptr, &b.cap, 0, "x", 1), 0);
    EXPECT_EQ(b.buf, before);
    EXPECT_EQ(b.cap, 84u);
    EXPECT_EQ(std::string(b.buf, 42), q + "!");
}

} // namespace
