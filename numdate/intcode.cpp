// Integer text coding: decimal text <-> 32-bit signed integers.
//
//   Routine    Direction      Input range            Narrow buffer (result 1)
//   intcod_l   text -> value  -2147483647..2147483647 -
//   intcod_i   text -> value  -32767..32767           -
//   intdco_l   value -> text  any 32-bit value        size < 12
//   intdco_i   value -> text  any 32-bit value        size < 7
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include "strings/trim.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>

namespace {

// Trims text in place, checks the form [sign]digits and reads the magnitude
// exactly (saturating above limit, so any number of leading zeros is fine).
int32_t read_integer(char *text, int64_t limit, int32_t *value) {
    if (!text || strings::TrimBlanks(text) == 0) return 1;
    const char *p = text;
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    if (*p == '\0') return 2;
    int64_t magnitude = 0;
    for (const char *q = p; *q; ++q) {
        if (!std::isdigit(static_cast<unsigned char>(*q))) return 3;
        if (magnitude <= limit) magnitude = magnitude * 10 + (*q - '0');
    }
    if (magnitude > limit) return 4;
    if (value) *value = static_cast<int32_t>(negative ? -magnitude : magnitude);
    return 0;
}

// Writes value in decimal; widest is the size below which the result is 1.
// A text that does not fit leaves the size - 1 low-order digits it would
// end with (no "-"), as inserting digit by digit from the right would.
int32_t write_integer(int32_t value, char *buf, int32_t size, int32_t widest) {
    if (!buf || size < 1) return 2;
    char text[12];
    char *p = text + sizeof text;
    uint32_t magnitude = value < 0 ? 0u - static_cast<uint32_t>(value) : value;
    do *--p = static_cast<char>('0' + magnitude % 10);
    while ((magnitude /= 10) > 0);
    const auto digits = static_cast<int32_t>(text + sizeof text - p);
    if (value < 0) *--p = '-';
    const auto len = static_cast<int32_t>(text + sizeof text - p);
    const int32_t kept = len <= size - 1 ? len : std::min(digits, size - 1);
    std::memcpy(buf, text + sizeof text - kept, static_cast<size_t>(kept));
    buf[kept] = '\0';
    if (kept < len) return 2;
    return size < widest ? 1 : 0;
}

} // namespace

extern "C" {

VITRAIL_API int32_t intcod_l(char *text, int32_t *value) {
    return read_integer(text, INT32_MAX, value);
}

VITRAIL_API int32_t intcod_i(char *text, int32_t *value) {
    return read_integer(text, 32767, value);
}

VITRAIL_API int32_t intdco_l(int32_t value, char *buf, int32_t size) {
    return write_integer(value, buf, size, 12);
}

VITRAIL_API int32_t intdco_i(int32_t value, char *buf, int32_t size) {
    return write_integer(value, buf, size, 7);
}

} // extern "C"
