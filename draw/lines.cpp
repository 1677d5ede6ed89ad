// Lines and rectangles: each selects the port it is given, draws, leaves the
// port with a black foreground, and restores the caller's port.
#include <vitrail/draw.h>

#include "draw/internal.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/shapes.h"

namespace {

constexpr int32_t kBlack = 33;

// Line from (x1, y1) to (x2, y2) in `colour` with a square pen of penSize.
void StrokeLine(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2, RGBColor colour,
                int16_t penSize) {
    draw::PortSwitch current(port);
    platform::PenNormal();
    platform::PenSize(penSize, penSize);
    platform::RGBForeColor(&colour);
    platform::MoveTo(x1, y1);
    platform::LineTo(x2, y2);
    platform::PenNormal();
    platform::ForeColor(kBlack);
}

} // namespace

extern "C" {

VITRAIL_API void Line_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                         int16_t colourIndex, int16_t penSize) {
    StrokeLine(port, x1, y1, x2, y2, vga_col(colourIndex), penSize);
}

VITRAIL_API void LineC_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                          RGBColor rgbColour, int16_t penSize) {
    StrokeLine(port, x1, y1, x2, y2, rgbColour, penSize);
}

// Edges are the 16-bit values of x, y, x + width and y + height; an empty or
// inverted rectangle paints nothing.
VITRAIL_API void Rectangle_Ex(GrafPtr port, int32_t x, int32_t y, int32_t width, int32_t height,
                              int32_t colourIndex) {
    draw::PortSwitch current(port);
    Rect r{draw::Coord(y), draw::Coord(x), draw::Coord(int64_t(y) + height),
           draw::Coord(int64_t(x) + width)};
    RGBColor fill = vga_col(colourIndex);
    platform::RGBForeColor(&fill);
    platform::PaintRect(&r);
    platform::PenSize(1, 1);
    platform::ForeColor(kBlack);
    platform::FrameRect(&r);
}

} // extern "C"
