// Windows <-> Mac OS Roman: every byte of a whole text against the generated
// Unicode tables, so the round trips follow.
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

// Each converted byte stands for the same character on both sides; every
// other byte is left alone (so ê and ï don't come back from Mac OS Roman).
TEST(Charset, TablesAgainstUnicode) {
    const std::set<int> w2m = {0xB0, 0xE0, 0xE7, 0xE8, 0xE9, 0xEA, 0xEF};
    const std::set<int> m2w = {0x88, 0x8D, 0x8E, 0x8F, 0xA1};
    std::string all;
    for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
    const std::string to_mac = Converted(w2mstr, all), to_win = Converted(m2wstr, all);
    ASSERT_EQ(to_mac.size(), all.size());
    ASSERT_EQ(to_win.size(), all.size());
    for (int b = 1; b < 256; ++b) {
        const auto mac = static_cast<unsigned char>(to_mac[b - 1]);
        const auto win = static_cast<unsigned char>(to_win[b - 1]);
        if (w2m.count(b))
            EXPECT_EQ(platform::kMacRomanToUnicode[mac], platform::kWindows1252ToUnicode[b]) << b;
        else
            EXPECT_EQ(mac, b) << b;
        if (m2w.count(b))
            EXPECT_EQ(platform::kWindows1252ToUnicode[win], platform::kMacRomanToUnicode[b]) << b;
        else
            EXPECT_EQ(win, b) << b;
    }
    EXPECT_EQ(Converted(w2mstr, ""), "");
    EXPECT_EQ(Converted(m2wstr, ""), "");
    w2mstr(nullptr);
    m2wstr(nullptr);
}

} // namespace
