// Real number text coding: decimal text <-> double, fixed and scientific
// writers, and the integer/fraction split they rest on.
//
//   Routine      Direction       Form
//   realcod_d/f  text -> value   [+|-]int[.|,frac][e|E exp], blanks around,
//                                correctly rounded
//   realdco_d    value -> text   [-]int[.frac], exactly decimals digits,
//                                rounded from the shortest decimal of the value
//   realdco_sd   value -> text   [-]d.ddd[e exp], digits after the point,
//                                cut from the shortest decimal of the value
//   utrealds/fs  value -> parts  integer part and fraction, exact
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <system_error>

namespace {

bool all_digits(const char *begin, const char *end) {
    for (; begin < end; ++begin)
        if (!std::isdigit(static_cast<unsigned char>(*begin))) return false;
    return true;
}

// Digits weighted 1, 10, 100... from the right, then the fraction digits
// weighted 0.1, 0.01... from the left. Leading zeros are skipped so that a
// long run of them cannot turn an infinite weight into NaN.
double digits_value(const char *ib, const char *ie, const char *fb, const char *fe) {
    while (ib < ie && *ib == '0') ++ib;
    double value = 0.0, weight = 1.0;
    for (const char *p = ie; p > ib; --p) {
        value += (p[-1] - '0') * weight;
        weight *= 10.0;
    }
    weight = 1.0;
    for (const char *p = fb; p < fe; ++p) {
        weight /= 10.0;
        value += (*p - '0') * weight;
    }
    return value;
}

// Multiplies (n > 0) or divides (n < 0) by 10 |n| times; stops once the value
// is 0 or infinite, where further steps change nothing.
double apply_exponent(double value, int64_t n) {
    for (; n > 0 && value != 0.0 && !std::isinf(value); --n) value *= 10.0;
    for (; n < 0 && value != 0.0 && !std::isinf(value); ++n) value /= 10.0;
    return value;
}

// The correctly rounded value of int.frac x 10^exponent (the nearest
// double, as a compiler reads the literal). Beyond the double range, and
// should the work text fail to allocate, the digit arithmetic decides
// between infinity and zero.
double decimal_value(const char *ib, const char *ie, const char *fb, const char *fe,
                     int32_t exponent) {
    try {
        std::string text = "0"; // keeps ".5" and "." readable
        text.append(ib, ie).append(".").append(fb, fe).append("e");
        text += std::to_string(exponent);
        double value = 0.0;
        const auto r = std::from_chars(text.data(), text.data() + text.size(), value);
        if (r.ec == std::errc()) return value;
    } catch (...) {}
    return apply_exponent(digits_value(ib, ie, fb, fe), exponent);
}

int32_t read_real(char *text, double *out) {
    if (!text || chelibl_f(text) == 0 || chelibl_d(text) == 0) return 1;
    char *p = text;
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    if (*p == '\0') return 2;
    const int32_t len = static_cast<int32_t>(std::strlen(p));
    int32_t marker = chcher_c('e', p);
    if (marker < 0) marker = chcher_c('E', p);
    const int32_t mantissa_end = marker < 0 ? len : marker;
    int32_t point = chcher_c('.', p);
    if (point < 0) point = chcher_c(',', p);
    if (point >= mantissa_end) point = -1;
    const int32_t int_end = point < 0 ? mantissa_end : point;
    const int32_t frac_begin = point < 0 ? mantissa_end : point + 1;
    if (!all_digits(p, p + int_end)) return 3;
    if (!all_digits(p + frac_begin, p + mantissa_end)) return 4;
    int32_t exponent = 0;
    if (marker >= 0 && p[marker + 1] != '\0') {
        if (int32_t code = intcod_l(p + marker + 1, &exponent)) return code + 4;
    }
    const double value = decimal_value(p, p + int_end, p + frac_begin, p + mantissa_end, exponent);
    if (out) *out = negative ? -value : value;
    return 0;
}

// The shortest fixed-point decimal text of a non-negative finite value,
// rounded half away from zero to decimals fraction digits (padded with "0").
std::string fixed_round(double magnitude, int32_t decimals) {
    std::array<char, 400> buf{}; // the longest fixed text of a double is ~330 bytes
    char *end =
        std::to_chars(buf.data(), buf.data() + buf.size(), magnitude, std::chars_format::fixed).ptr;
    const std::string text(buf.data(), end);
    const size_t point = std::min(text.find('.'), text.size());
    const std::string fraction = point < text.size() ? text.substr(point + 1) : "";
    const auto kept = static_cast<size_t>(decimals);
    std::string digits = text.substr(0, point) + fraction.substr(0, kept);
    digits.resize(point + kept, '0');
    size_t int_len = point;
    if (kept < fraction.size() && fraction[kept] >= '5') {
        size_t i = digits.size();
        while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
        if (i == 0)
            digits.insert(0, 1, '1'), ++int_len;
        else
            ++digits[i - 1];
    }
    if (kept == 0) return digits;
    return digits.substr(0, int_len) + "." + digits.substr(int_len);
}

// The shortest decimal digits that read back as a positive finite value,
// and its decimal exponent: value ~ d.ddd x 10^exponent.
struct Shortest {
    std::array<char, 24> digits{};
    int32_t count = 0;
    int32_t exponent = 0;
};

Shortest shortest(double magnitude) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                   std::chars_format::scientific)
                         .ptr;
    Shortest s;
    const char *p = text.data();
    for (; p < end && *p != 'e'; ++p)
        if (*p != '.') s.digits[static_cast<size_t>(s.count++)] = *p;
    const bool negative = p + 1 < end && p[1] == '-';
    for (p += 2; p < end; ++p) s.exponent = s.exponent * 10 + (*p - '0');
    if (negative) s.exponent = -s.exponent;
    return s;
}

} // namespace

extern "C" {

VITRAIL_API int32_t realcod_d(char *text, double *value) {
    return read_real(text, value);
}

VITRAIL_API int32_t realcod_f(char *text, float *value) {
    double d = 0.0;
    const int32_t code = read_real(text, &d);
    if (code == 0 && value) {
        // Out-of-range magnitudes become infinities explicitly.
        if (std::isfinite(d) && std::fabs(d) > FLT_MAX) d = std::copysign(HUGE_VAL, d);
        *value = static_cast<float>(d);
    }
    return code;
}

VITRAIL_API int32_t realdco_d(double value, char *buf, int32_t size, int32_t decimals) {
    if (!buf || size < 1) return 2;
    buf[0] = '\0';
    if (!std::isfinite(value)) return 2;
    if (decimals < 0) decimals = 0;
    if (decimals >= size) return 2; // the point and one digit at least come with them
    try {
        std::string text = fixed_round(std::fabs(value), decimals);
        if (value < 0.0) text.insert(0, 1, '-');
        if (!szcopy_0t(buf, static_cast<uint32_t>(size), text.data(),
                       static_cast<uint32_t>(text.size())))
            return 2;
    } catch (...) { // allocation failure: nothing written
        buf[0] = '\0';
        return 2;
    }
    return size - 1 < 20 ? 1 : 0;
}

VITRAIL_API int32_t realdco_sd(double value, char *buf, int32_t size, int32_t digits) {
    if (!buf || size < 1) return 2;
    buf[0] = '\0';
    if (!std::isfinite(value)) return 2;
    if (value == 0.0) return chinsch_c(buf, size, '0', 0) ? 0 : 2;
    try {
        const Shortest s = shortest(std::fabs(value));
        // Digits past the buffer cannot fit: no need to produce them.
        const int32_t wanted = std::min(digits < 0 ? 0 : digits, size);
        std::string text = value < 0.0 ? "-" : "";
        text += s.digits[0];
        text += '.';
        for (int32_t i = 1; i <= wanted; ++i) text += i < s.count ? s.digits[i] : '0';
        if (s.exponent != 0) {
            std::array<char, 12> exponent{};
            intdco_l(s.exponent, exponent.data(), 12);
            text += 'e';
            text += exponent.data();
        }
        return szcopy_0t(buf, static_cast<uint32_t>(size), text.data(),
                         static_cast<uint32_t>(text.size()))
                   ? 0
                   : 2;
    } catch (...) { // allocation failure: nothing written
        buf[0] = '\0';
        return 2;
    }
}

VITRAIL_API int32_t utrealds(const double *value, double *intpart, double *fraction) {
    if (!value || !intpart || !fraction) return 0;
    *fraction = std::modf(*value, intpart);
    if (std::isnan(*intpart)) return 0;
    if (*intpart >= 2147483647.0) return INT32_MAX;
    if (*intpart <= -2147483648.0) return INT32_MIN;
    return static_cast<int32_t>(*intpart);
}

VITRAIL_API void utrealfs(const float *value, float *intpart, float *fraction) {
    if (value && intpart && fraction) *fraction = std::modf(*value, intpart);
}

} // extern "C"
