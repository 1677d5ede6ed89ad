// Rectangles in the current port: painted in the foreground colour, framed
// with the pen. With no current port nothing is drawn.
#pragma once

#include <vitrail/types.h>

namespace platform {

// Fills the pixels left <= x < right, top <= y < bottom.
void PaintRect(const Rect *r);

// Draws the outline inside `r` with the pen's width and height.
void FrameRect(const Rect *r);

// Moves `r` by dh horizontally and dv vertically.
void OffsetRect(Rect *r, int16_t dh, int16_t dv);

} // namespace platform
