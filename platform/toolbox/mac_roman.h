// Mac OS Roman text: the platform's 8-bit character set, decoded to Unicode
// for the font engine and for file names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// The Unicode code point of one Mac OS Roman byte (0x00-0x7F are ASCII).
char32_t MacRomanToUnicode(uint8_t byte);

// The UTF-8 text of Mac OS Roman bytes (each byte gives one character).
std::string MacRomanToUtf8(std::string_view bytes);

// The Mac OS Roman bytes of UTF-8 text. A character the set lacks, and any
// malformed, overlong or cut-off sequence, is dropped (nothing stands in).
std::string Utf8ToMacRoman(std::string_view utf8);

} // namespace platform
