// Real number text coding: the reader's forms and codes, the rounding and
// carries of the fixed writer, the scientific writer, and the exact split.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

// Accepted forms read as the C library reads them once the comma is a point:
// the nearest double, infinities past the range.
TEST(RealCod, FormsAgainstStrtod) {
    const char *forms[] = {
        "  12,5 ", "12.5", "-,5",   "1.5e2", "15E-1",         "-1.5E+2",     "5,",
        ".",       "2e",   "1,5e1", "007",   "1e308",         "1e400",       "-1e400",
        "1e-400",  "0,3",  "0.1",   "2.675", "123456.789e-3", "0.000001234", "0e2147483647"};
    const char *extremes[] = {"1.7976931348623157e308", "4.9406564584124654e-324",
                              "98765432109876543210"};
    auto check = [](const char *form) {
        std::string text = form, c_text = form;
        std::replace(c_text.begin(), c_text.end(), ',', '.');
        double value = 777.0;
        ASSERT_EQ(realcod_d(text.data(), &value), 0) << '"' << form << '"';
        EXPECT_EQ(value, std::strtod(c_text.c_str(), nullptr)) << '"' << form << '"';
    };
    for (const char *form : forms) check(form);
    // Digit runs beyond the double range: infinity or zero, never NaN.
    const std::string zeros(400, '0'), nines(401, '9');
    for (const std::string &form : {"1" + zeros.substr(90), "1" + zeros.substr(91),
                                    "-1" + zeros.substr(89), nines + "e-1000",
                                    "1" + zeros + "e-1000", "0." + zeros + "1e400"}) {
        check(form.c_str());
        std::string text = form;
        float f = 777;
        EXPECT_EQ(realcod_f(text.data(), &f), 0);
        EXPECT_EQ(f, float(std::strtod(form.c_str(), nullptr))) << form;
    }
    for (const char *form : extremes) check(form);
    EXPECT_EQ(std::strtod("1e400", nullptr), inf); // the reference itself saturates
}

TEST(RealCod, Codes) {
    const struct {
        int32_t code;
        std::vector<const char *> texts;
    } groups[] = {{1, {"", "   "}},
                  {2, {"-", " + "}},
                  {3, {"1,234.5", "1 5", "1E2e3", "x"}},
                  {4, {"1.2.3", "1.x", "1,2,3"}},
                  {6, {"2e+", "2e -"}},
                  {7, {"2ex", "1e2.5"}},
                  {8, {"2e9999999999", "2e-2147483648"}}};
    for (const auto &g : groups) {
        for (const char *t : g.texts) {
            std::string text = t;
            double value = 777.0;
            EXPECT_EQ(realcod_d(text.data(), &value), g.code) << '"' << t << '"';
            EXPECT_EQ(value, 777.0) << '"' << t << '"';
        }
    }
}

TEST(RealCod, LongDigitRunsAndSingle) {
    std::string text = std::string(500, '0') + "1.5";
    double d = 0;
    EXPECT_EQ(realcod_d(text.data(), &d), 0);
    EXPECT_EQ(d, 1.5);
    text = "0." + std::string(500, '0') + "1";
    EXPECT_EQ(realcod_d(text.data(), &d), 0);
    EXPECT_EQ(d, 0.0);
    float f = 0;
    char big[] = "1e39", small[] = " -2,25 ";
    EXPECT_EQ(realcod_f(big, &f), 0);
    EXPECT_TRUE(std::isinf(f));
    EXPECT_EQ(realcod_f(small, &f), 0);
    EXPECT_EQ(f, -2.25f);
    EXPECT_STREQ(small, "-2,25");
    EXPECT_EQ(realcod_d(nullptr, &d), 1);
}

struct FixedRow {
    double value;
    int32_t size, decimals, result;
    const char *text; // checked unless the result is 2
};

// Rounding to nearest with carries; binary-exact halves round away from zero,
// other values by their shortest decimal text.
TEST(RealDco, RoundingAndCarries) {
    const struct {
        double value;
        int32_t decimals;
        const char *text;
    } rows[] = {{2.5, 0, "3"},
                {-2.5, 0, "-3"},
                {-0.49, 0, "-0"},
                {3.14159, 2, "3.14"},
                {3.14159, 4, "3.1416"},
                {-0.001, 2, "-0.00"},
                {9.995, 2, "10.00"},
                {-9.995, 2, "-10.00"},
                {99.96, 1, "100.0"},
                {999999.9999, 3, "1000000.000"},
                {0.05, 1, "0.1"},
                {1.25, 1, "1.3"},
                {0.001, 3, "0.001"},
                {-3000000000.0, 0, "-3000000000"},
                {1e20, 0, "100000000000000000000"},
                {4294967296.5, 1, "4294967296.5"},
                {123.456, -1, "123"},
                {123.5, -7, "124"},
                {0.125, 2, "0.13"},
                {0.375, 2, "0.38"},
                {-0.375, 2, "-0.38"},
                {1.0625, 3, "1.063"},
                {2.675, 2, "2.68"},
                {1.005, 2, "1.01"},
                {0.0005, 3, "0.001"},
                {-0.0005, 3, "-0.001"},
                {0.00049, 3, "0.000"},
                {999.9996, 3, "1000.000"}};
    for (const auto &r : rows) {
        char buf[256];
        EXPECT_EQ(realdco_d(r.value, buf, sizeof buf, r.decimals), 0) << r.value;
        EXPECT_STREQ(buf, r.text) << r.value << " decimals " << r.decimals;
    }
}

TEST(RealDco, BufferSizes) {
    const FixedRow rows[] = {
        {1.0, 16, 2, 1, "1.00"},  {1.0, 5, 2, 1, "1.00"},  {1.0, 4, 2, 2, nullptr},
        {1.0, 20, 2, 1, "1.00"},  {1.0, 21, 2, 0, "1.00"}, {-1.0, 6, 2, 1, "-1.00"},
        {-1.0, 5, 2, 2, nullptr}, {7.0, 2, 0, 1, "7"},     {7.0, 1, 0, 2, nullptr},
        {7.0, 0, 0, 2, nullptr},  {7.0, -1, 0, 2, nullptr}};
    for (const FixedRow &r : rows) {
        char buf[40];
        std::fill(std::begin(buf), std::end(buf), '#');
        EXPECT_EQ(realdco_d(r.value, buf, r.size, r.decimals), r.result) << r.size;
        if (r.text) {
            EXPECT_STREQ(buf, r.text) << r.size;
        }
        if (r.size >= 0) {
            EXPECT_EQ(buf[r.size], '#') << "written past the buffer, size " << r.size;
        }
    }
}

TEST(RealDco, NonFiniteAndExtremes) {
    char buf[400];
    for (double v : {std::nan(""), inf, -inf}) {
        std::strcpy(buf, "old");
        EXPECT_EQ(realdco_d(v, buf, sizeof buf, 2), 2);
        EXPECT_STREQ(buf, "");
        EXPECT_EQ(realdco_sd(v, buf, sizeof buf, 2), 2);
        EXPECT_STREQ(buf, "");
    }
    // Huge values and decimals beyond the double's precision stay digits.
    ASSERT_EQ(realdco_d(1e300, buf, sizeof buf, 30), 0);
    EXPECT_EQ(std::strlen(buf), 301u + 1 + 30);
    EXPECT_EQ(std::strspn(buf, "0123456789."), std::strlen(buf));
    EXPECT_EQ(std::strncmp(buf, "1000000000", 10), 0);
    ASSERT_EQ(realdco_d(1.5, buf, sizeof buf, 100), 0);
    EXPECT_EQ(std::strncmp(buf, "1.5", 3), 0);
    EXPECT_EQ(std::strspn(buf + 2, "0123456789"), 100u);
    EXPECT_EQ(realdco_d(1.5, buf, 8, 2147483647), 2);
}

TEST(RealDco, Scientific) {
    const FixedRow rows[] = {{12345.678, 256, 3, 0, "1.234e4"},
                             {0.00123, 256, 2, 0, "1.23e-3"},
                             {5.0, 256, 2, 0, "5.00"},
                             {-5.0, 256, 2, 0, "-5.00"},
                             {0.0, 256, 2, 0, "0"},
                             {123.0, 256, 1, 0, "1.2e2"},
                             {-0.5, 256, 1, 0, "-5.0e-1"},
                             {99999.0, 256, 2, 0, "9.99e4"},
                             {1e100, 256, 2, 0, "1.00e100"},
                             {1.5e-300, 256, 1, 0, "1.5e-300"},
                             {42.0, 256, -3, 0, "4.e1"},
                             {12345.678, 7, 3, 2, nullptr},
                             {12345.678, 8, 3, 0, "1.234e4"},
                             {12345.678, 6, 3, 2, nullptr},
                             {5.0, 1, 0, 2, nullptr}};
    for (const FixedRow &r : rows) {
        char buf[256];
        EXPECT_EQ(realdco_sd(r.value, buf, r.size, r.decimals), r.result) << r.value;
        if (r.text) {
            EXPECT_STREQ(buf, r.text) << r.value;
        }
    }
}

TEST(RealSplit, ExactWithSign) {
    struct Row {
        double value, ip, fp;
        int32_t result;
    } rows[] = {{2.75, 2.0, 0.75, 2},
                {-2.75, -2.0, -0.75, -2},
                {0.25, 0.0, 0.25, 0},
                {-0.25, -0.0, -0.25, 0},
                {4503599627370497.0, 4503599627370497.0, 0.0, INT32_MAX},
                {2147483647.5, 2147483647.0, 0.5, INT32_MAX},
                {-2147483648.5, -2147483648.0, -0.5, INT32_MIN},
                {-1e300, -1e300, -0.0, INT32_MIN},
                {inf, inf, 0.0, INT32_MAX}};
    for (const Row &r : rows) {
        double ip = 1, fp = 1;
        EXPECT_EQ(utrealds(&r.value, &ip, &fp), r.result) << r.value;
        EXPECT_EQ(ip, r.ip) << r.value;
        EXPECT_EQ(fp, r.fp) << r.value;
        const float fv = static_cast<float>(r.value);
        float fi = 1, ff = 1;
        utrealfs(&fv, &fi, &ff);
        EXPECT_EQ(fi + ff, fv) << r.value;
        EXPECT_EQ(fi, std::trunc(fv)) << r.value;
    }
    const double nan = std::nan("");
    double ip = 0, fp = 0;
    EXPECT_EQ(utrealds(&nan, &ip, &fp), 0);
    EXPECT_TRUE(std::isnan(ip));
}

// Every amount of cents up to 10000.00 is written as its own decimal text.
TEST(RealDco, CentsEveryAmount) {
    char buf[32], want[32];
    for (int32_t k = 0; k <= 1000000; ++k) {
        const double v = k / 100.0;
        std::snprintf(want, sizeof want, "%d.%02d", k / 100, k % 100);
        ASSERT_EQ(realdco_d(v, buf, sizeof buf, 2), 0);
        ASSERT_STREQ(buf, want) << v;
        ASSERT_EQ(realdco_d(-v, buf, sizeof buf, 2), 0);
        ASSERT_STREQ(buf + (k == 0 ? 0 : 1), want) << -v;
    }
}

} // namespace
