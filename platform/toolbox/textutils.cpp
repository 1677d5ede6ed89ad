// Conversions between C strings and length-prefixed strings; capitals.
#include "platform/toolbox/textutils.h"

#include <cstring>

#include "platform/toolbox/charsets.h"

namespace platform {

void c2pstrcpy(unsigned char *dst, const char *src, size_t dstSize) {
    if (!dst || dstSize == 0) return;
    size_t n = src ? std::strlen(src) : 0;
    if (n > 255) n = 255;
    if (n > dstSize - 1) n = dstSize - 1;
    if (n) std::memmove(dst + 1, src, n);
    dst[0] = static_cast<unsigned char>(n);
}

void p2cstrcpy(char *dst, const unsigned char *src) {
    if (!dst) return;
    size_t n = src ? src[0] : 0;
    if (n) std::memmove(dst, src + 1, n);
    dst[n] = '\0';
}

void UpperString(unsigned char *s, Boolean diacSensitive) {
    if (!s) return;
    const auto &table = diacSensitive ? kMacRomanUpperMarked : kMacRomanUpper;
    for (size_t i = 1; i <= s[0]; ++i) s[i] = table[s[i]];
}

} // namespace platform
