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
    const char *trimmed;
};

void check_reads(bool shortpair, std::initializer_list<ReadRow> rows) {
    for (const ReadRow &r : rows) {
        std::string text = r.text;
        int32_t value = 777;
        const int32_t code =
            shortpair ? intcod_i(text.data(), &value) : intcod_l(text.data(), &value);
        EXPECT_EQ(code, r.code) << '"' << r.text << '"';
        EXPECT_EQ(value, r.code == 0 ? r.value : 777) << '"' << r.text << '"';
        EXPECT_STREQ(text.c_str(), r.trimmed) << '"' << r.text << '"';
    }
}

TEST(IntCod, LongForms) {
    check_reads(false, {
                           {"  -42  ", 0, -42, "-42"},
                           {"+7", 0, 7, "+7"},
                           {"", 1, 0, ""},
                           {"   ", 1, 0, ""},
                           {"-", 2, 0, "-"},
                           {" + ", 2, 0, "+"},
                           {"1 000", 3, 0, "1 000"},
                           {"12a", 3, 0, "12a"},
                           {"- 5", 3, 0, "- 5"},
                           {"1.5", 3, 0, "1.5"},
                           {"\xb9", 3, 0, "\xb9"},
                           {"\t5", 3, 0, "\t5"},
                           {"--5", 3, 0, "--5"},
                           {"99999999999999999999a", 3, 0, "99999999999999999999a"},
                       });
}

TEST(IntCod, LongLimits) {
    check_reads(false, {
                           {"2147483647", 0, 2147483647, "2147483647"},
                           {"-2147483647", 0, -2147483647, "-2147483647"},
                           {"2147483646", 0, 2147483646, "2147483646"},
                           {"2147483648", 4, 0, "2147483648"},
                           {"-2147483648", 4, 0, "-2147483648"},
                           {"4294967296", 4, 0, "4294967296"},
                           {"99999999999999999999999", 4, 0, "99999999999999999999999"},
                           {"0", 0, 0, "0"},
                           {"-0", 0, 0, "-0"},
                       });
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
    check_reads(true, {
                          {"32767", 0, 32767, "32767"},
                          {"-32767", 0, -32767, "-32767"},
                          {"32766", 0, 32766, "32766"},
                          {"32768", 4, 0, "32768"},
                          {"-32768", 4, 0, "-32768"},
                          {"000012", 0, 12, "000012"},
                          {" 40000 ", 4, 0, "40000"},
                          {"", 1, 0, ""},
                          {"+", 2, 0, "+"},
                          {"3x", 3, 0, "3x"},
                      });
}

struct WriteRow {
    int32_t value;
    int32_t size;
    int32_t result;
    const char *text; // checked when the result is 0 or 1
};

void check_writes(bool shortpair, std::initializer_list<WriteRow> rows) {
    for (const WriteRow &r : rows) {
        char buf[64];
        std::fill(std::begin(buf), std::end(buf), '#');
        const int32_t got =
            shortpair ? intdco_i(r.value, buf, r.size) : intdco_l(r.value, buf, r.size);
        EXPECT_EQ(got, r.result) << r.value << " size " << r.size;
        if (r.result != 2) {
            EXPECT_STREQ(buf, r.text) << r.value << " size " << r.size;
        }
        if (r.size >= 0) {
            EXPECT_EQ(buf[r.size], '#') << "written past the buffer: " << r.value;
        }
    }
}

TEST(IntDco, Long) {
    check_writes(false, {
                            {-305, 32, 0, "-305"},
                            {0, 32, 0, "0"},
                            {2147483647, 32, 0, "2147483647"},
                            {-2147483647, 32, 0, "-2147483647"},
                            {INT32_MIN, 32, 0, "-2147483648"},
                            {INT32_MIN, 12, 0, "-2147483648"},
                            {INT32_MIN, 11, 2, nullptr},
                            {2147483647, 11, 1, "2147483647"},
                            {2147483647, 10, 2, nullptr},
                            {42, 4, 1, "42"},
                            {42, 3, 1, "42"},
                            {42, 2, 2, nullptr},
                            {12345, 4, 2, nullptr},
                            {-5, 3, 1, "-5"},
                            {-5, 2, 2, nullptr},
                            {0, 2, 1, "0"},
                            {0, 1, 2, nullptr},
                            {7, 0, 2, nullptr},
                            {7, -3, 2, nullptr},
                        });
}

TEST(IntDco, Short) {
    check_writes(true, {
                           {123456, 32, 0, "123456"},
                           {-32768, 7, 0, "-32768"},
                           {-32768, 6, 2, nullptr},
                           {32767, 6, 1, "32767"},
                           {32767, 7, 0, "32767"},
                           {INT32_MIN, 12, 0, "-2147483648"},
                           {9, 2, 1, "9"},
                       });
}

TEST(IntDco, OverflowKeepsLowDigits) {
    char buf[4] = "";
    EXPECT_EQ(intdco_l(12345, buf, 4), 2);
    EXPECT_STREQ(buf, "345");
    EXPECT_EQ(intdco_l(5, nullptr, 10), 2);
}

} // namespace
