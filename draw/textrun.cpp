// One run of text (at most 255 bytes) drawn or measured in the current port.
#include <cstring>

#include <vitrail/draw.h>
#include <vitrail/strings.h>

#include "draw/internal.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/text.h"
#include "platform/toolbox/textutils.h"

namespace {

constexpr int32_t kMaxRun = 255;

// The run as a length-prefixed Mac OS Roman string: false (and nothing
// made) when length is negative or above 255. A NUL in the run ends it.
bool MacRun(const char *text, int32_t length, Str255 pascal) {
    if (length < 0 || length > kMaxRun) return false;
    char copy[kMaxRun + 1];
    if (text && length > 0) std::memcpy(copy, text, size_t(length));
    copy[text ? length : 0] = '\0';
    w2mstr(copy);
    platform::c2pstrcpy(pascal, copy);
    return true;
}

} // namespace

extern "C" {

VITRAIL_API int32_t TextOut_0(GrafPtr, int32_t x, int32_t y, const char *text, int32_t length) {
    Str255 pascal;
    if (!MacRun(text, length, pascal)) return 0;
    platform::MoveTo(draw::Coord(x), draw::Coord(int64_t(y) + char_dy));
    platform::DrawString(pascal);
    return platform::StringWidth(pascal);
}

VITRAIL_API int32_t GetTextExtent_0(GrafPtr, const char *text, int32_t length, int32_t *width,
                                    int32_t *height) {
    Str255 pascal;
    if (!MacRun(text, length, pascal)) return 0;
    int32_t w = platform::StringWidth(pascal);
    if (width) *width = w;
    if (height) *height = 0;
    return w;
}

} // extern "C"
