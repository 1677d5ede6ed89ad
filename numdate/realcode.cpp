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

#include "strings/trim.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

namespace {

bool all_digits(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c - '0') > 9) return false;
    return true;
}

// Position of the first a in s, else of the first b, else npos (one pass:
// the texts are short and this runs for every number read).
size_t first_of(std::string_view s, char a, char b) {
    size_t at_b = std::string_view::npos;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == a) return i;
        if (s[i] == b && at_b == std::string_view::npos) at_b = i;
    }
    return at_b;
}

// Significant digits handed to the parser. The first 768 digits decide
// every double; later ones only break a tie, so a cut tail is stood for by
// one extra "1" digit, which rounds exactly as the whole tail would.
constexpr size_t kKeptDigits = 780;

// The digits of int and frac read as one digit string.
struct Digits {
    std::string_view whole, fraction;
    size_t size() const { return whole.size() + fraction.size(); }
    char operator[](size_t i) const {
        return i < whole.size() ? whole[i] : fraction[i - whole.size()];
    }
};

// The nearest double to int.frac x 10^exponent, as a compiler reads the
// literal: infinity above the double range, zero below it.
double decimal_value(Digits d, int32_t exponent) {
    size_t first = 0, last = d.size();
    while (first < last && d[first] == '0') ++first;
    while (last > first && d[last - 1] == '0') --last;
    if (first == last) return 0.0;
    // value = digits first..last x 10^scale
    int64_t scale = int64_t{exponent} - static_cast<int64_t>(d.fraction.size()) +
                    static_cast<int64_t>(d.size() - last);
    std::array<char, kKeptDigits + 16> text;
    const size_t kept = std::min(last - first, kKeptDigits);
    for (size_t i = 0; i < kept; ++i) text[i] = d[first + i];
    size_t n = kept;
    if (kept < last - first) {
        scale += static_cast<int64_t>(last - first - kept) - 1;
        text[n++] = '1';
    }
    // The number lies in [10^(order - 1), 10^order).
    const int64_t order = static_cast<int64_t>(n) + scale;
    if (order > 400) return HUGE_VAL;
    if (order < -400) return 0.0;
    text[n++] = 'e';
    n = static_cast<size_t>(std::to_chars(text.data() + n, text.data() + text.size(), scale).ptr -
                            text.data());
    double value = 0.0;
    const auto r = std::from_chars(text.data(), text.data() + n, value);
    if (r.ec == std::errc::result_out_of_range) return order > 0 ? HUGE_VAL : 0.0;
    return value;
}

int32_t read_real(char *text, double *out) {
    if (!text) return 1;
    const size_t len = strings::TrimBlanks(text);
    if (len == 0) return 1;
    std::string_view rest(text, len);
    const bool negative = rest[0] == '-';
    if (rest[0] == '+' || rest[0] == '-') rest.remove_prefix(1);
    if (rest.empty()) return 2;
    const size_t marker = first_of(rest, 'e', 'E');
    const std::string_view mantissa = rest.substr(0, marker);
    const size_t point = std::min(first_of(rest, '.', ','), mantissa.size());
    const Digits digits{mantissa.substr(0, point),
                        mantissa.substr(std::min(point + 1, mantissa.size()))};
    if (!all_digits(digits.whole)) return 3;
    if (!all_digits(digits.fraction)) return 4;
    int32_t exponent = 0;
    if (marker != std::string_view::npos && marker + 1 < rest.size()) {
        char *exponent_text = text + (rest.data() - text) + marker + 1;
        if (int32_t code = intcod_l(exponent_text, &exponent)) return code + 4;
    }
    const double value = decimal_value(digits, exponent);
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
