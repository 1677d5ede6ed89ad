// Integer text coding: reading with its codes and trimming, writing with its
// narrow-buffer and overflow results.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

namespace {

struct ReadRow {
    const char *text;
    int32_t code;
    int32_t value; // checked when code is 0
};

void check_reads(bool shortpair, std::initializer_list<ReadRow> rows) {
    for (const ReadRow &r : rows) {
        std::string text = r.text;
        int32_t value = 777;
        const int32_t code =
            shortpair ? intcod_i(text.data(), &value) : intcod_l(text.data(), &value);
        EXPECT_EQ(code, r.code) << '"' << r.text << '"';
        EXPECT_EQ(value, r.code == 0 ? r.value : 777) << '"' << r.text << '"';
        // Blanks around the text are removed in place, whatever the code.
        std::string trimmed = r.text;
        trimmed.erase(0, trimmed.find_first_not_of(' '));
        trimmed.erase(trimmed.find_last_not_of(' ') + 1);
        EXPECT_STREQ(text.c_str(), trimmed.c_str()) << '"' << r.text << '"';
    }
}

TEST(IntCod, LongFormsAndLimits) {
    check_reads(false, {{"  -42  ", 0, -42},
                        {"+7", 0, 7},
                        {"", 1, 0},
                        {"   ", 1, 0},
                        {"-", 2, 0},
                        {" + ", 2, 0},
                        {"1 000", 3, 0},
                        {"12a", 3, 0},
                        {"- 5", 3, 0},
                        {"1.5", 3, 0},
                        {"\xb9", 3, 0},
                        {"\t5", 3, 0},
                        {"--5", 3, 0},
                        {"99999999999999999999a", 3, 0},
                        {"2147483647", 0, 2147483647},
                        {"-2147483647", 0, -2147483647},
                        {"2147483646", 0, 2147483646},
                        {"2147483648", 4, 0},
                        {"-2147483648", 4, 0},
                        {"4294967296", 4, 0},
                        {"99999999999999999999999", 4, 0},
                        {"0", 0, 0},
                        {"-0", 0, 0}});
    const std::string zeros(400, '0');
    std::string text = zeros + "2147483647";
    int32_t value = 0;
    EXPECT_EQ(intcod_l(text.data(), &value), 0);
    EXPECT_EQ(value, 2147483647);
    text = zeros + "2147483648";
    EXPECT_EQ(intcod_l(text.data(), &value), 4);
    EXPECT_EQ(intcod_l(nullptr, &value), 1);
}

TEST(IntCod, ShortLimits) {
    check_reads(true, {{"32767", 0, 32767},
                       {"-32767", 0, -32767},
                       {"32766", 0, 32766},
                       {"32768", 4, 0},
                       {"-32768", 4, 0},
                       {"000012", 0, 12},
                       {" 40000 ", 4, 0},
                       {"", 1, 0},
                       {"+", 2, 0},
                       {"3x", 3, 0}});
}

// Every size from -1 to 13 against the C library's text: 2 when the text and
// its terminator don't fit, 0 when the size holds any value (12 long, 7 short),
// 1 otherwise; never a byte past the size.
TEST(IntDco, EverySize) {
    const int32_t values[] = {0,     7,     9,      42,     -5,        -305,       12345,
                              32766, 32767, -32768, 123456, INT32_MAX, -INT32_MAX, INT32_MIN};
    for (bool shortpair : {false, true}) {
        for (int32_t v : values) {
            const std::string text = std::to_string(v);
            for (int32_t size = -1; size <= 13; ++size) {
                char buf[16];
                std::fill(std::begin(buf), std::end(buf), '#');
                const int32_t got = shortpair ? intdco_i(v, buf, size) : intdco_l(v, buf, size);
                const int32_t fits = size > static_cast<int32_t>(text.size());
                const int32_t want = !fits ? 2 : size >= (shortpair ? 7 : 12) ? 0 : 1;
                ASSERT_EQ(got, want) << v << " size " << size << " short " << shortpair;
                if (fits) {
                    ASSERT_STREQ(buf, text.c_str());
                }
                if (size >= 0) {
                    ASSERT_EQ(buf[size], '#') << "written past the buffer: " << v;
                }
            }
        }
    }
}

TEST(IntDco, OverflowKeepsLowDigits) {
    char buf[4] = "";
    EXPECT_EQ(intdco_l(12345, buf, 4), 2);
    EXPECT_STREQ(buf, "345");
    EXPECT_EQ(intdco_l(5, nullptr, 10), 2);
}

} // namespace
