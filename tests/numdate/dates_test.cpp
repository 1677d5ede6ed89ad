// Dates: names, calendar rules and arithmetic checked day by day against an
// independent days-from-civil computation, the text conversions and the
// clock.
#include <vitrail/numdate.h>

#include <gtest/gtest.h>

#include "platform/toolbox/datetime.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

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

TEST(Dates, NamesAndAbbreviations) {
    const char *months[] = {"Ill\202gal", "Janvier",  "F\202vrier", "Mars", "Avril",
                            "Mai",        "Juin",     "Juillet",    "Aout", "Septembre",
                            "Octobre",    "Novembre", "D\202cembre"};
    const char *mabbr[] = {"ILL", "JAN", "F\202V", "MAR", "AVR", "MAI",   "JUI",
                           "JUI", "AOU", "SEP",    "OCT", "NOV", "D\202C"};
    for (int32_t m = 0; m <= 12; ++m) {
        EXPECT_STREQ(utdatemy(m), months[m]) << m;
        EXPECT_STREQ(utdatemm(m), mabbr[m]) << m;
    }
    for (int32_t bad : {13, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_STREQ(utdatemy(bad), "Ill\x82gal");
        EXPECT_STREQ(utdatemm(bad), "ILL");
        EXPECT_STREQ(utdatedn(bad), "Ill\x82gal");
        EXPECT_STREQ(utdatedd(bad), "ILL");
    }
    const char *days[] = {"Dimanche", "Lundi",    "Mardi",  "Mercredi",
                          "Jeudi",    "Vendredi", "Samedi", "Ill\x82gal"};
    const char *dabbr[] = {"DIM", "LUN", "MAR", "MER", "JEU", "VEN", "SAM", "ILL"};
    for (int32_t d = 0; d <= 7; ++d) {
        EXPECT_STREQ(utdatedn(d), days[d]) << d;
        EXPECT_STREQ(utdatedd(d), dabbr[d]) << d;
    }
    // One static area per routine, overwritten by the next call.
    char *first = utdatemm(1);
    EXPECT_EQ(utdatemm(2), first);
    EXPECT_STREQ(first, "F\x82V");
    EXPECT_NE(static_cast<void *>(utdatedd(0)), static_cast<void *>(first));
}

TEST(Dates, LeapYearsAndMonthLengths) {
    for (int32_t y = -800; y <= 2800; ++y) {
        const int64_t length = days_from_civil(y + 1, 1, 1) - days_from_civil(y, 1, 1);
        ASSERT_EQ(utdately(y), length == 366 ? 1 : 0) << y;
    }
    for (int32_t y = 1600; y <= 2400; ++y) {
        for (int32_t m = 1; m <= 12; ++m) {
            const int64_t next =
                m == 12 ? days_from_civil(y + 1, 1, 1) : days_from_civil(y, m + 1, 1);
            ASSERT_EQ(utdatedm(y, m), next - days_from_civil(y, m, 1)) << y << "-" << m;
        }
    }
    for (int32_t m : {0, 13, -1, 100, INT32_MIN, INT32_MAX}) EXPECT_EQ(utdatedm(2023, m), 0) << m;
}

TEST(Dates, WeekdayEveryDay) {
    for (int64_t z = days_from_civil(1, 1, 1); z <= days_from_civil(9999, 12, 31); ++z) {
        const int32_t d = civil_from_days(z);
        const int32_t want = static_cast<int32_t>(((z % 7) + 7 + 4) % 7); // 1970-01-01: Thursday
        ASSERT_EQ(utdatedw(d / 10000, d / 100 % 100, d % 100), want) << d;
    }
    for (int32_t y : {INT32_MIN, -5000, INT32_MAX}) {
        const int32_t w = utdatedw(y, INT32_MAX, INT32_MIN);
        EXPECT_GE(w, 0);
        EXPECT_LE(w, 6);
    }
}

TEST(Dates, ValidateEveryDay) {
    for (int32_t d : {20240100, 20241301, 20240001, -20240101, 0})
        EXPECT_EQ(Validate_Date(d), 0) << d;
    for (int64_t z = days_from_civil(1795, 1, 1); z <= days_from_civil(2105, 12, 31); ++z) {
        const int32_t d = civil_from_days(z);
        const int32_t in_range = d >= 18000101 && d <= 21001231;
        ASSERT_EQ(Validate_Date(d), in_range) << d;
        // The day after the month's end never validates.
        const int32_t last = d / 100 * 100 + utdatedm(d / 10000, d / 100 % 100);
        ASSERT_EQ(Validate_Date(last + 1), 0) << last + 1;
    }
}

TEST(Dates, IncrAndDiffEveryDay) {
    const uint32_t small[] = {0, 1, 2, 5, 10, 27, 28, 29, 30, 31, 59, 60, 365, 366, 400, 731, 1461};
    const uint32_t large[] = {36524, 36525, 146096, 146097, 146098, 400000, 1000000};
    const int64_t first = days_from_civil(1800, 1, 1), last = days_from_civil(2100, 12, 31);
    for (int64_t z = first; z <= last; ++z) {
        const int32_t d = civil_from_days(z);
        for (uint32_t n : small) {
            ASSERT_EQ(Get_Date_Incr(d, n), civil_from_days(z + n)) << d << "+" << n;
            ASSERT_EQ(Get_Date_Diff(d, n), civil_from_days(z - n)) << d << "-" << n;
        }
        if ((z - first) % 53 != 0) continue;
        for (uint32_t n : large) {
            ASSERT_EQ(Get_Date_Incr(d, n), civil_from_days(z + n)) << d << "+" << n;
            const int32_t before = civil_from_days(z - n); // negative before the year 0
            ASSERT_EQ(Get_Date_Diff(d, n), before < 0 ? 0 : before) << d << "-" << n;
        }
    }
}

TEST(Dates, IncrAndDiffOutOfRange) {
    const struct {
        int32_t date;
        uint32_t n;
        int32_t incr, diff;
    } rows[] = {{20241301, 5, 20241301, 20241301},    {20240001, 5, 20240001, 20240001},
                {-20240101, 5, -20240101, -20240101}, {99991231, 1, 0, 99991230},
                {99991230, 1, 99991231, 99991229},    {101, 1, 102, 0},
                {20240101, UINT32_MAX, 0, 0},         {20240100, 0, 20240100, 20231231}};
    for (const auto &r : rows) {
        EXPECT_EQ(Get_Date_Incr(r.date, r.n), r.incr) << r.date << "+" << r.n;
        EXPECT_EQ(Get_Date_Diff(r.date, r.n), r.diff) << r.date << "-" << r.n;
    }
    EXPECT_EQ(Get_Date_Incr(20240135, 0), 20240204);
}

TEST(Dates, MinutesSinceOrigin) {
    EXPECT_EQ(Min_depuis_org(99991231, 2359, -2000000000), INT32_MAX);
    for (int32_t origin : {1800, 1950, 2000}) {
        const int64_t start = days_from_civil(origin, 1, 1);
        for (int64_t z = days_from_civil(1800, 1, 1); z <= days_from_civil(2100, 12, 31); ++z) {
            const int32_t d = civil_from_days(z), y = d / 10000;
            const int32_t h = static_cast<int32_t>((z + 240000) % 24),
                          m = static_cast<int32_t>((z + 240000) % 60);
            const int64_t days = y >= origin ? z - start + 1 : z - days_from_civil(y, 1, 1) + 1;
            ASSERT_EQ(Min_depuis_org(d, h * 100 + m, origin), days * 1440 + h * 60 + m) << d;
        }
    }
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
}

// Display forms are checked against their own formatting; the stored form
// comes back from both, with the two-digit years pivoting on a_org.
TEST(Dates, StoredRoundTripEveryDay) {
    char display[16], stored[16], shortd[16], want[16];
    for (int32_t org : {1900, 1950, 1980}) {
        a_org = org;
        for (int64_t z = days_from_civil(org, 1, 1); z <= days_from_civil(org + 99, 12, 31); ++z) {
            const int32_t d = civil_from_days(z);
            char text[16];
            ASSERT_EQ(LongToNUM(d, text, 8), 0);
            text[8] = '\0';
            Qar_Inv_Date(text, display);
            std::snprintf(want, sizeof want, "%02d/%02d/%04d", d % 100, d / 100 % 100, d / 10000);
            ASSERT_STREQ(display, want);
            Qar_Build_Date(display, stored);
            ASSERT_STREQ(stored, text);
            Qar_Reduc_Date(display, shortd);
            ASSERT_STREQ(shortd, std::string(want).erase(6, 2).c_str());
            Qar_Build_Date_short(shortd, stored);
            ASSERT_STREQ(stored, text);
        }
    }
    a_org = 1950;
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
