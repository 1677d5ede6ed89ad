// Lookups over the generated character set tables.
#include "platform/toolbox/charsets.h"

#include <algorithm>

namespace platform {

bool UnicodeToMacRoman(char32_t c, uint8_t *byte) {
    auto at =
        std::lower_bound(kUnicodeToMacRoman.begin(), kUnicodeToMacRoman.end(), c,
                         [](const MacRomanCode &code, char32_t key) { return code.unicode < key; });
    if (at == kUnicodeToMacRoman.end() || at->unicode != c) return false;
    if (byte) *byte = at->byte;
    return true;
}

} // namespace platform
