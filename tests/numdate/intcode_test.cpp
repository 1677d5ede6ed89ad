// Integer text coding: the reader's codes and trimming for both ranges, the
// writers against the C library at every buffer size.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(IntCod, FormsCodesAndLimits) {
    const std::string zeros(400, '0');
    const struct {
        std::string text;
        int32_t code, value, shortCode; // value when code is 0; intcod_i's code
    } rows[] = {{"  -42  ", 0, -42, 0},
                {"+7", 0, 7, 0},
                {"", 1, 0, 1},
                {"   ", 1, 0, 1},
                {"-", 2, 0, 2},
                {" + ", 2, 0, 2},
                {"1 000", 3, 0, 3},
                {"- 5", 3, 0, 3},
                {"1.5", 3, 0, 3},
                {"\xb9", 3, 0, 3},
                {"\t5", 3, 0, 3},
                {"--5", 3, 0, 3},
                {"9999999999999a", 3, 0, 3},
                {"2147483647", 0, INT32_MAX, 4},
                {"-2147483647", 0, -INT32_MAX, 4},
                {"2147483648", 4, 0, 4},
                {"-2147483648", 4, 0, 4},
                {"99999999999999999999", 4, 0, 4},
                {"-0", 0, 0, 0},
                {"32767", 0, 32767, 0},
                {"-32768", 0, -32768, 4},
                {zeros + "2147483647", 0, INT32_MAX, 4},
                {zeros + "12", 0, 12, 0},
                {zeros + "2147483648", 4, 0, 4}};
    for (const auto &r : rows) {
        for (bool shortPair : {false, true}) {
            std::string text = r.text, trimmed = r.text;
            trimmed.erase(0, trimmed.find_first_not_of(' '));
            trimmed.erase(trimmed.find_last_not_of(' ') + 1);
            int32_t value = 777;
            const int32_t code = (shortPair ? intcod_i : intcod_l)(text.data(), &value);
            EXPECT_EQ(code, shortPair ? r.shortCode : r.code) << '"' << r.text << '"';
            EXPECT_EQ(value, code == 0 ? r.value : 777) << '"' << r.text << '"';
            EXPECT_STREQ(text.c_str(), trimmed.c_str()); // trimmed in place whatever the code
        }
    }
    int32_t value = 0;
    EXPECT_EQ(intcod_l(nullptr, &value), 1);
}

// Every size from -1 to 13 against the C library's text: 2 when the text and
// its terminator don't fit (keeping the low-order digits), 0 when the size
// holds any value (12 long, 7 short), 1 otherwise; never a byte past the size.
TEST(IntDco, EverySize) {
    for (int32_t v :
         {0, 9, -5, -305, 12345, 32767, -32768, 123456, INT32_MAX, -INT32_MAX, INT32_MIN}) {
        const std::string text = std::to_string(v);
        for (bool shortPair : {false, true}) {
            for (int32_t size = -1; size <= 13; ++size) {
                char buf[16];
                std::fill(std::begin(buf), std::end(buf), '#');
                const int32_t got = (shortPair ? intdco_i : intdco_l)(v, buf, size);
                const bool fits = size > int32_t(text.size());
                ASSERT_EQ(got, !fits                          ? 2
                               : size >= (shortPair ? 7 : 12) ? 0
                                                              : 1)
                    << v << " " << size;
                const std::string digits = text.substr(v < 0);
                const size_t kept = std::min(digits.size(), size_t(std::max(size - 1, 0)));
                if (size > 0) EXPECT_EQ(buf, fits ? text : digits.substr(digits.size() - kept));
                if (size >= 0) ASSERT_EQ(buf[size], '#') << "written past the buffer: " << v;
            }
        }
    }
    EXPECT_EQ(intdco_l(5, nullptr, 10), 2);
}

} // namespace
