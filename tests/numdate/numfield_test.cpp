// Fixed-width numeric fields: padding and width limits on writing, length
// limits, sign refusal, percentage and interval notations on reading.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

// Every width from -1 to 12: the decimal text right-aligned and padded with
// zeros (before any sign), no terminator; 11 and nothing written when the
// width is not positive or too narrow.
TEST(NumWrite, LongAndIntEveryWidth) {
    const int32_t values[] = {0, 7, 42, -42, 12345, 123456, INT32_MAX, INT32_MIN};
    for (bool shortpair : {false, true}) {
        for (int32_t v : values) {
            const std::string text = std::to_string(v);
            for (int32_t width = -1; width <= 12; ++width) {
                char field[16];
                std::memset(field, '#', sizeof field);
                const int32_t code =
                    shortpair ? IntToNUM(v, field, width) : LongToNUM(v, field, width);
                const bool fits = width > 0 && width >= static_cast<int32_t>(text.size());
                const std::string want =
                    (fits ? std::string(width - text.size(), '0') + text : "") + "#";
                ASSERT_EQ(code, fits ? 0 : 11) << v << " width " << width;
                ASSERT_EQ(std::string(field, want.size()), want) << v << " width " << width;
            }
        }
    }
}

TEST(NumWrite, Decimal) {
    struct Row {
        double value;
        int32_t width, decimals, code;
        const char *field;
    } rows[] = {{12.5, 7, 2, 0, "0012.50#"},
                {12.5, 4, 2, 11, "#####"},
                {12.5, 5, 2, 0, "12.50#"},
                {9.995, 6, 2, 0, "010.00#"},
                {-1.5, 6, 1, 0, "00-1.5#"},
                {1e18, 19, 0, 0, "1000000000000000000#"},
                {1e19, 25, 0, 2, "##########################"},
                {1.5, 25, 30, 2, "##########################"},
                {std::nan(""), 5, 1, 2, "######"}};
    for (const Row &r : rows) {
        char field[32];
        std::memset(field, '#', sizeof field);
        EXPECT_EQ(DoubleToNUMD(r.value, field, r.width, r.decimals), r.code) << r.value;
        EXPECT_EQ(std::string(field, std::strlen(r.field)), r.field) << r.value;
    }
}

struct ReadRow {
    const char *field;
    int32_t len, code, value;
};

void check_reads(int32_t (*reader)(const char *, int32_t, int32_t *),
                 std::initializer_list<ReadRow> rows) {
    for (const ReadRow &r : rows) {
        int32_t value = 777;
        EXPECT_EQ(reader(r.field, r.len, &value), r.code) << '"' << r.field << "\" " << r.len;
        EXPECT_EQ(value, r.value) << '"' << r.field << '"';
    }
}

TEST(NumRead, LongAndInt) {
    check_reads(NUMToLong, {{"00042", 5, 0, 42},
                            {" 42 ", 4, 0, 42},
                            {"0004299", 5, 0, 42},
                            {"00-42", 5, 3, 0},
                            {"-42", 3, 12, 0},
                            {"-0", 2, 0, 0},
                            {"123456789012", 12, 11, 0},
                            {"99999999999", 11, 4, 0},
                            {"02147483647", 11, 0, 2147483647},
                            {"", 0, 1, 0},
                            {"   ", 3, 1, 0},
                            {"+", 1, 2, 0},
                            {"42", -1, 11, 0},
                            {"4\0002", 3, 0, 4}});
    check_reads(NUMToInt, {{"40000", 5, 4, 0},
                           {"32767", 5, 0, 32767},
                           {"32768", 5, 4, 0},
                           {"-1", 2, 12, 0},
                           {"00012", 5, 0, 12}});
    int32_t v = 5;
    EXPECT_EQ(NUMToLong(nullptr, 3, &v), 11);
    EXPECT_EQ(v, 0);
}

TEST(NumRead, Percentage) {
    check_reads(NUMP100ToLong, {{"15 % ", 5, 0, 15},
                                {"15%", 3, 0, 15},
                                {"15", 2, 0, 15},
                                {" 7  %   ", 8, 0, 7},
                                {"%", 1, 1, 0},
                                {"15%%", 4, 3, 0},
                                {"00000000015    %", 16, 0, 15},
                                {"-15%", 4, 12, 0},
                                {"15", -2, 11, 0}});
}

TEST(NumRead, Interval) {
    struct Row {
        const char *field;
        int32_t code, low, high;
    } rows[] = {{"[5, 10]", 0, 5, 10},
                {"5-10", 0, 5, 10},
                {"7", 11, 7, 0},
                {" [ 5 ; 10 ] ", 0, 5, 10},
                {"5,", 1, 5, 0},
                {",5", 1, 0, 5},
                {"[x,3]", 3, 0, 3},
                {"", 12, 0, 0},
                {"1,2,3", 3, 1, 0},
                {"[]", 12, 0, 0},
                {"123456789012,1", 11, 0, 1}};
    for (const Row &r : rows) {
        int32_t low = 777, high = 777;
        const auto len = static_cast<int32_t>(std::strlen(r.field));
        EXPECT_EQ(NUMPInterToLong(r.field, len, &low, &high), r.code) << '"' << r.field << '"';
        EXPECT_EQ(low, r.low) << '"' << r.field << '"';
        EXPECT_EQ(high, r.high) << '"' << r.field << '"';
    }
    int32_t low = 1, high = 1;
    EXPECT_EQ(NUMPInterToLong("5\0006", 3, &low, &high), 11); // a zero byte is no separator
    EXPECT_EQ(NUMPInterToLong("5,6", -1, &low, &high), 22);
    EXPECT_EQ(low + high, 0);
}

TEST(NumRead, Decimal) {
    struct Row {
        const char *field;
        int32_t len, code;
        double value;
    } rows[] = {{"12,5%", 5, 0, 0.125},
                {"12,5 %", 6, 0, 0.125},
                {"0012.50", 7, 0, 12.5},
                {"-1.5", 4, 12, 0.0},
                {"1.5 ", 4, 0, 1.5},
                {"%", 1, 1, 0.0},
                {"12,5% ", 6, 4, 0.0},
                {"", 0, 1, 0.0},
                {"1234567890123456789", 19, 0, 1234567890123456789.0},
                {"12345678901234567890", 20, 11, 0.0},
                {"1e", 2, 0, 1.0},
                {"1e+", 3, 6, 0.0},
                {"1.5", -1, 11, 0.0}};
    for (const Row &r : rows) {
        double value = 777.0;
        EXPECT_EQ(NUMDToDouble(r.field, r.len, &value), r.code) << '"' << r.field << '"';
        EXPECT_DOUBLE_EQ(value, r.value) << '"' << r.field << '"';
    }
}

} // namespace
