// Mac OS Roman from UTF-8 (what a display's text input becomes).
#include <gtest/gtest.h>

#include <string>

#include "platform/toolbox/mac_roman.h"

TEST(Utf8ToMacRoman, EveryByteComesBackFromItsUtf8) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += char(b);
    EXPECT_EQ(platform::Utf8ToMacRoman(platform::MacRomanToUtf8(all)), all);
}

TEST(Utf8ToMacRoman, MissingAndMalformedCharactersAreDropped) {
    struct Row {
        const char *utf8, *mac;
    } rows[] = {
        {"", ""},
        {"d\xC3\xA9j\xC3\xA0", "d\x8Ej\x88"},  // déjà
        {"\xE2\x82\xAC", "\xDB"},              // euro sign
        {"a\xC4\x85z", "az"},                  // a-ogonek is not in the set
        {"\xF0\x9F\x98\x80!", "!"},            // four-byte character
        {"a\x80\xBF" "b", "ab"},               // stray continuation bytes
        {"x\xC3", "x"},                        // cut off at the end
        {"\xC3(", "("},                        // lead without its continuation
        {"\xC0\xAE\xE0\x80\xAE", ""},          // overlong forms of "."
        {"\xED\xA0\x80\xF4\x90\x80\x80\xFF", ""}, // surrogate, beyond U+10FFFF, 0xFF
    };
    for (const Row &r : rows)
        EXPECT_EQ(platform::Utf8ToMacRoman(r.utf8), std::string(r.mac)) << r.utf8;
}
