// Pen and colours. Lines are the union of the pen rectangle placed at every
// point of the Bresenham line, filled row by row.
//
//   Colour number   33     30     205   341    409   273   137      69
//   Colour          black  white  red   green  blue  cyan  magenta  yellow
#include "platform/quickdraw/pen.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include "platform/quickdraw/port.h"

namespace platform {
namespace {

struct NamedColour {
    int32_t number;
    RGBColor colour;
};

constexpr std::array<NamedColour, 8> kClassicColours = {{
    {33, {0, 0, 0}},
    {30, {0xFFFF, 0xFFFF, 0xFFFF}},
    {205, {0xFFFF, 0, 0}},
    {341, {0, 0xFFFF, 0}},
    {409, {0, 0, 0xFFFF}},
    {273, {0, 0xFFFF, 0xFFFF}},
    {137, {0xFFFF, 0, 0xFFFF}},
    {69, {0xFFFF, 0xFFFF, 0}},
}};

struct Pixel {
    int32_t x, y;
};

// The points of the line from a to b, ordered so that y never decreases.
std::vector<Pixel> LinePoints(Pixel a, Pixel b) {
    if (b.y < a.y || (b.y == a.y && b.x < a.x)) std::swap(a, b);
    std::vector<Pixel> points;
    int32_t dx = std::abs(b.x - a.x), dy = b.y - a.y, sx = a.x < b.x ? 1 : -1;
    int32_t err = dx - dy;
    for (Pixel p = a;;) {
        points.push_back(p);
        if (p.x == b.x && p.y == b.y) break;
        int32_t e2 = 2 * err;
        if (e2 > -dy) err -= dy, p.x += sx;
        if (e2 < dx) err += dx, p.y += 1;
    }
    return points;
}

// Fills, for each row, the span covered by the pen at the points whose pen
// rectangle crosses that row (x is monotonic, so the span is contiguous).
void StrokeLine(Port &port, Pixel a, Pixel b) {
    int32_t pw = port.pnSize.h, ph = port.pnSize.v;
    if (pw <= 0 || ph <= 0) return;
    std::vector<Pixel> pts = LinePoints(a, b);
    int32_t rowEnd = std::min(pts.back().y + ph, port.height);
    size_t first = 0, last = 0;
    for (int32_t row = std::max(pts.front().y, 0); row < rowEnd; ++row) {
        while (last + 1 < pts.size() && pts[last + 1].y <= row) ++last;
        while (pts[first].y + ph <= row) ++first;
        int32_t x0 = std::min(pts[first].x, pts[last].x), x1 = std::max(pts[first].x, pts[last].x);
        Rect span{int16_t(row), int16_t(std::max(x0, -1)), int16_t(row + 1),
                  int16_t(std::min(x1 + pw, port.width + 1))};
        FillPixels(port, span, port.fgColour);
    }
}

Port *Current() {
    return CurrentPort();
}

} // namespace

void PenNormal() {
    if (Port *p = Current()) p->pnSize = Point{1, 1};
}

void PenSize(int16_t width, int16_t height) {
    if (Port *p = Current()) p->pnSize = Point{height, width};
}

void MoveTo(int16_t h, int16_t v) {
    if (Port *p = Current()) p->pnLoc = Point{v, h};
}

void LineTo(int16_t h, int16_t v) {
    Port *p = Current();
    if (!p) return;
    Pixel from{p->pnLoc.h, p->pnLoc.v}, to{h, v};
    try {
        StrokeLine(*p, from, to);
    } catch (...) {
        // Out of memory for the points: the line is not drawn.
    }
    Record(*p, MakeOp(*p, TraceKind::Line, from.x, from.y, to.x, to.y));
    p->pnLoc = Point{v, h};
}

void RGBForeColor(const RGBColor *colour) {
    if (Port *p = Current(); p && colour) p->fgColour = *colour;
}

void RGBBackColor(const RGBColor *colour) {
    if (Port *p = Current(); p && colour) p->bgColour = *colour;
}

void ForeColor(int32_t colour) {
    Port *p = Current();
    if (!p) return;
    for (const auto &c : kClassicColours)
        if (c.number == colour) p->fgColour = c.colour;
}

} // namespace platform
