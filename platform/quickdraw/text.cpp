// Text drawing: each Mac OS Roman byte is one glyph of the port's strike
// (its font in its face and size, platform/quickdraw/glyphs.h): the advance
// comes from the strike's width table, the pixels from the glyph cache.
#include "platform/quickdraw/text.h"

#include <algorithm>
#include <string_view>

#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/glyphs.h"
#include "platform/quickdraw/port.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

Strike *PortStrike(const Port &p) {
    return StrikeFor(p.txFont, p.txFace, p.txSize);
}

std::string_view Bytes(const void *textBuf, int16_t firstByte, int16_t byteCount) {
    if (!textBuf || firstByte < 0 || byteCount <= 0) return {};
    return std::string_view(static_cast<const char *>(textBuf) + firstByte, size_t(byteCount));
}

int32_t Width(const std::array<int16_t, 256> &widths, std::string_view bytes) {
    int32_t width = 0;
    for (char b : bytes) width += widths[uint8_t(b)];
    return width;
}

void FillBox(Port &p, int32_t left, int32_t top, int32_t right, int32_t bottom, RGBColor c) {
    auto clamp = [](int32_t v) { return int16_t(std::clamp(v, -32768, 32767)); };
    FillPixels(p, Rect{clamp(top), clamp(left), clamp(bottom), clamp(right)}, c);
}

} // namespace

void TextFont(int16_t font) {
    if (Port *p = CurrentPort()) p->txFont = font;
}

void TextFace(int16_t face) {
    if (Port *p = CurrentPort()) p->txFace = face;
}

void TextSize(int16_t size) {
    if (Port *p = CurrentPort()) p->txSize = size;
}

void TextMode(int16_t mode) {
    if (Port *p = CurrentPort()) p->txMode = mode;
}

void GetFontInfo(FontInfo *info) {
    if (!info) return;
    Port *p = CurrentPort();
    Strike *strike = p ? PortStrike(*p) : nullptr;
    *info = strike ? StrikeInfo(*strike) : FontInfo{0, 0, 0, 0};
}

const int16_t *CharWidths() {
    Port *p = CurrentPort();
    Strike *strike = p ? PortStrike(*p) : nullptr;
    return strike ? StrikeWidths(*strike).data() : nullptr;
}

int16_t TextWidth(const void *textBuf, int16_t firstByte, int16_t byteCount) {
    Port *p = CurrentPort();
    Strike *strike = p ? PortStrike(*p) : nullptr;
    return strike ? int16_t(Width(StrikeWidths(*strike), Bytes(textBuf, firstByte, byteCount))) : 0;
}

int16_t StringWidth(ConstStr255Param s) {
    return s ? TextWidth(s, 1, s[0]) : 0;
}

void DrawText(const void *textBuf, int16_t firstByte, int16_t byteCount) {
    Port *p = CurrentPort();
    if (!p) return;
    Strike *strike = PortStrike(*p);
    std::string_view bytes = Bytes(textBuf, firstByte, byteCount);
    int32_t x = p->pnLoc.h, base = p->pnLoc.v, width = 0;
    if (strike) {
        const std::array<int16_t, 256> &widths = StrikeWidths(*strike);
        width = Width(widths, bytes);
        const FontInfo &fi = StrikeInfo(*strike);
        if (p->txMode == srcCopy)
            FillBox(*p, x, base - fi.ascent, x + width, base + fi.descent, p->bgColour);
        int32_t pen = x;
        for (char b : bytes) {
            GlyphMask g;
            if (StrikeGlyph(*strike, uint8_t(b), g))
                BlendMask(*p, pen + g.left, base - g.top, g.coverage, g.width, g.rows, g.pitch,
                          p->fgColour);
            pen += widths[uint8_t(b)];
        }
    }
    if (p->txFace & underline) FillBox(*p, x, base + 1, x + width, base + 2, p->fgColour);
    TraceOp op = MakeOp(*p, TraceKind::Text, x, base, x + width, base);
    try {
        op.text = MacRomanToUtf8(bytes);
    } catch (...) {}
    Record(*p, std::move(op));
    p->pnLoc.h = int16_t(x + int16_t(width));
}

void DrawString(ConstStr255Param s) {
    DrawText(s, 1, s ? s[0] : 0);
}

} // namespace platform
