// Number text coding and fixed-width fields: one table of calls and what
// they answer, real numbers read to the double nearest even on long and tied
// digit runs. Arbitrary texts and values go through the numbers fuzz target.
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace std::string_literals;

constexpr int32_t kAll = INT32_MIN; // a field reader's field is the whole text

// " value" with as many digits as it takes to read it back; "-0" keeps its sign.
std::string Num(double n) {
    char s[40];
    std::snprintf(s, sizeof s, " %.17g", n);
    return s;
}

// What the routine of kind `k` answers for `in`. Readers (lower case) get the
// text, the field readers its first n bytes, and answer their code and the
// values stored (777 when none), then "[text]" when they trimmed it in place;
// lists answer their count and items 0..3, the splits the result and both
// parts of the text's value. Writers (capitals) get the text's value, a
// buffer of n bytes filled with "#" and d decimals, and answer their code
// and "[bytes written]", "?" after a text left unterminated, " past" after a
// byte past the buffer.
std::string Call(char k, std::string in, int32_t n, int32_t d) {
    const std::string before = in;
    const char *f = in.data();
    n = n == kAll ? int32_t(in.size()) : n;
    int32_t v = 777, w = 777, code = 0;
    double r = 777, ip = 777, fp = 777, x = std::strtod(f, nullptr);
    float fx = float(x), fi = 777, ff = 777;
    char buf[80];
    std::fill(std::begin(buf), std::end(buf), '#');
    std::string out;
    switch (k) { // clang-format off
    case 'i': code = intcod_l(in.data(), &v); break;
    case 's': code = intcod_i(in.data(), &v); break;
    case 'r': code = realcod_d(in.data(), &r); break;
    case 'f': code = realcod_f(in.data(), &fx), r = fx; break;
    case 'n': code = NUMToLong(f, n, &v); break;
    case 'm': code = NUMToInt(f, n, &v); break;
    case 'p': code = NUMP100ToLong(f, n, &v); break;
    case 'd': code = NUMDToDouble(f, n, &r); break;
    case 'v': code = NUMPInterToLong(f, n, &v, &w); break;
    case 'l':
        for (int32_t i = 0; i < 4; ++i) out += Num(Get_NUM_liste(f, i));
        return std::to_string(Teste_NUM_liste(f)) + out;
    case 'x': code = utrealds(&x, &ip, &fp); return std::to_string(code) + Num(ip) + Num(fp);
    case 'y': return utrealfs(&fx, &fi, &ff), "f" + Num(fi) + Num(ff);
    case 'I': code = intdco_i(int32_t(x), buf, n); break;
    case 'L': code = intdco_l(int32_t(x), buf, n); break;
    case 'F': code = realdco_d(x, buf, n, d); break;
    case 'S': code = realdco_sd(x, buf, n, d); break;
    case 'N': code = LongToNUM(int32_t(x), buf, n); break;
    case 'M': code = IntToNUM(int32_t(x), buf, n); break;
    case 'D': code = DoubleToNUMD(x, buf, n, d); break;
    } // clang-format on
    if (std::isupper(k)) {
        std::string text(buf, size_t(std::find(buf, std::end(buf), '#') - buf));
        if (std::strchr("ILFS", k) && n > 0)
            text = text.size() && !text.back() ? text.c_str() : text + "?";
        return std::to_string(code) + " [" + text + "]" +
               (buf[std::max(n, 0)] == '#' ? "" : " past");
    }
    out = std::to_string(code) + Num(std::strchr("rfd", k) ? r : v) + (k == 'v' ? Num(w) : "");
    return out + (in == before ? "" : " [" + std::string(in.c_str()) + "]");
}

// Rows "kind[n[,d]]|input|answer". Integer writers: 2 when the text and its
// terminator don't fit (keeping the low-order digits), 1 when the size cannot
// hold every value. Real writers round half away from zero on the shortest
// decimal text, with carries.
TEST(Numbers, Calls) {
    const std::string z400(400, '0'), ones70(70, '1');
    char tie[1200]; // halfway between the subnormals 2 and 3 x 2^-1074: 752 digits
    std::snprintf(tie, sizeof tie, "%.1100Lf", 5.0L * std::ldexp(1.0L, -1075));
    // clang-format off
    const std::string rows[] = {"i|  -42  |0 -42 [-42]", "i|+7|0 7", "i||1 777", "i|   |1 777 []",
        "i|-|2 777", "i| + |2 777 [+]", "i|1 000|3 777", "i|\xb9|3 777", "i|9999999999999a|3 777",
        "i|2147483648|4 777", "i|-2147483648|4 777", "i|" + z400 + "2147483647|0 2147483647",
        "i|" + z400 + "2147483648|4 777", "s|32767|0 32767", "s|-32768|4 777",
        "s| 2147483647|4 777 [2147483647]", "r|   |1 777 []", "r| + |2 777 [+]", "r|1,234.5|3 777",
        "r|1E2e3|3 777", "r|1.2.3|4 777", "r|2e+|6 777", "r|2ex|7 777", "r|2e-2147483648|8 777",
        "r|2e|0 2", "r| . |0 0 [.]", "r|  12,5 |0 12.5 [12,5]", "r|-,5|0 -0.5", "r|1.5e2|0 150",
        "r|15E-1|0 1.5", "r|-1.5E+2|0 -150", "r|5,|0 5", "r|1,5e1|0 15", "r|007|0 7",
        "r|1e308|0 1e+308", "r|1e400|0 inf", "r|-1e400|0 -inf", "r|1e-400|0 0",
        "r|0,3|0 0.29999999999999999", "r|2.675|0 2.6749999999999998", "r|0e2147483647|0 0",
        "r|123456.789e-3|0 123.456789", "r|1.7976931348623157e308|0 1.7976931348623157e+308",
        "r|4.9406564584124654e-324|0 4.9406564584124654e-324",
        "r|98765432109876543210|0 9.8765432109876543e+19", "r|" + z400 + "1.5|0 1.5",
        "r|0." + z400 + "1|0 0", "r|1" + z400.substr(90) + "|0 inf",
        "r|1" + z400.substr(91) + "|0 inf", "r|-1" + z400.substr(89) + "|0 -inf",
        "r|" + std::string(401, '9') + "e-1000|0 0", "r|1" + z400 + "e-1000|0 0",
        "r|0." + z400 + "1e400|0 0.10000000000000001",
        "r|" + std::string(tie) + "|0 9.8813129168249309e-324",
        "r|" + std::string(tie) + std::string(40, '0') + "1|0 1.4821969375237396e-323",
        "f|1e300|0 inf", "f|-1e400|0 -inf", "f|0,3|0 0.30000001192092896",
        "f|  12,5 |0 12.5 [12,5]", "n|00042|0 42", "n| 42 |0 42", "n5|0004299|0 42", "n|00-42|3 0",
        "n|-42|12 0", "n|123456789012|11 0", "n|99999999999|4 0", "n|02147483647|0 2147483647",
        "n||1 0", "n|+|2 0", "n-1|42|11 0", "n|4\0002|0 4"s, "m|40000|4 0", "m|32767|0 32767",
        "m|-1|12 0", "p|15 % |0 15", "p| 7  %   |0 7", "p|%|1 0", "p|15%%|3 0",
        "p|00000000015    %|0 15", "p|-15%|12 0", "p-2|15|11 0", "v|[5, 10]|0 5 10",
        "v|5-10|0 5 10", "v|7|11 7 0", "v| [ 5 ; 10 ] |0 5 10", "v|5,|1 5 0", "v|,5|1 0 5",
        "v|[x,3]|3 0 3", "v|1,2,3|3 1 0", "v|[]|12 0 0", "v|123456789012,1|11 0 1",
        "v|5\0006|11 5 0"s, "v-1|5,6|22 0 0", "d|12,5%|0 0.125", "d|0012.50|0 12.5", "d|-1.5|12 0",
        "d|%|1 0", "d|12,5% |4 0", "d|1e+|6 0", "d|1234567890123456789|0 1.2345678901234568e+18",
        "d|12345678901234567890|11 0", "d-1|1.5|11 0", "l|10,20+30|3 10 20 30 30",
        "l|10,x|0 10 0 0 0", "l||0 0 0 0 0", "l| 1 - 2 |2 1 2 2 2", "l|1,2,|0 1 2 0 0",
        "l|00000000005+6|2 5 6 6 6", "l|000000000005+6|0 0 0 0 0", "l|10," + ones70 + "|0 10 0 0 0",
        "l|32768+2147483647|2 32768 2147483647 2147483647 2147483647", "x|2.75|2 2 0.75",
        "x|-2.75|-2 -2 -0.75", "x|-0.25|0 -0 -0.25",
        "x|4503599627370497|2147483647 4503599627370497 0",
        "x|2147483647.5|2147483647 2147483647 0.5", "x|-2147483648.5|-2147483648 -2147483648 -0.5",
        "x|-1e300|-2147483648 -1.0000000000000001e+300 -0", "x|inf|2147483647 inf 0",
        "x|nan|0 nan nan", "y|-2.75|f -2 -0.75", "y|1e30|f 1.0000000150474662e+30 0",
        "I6|32767|1 [32767]", "I7|32767|0 [32767]", "I12|-2147483648|0 [-2147483648]",
        "L11|123456|1 [123456]", "L12|123456|0 [123456]", "L5|12345|2 [2345]",
        "L11|-2147483648|2 [2147483648]", "L3|-305|2 [05]", "L1|0|2 []", "L2|0|1 [0]", "L0|5|2 []",
        "L-1|5|2 []", "N2|42|0 [42]", "N5|-42|0 [00-42]", "N1|42|11 []", "N0|5|11 []",
        "N12|-2147483648|0 [0-2147483648]", "M11|-2147483648|0 [-2147483648]", "M-1|7|11 []",
        "F64|2.5|0 [3]", "F64|-2.5|0 [-3]", "F64|-0.49|0 [-0]", "F64,2|-0.001|0 [-0.00]",
        "F64,2|9.995|0 [10.00]", "F64,2|-9.995|0 [-10.00]", "F64,1|99.96|0 [100.0]",
        "F64,3|999999.9999|0 [1000000.000]", "F64|1e20|0 [100000000000000000000]",
        "F64,-7|123.5|0 [124]", "F64,3|1.0625|0 [1.063]", "F64,2|2.675|0 [2.68]",
        "F64,2|1.005|0 [1.01]", "F64,3|0.00049|0 [0.000]", "F20,2|1|1 [1.00]", "F21,2|1|0 [1.00]",
        "F5,2|1|1 [1.00]", "F4,2|1|2 [1.0]", "F6,2|-1|1 [-1.00]", "F1|7|2 []", "F0|7|2 []",
        "F8,2147483647|1.5|2 []", "F64,2|inf|2 []", "F64,2|nan|2 []", "S64,3|12345.678|0 [1.234e4]",
        "S64,2|0.00123|0 [1.23e-3]", "S64,2|-5|0 [-5.00]", "S64,2|0|0 [0]",
        "S64,1|-0.5|0 [-5.0e-1]", "S64,2|99999|0 [9.99e4]", "S64,1|1.5e-300|0 [1.5e-300]",
        "S64,-3|42|0 [4.e1]", "S7,3|12345.678|2 [1.234e]", "S8,3|12345.678|0 [1.234e4]",
        "S1|5|2 []", "D7,2|12.5|0 [0012.50]", "D4,2|12.5|11 []", "D6,2|9.995|0 [010.00]",
        "D6,1|-1.5|0 [00-1.5]", "D19|1e18|0 [1000000000000000000]", "D25|1e19|2 []",
        "D25,30|1.5|2 []", "D5,1|nan|2 []"};
    // clang-format on
    for (const std::string &row : rows) {
        const size_t a = row.find('|'), b = row.find('|', a + 1);
        int32_t n = kAll, d = 0;
        std::sscanf(row.c_str() + 1, "%d,%d", &n, &d);
        EXPECT_EQ(Call(row[0], row.substr(a + 1, b - a - 1), n, d), row.substr(b + 1)) << row;
    }
    const char *item = Get_item_liste("A,BC", 1); // lists leave the host's last item alone
    EXPECT_EQ(Call('l', "1,2", kAll, 0) + item, "2 1 2 2 2BC");
    int32_t v = 0;
    double r = 0;
    char buf[400] = "old"; // non-finite values empty the buffer
    EXPECT_EQ(realdco_d(HUGE_VAL, buf, 8, 2) + std::strlen(buf), 2u);
    EXPECT_EQ(intcod_l(nullptr, &v) + realcod_d(nullptr, &r) + NUMToLong(nullptr, 3, &v) +
                  intdco_l(5, nullptr, 10) + Get_NUM_liste(nullptr, 0) + Get_NUM_liste("1", -1),
              15);
    EXPECT_EQ(Get_NUM_liste("10,20+30", INT32_MAX), 30);
    ASSERT_EQ(realdco_d(1e300, buf, sizeof buf, 30), 0); // all digits, no exponent
    EXPECT_EQ(std::strspn(buf, "0123456789."), 301u + 1 + 30);
}

} // namespace
