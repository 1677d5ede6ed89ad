// Mac OS Roman decoding over the generated character set tables.
#include "platform/toolbox/mac_roman.h"

#include "platform/toolbox/charsets.h"

namespace platform {
namespace {

void AppendUtf8(std::string &out, char32_t c) {
    if (c < 0x80) {
        out += char(c);
    } else if (c < 0x800) {
        out += char(0xC0 | (c >> 6));
        out += char(0x80 | (c & 0x3F));
    } else {
        out += char(0xE0 | (c >> 12));
        out += char(0x80 | ((c >> 6) & 0x3F));
        out += char(0x80 | (c & 0x3F));
    }
}

// Decodes the UTF-8 sequence at utf8[*at] and moves *at past it; a
// malformed or overlong sequence gives U+FFFD and moves one byte.
char32_t NextUtf8(std::string_view utf8, size_t *at) {
    static constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};
    uint8_t lead = uint8_t(utf8[*at]);
    size_t more = lead < 0x80   ? 0
                  : lead < 0xC2 ? 4
                  : lead < 0xE0 ? 1
                  : lead < 0xF0 ? 2
                  : lead < 0xF5 ? 3
                                : 4;
    if (more == 4) return ++*at, char32_t(0xFFFD); // a continuation byte or no UTF-8 lead
    char32_t c = more ? lead & (0x3F >> more) : lead;
    for (size_t k = 1; k <= more; ++k) {
        uint8_t b = *at + k < utf8.size() ? uint8_t(utf8[*at + k]) : 0;
        if ((b & 0xC0) != 0x80) return ++*at, char32_t(0xFFFD);
        c = c << 6 | (b & 0x3F);
    }
    if (c < kMin[more]) return ++*at, char32_t(0xFFFD);
    *at += more + 1;
    return c;
}

} // namespace

char32_t MacRomanToUnicode(uint8_t byte) {
    return kMacRomanToUnicode[byte];
}

std::string MacRomanToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (char b : bytes) AppendUtf8(out, MacRomanToUnicode(uint8_t(b)));
    return out;
}

std::string Utf8ToMacRoman(std::string_view utf8) {
    std::string out;
    for (size_t at = 0; at < utf8.size();) {
        uint8_t b;
        if (UnicodeToMacRoman(NextUtf8(utf8, &at), &b)) out += char(b);
    }
    return out;
}

} // namespace platform
