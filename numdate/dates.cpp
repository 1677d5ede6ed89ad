// Dates: French names, calendar arithmetic and the stored and displayed forms.
//
//   Data           Content
//   month_names    13 names, 0 = "Illégal", 1..12 = "Janvier".."Décembre"
//   day_names      8 names, 0 = "Dimanche" .. 6 = "Samedi", 7 = "Illégal"
//   mmm, ddd       static 4-byte abbreviation areas of utdatemm, utdatedd
//   a_org          origin year of two-digit year widening (exported)
// Names are code page 850 bytes (0x82 is "é").
#include <vitrail/numdate.h>

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/toolbox/datetime.h"

namespace {

constexpr std::array<const char *, 13> month_names = {"Ill\x82gal",
                                                      "Janvier",
                                                      "F\x82vrier",
                                                      "Mars",
                                                      "Avril",
                                                      "Mai",
                                                      "Juin",
                                                      "Juillet",
                                                      "Aout",
                                                      "Septembre",
                                                      "Octobre",
                                                      "Novembre",
                                                      "D\x82"
                                                      "cembre"};

constexpr std::array<const char *, 8> day_names = {"Dimanche", "Lundi",    "Mardi",  "Mercredi",
                                                   "Jeudi",    "Vendredi", "Samedi", "Ill\x82gal"};

char mmm[4] = "   ";
char ddd[4] = "   ";

// Days in 400 Gregorian years: adding them moves a date exactly 400 years.
constexpr uint32_t days_per_400_years = 146097;

struct Ymd {
    int64_t year, month, day;
};

Ymd split_date(int32_t date) {
    return {(date / 10000) % 10000, (date / 100) % 100, date % 100};
}

bool month_ok(int64_t month) {
    return month >= 1 && month <= 12;
}

int32_t month_length(int64_t year, int64_t month) {
    return utdatedm(static_cast<int32_t>(year), static_cast<int32_t>(month));
}

// Copies the first three bytes of name in capitals (ASCII letters only, the
// bytes of 0x80 and above unchanged) into area and returns it.
char *abbreviate(const char *name, char *area) {
    for (int i = 0; i < 3; ++i) {
        const char c = name[i];
        area[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    area[3] = '\0';
    return area;
}

int64_t floor_div(int64_t a, int64_t b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0));
}

// Leap years before year, up to a constant: leaps(y + 1) - leaps(y) = utdately(y).
int64_t leaps_before(int64_t year) {
    return floor_div(year - 1, 4) - floor_div(year - 1, 100) + floor_div(year - 1, 400);
}

// A source text whose bytes past its terminator read as "0".
struct Source {
    const char *s;
    size_t len;
    char at(size_t i) const { return i < len ? s[i] : '0'; }
};

Source source(const char *s) {
    return {s, s ? strnlen(s, 32) : 0};
}

char *put(char *dst, const Source &src, size_t from, size_t count) {
    for (size_t i = 0; i < count; ++i) *dst++ = src.at(from + i);
    return dst;
}

// Widens a two-digit year with a_org: yy < a_org - 1900 (unsigned) is 20yy.
int32_t widen_year(int32_t yy) {
    const auto pivot = static_cast<uint32_t>(static_cast<int64_t>(a_org) - 1900);
    return static_cast<uint32_t>(yy) < pivot ? 2000 + yy : 1900 + yy;
}

int32_t two_digits(const Source &src, size_t i) {
    return 10 * (static_cast<unsigned char>(src.at(i)) - '0') +
           (static_cast<unsigned char>(src.at(i + 1)) - '0');
}

// Writes the year of the "DD/MM/YYYY" text, its month and day: 8 bytes.
char *put_long_date(char *dst, const Source &src) {
    return put(put(put(dst, src, 6, 4), src, 3, 2), src, 0, 2);
}

// Writes "DD/MM/" from the stored date "YYYYMMDD".
char *put_display_day_month(char *dst, const Source &src) {
    dst = put(dst, src, 6, 2);
    *dst++ = '/';
    dst = put(dst, src, 4, 2);
    *dst++ = '/';
    return dst;
}

// Writes the widened year of the "DD/MM/YY" text, its month and day: 8 bytes.
char *put_short_date(char *dst, const Source &src) {
    LongToNUM(widen_year(two_digits(src, 6)), dst, 4);
    dst = put(dst + 4, src, 3, 2);
    return put(dst, src, 0, 2);
}

// Writes the local clock as YYYYMMDD and then fields more two-digit fields
// (hour, minute, second); returns the last LongToNUM result.
int32_t put_now(char *dst, int fields) {
    if (!dst) return 0;
    platform::DateTimeRec now{};
    platform::GetTime(&now);
    const std::array<int32_t, 5> parts = {now.month, now.day, now.hour, now.minute, now.second};
    int32_t result = LongToNUM(now.year, dst, 4);
    for (int i = 0; i < 2 + fields; ++i) result = LongToNUM(parts[i], dst + 4 + 2 * i, 2);
    dst[8 + 2 * fields] = '\0';
    return result;
}

} // namespace

extern "C" {

VITRAIL_API int32_t a_org = 1950;

VITRAIL_API int32_t utdately(int32_t year) {
    return (year % 400 == 0 || (year % 4 == 0 && year % 100 != 0)) ? 1 : 0;
}

VITRAIL_API int32_t utdatedm(int32_t year, int32_t month) {
    static constexpr std::array<int32_t, 12> lengths = {31, 28, 31, 30, 31, 30,
                                                        31, 31, 30, 31, 30, 31};
    if (static_cast<uint32_t>(month) - 1 >= 12) return 0;
    return lengths[month - 1] + (month == 2 ? utdately(year) : 0);
}

VITRAIL_API const char *utdatemy(int32_t month) {
    return month_names[static_cast<uint32_t>(month) <= 12 ? month : 0];
}

VITRAIL_API char *utdatemm(int32_t month) {
    return abbreviate(utdatemy(month), mmm);
}

VITRAIL_API const char *utdatedn(int32_t day_of_week) {
    return day_names[static_cast<uint32_t>(day_of_week) <= 6 ? day_of_week : 7];
}

VITRAIL_API char *utdatedd(int32_t day_of_week) {
    return abbreviate(utdatedn(day_of_week), ddd);
}

VITRAIL_API int32_t utdatedw(int32_t year, int32_t month, int32_t day) {
    const int64_t m = month > 2 ? int64_t{month} - 2 : int64_t{month} + 10;
    const int64_t y = month > 2 ? int64_t{year} : int64_t{year} - 1;
    const int64_t c = y / 100, r = y % 100;
    const int64_t w = (r + (13 * m - 1) / 5 + day + r / 4 + c / 4 - 2 * c + 77) % 7;
    return static_cast<int32_t>(w < 0 ? w + 7 : w);
}

VITRAIL_API int32_t Validate_Date(int32_t date) {
    const Ymd d = split_date(date);
    return d.year >= 1800 && d.year <= 2100 && month_ok(d.month) && d.day >= 1 &&
           d.day <= month_length(d.year, d.month);
}

VITRAIL_API int32_t Get_Date_Incr(int32_t date, uint32_t n) {
    Ymd d = split_date(date);
    if (!month_ok(d.month)) return date;
    d.year += 400 * int64_t{n / days_per_400_years};
    d.day += n % days_per_400_years;
    for (int32_t len; d.day > (len = month_length(d.year, d.month));) {
        d.day -= len;
        if (++d.month > 12) d.month = 1, ++d.year;
    }
    return d.year > 9999 ? 0 : static_cast<int32_t>(d.year * 10000 + d.month * 100 + d.day);
}

VITRAIL_API int32_t Get_Date_Diff(int32_t date, uint32_t n) {
    Ymd d = split_date(date);
    if (!month_ok(d.month)) return date;
    d.year -= 400 * int64_t{n / days_per_400_years};
    n %= days_per_400_years;
    while (n >= d.day) {
        n -= static_cast<uint32_t>(d.day);
        if (--d.month < 1) d.month = 12, --d.year;
        d.day = month_length(d.year, d.month);
    }
    d.day -= n;
    return d.year < 0 ? 0 : static_cast<int32_t>(d.year * 10000 + d.month * 100 + d.day);
}

VITRAIL_API int32_t Min_depuis_org(int32_t date, int32_t time, int32_t origin) {
    const Ymd d = split_date(date);
    int64_t days = d.day;
    for (int64_t m = 1; m < d.month; ++m) days += month_length(d.year, m);
    if (d.year > origin)
        days += 365 * (d.year - origin) + leaps_before(d.year) - leaps_before(origin);
    const int64_t minutes = days * 1440 + (time / 100) % 100 * 60 + time % 100;
    if (minutes > INT32_MAX) return INT32_MAX;
    if (minutes < INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(minutes);
}

VITRAIL_API int32_t Qar_Build_Date(const char *src, char *dst) {
    if (!dst) return 0;
    *put_long_date(dst, source(src)) = '\0';
    return 0;
}

VITRAIL_API int32_t Qar_Build_Date_short(const char *src, char *dst) {
    if (dst) *put_short_date(dst, source(src)) = '\0';
    return 0;
}

VITRAIL_API int32_t Qar_Build_Date_long(const char *src, const char *time, char *dst) {
    if (!dst) return 0;
    const Source t = source(time);
    char *p = put_short_date(dst, source(src));
    *put(put(p, t, 0, 2), t, 3, 2) = '\0';
    return 0;
}

VITRAIL_API int32_t Qar_Build_Date_slong(const char *src, const char *time, char *dst) {
    if (!dst) return 0;
    const Source t = source(time);
    char *p = put_short_date(dst, source(src));
    *put(put(put(p, t, 0, 2), t, 3, 2), t, 6, 2) = '\0';
    return 0;
}

VITRAIL_API int32_t Qar_Build_Date_Qa(const char *src, char *dst) {
    if (!dst) return 0;
    const Source s = source(src);
    char *p = s.len == 10 ? put_long_date(dst, s) : put_short_date(dst, s);
    std::memcpy(p, "0000", 5);
    return 0;
}

VITRAIL_API int32_t Qar_Inv_Date(const char *src, char *dst) {
    if (!dst) return 0;
    const Source s = source(src);
    *put(put_display_day_month(dst, s), s, 0, 4) = '\0';
    return 0;
}

VITRAIL_API char *Qar_Inv_Date_2(const char *src, char *dst) {
    if (!dst) return dst;
    const Source s = source(src);
    *put(put_display_day_month(dst, s), s, 2, 2) = '\0';
    return dst;
}

VITRAIL_API char *Qar_Inv_Date_Time(const char *src, char *dst) {
    if (!dst) return dst;
    const Source s = source(src);
    char *p = put(put_display_day_month(dst, s), s, 0, 4);
    *p++ = ' ';
    p = put(p, s, 8, 2);
    *p++ = ':';
    p = put(p, s, 10, 2);
    *p++ = ':';
    *put(p, s, 12, 2) = '\0';
    return dst;
}

VITRAIL_API int32_t Qar_Reduc_Date(const char *src, char *dst) {
    if (!dst) return 0;
    const Source s = source(src);
    char *p = put(dst, s, 0, 2);
    *p++ = '/';
    p = put(p, s, 3, 2);
    *p++ = '/';
    *put(p, s, s.len == 10 ? 8 : 6, 2) = '\0';
    return 0;
}

VITRAIL_API int32_t Qar_Get_Date_short(char *dst) {
    return put_now(dst, 0);
}

VITRAIL_API int32_t Qar_Get_Date_long(char *dst) {
    return put_now(dst, 2);
}

VITRAIL_API int32_t Qar_Get_Date_slong(char *dst) {
    return put_now(dst, 3);
}

} // extern "C"
