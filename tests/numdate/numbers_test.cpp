// Number text coding and fixed-width fields: one table of readers and one
// of writers, each row a call and what it answers; real reading against
// strtod on long and tied digit runs. Arbitrary texts and values go through
// the numbers fuzz target.
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace std::string_literals;

constexpr int32_t kAll = INT32_MIN; // the field is the whole text
constexpr double kInf = HUGE_VAL;

// " value" with as many digits as it takes to read it back; "-0" keeps its sign.
std::string Num(double n) {
    char s[40];
    std::snprintf(s, sizeof s, " %.17g", n);
    return s;
}

enum Reader { IntL, IntI, Real, Nm, NmI, P100, NmD, Inter, List, Split, SplitF };

// What a reader answers for `text` (its first `len` bytes for the field
// readers): the code and the values stored (777 when none), then "|" and the
// text when the reader trimmed it in place. Lists give their count and the
// items 0..3; the splits, of the text's value, the result and both parts.
std::string Read(Reader r, std::string text, int32_t len) {
    const std::string before = text;
    const char *f = text.data();
    len = len == kAll ? int32_t(text.size()) : len;
    int32_t v = 777, w = 777, code = 0;
    double d = 777, ip = 777, fp = 777, x = std::strtod(f, nullptr);
    float fx = float(x), fi = 777, ff = 777;
    std::string out;
    switch (r) {
    case IntL:
        code = intcod_l(text.data(), &v);
        break;
    case IntI:
        code = intcod_i(text.data(), &v);
        break;
    case Real:
        code = realcod_d(text.data(), &d);
        break;
    case Nm:
        code = NUMToLong(f, len, &v);
        break;
    case NmI:
        code = NUMToInt(f, len, &v);
        break;
    case P100:
        code = NUMP100ToLong(f, len, &v);
        break;
    case NmD:
        code = NUMDToDouble(f, len, &d);
        break;
    case Inter:
        code = NUMPInterToLong(f, len, &v, &w);
        break;
    case List:
        for (int32_t i = 0; i < 4; ++i) out += Num(Get_NUM_liste(f, i));
        return std::to_string(Teste_NUM_liste(f)) + out;
    case Split:
        code = utrealds(&x, &ip, &fp);
        return std::to_string(code) + Num(ip) + Num(fp);
    case SplitF:
        return utrealfs(&fx, &fi, &ff), Num(fi) + Num(ff);
    }
    out = std::to_string(code) + Num(r == Real || r == NmD ? d : v) + (r == Inter ? Num(w) : "");
    return out + (text == before ? "" : "|" + std::string(text.c_str()));
}

TEST(NumberReaders, Table) {
    const std::string z400(400, '0'), item70 = "10," + std::string(70, '1');
    // clang-format off
    const struct { Reader r; std::string text; int32_t len; std::string want; } rows[] = {
        {IntL, "  -42  ", 0, "0 -42|-42"}, {IntL, "+7", 0, "0 7"}, {IntL, "", 0, "1 777"},
        {IntL, "   ", 0, "1 777|"}, {IntL, "-", 0, "2 777"}, {IntL, " + ", 0, "2 777|+"},
        {IntL, "1 000", 0, "3 777"}, {IntL, "\xb9", 0, "3 777"}, {IntL, "--5", 0, "3 777"},
        {IntL, "9999999999999a", 0, "3 777"}, {IntL, "-2147483647", 0, "0 -2147483647"},
        {IntL, "2147483648", 0, "4 777"}, {IntL, "-2147483648", 0, "4 777"},
        {IntL, z400 + "2147483647", 0, "0 2147483647"}, {IntL, z400 + "2147483648", 0, "4 777"},
        {IntI, "32767", 0, "0 32767"}, {IntI, "-32768", 0, "4 777"}, {IntI, " 2147483647", 0, "4 777|2147483647"},
        {Real, "   ", 0, "1 777|"}, {Real, " + ", 0, "2 777|+"}, {Real, "1,234.5", 0, "3 777"},
        {Real, "1E2e3", 0, "3 777"}, {Real, "x", 0, "3 777"}, {Real, "1.2.3", 0, "4 777"},
        {Real, "1,2,3", 0, "4 777"}, {Real, "2e+", 0, "6 777"}, {Real, "2ex", 0, "7 777"},
        {Real, "1e2.5", 0, "7 777"}, {Real, "2e-2147483648", 0, "8 777"}, {Real, "2e", 0, "0 2"},
        {Real, " . ", 0, "0 0|."}, {Nm, "00042", kAll, "0 42"}, {Nm, " 42 ", kAll, "0 42"},
        {Nm, "0004299", 5, "0 42"}, {Nm, "00-42", kAll, "3 0"}, {Nm, "-42", kAll, "12 0"},
        {Nm, "123456789012", kAll, "11 0"}, {Nm, "99999999999", kAll, "4 0"},
        {Nm, "02147483647", kAll, "0 2147483647"}, {Nm, "", kAll, "1 0"}, {Nm, "+", kAll, "2 0"},
        {Nm, "42", -1, "11 0"}, {Nm, "4\0002"s, kAll, "0 4"}, {NmI, "40000", kAll, "4 0"},
        {NmI, "32767", kAll, "0 32767"}, {NmI, "-1", kAll, "12 0"}, {P100, "15 % ", kAll, "0 15"},
        {P100, " 7  %   ", kAll, "0 7"}, {P100, "%", kAll, "1 0"}, {P100, "15%%", kAll, "3 0"},
        {P100, "00000000015    %", kAll, "0 15"}, {P100, "-15%", kAll, "12 0"}, {P100, "15", -2, "11 0"},
        {Inter, "[5, 10]", kAll, "0 5 10"}, {Inter, "5-10", kAll, "0 5 10"}, {Inter, "7", kAll, "11 7 0"},
        {Inter, " [ 5 ; 10 ] ", kAll, "0 5 10"}, {Inter, "5,", kAll, "1 5 0"}, {Inter, ",5", kAll, "1 0 5"},
        {Inter, "[x,3]", kAll, "3 0 3"}, {Inter, "", kAll, "12 0 0"}, {Inter, "1,2,3", kAll, "3 1 0"},
        {Inter, "[]", kAll, "12 0 0"}, {Inter, "123456789012,1", kAll, "11 0 1"},
        {Inter, "5\0006"s, kAll, "11 5 0"}, {Inter, "5,6", -1, "22 0 0"}, {NmD, "12,5%", kAll, "0 0.125"},
        {NmD, "12,5 %", kAll, "0 0.125"}, {NmD, "0012.50", kAll, "0 12.5"}, {NmD, "-1.5", kAll, "12 0"},
        {NmD, "%", kAll, "1 0"}, {NmD, "12,5% ", kAll, "4 0"}, {NmD, "1e+", kAll, "6 0"},
        {NmD, "1234567890123456789", kAll, "0 1.2345678901234568e+18"},
        {NmD, "12345678901234567890", kAll, "11 0"}, {NmD, "1.5", -1, "11 0"},
        {List, "10,20+30", 0, "3 10 20 30 30"}, {List, "10,x", 0, "0 10 0 0 0"}, {List, "", 0, "0 0 0 0 0"},
        {List, " 1 - 2 ", 0, "2 1 2 2 2"}, {List, "1,2,", 0, "0 1 2 0 0"}, {List, "00000000005+6", 0, "2 5 6 6 6"},
        {List, "000000000005+6", 0, "0 0 0 0 0"}, {List, "2147483648+1", 0, "0 0 0 0 0"},
        {List, "32768+2147483647", 0, "2 32768 2147483647 2147483647 2147483647"},
        {List, item70, 0, "0 10 0 0 0"}, {Split, "2.75", 0, "2 2 0.75"}, {Split, "-2.75", 0, "-2 -2 -0.75"},
        {Split, "-0.25", 0, "0 -0 -0.25"}, {Split, "4503599627370497", 0, "2147483647 4503599627370497 0"},
        {Split, "2147483647.5", 0, "2147483647 2147483647 0.5"},
        {Split, "-2147483648.5", 0, "-2147483648 -2147483648 -0.5"},
        {Split, "-1e300", 0, "-2147483648 -1.0000000000000001e+300 -0"}, {Split, "inf", 0, "2147483647 inf 0"},
        {Split, "nan", 0, "0 nan nan"}, {SplitF, "-2.75", 0, " -2 -0.75"}, {SplitF, "1e30", 0, " 1.0000000150474662e+30 0"}};
    // clang-format on
    for (const auto &r : rows) EXPECT_EQ(Read(r.r, r.text, r.len), r.want) << '"' << r.text << '"';
    const char *item = Get_item_liste("A,BC", 1); // lists leave the host's last item alone
    int32_t v = 0;
    double d = 0;
    EXPECT_EQ(Read(List, "1,2", 0) + item, "2 1 2 2 2BC");
    EXPECT_EQ(intcod_l(nullptr, &v) + realcod_d(nullptr, &d) + NUMToLong(nullptr, 3, &v), 13);
    EXPECT_EQ(Get_NUM_liste("10,20+30", INT32_MAX) + Get_NUM_liste("1", -1) +
                  Get_NUM_liste(nullptr, 0),
              30);
}

enum Writer { IntW, LongW, Fixed, Sci, NumL, NumI, NumD };

// What a writer answers into a "#"-filled buffer of `size` bytes: the code,
// "|" and the bytes written ("?" after a text left unterminated); never a
// byte past the size.
std::string Write(Writer w, double value, int32_t size, int32_t decimals) {
    char buf[80];
    std::fill(std::begin(buf), std::end(buf), '#');
    const auto n = int32_t(value);
    int32_t code = 0;
    switch (w) {
    case IntW:
        code = intdco_i(n, buf, size);
        break;
    case LongW:
        code = intdco_l(n, buf, size);
        break;
    case Fixed:
        code = realdco_d(value, buf, size, decimals);
        break;
    case Sci:
        code = realdco_sd(value, buf, size, decimals);
        break;
    case NumL:
        code = LongToNUM(n, buf, size);
        break;
    case NumI:
        code = IntToNUM(n, buf, size);
        break;
    case NumD:
        code = DoubleToNUMD(value, buf, size, decimals);
        break;
    }
    std::string text(buf, size_t(std::find(buf, std::end(buf), '#') - buf));
    if (w <= Sci && size > 0) text = text.size() && !text.back() ? text.c_str() : text + "?";
    return std::to_string(code) + "|" + text + (buf[std::max(size, 0)] == '#' ? "" : " past");
}

// Integers: 2 when the text and its terminator don't fit (keeping the
// low-order digits), 1 when the size cannot hold every value, 0. Reals:
// rounded half away from zero on the shortest decimal text, with carries.
TEST(NumberWriters, Table) {
    // clang-format off
    const struct { Writer w; double value; int32_t size, decimals; std::string want; } rows[] = {
        {IntW, 32767, 6, 0, "1|32767"}, {IntW, 32767, 7, 0, "0|32767"}, {IntW, INT32_MIN, 12, 0, "0|-2147483648"},
        {LongW, 123456, 11, 0, "1|123456"}, {LongW, 123456, 12, 0, "0|123456"}, {LongW, 12345, 5, 0, "2|2345"},
        {LongW, INT32_MIN, 11, 0, "2|2147483648"}, {LongW, -305, 3, 0, "2|05"}, {LongW, 0, 1, 0, "2|"},
        {LongW, 0, 2, 0, "1|0"}, {LongW, 5, 0, 0, "2|"}, {LongW, 5, -1, 0, "2|"},
        {NumL, 42, 2, 0, "0|42"}, {NumL, -42, 5, 0, "0|00-42"}, {NumL, 42, 1, 0, "11|"}, {NumL, 5, 0, 0, "11|"},
        {NumL, INT32_MIN, 12, 0, "0|0-2147483648"}, {NumI, INT32_MIN, 11, 0, "0|-2147483648"},
        {NumI, 7, -1, 0, "11|"}, {Fixed, 2.5, 64, 0, "0|3"}, {Fixed, -2.5, 64, 0, "0|-3"},
        {Fixed, -0.49, 64, 0, "0|-0"}, {Fixed, 3.14159, 64, 4, "0|3.1416"}, {Fixed, -0.001, 64, 2, "0|-0.00"},
        {Fixed, 9.995, 64, 2, "0|10.00"}, {Fixed, -9.995, 64, 2, "0|-10.00"}, {Fixed, 99.96, 64, 1, "0|100.0"},
        {Fixed, 999999.9999, 64, 3, "0|1000000.000"}, {Fixed, 1e20, 64, 0, "0|100000000000000000000"},
        {Fixed, 4294967296.5, 64, 1, "0|4294967296.5"}, {Fixed, 123.5, 64, -7, "0|124"},
        {Fixed, -0.375, 64, 2, "0|-0.38"}, {Fixed, 1.0625, 64, 3, "0|1.063"}, {Fixed, 2.675, 64, 2, "0|2.68"},
        {Fixed, 1.005, 64, 2, "0|1.01"}, {Fixed, 0.00049, 64, 3, "0|0.000"}, {Fixed, 1.0, 20, 2, "1|1.00"},
        {Fixed, 1.0, 21, 2, "0|1.00"}, {Fixed, 1.0, 5, 2, "1|1.00"}, {Fixed, 1.0, 4, 2, "2|1.0"},
        {Fixed, -1.0, 6, 2, "1|-1.00"}, {Fixed, 7.0, 1, 0, "2|"}, {Fixed, 7.0, 0, 0, "2|"},
        {Fixed, 1.5, 8, INT32_MAX, "2|"}, {Fixed, kInf, 64, 2, "2|"}, {Fixed, std::nan(""), 64, 2, "2|"},
        {Sci, 12345.678, 64, 3, "0|1.234e4"}, {Sci, 0.00123, 64, 2, "0|1.23e-3"}, {Sci, -5.0, 64, 2, "0|-5.00"},
        {Sci, 0.0, 64, 2, "0|0"}, {Sci, -0.5, 64, 1, "0|-5.0e-1"}, {Sci, 99999.0, 64, 2, "0|9.99e4"},
        {Sci, 1.5e-300, 64, 1, "0|1.5e-300"}, {Sci, 42.0, 64, -3, "0|4.e1"}, {Sci, 12345.678, 7, 3, "2|1.234e"},
        {Sci, 12345.678, 8, 3, "0|1.234e4"}, {Sci, 5.0, 1, 0, "2|"}, {Sci, -kInf, 64, 2, "2|"},
        {NumD, 12.5, 7, 2, "0|0012.50"}, {NumD, 12.5, 4, 2, "11|"}, {NumD, 9.995, 6, 2, "0|010.00"},
        {NumD, -1.5, 6, 1, "0|00-1.5"}, {NumD, 1e18, 19, 0, "0|1000000000000000000"}, {NumD, 1e19, 25, 0, "2|"},
        {NumD, 1.5, 25, 30, "2|"}, {NumD, std::nan(""), 5, 1, "2|"}};
    // clang-format on
    for (const auto &r : rows)
        EXPECT_EQ(Write(r.w, r.value, r.size, r.decimals), r.want) << r.value << " " << r.size;
    char buf[400] = "old";
    EXPECT_EQ(realdco_d(kInf, buf, 8, 2) + std::strlen(buf) + intdco_l(5, nullptr, 10),
              4u);                                       // buf emptied
    ASSERT_EQ(realdco_d(1e300, buf, sizeof buf, 30), 0); // all digits, no exponent
    EXPECT_EQ(std::strspn(buf, "0123456789."), 301u + 1 + 30);
}

// Accepted forms read as the C library reads them once the comma is a point:
// the nearest double, infinity or zero beyond the range, never NaN, in both
// precisions; long digit runs, and a tie decided by a digit far away.
TEST(NumberReaders, FormsAgainstStrtod) {
    const std::string z400(400, '0');
    char tie[1200]; // halfway between the subnormals 2 and 3 x 2^-1074: 752 digits
    std::snprintf(tie, sizeof tie, "%.1100Lf", 5.0L * std::ldexp(1.0L, -1075));
    // clang-format off
    const std::string forms[] = {"  12,5 ", "-,5", "1.5e2", "15E-1", "-1.5E+2", "5,", "1,5e1", "007",
        "1e308", "1e400", "-1e400", "1e-400", "0,3", "2.675", "123456.789e-3", "0e2147483647",
        "1.7976931348623157e308", "4.9406564584124654e-324", "98765432109876543210", z400 + "1.5",
        "0." + z400 + "1", "1" + z400.substr(90), "1" + z400.substr(91), "-1" + z400.substr(89),
        std::string(401, '9') + "e-1000", "1" + z400 + "e-1000", "0." + z400 + "1e400", tie,
        tie + std::string(40, '0') + "1"};
    // clang-format on
    for (const std::string &form : forms) {
        std::string text = form, c_text = form;
        std::replace(c_text.begin(), c_text.end(), ',', '.');
        const double want = std::strtod(c_text.c_str(), nullptr);
        double d = 777.0;
        float f = 777.0f;
        ASSERT_EQ(realcod_d(text.data(), &d) + realcod_f((text = form).data(), &f), 0) << form;
        EXPECT_EQ(d, want) << '"' << form << '"';
        EXPECT_EQ(f, std::fabs(want) > FLT_MAX ? float(std::copysign(kInf, want)) : float(want));
    }
}

} // namespace
