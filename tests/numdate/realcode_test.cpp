// Real number text coding: the reader against the C library and its codes,
// the fixed writer's rounding, carries and buffer sizes, the scientific
// writer, and the exact split.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr double inf = HUGE_VAL;

// Accepted forms read as the C library reads them once the comma is a point
// (the nearest double, infinity or zero beyond the range, never NaN), for
// both precisions.
TEST(RealCod, FormsAgainstStrtod) {
    const std::string zeros(400, '0'), nines(401, '9');
    const std::string forms[] = {"  12,5 ",
                                 "-,5",
                                 "1.5e2",
                                 "15E-1",
                                 "-1.5E+2",
                                 "5,",
                                 "2e",
                                 "1,5e1",
                                 "007",
                                 "1e308",
                                 "1e400",
                                 "-1e400",
                                 "1e-400",
                                 "0,3",
                                 "2.675",
                                 "123456.789e-3",
                                 "0e2147483647",
                                 "1.7976931348623157e308",
                                 "4.9406564584124654e-324",
                                 "98765432109876543210",
                                 zeros + "1.5",
                                 "0." + zeros + "1",
                                 "1" + zeros.substr(90),
                                 "1" + zeros.substr(91),
                                 "-1" + zeros.substr(89),
                                 nines + "e-1000",
                                 "1" + zeros + "e-1000",
                                 "0." + zeros + "1e400"};
    for (const std::string &form : forms) {
        std::string text = form, c_text = form;
        std::replace(c_text.begin(), c_text.end(), ',', '.');
        const double want = std::strtod(c_text.c_str(), nullptr);
        double d = 777.0;
        float f = 777.0f;
        ASSERT_EQ(realcod_d(text.data(), &d), 0) << '"' << form << '"';
        EXPECT_EQ(d, want) << '"' << form << '"';
        text = form;
        ASSERT_EQ(realcod_f(text.data(), &f), 0);
        EXPECT_EQ(f, std::fabs(want) > FLT_MAX ? float(std::copysign(inf, want)) : float(want));
    }
    char point[] = " . ";
    double d = 1;
    EXPECT_EQ(realcod_d(point, &d), 0);
    EXPECT_TRUE(d == 0.0 && std::string(point) == ".");
}

TEST(RealCod, Codes) {
    const struct {
        int32_t code;
        const char *text;
    } rows[] = {{1, ""},
                {1, "   "},
                {2, "-"},
                {2, " + "},
                {3, "1,234.5"},
                {3, "1 5"},
                {3, "1E2e3"},
                {3, "x"},
                {4, "1.2.3"},
                {4, "1,2,3"},
                {6, "2e+"},
                {6, "2e -"},
                {7, "2ex"},
                {7, "1e2.5"},
                {8, "2e9999999999"},
                {8, "2e-2147483648"}};
    for (const auto &r : rows) {
        std::string text = r.text;
        double value = 777.0;
        EXPECT_EQ(realcod_d(text.data(), &value), r.code) << '"' << r.text << '"';
        EXPECT_EQ(value, 777.0) << '"' << r.text << '"';
    }
    double d = 0;
    EXPECT_EQ(realcod_d(nullptr, &d), 1);
}

// Rounding half away from zero on the shortest decimal text, with carries.
TEST(RealDco, Rounding) {
    const struct {
        double value;
        int32_t decimals;
        const char *text;
    } rows[] = {{2.5, 0, "3"},
                {-2.5, 0, "-3"},
                {-0.49, 0, "-0"},
                {3.14159, 4, "3.1416"},
                {-0.001, 2, "-0.00"},
                {9.995, 2, "10.00"},
                {-9.995, 2, "-10.00"},
                {99.96, 1, "100.0"},
                {999999.9999, 3, "1000000.000"},
                {1.25, 1, "1.3"},
                {-3000000000.0, 0, "-3000000000"},
                {1e20, 0, "100000000000000000000"},
                {4294967296.5, 1, "4294967296.5"},
                {123.5, -7, "124"},
                {-0.375, 2, "-0.38"},
                {1.0625, 3, "1.063"},
                {2.675, 2, "2.68"},
                {1.005, 2, "1.01"},
                {0.00049, 3, "0.000"}};
    for (const auto &r : rows) {
        char buf[256];
        EXPECT_EQ(realdco_d(r.value, buf, sizeof buf, r.decimals), 0) << r.value;
        EXPECT_STREQ(buf, r.text) << r.value << " decimals " << r.decimals;
    }
    // Every amount of cents up to 10000.00 is written as its own text.
    char buf[32], want[32];
    for (int32_t k = 0; k <= 1000000; ++k) {
        std::snprintf(want, sizeof want, "-%d.%02d", k / 100, k % 100);
        ASSERT_EQ(realdco_d(k / 100.0, buf, sizeof buf, 2), 0);
        ASSERT_STREQ(buf, want + 1);
        ASSERT_EQ(realdco_d(-k / 100.0, buf, sizeof buf, 2), 0);
        ASSERT_STREQ(buf, want + (k == 0));
    }
}

// Both writers at the edges of their buffers, and what they refuse.
TEST(RealDco, SizesAndScientific) {
    const struct {
        bool scientific;
        double value;
        int32_t size, decimals, result;
        const char *text; // checked unless the result is 2
    } rows[] = {{false, 1.0, 16, 2, 1, "1.00"},
                {false, 1.0, 5, 2, 1, "1.00"},
                {false, 1.0, 4, 2, 2, ""},
                {false, 1.0, 21, 2, 0, "1.00"},
                {false, -1.0, 6, 2, 1, "-1.00"},
                {false, -1.0, 5, 2, 2, ""},
                {false, 7.0, 1, 0, 2, ""},
                {false, 7.0, 0, 0, 2, ""},
                {false, 1.5, 8, INT32_MAX, 2, ""},
                {true, 12345.678, 256, 3, 0, "1.234e4"},
                {true, 0.00123, 256, 2, 0, "1.23e-3"},
                {true, -5.0, 256, 2, 0, "-5.00"},
                {true, 0.0, 256, 2, 0, "0"},
                {true, -0.5, 256, 1, 0, "-5.0e-1"},
                {true, 99999.0, 256, 2, 0, "9.99e4"},
                {true, 1.5e-300, 256, 1, 0, "1.5e-300"},
                {true, 42.0, 256, -3, 0, "4.e1"},
                {true, 12345.678, 7, 3, 2, ""},
                {true, 12345.678, 8, 3, 0, "1.234e4"},
                {true, 5.0, 1, 0, 2, ""}};
    for (const auto &r : rows) {
        char buf[300];
        std::fill(std::begin(buf), std::end(buf), '#');
        EXPECT_EQ((r.scientific ? realdco_sd : realdco_d)(r.value, buf, r.size, r.decimals),
                  r.result)
            << r.value << " size " << r.size;
        if (r.result < 2) EXPECT_STREQ(buf, r.text) << r.value;
        EXPECT_EQ(buf[r.size], '#') << "written past the buffer, size " << r.size;
    }
    char buf[400];
    for (double v : {std::nan(""), inf, -inf}) {
        EXPECT_EQ(realdco_d(v, std::strcpy(buf, "old"), sizeof buf, 2), 2);
        EXPECT_EQ(realdco_sd(v, buf, sizeof buf, 2) + std::strlen(buf), 2u);
    }
    ASSERT_EQ(realdco_d(1e300, buf, sizeof buf, 30), 0); // all digits, no exponent
    EXPECT_EQ(std::strspn(buf, "0123456789."), 301u + 1 + 30);
}

TEST(RealSplit, ExactWithSign) {
    const struct {
        double value, ip, fp;
        int32_t result;
    } rows[] = {{2.75, 2.0, 0.75, 2},
                {-2.75, -2.0, -0.75, -2},
                {-0.25, -0.0, -0.25, 0},
                {4503599627370497.0, 4503599627370497.0, 0.0, INT32_MAX},
                {2147483647.5, 2147483647.0, 0.5, INT32_MAX},
                {-2147483648.5, -2147483648.0, -0.5, INT32_MIN},
                {-1e300, -1e300, -0.0, INT32_MIN},
                {inf, inf, 0.0, INT32_MAX}};
    for (const auto &r : rows) {
        double ip = 1, fp = 1;
        EXPECT_EQ(utrealds(&r.value, &ip, &fp), r.result) << r.value;
        EXPECT_TRUE(ip == r.ip && fp == r.fp && std::signbit(fp) == std::signbit(r.fp)) << r.value;
        const float fv = float(r.value);
        float fi = 1, ff = 1;
        utrealfs(&fv, &fi, &ff);
        EXPECT_TRUE(fi == std::trunc(fv) && (std::isinf(fv) || fi + ff == fv)) << r.value;
    }
    const double nan = std::nan("");
    double ip = 0, fp = 0;
    EXPECT_EQ(utrealds(&nan, &ip, &fp), 0);
    EXPECT_TRUE(std::isnan(ip));
}

} // namespace
