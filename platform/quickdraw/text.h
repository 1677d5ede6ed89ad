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

// The width table of the port's font, face and size: the advance of each of
// the 256 bytes, as the width routines add them up. Null with no port or no
// usable font; valid until the next text call.
const int16_t *CharWidths();

// The advance of byteCount bytes of textBuf from firstByte in the port's
// font: each glyph's rounded advance, 1 pixel less with condense and 1 more
// with extend (never below 0). A null buffer, negative first byte or count
// of 0 or less measures 0.
int16_t TextWidth(const void *textBuf, int16_t firstByte, int16_t byteCount);

// TextWidth of the length-prefixed `s`.
int16_t StringWidth(ConstStr255Param s);

// Draws byteCount bytes of textBuf from firstByte with the baseline at the
// pen location in the foreground colour, underlined (1 pixel, 1 below the
// baseline) with the underline face, then moves the pen by their width.
void DrawText(const void *textBuf, int16_t firstByte, int16_t byteCount);

// DrawText of the length-prefixed `s`.
void DrawString(ConstStr255Param s);

} // namespace platform
