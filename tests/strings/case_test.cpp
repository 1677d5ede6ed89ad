// Capitals and character sets: the platform's UpperString and its tables,
// strupr across its 255-byte chunks, and w2mstr / m2wstr byte by byte
// against the Unicode tables generated from Python's codecs.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include <vitrail/strings.h>

#include "platform/toolbox/charsets.h"
#include "platform/toolbox/textutils.h"

namespace {

TEST(Case, UpperString) {
    const struct {
        const char *in, *plain, *marked; // Mac OS Roman bytes
    } rows[] = {{"abz", "ABZ", "ABZ"},
                {"\x8E\x83\x8F\x90\x91", "EEEEE", "\x83\x83\xE9\xE6\xE8"}, // é É è ê ë
                {"\x88\x8D\x9A\xD8\xF5", "ACOYI", "\xCB\x82\x85\xD9I"},    // à ç ö ÿ ı
                {"\xBE\xBF\xCF", "\xAE\xAF\xCE", "\xAE\xAF\xCE"},          // æ ø œ
                {"\xA7\xDE\xDF\xC4\xB5\xB9\xDB\xA1", "\xA7\xDE\xDF\xC4\xB5\xB9\xDB\xA1",
                 "\xA7\xDE\xDF\xC4\xB5\xB9\xDB\xA1"}}; // ß ﬁ ﬂ ƒ µ π € ° stay
    for (const auto &r : rows) {
        for (bool marks : {false, true}) {
            Str255 p;
            char out[256];
            platform::c2pstrcpy(p, r.in);
            platform::UpperString(p, marks);
            platform::p2cstrcpy(out, p);
            EXPECT_STREQ(out, marks ? r.marked : r.plain) << r.in << " marks=" << marks;
        }
    }
    // ASCII letters go to their capitals; a capital is its own capital; both
    // tables agree once the marks are removed.
    for (int b = 0; b < 256; ++b) {
        const uint8_t plain = platform::kMacRomanUpper[b],
                      marked = platform::kMacRomanUpperMarked[b];
        if (b < 0x80) EXPECT_EQ(plain + 0, b >= 'a' && b <= 'z' ? b - 32 : b) << b;
        if (b < 0x80) EXPECT_EQ(marked, plain) << b;
        EXPECT_EQ(platform::kMacRomanUpper[plain], plain) << b;
        EXPECT_EQ(platform::kMacRomanUpper[marked], plain) << b;
    }
}

TEST(Case, StruprEveryChunk) {
    const std::string pattern = "ab\x8E\x88z\x8D", upper = "ABEAZC";
    for (size_t len : {0, 1, 254, 255, 256, 509, 510, 511, 765}) {
        std::string text, expect;
        for (size_t i = 0; i < len; ++i) text += pattern[i % 6], expect += upper[i % 6];
        std::string buf = text + '\0' + "guard";
        EXPECT_EQ(strupr(buf.data()), buf.data());
        EXPECT_EQ(buf, expect + '\0' + "guard") << len; // nothing past the terminator
    }
    EXPECT_EQ(strupr(nullptr), nullptr);
}

// Each converted byte stands for the same character on both sides; every
// other byte is left alone (so ê and ï don't come back from Mac OS Roman).
TEST(Charset, EveryByte) {
    const std::set<int> w2m = {0xB0, 0xE0, 0xE7, 0xE8, 0xE9, 0xEA, 0xEF};
    const std::set<int> m2w = {0x88, 0x8D, 0x8E, 0x8F, 0xA1};
    std::string all, mac, win;
    for (int b = 1; b < 256; ++b) all += char(b);
    w2mstr((mac = all).data());
    m2wstr((win = all).data());
    ASSERT_EQ(mac.size() + win.size(), 2 * all.size());
    for (int b = 1; b < 256; ++b) {
        const uint8_t m = mac[b - 1], w = win[b - 1];
        if (w2m.count(b))
            EXPECT_EQ(platform::kMacRomanToUnicode[m], platform::kWindows1252ToUnicode[b]);
        else
            EXPECT_EQ(m, b);
        if (m2w.count(b))
            EXPECT_EQ(platform::kWindows1252ToUnicode[w], platform::kMacRomanToUnicode[b]);
        else
            EXPECT_EQ(w, b);
        uint8_t back = 0; // Mac OS Roman is one-to-one with its characters
        EXPECT_TRUE(platform::UnicodeToMacRoman(platform::kMacRomanToUnicode[b], &back) &&
                    back == b);
    }
    uint8_t untouched = 7;
    EXPECT_FALSE(platform::UnicodeToMacRoman(U'Ž', &untouched) ||
                 platform::UnicodeToMacRoman(U'\U0001F600', &untouched) || untouched != 7);
    w2mstr(nullptr);
    m2wstr(nullptr);
}

} // namespace
