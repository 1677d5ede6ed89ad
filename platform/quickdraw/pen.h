// The pen and the colours of the current port. With no current port every
// operation does nothing.
#pragma once

#include <vitrail/types.h>

namespace platform {

// A 1 x 1 pen (the pen location is kept).
void PenNormal();

// A width x height pen; a side of 0 or less draws nothing.
void PenSize(int16_t width, int16_t height);

// Moves the pen to (h, v) without drawing.
void MoveTo(int16_t h, int16_t v);

// Draws from the pen location to (h, v) with the pen rectangle hanging below
// and to the right of each point of the line, then moves the pen there.
void LineTo(int16_t h, int16_t v);

void RGBForeColor(const RGBColor *colour);
void RGBBackColor(const RGBColor *colour);

// The eight classic colours by number (blackColor 33, whiteColor 30,
// redColor 205, greenColor 341, blueColor 409, cyanColor 273,
// magentaColor 137, yellowColor 69); other numbers change nothing.
void ForeColor(int32_t colour);

} // namespace platform
