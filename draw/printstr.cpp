// One formatted text, sized and coloured, centred in a box when it can be.
#include <cstring>

#include <vitrail/draw.h>

#include "draw/internal.h"
#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/text.h"
#include "platform/toolbox/textutils.h"

namespace {

constexpr int32_t kBlack = 33;

// The size (and, when no font name was chosen, the font "Arial", plain)
// of the current port.
void ChooseFont(int16_t size) {
    if (ch_font_FontName[0]) {
        platform::TextSize(size);
        return;
    }
    Str255 arial;
    platform::c2pstrcpy(arial, "Arial");
    int16_t number = 0;
    platform::GetFNum(arial, &number);
    if (number == 0) return;
    platform::TextFont(number);
    platform::TextFace(0);
    platform::TextSize(size);
}

} // namespace

extern "C" {

VITRAIL_API int32_t ch_font_printstr(GrafPtr port, int32_t x, int32_t y, int32_t boxWidth,
                                     int32_t fgColour, int32_t bgColour, int16_t size,
                                     const char *text) {
    const char *s = text ? text : "";
    int32_t length = int32_t(strnlen(s, INT32_MAX));
    draw::PortSwitch current(port);
    ChooseFont(size);
    draw::SetColoursAndMode(fgColour, bgColour);
    draw::UpdateCharDy();
    int32_t w = 0, h = 0;
    int64_t left = x;
    if (GetTextExtent_Ext(port, 0, 0, s, length, &w, &h) == 1 && w < boxWidth)
        left += (int64_t(boxWidth) - w) / 2;
    int32_t start = draw::Clamp32(left);
    int32_t advance = TextOut_Ext(port, start, y, 0, 0, s, length);
    platform::ForeColor(kBlack);
    return draw::Clamp32(int64_t(start) + advance);
}

} // extern "C"
