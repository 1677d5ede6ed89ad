// Text drawing: each Mac OS Roman byte is decoded to Unicode and drawn with
// the FreeType face of the port's font, face and size.
#include "platform/quickdraw/text.h"

#include <algorithm>
#include <string_view>

#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/port.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

int32_t Ceil26_6(FT_Pos v) {
    return int32_t((v + 63) >> 6);
}

FT_Face PortFace(const Port &p) {
    return FaceFor(p.txFont, p.txFace, p.txSize);
}

std::string_view Bytes(ConstStr255Param s) {
    return s ? std::string_view(reinterpret_cast<const char *>(s + 1), s[0]) : std::string_view();
}

// The advance of one glyph already loaded in `face`, with the face's
// condense and extend adjustment.
int32_t Advance(FT_Face face, int16_t txFace) {
    int32_t advance = int32_t((face->glyph->advance.x + 32) >> 6);
    if (txFace & condense) advance -= 1;
    if (txFace & extend) advance += 1;
    return std::max(advance, 0);
}

int32_t Width(FT_Face face, int16_t txFace, std::string_view bytes) {
    int32_t width = 0;
    for (char b : bytes)
        if (FT_Load_Char(face, MacRomanToUnicode(uint8_t(b)), FT_LOAD_DEFAULT) == 0)
            width += Advance(face, txFace);
    return width;
}

void BlendGlyph(Port &p, const FT_Bitmap &bm, int32_t left, int32_t top) {
    if (bm.pixel_mode != FT_PIXEL_MODE_GRAY) return;
    for (unsigned row = 0; row < bm.rows; ++row) {
        const unsigned char *line = bm.buffer + int64_t(row) * bm.pitch;
        for (unsigned col = 0; col < bm.width; ++col)
            if (line[col]) {
                int32_t x = left + int32_t(col), y = top + int32_t(row);
                Rect one{int16_t(y), int16_t(x), int16_t(y + 1), int16_t(x + 1)};
                if (x >= 0 && y >= 0 && x < p.width && y < p.height)
                    FillPixels(p, one, p.fgColour, line[col]);
            }
    }
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
    *info = FontInfo{0, 0, 0, 0};
    Port *p = CurrentPort();
    FT_Face face = p ? PortFace(*p) : nullptr;
    if (!face) return;
    const FT_Size_Metrics &m = face->size->metrics;
    int32_t ascent = Ceil26_6(m.ascender), descent = Ceil26_6(-m.descender);
    info->ascent = int16_t(ascent);
    info->descent = int16_t(descent);
    info->widMax = int16_t(Ceil26_6(m.max_advance));
    info->leading = int16_t(std::max(Ceil26_6(m.height) - ascent - descent, 0));
}

int16_t StringWidth(ConstStr255Param s) {
    Port *p = CurrentPort();
    FT_Face face = p ? PortFace(*p) : nullptr;
    return face ? int16_t(Width(face, p->txFace, Bytes(s))) : 0;
}

void DrawString(ConstStr255Param s) {
    Port *p = CurrentPort();
    if (!p) return;
    FT_Face face = PortFace(*p);
    std::string_view bytes = Bytes(s);
    int32_t x = p->pnLoc.h, base = p->pnLoc.v;
    int32_t width = face ? Width(face, p->txFace, bytes) : 0;
    if (face && p->txMode == srcCopy) {
        FontInfo fi;
        GetFontInfo(&fi);
        FillBox(*p, x, base - fi.ascent, x + width, base + fi.descent, p->bgColour);
    }
    int32_t pen = x;
    for (char b : bytes) {
        if (!face || FT_Load_Char(face, MacRomanToUnicode(uint8_t(b)), FT_LOAD_RENDER) != 0)
            continue;
        BlendGlyph(*p, face->glyph->bitmap, pen + face->glyph->bitmap_left,
                   base - face->glyph->bitmap_top);
        pen += Advance(face, p->txFace);
    }
    if (p->txFace & underline) FillBox(*p, x, base + 1, x + width, base + 2, p->fgColour);
    TraceOp op = MakeOp(*p, TraceKind::Text, x, base, x + width, base);
    try {
        op.text = MacRomanToUtf8(bytes);
    } catch (...) {}
    Record(*p, std::move(op));
    p->pnLoc.h = int16_t(x + int16_t(width));
}

} // namespace platform
