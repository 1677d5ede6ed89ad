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

} // namespace platform
