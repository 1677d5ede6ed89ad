// Ports: creation, the current port, raster filling and the trace.
#include "platform/quickdraw/port.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace platform {
namespace {

GrafPtr current = nullptr;

uint8_t Blend(uint8_t dst, uint16_t src, uint8_t coverage) {
    int s = src >> 8;
    return uint8_t(dst + (s - dst) * coverage / 255);
}

void BlendPixel(uint8_t *p, RGBColor colour, uint8_t coverage) {
    p[0] = Blend(p[0], colour.red, coverage);
    p[1] = Blend(p[1], colour.green, coverage);
    p[2] = Blend(p[2], colour.blue, coverage);
    p[3] = 0xFF;
}

uint8_t *PixelAt(Port &port, int32_t x, int32_t y) {
    return &port.pixels[(size_t(y) * size_t(port.width) + size_t(x)) * 4];
}

} // namespace

GrafPtr NewPort(int32_t width, int32_t height) {
    if (width < 1 || height < 1 || width > kMaxPortSide || height > kMaxPortSide) return nullptr;
    Port *port = new (std::nothrow) Port;
    if (!port) return nullptr;
    try {
        port->pixels.assign(size_t(width) * size_t(height) * 4, 0xFF);
    } catch (...) {
        delete port;
        return nullptr;
    }
    port->width = width;
    port->height = height;
    return port;
}

void DisposePort(GrafPtr port) {
    if (port == current) current = nullptr;
    delete port;
}

void GetPort(GrafPtr *port) {
    if (port) *port = current;
}

void SetPort(GrafPtr port) {
    current = port;
}

GrafPtr CurrentPort() {
    return current;
}

void FillPixels(Port &port, const Rect &r, RGBColor colour, uint8_t coverage) {
    int32_t left = std::max<int32_t>(r.left, 0), right = std::min<int32_t>(r.right, port.width);
    int32_t top = std::max<int32_t>(r.top, 0), bottom = std::min<int32_t>(r.bottom, port.height);
    if (left >= right || coverage == 0) return;
    if (coverage == 255) {
        // Opaque: every pixel becomes the colour itself, written whole.
        const uint8_t rgba[4] = {uint8_t(colour.red >> 8), uint8_t(colour.green >> 8),
                                 uint8_t(colour.blue >> 8), 0xFF};
        for (int32_t y = top; y < bottom; ++y) {
            uint8_t *p = PixelAt(port, left, y);
            for (int32_t x = left; x < right; ++x, p += 4) std::memcpy(p, rgba, 4);
        }
        return;
    }
    for (int32_t y = top; y < bottom; ++y) {
        uint8_t *p = PixelAt(port, left, y);
        for (int32_t x = left; x < right; ++x, p += 4) BlendPixel(p, colour, coverage);
    }
}

void BlendMask(Port &port, int32_t left, int32_t top, const uint8_t *mask, int32_t width,
               int32_t rows, int32_t pitch, RGBColor colour) {
    int64_t x0 = std::max<int64_t>(0, -int64_t(left));
    int64_t x1 = std::min<int64_t>(width, int64_t(port.width) - left);
    int64_t y0 = std::max<int64_t>(0, -int64_t(top));
    int64_t y1 = std::min<int64_t>(rows, int64_t(port.height) - top);
    for (int64_t y = y0; y < y1 && x0 < x1; ++y) {
        const uint8_t *m = mask + y * pitch;
        uint8_t *p = PixelAt(port, int32_t(left + x0), int32_t(top + y));
        for (int64_t x = x0; x < x1; ++x, p += 4)
            if (m[x]) BlendPixel(p, colour, m[x]);
    }
}

void Record(Port &port, TraceOp op) {
    try {
        if (port.trace.size() >= kMaxTrace) port.trace.pop_front();
        port.trace.push_back(std::move(op));
    } catch (...) {
        // A trace entry that cannot be stored is dropped; drawing goes on.
    }
}

TraceOp MakeOp(const Port &port, TraceKind kind, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    return TraceOp{kind,        int16_t(x1),   int16_t(y1),   int16_t(x2),
                   int16_t(y2), port.pnSize.h, port.pnSize.v, port.fgColour,
                   port.txFont, port.txFace,   port.txSize,   port.txMode,
                   {}};
}

} // namespace platform
