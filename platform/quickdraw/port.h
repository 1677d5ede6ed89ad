// Drawing ports: an RGBA raster, its drawing state and a trace of what was
// drawn into it. A GrafPtr points at one; windows own one each.
//
//   State      Initial value          Set by
//   pnLoc      (0, 0)                 MoveTo, LineTo, DrawString
//   pnSize     1 x 1                  PenSize, PenNormal
//   fgColour   black                  RGBForeColor, ForeColor
//   bgColour   white                  RGBBackColor
//   txFont     0 (the system font)    TextFont
//   txFace     0 (plain)              TextFace
//   txSize     0 (12 points)          TextSize
//   txMode     1 (srcOr)              TextMode
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include <vitrail/types.h>

namespace platform {

// One drawing operation as the trace records it. Coordinates are local:
//   Line       (x1, y1) to (x2, y2), with the pen size
//   PaintRect, FrameRect, Picture   left x1, top y1, right x2, bottom y2
//   Text       pen (x1, y1) on the baseline to (x2, y1); text in UTF-8
enum class TraceKind : int32_t { Line = 1, PaintRect = 2, FrameRect = 3, Text = 4, Picture = 5 };

struct TraceOp {
    TraceKind kind;
    int16_t x1, y1, x2, y2;
    int16_t penWidth, penHeight;
    RGBColor colour;
    int16_t font, face, size, mode;
    std::string text;
};

} // namespace platform

struct OpaqueGrafPtr {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> pixels; // RGBA, rows top to bottom
    Point pnLoc{0, 0};
    Point pnSize{1, 1};
    RGBColor fgColour{0, 0, 0};
    RGBColor bgColour{0xFFFF, 0xFFFF, 0xFFFF};
    int16_t txFont = 0;
    int16_t txFace = 0;
    int16_t txSize = 0;
    int16_t txMode = 1;
    std::deque<platform::TraceOp> trace;
    bool ownedByWindow = false; // a window's port: freed with its window only
};

namespace platform {

using Port = OpaqueGrafPtr;

constexpr int32_t kMaxPortSide = 8192;
constexpr size_t kMaxTrace = 65536;

// A new white port of width x height pixels; null when a side is not in
// 1..8192 or memory runs out.
GrafPtr NewPort(int32_t width, int32_t height);

// Frees a port from NewPort; if it is the current port, there is none after.
void DisposePort(GrafPtr port);

// The current port (null until SetPort).
void GetPort(GrafPtr *port);
void SetPort(GrafPtr port);
GrafPtr CurrentPort();

// Fills the pixels of `r` (clipped to the port) with `colour`, blended by
// `coverage` (255 = opaque).
void FillPixels(Port &port, const Rect &r, RGBColor colour, uint8_t coverage = 255);

// Blends `colour` into the port through an 8-bit coverage mask of
// width x rows (rows `pitch` bytes apart) whose top-left pixel lands at
// (left, top). Pixels outside the port or of coverage 0 are left alone.
void BlendMask(Port &port, int32_t left, int32_t top, const uint8_t *mask, int32_t width,
               int32_t rows, int32_t pitch, RGBColor colour);

// Appends `op` to the port's trace, the oldest entry going beyond 65536.
void Record(Port &port, TraceOp op);

// A trace entry with the port's colour and text state filled in.
TraceOp MakeOp(const Port &port, TraceKind kind, int32_t x1, int32_t y1, int32_t x2, int32_t y2);

} // namespace platform
