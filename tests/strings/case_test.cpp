// Capitals: the Mac OS Roman capital tables, UpperString and strupr across
// its 255-byte chunks; the generated Unicode tables.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vitrail/strings.h>

#include "platform/toolbox/charsets.h"
#include "platform/toolbox/textutils.h"

namespace {

TEST(TextUtils, UpperString) {
    struct Row {
        const char *in, *plain, *marked; // Mac OS Roman bytes
    } rows[] = {
        {"abz", "ABZ", "ABZ"},
        {"\x8E\x83\x8F\x90\x91", "EEEEE", "\x83\x83\xE9\xE6\xE8"}, // é É è ê ë
        {"\x88\x8D\x9A\xD8\xF5", "ACOYI", "\xCB\x82\x85\xD9I"},    // à ç ö ÿ ı
        {"\xBE\xBF\xCF", "\xAE\xAF\xCE", "\xAE\xAF\xCE"},          // æ ø œ
        {"\xA7\xDE\xDF\xC4\xB5\xB9", "\xA7\xDE\xDF\xC4\xB5\xB9",
         "\xA7\xDE\xDF\xC4\xB5\xB9"},                     // ß ﬁ ﬂ ƒ µ π stay
        {"1 ,;\xDB\xA1", "1 ,;\xDB\xA1", "1 ,;\xDB\xA1"}, // € ° not letters
    };
    for (const Row &r : rows) {
        for (bool marks : {false, true}) {
            Str255 p;
            platform::c2pstrcpy(p, r.in);
            platform::UpperString(p, marks);
            char out[256];
            platform::p2cstrcpy(out, p);
            EXPECT_STREQ(out, marks ? r.marked : r.plain) << r.in << " marks=" << marks;
        }
    }
}

// ASCII letters go to their capitals; a capital is its own capital; both
// tables agree once the marks are removed.
TEST(TextUtils, UpperTablesConsistent) {
    for (int b = 0; b < 256; ++b) {
        const uint8_t plain = platform::kMacRomanUpper[b];
        const uint8_t marked = platform::kMacRomanUpperMarked[b];
        if (b < 0x80) {
            const int expect = (b >= 'a' && b <= 'z') ? b - 32 : b;
            EXPECT_EQ(plain, expect) << b;
            EXPECT_EQ(marked, expect) << b;
        }
        EXPECT_EQ(platform::kMacRomanUpper[plain], plain) << "not stable at " << b;
        EXPECT_EQ(platform::kMacRomanUpper[marked], plain) << "marks disagree at " << b;
    }
}

TEST(Strupr, Chunks) {
    // Lower-case ASCII and accented letters; every byte must come out capital
    // whatever chunk it falls in, and nothing past the terminator changes.
    const std::string pattern = "ab\x8E\x88z\x8D";
    const std::string upper = "ABEAZC";
    for (size_t len : {0, 1, 254, 255, 256, 509, 510, 511, 765}) {
        std::string text, expect;
        for (size_t i = 0; i < len; ++i) {
            text += pattern[i % pattern.size()];
            expect += upper[i % upper.size()];
        }
        std::string buf = text + '\0' + "guard";
        char *s = buf.data();
        EXPECT_EQ(strupr(s), s);
        EXPECT_EQ(std::string(s), expect) << len;
        EXPECT_EQ(buf.substr(len), std::string("\0guard", 6)) << len;
    }
    EXPECT_EQ(strupr(nullptr), nullptr);
}

TEST(Charsets, UnicodeTables) {
    struct Row {
        uint8_t mac;
        uint8_t windows;
        char16_t unicode;
    } rows[] = {{0x8E, 0xE9, u'é'}, {0x88, 0xE0, u'à'},     {0x8D, 0xE7, u'ç'}, {0x8F, 0xE8, u'è'},
                {0x90, 0xEA, u'ê'}, {0x95, 0xEF, u'ï'},     {0xA1, 0xB0, u'°'}, {0xDB, 0x80, u'€'},
                {0xCF, 0x9C, u'œ'}, {0xCE, 0x8C, u'Œ'},     {0x83, 0xC9, u'É'}, {0x41, 0x41, u'A'},
                {0xD2, 0x93, u'“'}, {0xCA, 0xA0, u'\u00A0'}};
    for (const Row &r : rows) {
        EXPECT_EQ(platform::kMacRomanToUnicode[r.mac], r.unicode) << int(r.mac);
        EXPECT_EQ(platform::kWindows1252ToUnicode[r.windows], r.unicode) << int(r.windows);
        uint8_t b = 0;
        EXPECT_TRUE(platform::UnicodeToMacRoman(r.unicode, &b));
        EXPECT_EQ(b, r.mac);
    }
    for (uint8_t undefined : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(platform::kWindows1252ToUnicode[undefined], undefined);
    // Mac OS Roman is a one-to-one map: every byte comes back from its character.
    for (int b = 0; b < 256; ++b) {
        uint8_t back = 0;
        EXPECT_TRUE(platform::UnicodeToMacRoman(platform::kMacRomanToUnicode[b], &back)) << b;
        EXPECT_EQ(back, b);
    }
    uint8_t untouched = 7;
    EXPECT_FALSE(platform::UnicodeToMacRoman(U'Ž', &untouched));
    EXPECT_FALSE(platform::UnicodeToMacRoman(U'\U0001F600', &untouched));
    EXPECT_EQ(untouched, 7);
}

} // namespace
