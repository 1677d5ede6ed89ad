// Dates: every day of the years 1..9999 against the C library's calendar,
// names, arithmetic and forms out of range, the text conversions and the
// clock.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <ctime>
#include <sstream>
#include <string>

namespace {

// Day z counted from 1970-01-01 as a date integer YYYYMMDD (negative before
// the year 0), and its week day, from the proleptic Gregorian calendar of gmtime.
int32_t Civil(int64_t z, int *weekday = nullptr) {
    const std::time_t t = std::time_t(z) * 86400;
    std::tm c{};
    gmtime_r(&t, &c);
    if (weekday) *weekday = c.tm_wday;
    return (c.tm_year + 1900) * 10000 + (c.tm_mon + 1) * 100 + c.tm_mday;
}

// The day count of 1 January of `year`.
int64_t NewYear(int32_t year) {
    std::tm c{};
    c.tm_year = year - 1900, c.tm_mday = 1;
    return timegm(&c) / 86400;
}

// Every day: the week day and month lengths; around 1800..2100 validity,
// arithmetic over small steps (large ones go through the dates fuzz
// target), and minutes since three origins.
TEST(Dates, EveryDay) {
    const uint32_t small[] = {0, 1, 2, 27, 28, 29, 30, 31, 59, 60, 365, 366, 731, 1461};
    for (int64_t z = NewYear(1); z < NewYear(10000); ++z) {
        int weekday = 0;
        const int32_t d = Civil(z, &weekday), y = d / 10000, m = d / 100 % 100, next = Civil(z + 1);
        ASSERT_EQ(utdatedw(y, m, d % 100), weekday) << d;
        ASSERT_TRUE(next % 100 != 1 || utdatedm(y, m) == d % 100) << d; // the month's last day
        ASSERT_TRUE(next % 10000 != 301 || utdately(y) == (d % 100 == 29)) << d;
        if (y < 1795 || y > 2105) continue;
        const bool inRange = y >= 1800 && y <= 2100;
        ASSERT_EQ(Validate_Date(d), inRange) << d;
        ASSERT_EQ(Validate_Date(d + 1), inRange && next == d + 1) << d; // past the month
        if (!inRange) continue;
        for (uint32_t n : small)
            ASSERT_TRUE(Get_Date_Incr(d, n) == Civil(z + n) && Get_Date_Diff(d, n) == Civil(z - n))
                << d << " " << n;
        const int32_t h = int32_t(z % 24), mi = int32_t(z % 60);
        for (int32_t origin : {1800, 1950, 2000}) {
            const int64_t days = z - NewYear(y >= origin ? origin : y) + 1;
            ASSERT_EQ(Min_depuis_org(d, h * 100 + mi, origin), days * 1440 + h * 60 + mi) << d;
        }
    }
}

// Names are code page 850 bytes (0x82 is e acute); abbreviations are their
// first three bytes in capitals, each routine with its own static area.
TEST(Dates, NamesAndAbbreviations) {
    std::istringstream words("Ill#gal Janvier F#vrier Mars Avril Mai Juin Juillet Aout Septembre "
                             "Octobre Novembre D#cembre Dimanche Lundi Mardi Mercredi Jeudi "
                             "Vendredi Samedi Ill#gal");
    std::string name[21]; // months 0..12, days 13..20
    for (std::string &w : name) words >> w, std::replace(w.begin(), w.end(), '#', '\x82');
    auto abbr = [](std::string w) {
        for (char &c : w.erase(3)) c = char(std::toupper(c));
        return w;
    };
    for (int32_t i : {INT32_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, INT32_MAX}) {
        const int32_t m = i >= 0 && i <= 12 ? i : 0, d = i >= 0 && i <= 6 ? i : 7;
        EXPECT_TRUE(utdatemy(i) == name[m] && utdatemm(i) == abbr(name[m])) << i;
        EXPECT_TRUE(utdatedn(i) == name[13 + d] && utdatedd(i) == abbr(name[13 + d])) << i;
    }
    char *first = utdatemm(1);
    EXPECT_TRUE(utdatemm(2) == first && first != utdatedd(0) && std::string(first) == "F\x82V");
}

TEST(Dates, OutOfRange) {
    // clang-format off
    const struct { int32_t date; uint32_t n; int32_t incr, diff; } rows[] = {
        {20241301, 5, 20241301, 20241301}, {20240001, 5, 20240001, 20240001},
        {-20240101, 5, -20240101, -20240101}, {99991231, 1, 0, 99991230}, {101, 1, 102, 0},
        {20240101, UINT32_MAX, 0, 0}, {20240229, 146097, 24240229, 16240229}, // 400 years
        {20240100, 0, 20240100, 20231231}, {20240135, 0, 20240204, 20240135}};
    // clang-format on
    for (const auto &r : rows) {
        EXPECT_EQ(Get_Date_Incr(r.date, r.n), r.incr) << r.date << "+" << r.n;
        EXPECT_EQ(Get_Date_Diff(r.date, r.n), r.diff) << r.date << "-" << r.n;
    }
    for (int32_t m : {0, 13, -1, INT32_MIN, INT32_MAX}) EXPECT_EQ(utdatedm(2023, m), 0) << m;
    for (int32_t d : {20240100, 20241301, 20240001, -20240101, 0}) EXPECT_EQ(Validate_Date(d), 0);
    for (int32_t y : {INT32_MIN, -5000, INT32_MAX})
        EXPECT_EQ(utdatedw(y, INT32_MAX, INT32_MIN) / 7, 0);
    EXPECT_EQ(utdately(-400) + utdately(-100) + utdately(-4), 2);
    EXPECT_EQ(Min_depuis_org(99991231, 2359, -2000000000), INT32_MAX);
}

// Each conversion into a "#"-filled buffer. Short or missing sources read
// "0" past their end, never beyond; any bytes give a four-digit year.
TEST(Dates, StoredAndDisplayForms) {
    // clang-format off
    const struct { void (*make)(char *); const char *want; } rows[] = {
        {[](char *d) { Qar_Build_Date_Qa("29/02/2024", d); }, "202402290000"},
        {[](char *d) { Qar_Build_Date_Qa("29/02/24", d); }, "202402290000"},
        {[](char *d) { Qar_Build_Date_Qa("29/02/74", d); }, "197402290000"},
        {[](char *d) { Qar_Reduc_Date("29/02/24", d); }, "29/02/24"},
        {[](char *d) { Qar_Reduc_Date("29/02/2024", d); }, "29/02/24"},
        {[](char *d) { Qar_Inv_Date_2("20240229", d); }, "29/02/24"},
        {[](char *d) { Qar_Inv_Date_Time("20240229173005", d); }, "29/02/2024 17:30:05"},
        {[](char *d) { Qar_Build_Date_long("01/02/49", "17:30", d); }, "204902011730"},
        {[](char *d) { Qar_Build_Date_slong("01/02/50", "17:30:05", d); }, "19500201173005"},
        {[](char *d) { a_org = 1850, Qar_Build_Date_short("01/02/99", d), a_org = 1950; },
         "20990201"}, // below 1900: the unsigned pivot is huge, every year is 20yy
        {[](char *d) { Qar_Build_Date("29/02", d); }, "00000229"},
        {[](char *d) { Qar_Inv_Date("", d); }, "00/00/0000"},
        {[](char *d) { Qar_Inv_Date(nullptr, d); }, "00/00/0000"},
        {[](char *d) { Qar_Build_Date_short("1/2/3", d); }, "2000/31/"},
        {[](char *d) { Qar_Build_Date("aa/bb/cccc", d); }, "ccccbbaa"}};
    // clang-format on
    char dst[32];
    for (const auto &r : rows) {
        r.make(static_cast<char *>(std::memset(dst, '#', sizeof dst)));
        EXPECT_STREQ(dst, r.want);
    }
    EXPECT_EQ(Qar_Inv_Date_2("20240229", dst) == dst && Qar_Inv_Date_Time("", dst) == dst, true);
    EXPECT_EQ(Qar_Build_Date_short("aa/bb/cc", dst) + Qar_Build_Date("aa/bb/cccc", dst), 0);
    Qar_Build_Date_short("\xff\xff/bb/\xff\x01", dst);
    EXPECT_EQ(std::strspn(dst, "0123456789"), 4u);
}

// The clock forms match the local time read before or after the call.
TEST(Dates, ClockForms) {
    // clang-format off
    const struct { int32_t (*get)(char *); const char *format; } forms[] = {
        {Qar_Get_Date_short, "%Y%m%d"}, {Qar_Get_Date_long, "%Y%m%d%H%M"},
        {Qar_Get_Date_slong, "%Y%m%d%H%M%S"}};
    // clang-format on
    for (const auto &f : forms) {
        char got[32], now[2][32];
        for (char *text : now) {
            const std::time_t t = std::time(nullptr);
            std::tm tm{};
            std::strftime(text, 32, f.format, localtime_r(&t, &tm));
            EXPECT_EQ(text == now[0] ? f.get(static_cast<char *>(std::memset(got, '#', 32))) : 0,
                      0);
        }
        EXPECT_TRUE(!std::strcmp(got, now[0]) || !std::strcmp(got, now[1])) << got << " " << now[0];
    }
}

} // namespace
