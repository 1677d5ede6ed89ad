// Font, style and colour choice for a port, and the metrics of its font.
//
//   style flag   1     2          4       8         16
//   face bit     bold  underline  italic  condense  extend
#include <array>
#include <cstring>

#include <vitrail/draw.h>
#include <vitrail/strings.h>

#include "draw/internal.h"
#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/text.h"
#include "platform/toolbox/textutils.h"

extern "C" {
VITRAIL_API char ch_font_FontName[80] = "";
VITRAIL_API int16_t char_dy = 0;
}

namespace {

constexpr int32_t kNoBackground = 255;

struct StyleBit {
    int32_t flag;
    int16_t face;
};

constexpr std::array<StyleBit, 5> kStyles = {{
    {1, platform::bold},
    {2, platform::underline},
    {4, platform::italic},
    {8, platform::condense},
    {16, platform::extend},
}};

int16_t FaceOf(int32_t style) {
    int16_t face = 0;
    for (const StyleBit &s : kStyles)
        if (style & s.flag) face = int16_t(face | s.face);
    return face;
}

} // namespace

namespace draw {

void SetColoursAndMode(int32_t fg, int32_t bg) {
    RGBColor colour = vga_col(fg);
    platform::RGBForeColor(&colour);
    if (bg == kNoBackground) {
        platform::TextMode(platform::srcOr);
        return;
    }
    colour = vga_col(bg);
    platform::RGBBackColor(&colour);
    platform::TextMode(platform::srcCopy);
}

void UpdateCharDy() {
    platform::FontInfo info{};
    platform::GetFontInfo(&info);
    char_dy = int16_t(info.ascent + 1);
}

} // namespace draw

extern "C" {

// A name longer than 79 bytes is recorded cut to 79 and looked up so; a null
// name counts as empty.
VITRAIL_API int32_t ch_font_set_ext(GrafPtr port, const char *fontName, int32_t fgColour,
                                    int32_t bgColour, int16_t size, int32_t style) {
    const char *name = fontName ? fontName : "";
    szcopy_0t(ch_font_FontName, sizeof ch_font_FontName, name,
              uint32_t(strnlen(name, sizeof ch_font_FontName)));
    if (!ch_font_FontName[0]) return 0;
    draw::PortSwitch current(port);
    Str255 pascal;
    platform::c2pstrcpy(pascal, ch_font_FontName);
    int16_t number = 0;
    platform::GetFNum(pascal, &number);
    if (number != 0) {
        platform::TextFont(number);
        platform::TextFace(FaceOf(style));
        platform::TextSize(size);
    }
    draw::SetColoursAndMode(fgColour, bgColour);
    draw::UpdateCharDy();
    return 0;
}

VITRAIL_API int32_t ch_font_set(GrafPtr port, const char *fontName, int32_t fgColour,
                                int32_t bgColour, int16_t size) {
    return ch_font_set_ext(port, fontName, fgColour, bgColour, size, 0);
}

VITRAIL_API int32_t ch_font_metrics(GrafPtr, int32_t *height, int32_t *widMax, int32_t *leading) {
    platform::FontInfo info{};
    platform::GetFontInfo(&info);
    if (height) *height = int32_t(info.ascent) + info.descent;
    if (widMax) *widMax = info.widMax;
    if (leading) *leading = info.leading;
    return 0;
}

} // extern "C"
