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
        int32_t (*fn)(char *);
        const char *out;
        int32_t result;
    } rows[] = {
        {"  ab  ", chelibl_f, "  ab", 4},   {"  ab", chelibl_d, "ab", 2},
        {"ab", chelibl_d, "ab", 2},         {"", chelibl_f, "", 0},
        {"    ", chelibl_f, "", 0},         {"    ", chelibl_d, "", 0},
        {"\tab\t", chelibl_f, "\tab\t", 4}, {"\tab", chelibl_d, "\tab", 3},
        {" a b ", chelibl_d, "a b ", 4},
    };
    for (const Row &r : rows) {
        char buf[16];
        std::strcpy(buf, r.in);
        EXPECT_EQ(r.fn(buf), r.result) << '"' << r.in << '"';
        EXPECT_STREQ(buf, r.out) << '"' << r.in << '"';
    }
    EXPECT_EQ(chelibl_f(nullptr), 0);
    EXPECT_EQ(chelibl_d(nullptr), 0);
}

TEST(Ch, TrimByte) {
    struct Row {
        const char *in;
        bool front;
        char c;
        const char *out;
        int32_t result;
    } rows[] = {
        {"00120", true, '0', "120", 3}, {"00120", false, '0', "0012", 4},
        {"000", true, '0', "", 0},      {"000", false, '0', "", 0},
        {"abc", true, '\0', "abc", 3},  {"abc", false, '\0', "abc", 3},
        {"x  ", false, ' ', "x", 1},
    };
    for (const Row &r : rows) {
        char buf[16];
        std::strcpy(buf, r.in);
        EXPECT_EQ(r.front ? chelicar_d(buf, r.c) : chelicar_f(buf, r.c), r.result) << r.in;
        EXPECT_STREQ(buf, r.out) << r.in;
    }
}

TEST(Ch, CompareAndSearch) {
    EXPECT_EQ(chcomp("abc", "abc"), 0);
    EXPECT_EQ(chcomp("", ""), 0);
    EXPECT_EQ(chcomp("abd", "abc"), 1);
    EXPECT_EQ(chcomp("ab", "abc"), -'c');
    EXPECT_EQ(chcomp("abc", "ab"), 'c');
    EXPECT_EQ(chcomp("a", "\xE9"), 'a' + 23); // 0xE9 reads as -23
    EXPECT_EQ(chcomp("\xE9", "\xEA"), -1);
    EXPECT_EQ(chcomp("\x80", ""), -128);

    struct Row {
        const char *pattern, *s;
        int32_t pos;
    } rows[] = {
        {"", "", -1},
        {"", "x", 0},
        {"lo", "hello", 3},
        {"hello", "hello", 0},
        {"helloo", "hello", -1},
        {"x", "", -1},
        {"aab", "aaab", 1},
        {"b", "ab", 1},
    };
    for (const Row &r : rows) EXPECT_EQ(chcher(r.pattern, r.s), r.pos) << r.pattern << "|" << r.s;

    EXPECT_EQ(chcher_c('l', "hello"), 2);
    EXPECT_EQ(chcher_c('o', "hello"), 4);
    EXPECT_EQ(chcher_c('z', "hello"), -1);
    EXPECT_EQ(chcher_c('\0', "hello"), -1);
    EXPECT_EQ(chcher_c('\xE9', "caf\xE9"), 3);
}

TEST(Ch, Delete) {
    struct Row {
        int32_t count, pos;
        const char *out;
    } rows[] = {
        {10, 2, "abcdef"},
        {3, 4, "abcd"},
        {2, -5, "cdef"},
        {6, 0, ""},
        {7, 0, "abcdef"},
        {0, 1, "abcdef"},
        {-1, 1, "abcdef"},
        {1, 5, "abcde"},
        {2, 99, "abcde"},
        {1, 0, "bcdef"},
        {INT32_MAX, INT32_MIN, "abcdef"},
    };
    for (const Row &r : rows) {
        char buf[8] = "abcdef";
        chdelch(buf, r.count, r.pos);
        EXPECT_STREQ(buf, r.out) << r.count << "," << r.pos;
    }
    char empty[1] = "";
    chdelch(empty, 1, 0);
    EXPECT_STREQ(empty, "");
}

TEST(Ch, Insert) {
    struct Row {
        const char *dst;
        int32_t size;
        const char *ins;
        int32_t pos;
        int32_t result;
        const char *out;
    } rows[] = {
        {"abc", 8, "XY", 1, 2, "aXYbc"},
        {"abc", 8, "XY", -3, 2, "XYabc"},
        {"abc", 8, "XY", 3, 2, "abcXY"},
        {"abc", 8, "XY", 99, 2, "abcXY"},
        {"abcde", 8, "XY", 0, 2, "XYabcde"}, // exactly full
        {"abcdef", 8, "XY", 0, 0, "abcdef"}, // one byte short
        {"abc", 8, "", 1, 0, "abc"},
        {"", 1, "X", 0, 0, ""},
        {"", 2, "X", 0, 1, "X"},
        {"abc", 0, "X", 0, 0, "abc"},
        {"abc", -5, "X", 0, 0, "abc"},
    };
    for (const Row &r : rows) {
        char buf[16] = {};
        std::strcpy(buf, r.dst);
        std::memset(buf + std::strlen(buf) + 1, '#', sizeof buf - std::strlen(buf) - 1);
        EXPECT_EQ(chinsch(buf, r.size, r.ins, r.pos), r.result) << r.dst << "+" << r.ins;
        EXPECT_STREQ(buf, r.out) << r.dst << "+" << r.ins;
        const size_t limit = r.size > 0 ? static_cast<size_t>(r.size) : std::strlen(r.dst) + 1;
        for (size_t i = limit; i < sizeof buf; ++i)
            if (i > std::strlen(r.dst)) {
                EXPECT_EQ(buf[i], '#') << "written past size at " << i;
            }
    }
}

TEST(Ch, InsertByte) {
    // 8-byte buffer: 7 bytes held leave no room; 6 bytes fill it exactly.
    char full[9] = "abcdefg";
    full[8] = '#';
    EXPECT_EQ(chinsch_c(full, 8, 'X', 0), 0);
    EXPECT_STREQ(full, "abcdefg");
    char six[9] = "abcdef";
    six[8] = '#';
    EXPECT_EQ(chinsch_c(six, 8, 'X', 3), 1);
    EXPECT_STREQ(six, "abcXdef");
    EXPECT_EQ(six[8], '#');
    EXPECT_EQ(chinsch_c(six, 8, 'X', 3), 0);

    char digits[4] = "";
    EXPECT_EQ(chinsch_c(digits, 4, '3', 0), 1);
    EXPECT_EQ(chinsch_c(digits, 4, '2', 0), 1);
    EXPECT_EQ(chinsch_c(digits, 4, '1', 0), 1);
    EXPECT_EQ(chinsch_c(digits, 4, '0', 0), 0);
    EXPECT_STREQ(digits, "123");
    EXPECT_EQ(chinsch_c(digits, 4, '\0', 0), 0);
    EXPECT_STREQ(digits, "123");
}

} // namespace
