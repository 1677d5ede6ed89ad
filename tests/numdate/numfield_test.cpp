// Fixed-width numeric fields and NUM lists: padding and width limits on
// writing; length limits, sign refusal, percentage and interval notations
// on reading; validating and indexing lists.
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

namespace {

// Every width from -1 to 12: the text right-aligned, "0"-padded before any
// sign, no terminator; 11 and nothing written when it does not fit.
TEST(NumWrite, EveryWidth) {
    for (int32_t v : {0, 42, -42, 123456, INT32_MAX, INT32_MIN}) {
        const std::string text = std::to_string(v);
        for (int32_t width = -1; width <= 12; ++width) {
            for (auto write : {LongToNUM, IntToNUM}) {
                char field[16];
                std::memset(field, '#', sizeof field);
                const bool fits = width > 0 && width >= int32_t(text.size());
                const std::string want =
                    (fits ? std::string(width - text.size(), '0') + text : "") + "#";
                ASSERT_EQ(write(v, field, width), fits ? 0 : 11) << v << " width " << width;
                ASSERT_EQ(std::string(field, want.size()), want) << v << " width " << width;
            }
        }
    }
    const struct {
        double value;
        int32_t width, decimals, code;
        const char *field;
    } rows[] = {{12.5, 7, 2, 0, "0012.50#"},
                {12.5, 4, 2, 11, "#####"},
                {9.995, 6, 2, 0, "010.00#"},
                {-1.5, 6, 1, 0, "00-1.5#"},
                {1e18, 19, 0, 0, "1000000000000000000#"},
                {1e19, 25, 0, 2, "####"},
                {1.5, 25, 30, 2, "####"},
                {std::nan(""), 5, 1, 2, "######"}};
    for (const auto &r : rows) {
        char field[32];
        std::memset(field, '#', sizeof field);
        EXPECT_EQ(DoubleToNUMD(r.value, field, r.width, r.decimals), r.code) << r.value;
        EXPECT_EQ(std::string(field, std::strlen(r.field)), r.field) << r.value;
    }
}

TEST(NumRead, IntegerForms) {
    const struct {
        int32_t (*read)(const char *, int32_t, int32_t *);
        const char *field;
        int32_t len, code, value;
    } rows[] = {{NUMToLong, "00042", 5, 0, 42},
                {NUMToLong, " 42 ", 4, 0, 42},
                {NUMToLong, "0004299", 5, 0, 42},
                {NUMToLong, "00-42", 5, 3, 0},
                {NUMToLong, "-42", 3, 12, 0},
                {NUMToLong, "123456789012", 12, 11, 0},
                {NUMToLong, "99999999999", 11, 4, 0},
                {NUMToLong, "02147483647", 11, 0, INT32_MAX},
                {NUMToLong, "", 0, 1, 0},
                {NUMToLong, "+", 1, 2, 0},
                {NUMToLong, "42", -1, 11, 0},
                {NUMToLong, "4\0002", 3, 0, 4},
                {NUMToLong, nullptr, 3, 11, 0},
                {NUMToInt, "40000", 5, 4, 0},
                {NUMToInt, "32767", 5, 0, 32767},
                {NUMToInt, "-1", 2, 12, 0},
                {NUMP100ToLong, "15 % ", 5, 0, 15},
                {NUMP100ToLong, " 7  %   ", 8, 0, 7},
                {NUMP100ToLong, "%", 1, 1, 0},
                {NUMP100ToLong, "15%%", 4, 3, 0},
                {NUMP100ToLong, "00000000015    %", 16, 0, 15},
                {NUMP100ToLong, "-15%", 4, 12, 0},
                {NUMP100ToLong, "15", -2, 11, 0}};
    for (const auto &r : rows) {
        int32_t value = 777;
        EXPECT_EQ(r.read(r.field, r.len, &value), r.code) << '"' << (r.field ? r.field : "") << '"';
        EXPECT_EQ(value, r.value) << '"' << (r.field ? r.field : "") << '"';
    }
}

TEST(NumRead, IntervalsAndDecimals) {
    const struct {
        const char *field;
        int32_t len, code, low, high;
    } intervals[] = {{"[5, 10]", 7, 0, 5, 10},
                     {"5-10", 4, 0, 5, 10},
                     {"7", 1, 11, 7, 0},
                     {" [ 5 ; 10 ] ", 12, 0, 5, 10},
                     {"5,", 2, 1, 5, 0},
                     {",5", 2, 1, 0, 5},
                     {"[x,3]", 5, 3, 0, 3},
                     {"", 0, 12, 0, 0},
                     {"1,2,3", 5, 3, 1, 0},
                     {"[]", 2, 12, 0, 0},
                     {"123456789012,1", 14, 11, 0, 1},
                     {"5\0006", 3, 11, 5, 0},
                     {"5,6", -1, 22, 0, 0}}; // "\0" is no separator
    for (const auto &r : intervals) {
        int32_t low = 777, high = 777;
        EXPECT_EQ(NUMPInterToLong(r.field, r.len, &low, &high), r.code) << '"' << r.field << '"';
        EXPECT_TRUE(low == r.low && high == r.high) << '"' << r.field << '"' << low << "," << high;
    }
    const struct {
        const char *field;
        int32_t len, code;
        double value;
    } decimals[] = {{"12,5%", 5, 0, 0.125},
                    {"12,5 %", 6, 0, 0.125},
                    {"0012.50", 7, 0, 12.5},
                    {"-1.5", 4, 12, 0.0},
                    {"%", 1, 1, 0.0},
                    {"12,5% ", 6, 4, 0.0},
                    {"1234567890123456789", 19, 0, 1234567890123456789.0},
                    {"12345678901234567890", 20, 11, 0.0},
                    {"1e+", 3, 6, 0.0},
                    {"1.5", -1, 11, 0.0}};
    for (const auto &r : decimals) {
        double value = 777.0;
        EXPECT_EQ(NUMDToDouble(r.field, r.len, &value), r.code) << '"' << r.field << '"';
        EXPECT_DOUBLE_EQ(value, r.value) << '"' << r.field << '"';
    }
}

TEST(NumList, CountAndIndex) {
    const std::string longItem = "10," + std::string(70, '1');
    const struct {
        const char *list;
        int32_t count, values[4]; // Get_NUM_liste at indexes 0..3
    } rows[] = {{"10,20+30", 3, {10, 20, 30, 30}},
                {"10,x", 0, {10, 0, 0, 0}},
                {"", 0, {0, 0, 0, 0}},
                {" 1 - 2 ", 2, {1, 2, 2, 2}},
                {"1,2,", 0, {1, 2, 0, 0}},
                {"00000000005+6", 2, {5, 6, 6, 6}},
                {"000000000005+6", 0, {0, 0, 0, 0}},
                {"32768+2147483647", 2, {32768, INT32_MAX, INT32_MAX, INT32_MAX}},
                {"2147483648+1", 0, {0, 0, 0, 0}},
                {longItem.c_str(), 0, {10, 0, 0, 0}}};
    const char *item = Get_item_liste("A,BC", 1); // the host's last item stays
    for (const auto &r : rows) {
        EXPECT_EQ(Teste_NUM_liste(r.list), r.count) << '"' << r.list << '"';
        for (int32_t i = 0; i < 4; ++i)
            EXPECT_EQ(Get_NUM_liste(r.list, i), r.values[i]) << r.list << i;
    }
    EXPECT_STREQ(item, "BC");
    EXPECT_EQ(Get_NUM_liste("10,20+30", INT32_MAX), 30);
    EXPECT_EQ(Get_NUM_liste("10,20+30", -1) + Teste_NUM_liste(nullptr) + Get_NUM_liste(nullptr, 0),
              0);
}

} // namespace
