// Text in the current port: font, face, size and mode settings, metrics,
// drawing and measuring of length-prefixed Mac OS Roman strings. With no
// current port the setters do nothing and the queries answer 0.
#pragma once

#include <vitrail/types.h>

namespace platform {

struct FontInfo {
    int16_t ascent;
    int16_t descent;
    int16_t widMax;
    int16_t leading;
};

// srcCopy fills each glyph box with the background colour first; srcOr
// draws the glyphs only.
enum : int16_t { srcCopy = 0, srcOr = 1 };

void TextFont(int16_t font);
void TextFace(int16_t face);
void TextSize(int16_t size);
void TextMode(int16_t mode);

// Ascent, descent, widest advance and leading of the port's font, in pixels.
void GetFontInfo(FontInfo *info);

// The advance of `s` in the port's font: each glyph's rounded advance,
// 1 pixel less with condense and 1 more with extend (never below 0).
int16_t StringWidth(ConstStr255Param s);

// Draws `s` with its baseline at the pen location in the foreground colour,
// underlined (1 pixel, 1 below the baseline) with the underline face, then
// moves the pen by StringWidth.
void DrawString(ConstStr255Param s);

} // namespace platform
