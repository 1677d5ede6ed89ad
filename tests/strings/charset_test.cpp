// Windows <-> Mac OS Roman: the converted letters against the generated
// Unicode tables, and which bytes survive a round trip.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include <vitrail/strings.h>

#include "platform/toolbox/charsets.h"

namespace {

std::string Converted(void (*fn)(char *), std::string s) {
    fn(s.data());
    return s;
}

TEST(Charset, Examples) {
    struct Row {
        void (*fn)(char *);
        const char *in, *out;
    } rows[] = {
        {w2mstr, "C\xF4te", "C\xF4te"},     // ô is not converted
        {w2mstr, "\xC9t\xE9", "\xC9t\x8E"}, // É is not, é is
        {w2mstr, "\xE0 \xE7 \xE8 \xE9 \xB0", "\x88 \x8D \x8F \x8E \xA1"},
        {w2mstr, "\xEA\xEF", "\x90\x95"},
        {m2wstr, "\x88 \x8D \x8F \x8E \xA1", "\xE0 \xE7 \xE8 \xE9 \xB0"},
        {m2wstr, "\x90\x95", "\x90\x95"},         // ê and ï come back unchanged
        {w2mstr, "\x80\x9C\x8C", "\x80\x9C\x8C"}, // € œ Œ are not converted
        {m2wstr, "\xDB\xCF", "\xDB\xCF"},
        {w2mstr, "", ""},
        {m2wstr, "", ""},
    };
    for (const Row &r : rows) EXPECT_EQ(Converted(r.fn, r.in), r.out) << r.in;
    w2mstr(nullptr);
    m2wstr(nullptr);
}

// Each converted byte stands for the same character on both sides; every
// other byte is left alone.
TEST(Charset, TablesAgainstUnicode) {
    const std::set<int> w2m = {0xB0, 0xE0, 0xE7, 0xE8, 0xE9, 0xEA, 0xEF};
    const std::set<int> m2w = {0x88, 0x8D, 0x8E, 0x8F, 0xA1};
    for (int b = 1; b < 256; ++b) {
        const char in[2] = {static_cast<char>(b), '\0'};
        const auto to_mac = static_cast<unsigned char>(Converted(w2mstr, in)[0]);
        const auto to_win = static_cast<unsigned char>(Converted(m2wstr, in)[0]);
        if (w2m.count(b))
            EXPECT_EQ(platform::kMacRomanToUnicode[to_mac], platform::kWindows1252ToUnicode[b])
                << b;
        else
            EXPECT_EQ(to_mac, b) << b;
        if (m2w.count(b))
            EXPECT_EQ(platform::kWindows1252ToUnicode[to_win], platform::kMacRomanToUnicode[b])
                << b;
        else
            EXPECT_EQ(to_win, b) << b;
    }
}

// A Windows text comes back from a Mac round trip except for ê and ï (not
// converted back) and the Mac bytes of the converted letters; a Mac text
// comes back except for the Windows bytes of the converted letters.
TEST(Charset, RoundTrips) {
    const std::set<int> lost_from_windows = {0xEA, 0xEF, 0x88, 0x8D, 0x8E, 0x8F, 0xA1};
    const std::set<int> lost_from_mac = {0xB0, 0xE0, 0xE7, 0xE8, 0xE9, 0xEA, 0xEF};
    std::string all;
    for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
    const std::string windows_trip = Converted(m2wstr, Converted(w2mstr, all));
    const std::string mac_trip = Converted(w2mstr, Converted(m2wstr, all));
    ASSERT_EQ(windows_trip.size(), all.size());
    ASSERT_EQ(mac_trip.size(), all.size());
    for (int b = 1; b < 256; ++b) {
        EXPECT_EQ(windows_trip[b - 1] == all[b - 1], !lost_from_windows.count(b)) << b;
        EXPECT_EQ(mac_trip[b - 1] == all[b - 1], !lost_from_mac.count(b)) << b;
    }
}

} // namespace
