// Counted-field helpers: copies at the exact size and one byte short,
// comparisons with and without wildcards, the growable buffer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <vitrail/strings.h>

namespace {

TEST(Sz, Copy) {
    const struct {
        const char *start; // dst before: a string, then '#' up to 16 bytes
        uint32_t size, n;
        int32_t raw, terminated, appended; // szcopy(_overlap), szcopy_0t, szconcat_0t
        const char *rawOut, *termOut, *appOut;
    } rows[] = {{"", 3, 5, 0, 0, 0, "ABC#", "AB", "AB"},
                {"", 5, 5, 1, 0, 0, "ABCDE#", "ABCD", "ABCD"},
                {"", 6, 5, 1, 1, 1, "ABCDE#", "ABCDE", "ABCDE"},
                {"z", 0, 5, 0, 0, 0, "z", "z", "z"},
                {"z", 8, 0, 1, 1, 1, "z", "", "z"},
                {"ab", 5, 3, 1, 1, 0, "ABC#", "ABC", "abAB"},
                {"ab", 6, 3, 1, 1, 1, "ABC#", "ABC", "abABC"},
                {"ab", 3, 3, 1, 0, 0, "ABC#", "AB", "ab"}};
    for (const auto &r : rows) {
        char dst[16];
        auto reset = [&] { std::strcpy(static_cast<char *>(std::memset(dst, '#', 16)), r.start); };
        for (auto fn : {szcopy, szcopy_overlap}) {
            reset();
            EXPECT_EQ(fn(dst, r.size, "ABCDE", r.n), r.raw) << r.start << r.size;
            EXPECT_EQ(std::string(dst, std::strlen(r.rawOut)), r.rawOut) << r.start << r.size;
        }
        reset();
        EXPECT_EQ(szcopy_0t(dst, r.size, "ABCDE", r.n), r.terminated) << r.start << r.size;
        EXPECT_STREQ(dst, r.size ? r.termOut : r.start);
        reset();
        EXPECT_EQ(szconcat_0t(dst, r.size, "ABCDE", r.n), r.appended) << r.start << r.size;
        EXPECT_STREQ(dst, r.appOut);
        EXPECT_EQ(dst[11], '#');
    }
    char up[] = "ABCDEF", down[] = "ABCDEF", unended[8] = {'a', 'a', 'a', 'a', 'a', 'a', 'a', 'a'};
    EXPECT_EQ(szcopy_overlap(up + 2, 4, up, 4) + szcopy_overlap(down, 4, down + 2, 4), 2);
    EXPECT_STREQ(up, "ABABCD");
    EXPECT_STREQ(down, "CDEFEF");
    EXPECT_EQ(szconcat_0t(unended, 5, "XYZ", 3), 0); // no terminator within size: cut
    EXPECT_EQ(std::string(unended, 6), std::string("aaaa\0a", 6));
    char f[] = " 1 2 ";
    EXPECT_EQ(szcnum(f, 4), 1);
    EXPECT_STREQ(f, "0102 ");
}

TEST(Sz, Compare) {
    const struct {
        const char *a;
        uint32_t la;
        const char *b;
        uint32_t lb;
        int32_t comp, ex, ex2, incl;
    } rows[] = {{"ABC", 3, "ABC", 3, 1, 1, 1, 1},   {"AB", 2, "ABC", 3, 0, 0, 0, 1},
                {"A?C", 3, "ABC", 3, 0, 1, 1, 0},   {"ABC", 3, "A?C", 3, 0, 1, 1, 0},
                {"ABD", 3, "ABC", 3, 0, 0, 0, 0},   {"AB*", 3, "ABXYZ", 5, 0, 0, 1, 0},
                {"AB*", 3, "AB", 2, 0, 0, 1, 0},    {"AB*", 3, "A", 1, 0, 0, 0, 0},
                {"AB*", 3, "AC", 2, 0, 0, 0, 0},    {"AB", 2, "AB*", 3, 0, 0, 1, 1},
                {"ABXYZ", 5, "AC*", 3, 0, 0, 0, 0}, {"A?*", 3, "AQRS", 4, 0, 0, 1, 0},
                {"AB*", 3, "ABC*", 4, 0, 0, 1, 0},  {"", 0, "", 0, 1, 1, 1, 1},
                {"", 0, "A", 1, 0, 0, 0, 1},        {"A", 1, "", 0, 0, 0, 0, 0},
                {"*", 1, "", 0, 0, 0, 1, 0},        {"", 0, "*", 1, 0, 0, 1, 1},
                {"BC", 2, "ABC", 3, 0, 0, 0, 1},    {"CD", 2, "ABC", 3, 0, 0, 0, 0},
                {"A\0C", 3, "A\0C", 3, 1, 1, 1, 1}, {"A\0C", 3, "A\0D", 3, 0, 0, 0, 0}};
    for (const auto &r : rows) {
        const std::string what = std::string(r.a, r.la) + "|" + std::string(r.b, r.lb);
        EXPECT_EQ(szcomp(r.a, r.la, r.b, r.lb), r.comp) << what;
        EXPECT_EQ(szcompex(r.a, r.la, r.b, r.lb), r.ex) << what;
        EXPECT_EQ(szcompex2(r.a, r.la, r.b, r.lb), r.ex2) << what;
        EXPECT_EQ(szincl(r.a, r.la, r.b, r.lb), r.incl) << what;
    }
}

TEST(Sz, GrowableBuffer) {
    struct Buffer {
        char *buf = nullptr;
        uint32_t cap = 0;
        ~Buffer() { std::free(buf); }
    } b;
    const struct {
        uint32_t offset;
        const char *src;
        uint32_t cap; // after the call
        const char *head;
    } steps[] = {{0, "", 0, ""},
                 {0, "0123456789AB", 12, "0123456789AB"},
                 {8, "wxyz", 12, "01234567wxyz"},                              // exactly fits
                 {10, "ABCDEFGH", 40, "01234567wxABCDEFGH"},                   // 2 x (12 + 8)
                 {0, "qqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqq", 41, "qqqq"}, // exactly
                 {41, "!", 84, "qqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqq!"}};
    for (const auto &s : steps) {
        EXPECT_EQ(szcopyex(&b.buf, &b.cap, s.offset, s.src, uint32_t(std::strlen(s.src))), 1);
        EXPECT_EQ(b.cap, s.cap);
        EXPECT_EQ(std::string(b.buf ? b.buf : "", std::strlen(s.head)), s.head);
    }
    // Refusals leave buffer, capacity and contents as they were.
    char *before = b.buf;
    EXPECT_EQ(szcopyex(&b.buf, &b.cap, 85, "x", 1) + szcopyex(&b.buf, &b.cap, 84, nullptr, 1) +
                  szcopyex(&b.buf, &b.cap, 1, "x", UINT32_MAX) +
                  szcopyex(nullptr, &b.cap, 0, "x", 1),
              0);
    EXPECT_TRUE(b.buf == before && b.cap == 84u && b.buf[41] == '!');
}

} // namespace
