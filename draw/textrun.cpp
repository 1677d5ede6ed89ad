// One run of text (at most 255 bytes, Windows character set) drawn or
// measured in the current port. Drawing converts the run to Mac OS Roman for
// the platform; measuring adds up the width table through the same
// conversion without copying the run.
#include <array>
#include <cstring>

#include <vitrail/draw.h>
#include <vitrail/strings.h>

#include "draw/internal.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/text.h"

namespace {

constexpr int32_t kMaxRun = 255;

// Each Windows byte as w2mstr converts it.
const std::array<uint8_t, 256> kToMac = [] {
    std::array<char, 256> all{}; // bytes 1..255, then the terminator
    for (size_t i = 1; i < all.size(); ++i) all[i - 1] = char(i);
    w2mstr(all.data());
    std::array<uint8_t, 256> table{};
    for (size_t i = 1; i < table.size(); ++i) table[i] = uint8_t(all[i - 1]);
    return table;
}();

// The bytes of a run that count: up to its first NUL. -1 when length is
// negative or above 255; a null text has none.
int32_t RunLength(const char *text, int32_t length) {
    if (length < 0 || length > kMaxRun) return -1;
    if (!text) return 0;
    const void *nul = std::memchr(text, 0, size_t(length));
    return nul ? int32_t(static_cast<const char *>(nul) - text) : length;
}

} // namespace

namespace draw {

int32_t RunWidth(const int16_t *widths, const char *text, int32_t length) {
    int32_t n = RunLength(text, length), width = 0;
    if (!widths) return 0;
    for (int32_t i = 0; i < n; ++i) width += widths[kToMac[uint8_t(text[i])]];
    return int16_t(width);
}

} // namespace draw

extern "C" {

VITRAIL_API int32_t TextOut_0(GrafPtr, int32_t x, int32_t y, const char *text, int32_t length) {
    int32_t n = RunLength(text, length);
    if (n < 0) return 0;
    char mac[kMaxRun + 1];
    if (n) std::memcpy(mac, text, size_t(n));
    mac[n] = '\0';
    w2mstr(mac);
    platform::MoveTo(draw::Coord(x), draw::Coord(int64_t(y) + char_dy));
    platform::DrawText(mac, 0, int16_t(n));
    return platform::TextWidth(mac, 0, int16_t(n));
}

VITRAIL_API int32_t GetTextExtent_0(GrafPtr, const char *text, int32_t length, int32_t *width,
                                    int32_t *height) {
    if (RunLength(text, length) < 0) return 0;
    int32_t w = draw::RunWidth(platform::CharWidths(), text, length);
    if (width) *width = w;
    if (height) *height = 0;
    return w;
}

} // extern "C"
