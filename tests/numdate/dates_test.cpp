// Dates: names, calendar rules and arithmetic checked day by day against an
// independent days-from-civil computation, the text conversions and the
// clock.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include "platform/toolbox/datetime.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's method).
int64_t days_from_civil(int64_t y, int64_t m, int64_t d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

// The date integer of a day count.
int32_t civil_from_days(int64_t z) {
    z += 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    const int64_t d = doy - (153 * mp + 2) / 5 + 1;
    const int64_t m = mp < 10 ? mp + 3 : mp - 9;
    const int64_t y = yoe + era * 400 + (m <= 2);
    return static_cast<int32_t>(y * 10000 + m * 100 + d);
}

// Names are code page 850 bytes (0x82 is e acute); abbreviations live in
// one static area per routine.
TEST(Dates, NamesAndAbbreviations) {
    auto words = [](std::string text) { // space-separated, "#" for 0x82
        std::replace(text.begin(), text.end(), '#', '\x82');
        std::vector<std::string> out(1);
        for (char c : text) c == ' ' ? out.emplace_back() : out.back() += c;
        return out;
    };
    const auto months = words("Ill#gal Janvier F#vrier Mars Avril Mai Juin Juillet Aout Septembre "
                              "Octobre Novembre D#cembre");
    const auto mabbr = words("ILL JAN F#V MAR AVR MAI JUI JUI AOU SEP OCT NOV D#C");
    const auto days = words("Dimanche Lundi Mardi Mercredi Jeudi Vendredi Samedi Ill#gal");
    const auto dabbr = words("DIM LUN MAR MER JEU VEN SAM ILL");
    for (int32_t i : {INT32_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, INT32_MAX}) {
        const int32_t m = i >= 0 && i <= 12 ? i : 0, d = i >= 0 && i <= 6 ? i : 7;
        EXPECT_EQ(utdatemy(i), months[m]) << i;
        EXPECT_EQ(utdatemm(i), mabbr[m]) << i;
        EXPECT_EQ(utdatedn(i), days[d]) << i;
        EXPECT_EQ(utdatedd(i), dabbr[d]) << i;
    }
    char *first = utdatemm(1);
    EXPECT_TRUE(utdatemm(2) == first && first != utdatedd(0));
    EXPECT_STREQ(first, "F\x82V");
}

// Every day of the years 1..9999 against an independent day count: the
// week day; around 1800..2100 the month lengths, validity, arithmetic
// over small and (every 53rd day) large steps, minutes since three origins,
// and the stored and displayed forms both ways.
TEST(Dates, EveryDay) {
    const uint32_t small[] = {0, 1, 2, 27, 28, 29, 30, 31, 59, 60, 365, 366, 731, 1461};
    const uint32_t large[] = {36524, 36525, 146096, 146097, 146098, 400000, 1000000};
    const int64_t first = days_from_civil(1800, 1, 1), last = days_from_civil(2100, 12, 31);
    for (int64_t z = days_from_civil(1, 1, 1); z <= days_from_civil(9999, 12, 31); ++z) {
        const int32_t d = civil_from_days(z), y = d / 10000, m = d / 100 % 100;
        ASSERT_EQ(utdatedw(y, m, d % 100), int32_t((z % 7 + 11) % 7)) << d; // 1970-01-01: Thursday
        if (d % 100 == 1 && m == 1 && y >= 1200 && y <= 2800) {
            ASSERT_EQ(utdately(y), days_from_civil(y + 1, 1, 1) - z == 366) << y;
            for (int32_t k = 1; k <= 12; ++k) {
                const int64_t next =
                    k == 12 ? days_from_civil(y + 1, 1, 1) : days_from_civil(y, k + 1, 1);
                ASSERT_EQ(utdatedm(y, k), next - days_from_civil(y, k, 1)) << y << "-" << k;
            }
        }
        if (y < 1795 || y > 2105) continue;
        ASSERT_EQ(Validate_Date(d), d >= 18000101 && d <= 21001231) << d;
        ASSERT_EQ(Validate_Date(d / 100 * 100 + utdatedm(y, m) + 1), 0) << d; // past the month
        if (z < first || z > last) continue;
        for (uint32_t n : small) {
            ASSERT_EQ(Get_Date_Incr(d, n), civil_from_days(z + n)) << d << "+" << n;
            ASSERT_EQ(Get_Date_Diff(d, n), civil_from_days(z - n)) << d << "-" << n;
        }
        for (uint32_t n : large) {
            if ((z - first) % 53 != 0) break;
            const int32_t before = civil_from_days(z - n); // negative before the year 0
            ASSERT_EQ(Get_Date_Incr(d, n), civil_from_days(z + n)) << d << "+" << n;
            ASSERT_EQ(Get_Date_Diff(d, n), before < 0 ? 0 : before) << d << "-" << n;
        }
        const int32_t h = int32_t(z % 24), mi = int32_t(z % 60);
        for (int32_t origin : {1800, 1950, 2000}) {
            const int64_t days = z - days_from_civil(y >= origin ? origin : y, 1, 1) + 1;
            ASSERT_EQ(Min_depuis_org(d, h * 100 + mi, origin), days * 1440 + h * 60 + mi) << d;
        }
        char stored[16], display[16], shortd[16], back[16], want[16];
        ASSERT_EQ(LongToNUM(d, stored, 8), 0);
        stored[8] = '\0';
        std::snprintf(want, sizeof want, "%02d/%02d/%04d", d % 100, m, y);
        Qar_Inv_Date(stored, display);
        ASSERT_STREQ(display, want);
        Qar_Build_Date(display, back);
        ASSERT_STREQ(back, stored);
        Qar_Reduc_Date(display, shortd);
        ASSERT_STREQ(shortd, std::string(want).erase(6, 2).c_str());
        if (y < 1900 || y > 2099) continue;
        a_org = std::clamp(y - y % 37, 1900, 2000); // widens to a_org .. a_org + 99
        Qar_Build_Date_short(shortd, back);
        ASSERT_STREQ(back, stored);
    }
    a_org = 1950;
}

TEST(Dates, OutOfRange) {
    const struct {
        int32_t date;
        uint32_t n;
        int32_t incr, diff;
    } rows[] = {{20241301, 5, 20241301, 20241301},
                {20240001, 5, 20240001, 20240001},
                {-20240101, 5, -20240101, -20240101},
                {99991231, 1, 0, 99991230},
                {101, 1, 102, 0},
                {20240101, UINT32_MAX, 0, 0},
                {20240100, 0, 20240100, 20231231},
                {20240135, 0, 20240204, 20240135}};
    for (const auto &r : rows) {
        EXPECT_EQ(Get_Date_Incr(r.date, r.n), r.incr) << r.date << "+" << r.n;
        EXPECT_EQ(Get_Date_Diff(r.date, r.n), r.diff) << r.date << "-" << r.n;
    }
    for (int32_t m : {0, 13, -1, INT32_MIN, INT32_MAX}) EXPECT_EQ(utdatedm(2023, m), 0) << m;
    for (int32_t d : {20240100, 20241301, 20240001, -20240101, 0}) EXPECT_EQ(Validate_Date(d), 0);
    for (int32_t y : {INT32_MIN, -5000, INT32_MAX})
        EXPECT_EQ(utdatedw(y, INT32_MAX, INT32_MIN) / 7, 0) << y;
    EXPECT_EQ(utdately(-400) + utdately(-100) + utdately(-4), 2);
    EXPECT_EQ(Min_depuis_org(99991231, 2359, -2000000000), INT32_MAX);
}

TEST(Dates, StoredAndDisplayForms) {
    char dst[32];
    a_org = 1950;
    auto build = [&](int32_t (*f)(const char *, char *), const char *src) {
        std::memset(dst, '#', sizeof dst);
        f(src, dst);
        return std::string(dst);
    };
    EXPECT_EQ(build(Qar_Build_Date_Qa, "29/02/2024"), "202402290000");
    EXPECT_EQ(build(Qar_Build_Date_Qa, "29/02/24"), "202402290000");
    EXPECT_EQ(build(Qar_Build_Date_Qa, "29/02/74"), "197402290000");
    EXPECT_EQ(build(Qar_Reduc_Date, "29/02/24"), "29/02/24");
    EXPECT_EQ(std::string(Qar_Inv_Date_2("20240229", dst)), "29/02/24");
    EXPECT_EQ(Qar_Inv_Date_Time("20240229173005", dst), dst);
    EXPECT_STREQ(dst, "29/02/2024 17:30:05");
    Qar_Build_Date_long("01/02/49", "17:30", dst);
    EXPECT_STREQ(dst, "204902011730");
    Qar_Build_Date_slong("01/02/50", "17:30:05", dst);
    EXPECT_STREQ(dst, "19500201173005");
    a_org = 1850; // below 1900: the unsigned pivot is huge, every year is 20yy
    EXPECT_EQ(build(Qar_Build_Date_short, "01/02/99"), "20990201");
    a_org = 1950;
    // Short or missing sources read "0" past their end, never beyond.
    EXPECT_EQ(build(Qar_Build_Date, "29/02"), "00000229");
    EXPECT_EQ(build(Qar_Inv_Date, ""), "00/00/0000");
    EXPECT_EQ(build(Qar_Inv_Date, nullptr), "00/00/0000");
    EXPECT_EQ(build(Qar_Build_Date_short, "1/2/3"), "2000/31/");
    // Not a date, yet 0 as for any text, and still four year digits.
    EXPECT_EQ(Qar_Build_Date_short("aa/bb/cc", dst) + Qar_Build_Date("aa/bb/cccc", dst), 0);
    EXPECT_STREQ(dst, "ccccbbaa");
    Qar_Build_Date_short("\xff\xff/bb/\xff\x01", dst);
    EXPECT_EQ(std::strspn(dst, "0123456789"), 4u);
}

TEST(Dates, ClockForms) {
    auto now_text = [](const char *format) {
        const std::time_t t = std::time(nullptr);
        std::tm tm{};
        localtime_r(&t, &tm);
        char buf[32];
        std::strftime(buf, sizeof buf, format, &tm);
        return std::string(buf);
    };
    platform::DateTimeRec now{};
    platform::GetTime(&now);
    EXPECT_EQ(now.dayOfWeek - 1, utdatedw(now.year, now.month, now.day));
    char dst[16];
    struct Form {
        int32_t (*get)(char *);
        const char *format;
        size_t length;
    } forms[] = {{Qar_Get_Date_short, "%Y%m%d", 8},
                 {Qar_Get_Date_long, "%Y%m%d%H%M", 12},
                 {Qar_Get_Date_slong, "%Y%m%d%H%M%S", 14}};
    for (const Form &f : forms) {
        const std::string before = now_text(f.format);
        std::memset(dst, '#', sizeof dst);
        EXPECT_EQ(f.get(dst), 0);
        const std::string after = now_text(f.format);
        EXPECT_EQ(std::strlen(dst), f.length);
        EXPECT_TRUE(dst == before || dst == after) << dst << " vs " << before << "/" << after;
    }
}

} // namespace
