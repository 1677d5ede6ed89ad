// Zero-terminated string helpers: trimming, comparison, search, deletion,
// insertion at the edges of their buffers.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vitrail/strings.h>

namespace {

TEST(Ch, Trim) {
    struct Row {
        const char *in;
        int32_t (*fn)(char *, char);
        char c;
        const char *out;
        int32_t result;
    } rows[] = {{"  ab  ", chelicar_f, ' ', "  ab", 4}, {"  ab", chelicar_d, ' ', "ab", 2},
                {"ab", chelicar_d, ' ', "ab", 2},       {"    ", chelicar_f, ' ', "", 0},
                {"    ", chelicar_d, ' ', "", 0},       {"\tab\t", chelicar_f, ' ', "\tab\t", 4},
                {"00120", chelicar_d, '0', "120", 3},   {"00120", chelicar_f, '0', "0012", 4},
                {"abc", chelicar_d, '\0', "abc", 3},    {"abc", chelicar_f, '\0', "abc", 3}};
    for (const Row &r : rows) {
        char buf[16];
        std::strcpy(buf, r.in);
        EXPECT_EQ(r.fn(buf, r.c), r.result) << '"' << r.in << '"';
        EXPECT_STREQ(buf, r.out) << '"' << r.in << '"';
    }
    char blanks[] = " x ";
    EXPECT_EQ(chelibl_f(blanks), 2);
    EXPECT_EQ(chelibl_d(blanks), 1);
    EXPECT_STREQ(blanks, "x");
    EXPECT_EQ(chelibl_f(nullptr), 0);
}

TEST(Ch, CompareAndSearch) {
    EXPECT_EQ(chcomp("abc", "abc"), 0);
    EXPECT_EQ(chcomp("abd", "abc"), 1);
    EXPECT_EQ(chcomp("ab", "abc"), -'c');
    EXPECT_EQ(chcomp("a", "\xE9"), 'a' + 23); // 0xE9 reads as -23
    EXPECT_EQ(chcomp("\x80", ""), -128);

    struct Row {
        const char *pattern, *s;
        int32_t pos;
    } rows[] = {{"", "", -1},  {"", "x", 0},       {"lo", "hello", 3},   {"helloo", "hello", -1},
                {"x", "", -1}, {"aab", "aaab", 1}, {"hello", "hello", 0}};
    for (const Row &r : rows) EXPECT_EQ(chcher(r.pattern, r.s), r.pos) << r.pattern << "|" << r.s;
    EXPECT_EQ(chcher_c('o', "hello"), 4);
    EXPECT_EQ(chcher_c('z', "hello"), -1);
    EXPECT_EQ(chcher_c('\0', "hello"), -1);
}

TEST(Ch, Delete) {
    struct Row {
        int32_t count, pos;
        const char *out;
    } rows[] = {
        {10, 2, "abcdef"}, {3, 4, "abcd"},           {2, -5, "cdef"},        {6, 0, ""},
        {7, 0, "abcdef"},  {0, 1, "abcdef"},         {-1, 1, "abcdef"},      {1, 5, "abcde"},
        {2, 99, "abcde"},  {INT32_MAX, 0, "abcdef"}, {1, INT32_MIN, "bcdef"}};
    for (const Row &r : rows) {
        char buf[8] = "abcdef";
        chdelch(buf, r.count, r.pos);
        EXPECT_STREQ(buf, r.out) << r.count << "," << r.pos;
    }
}

TEST(Ch, Insert) {
    struct Row {
        const char *dst;
        int32_t size;
        const char *ins;
        int32_t pos, result;
        const char *out;
    } rows[] = {{"abc", 8, "XY", 1, 2, "aXYbc"},
                {"abc", 8, "XY", -3, 2, "XYabc"},
                {"abc", 8, "XY", 99, 2, "abcXY"},
                {"abcde", 8, "XY", 0, 2, "XYabcde"},
                {"abcdef", 8, "XY", 0, 0, "abcdef"},
                {"abc", 8, "", 1, 0, "abc"},
                {"", 1, "X", 0, 0, ""},
                {"abc", -5, "X", 0, 0, "abc"}};
    for (const Row &r : rows) {
        char buf[12];
        std::memset(buf, '#', sizeof buf);
        std::strcpy(buf, r.dst);
        EXPECT_EQ(chinsch(buf, r.size, r.ins, r.pos), r.result) << r.dst << "+" << r.ins;
        EXPECT_STREQ(buf, r.out) << r.dst << "+" << r.ins;
        EXPECT_EQ(buf[9], '#') << "written past the buffer";
    }
    // The inserted text may be part of the destination, before or after the gap.
    char self[16] = "abc";
    EXPECT_EQ(chinsch(self, 16, self, 0), 3);
    EXPECT_STREQ(self, "abcabc");
    EXPECT_EQ(chinsch(self, 16, self + 1, 2), 5);
    EXPECT_STREQ(self, "abbcabccabc");
    char past[8] = "ab\0XY"; // a source after the terminator
    EXPECT_EQ(chinsch(past, 8, past + 3, 0), 2);
    EXPECT_STREQ(past, "XYab");
    // 8-byte buffer: 7 bytes held leave no room; 6 bytes fill it exactly.
    char full[9] = "abcdefg";
    EXPECT_EQ(chinsch_c(full, 8, 'X', 0), 0);
    EXPECT_STREQ(full, "abcdefg");
    char six[9] = "abcdef";
    six[8] = '#';
    EXPECT_EQ(chinsch_c(six, 8, 'X', 3), 1);
    EXPECT_STREQ(six, "abcXdef");
    EXPECT_EQ(six[8], '#');
    EXPECT_EQ(chinsch_c(six, 8, '\0', 0), 0);
    EXPECT_STREQ(six, "abcXdef");
}

} // namespace
