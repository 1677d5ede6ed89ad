// Strikes: a font number in one face and size, as text is measured and
// drawn with it. Each keeps the font's metrics, the advance of every Mac OS
// Roman byte (a 256-entry table, measured once) and the glyph index of each
// byte; rendered glyphs come from FreeType's cache (its small-bitmap cache,
// and its image cache for glyphs too large for it).
#pragma once

#include <array>
#include <cstdint>

#include "platform/quickdraw/text.h"

namespace platform {

// A rendered glyph: an 8-bit coverage mask whose top-left pixel lies `left`
// pixels right of the pen and `top` pixels above the baseline.
struct GlyphMask {
    const uint8_t *coverage;
    int32_t width, rows, pitch;
    int32_t left, top;
};

struct Strike;

// The strike of font `number` in the bold, italic, condense and extend of
// `face`, at PixelSize(size); null when no font file can be loaded. Valid
// until the next call (a new strike may retire the older ones).
Strike *StrikeFor(int16_t number, int16_t face, int16_t size);

// Ascent, descent, widest advance and leading, in pixels.
const FontInfo &StrikeInfo(const Strike &strike);

// The advance of each byte: the glyph's rounded advance, 1 less with
// condense and 1 more with extend, never below 0; 0 for a glyph that does
// not load.
const std::array<int16_t, 256> &StrikeWidths(Strike &strike);

// The glyph of `byte`, rendered antialiased; false when it has no gray
// pixels to draw (a space, a glyph that does not load). The mask stays valid
// until the next glyph is asked for.
bool StrikeGlyph(Strike &strike, uint8_t byte, GlyphMask &mask);

} // namespace platform
