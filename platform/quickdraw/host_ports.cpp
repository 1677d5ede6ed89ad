// Host-facing services on ports: creation, pixels, the trace and PNG export.
#include <algorithm>
#include <cstring>

#include <vitrail/platform.h>

#include "platform/quickdraw/png.h"
#include "platform/quickdraw/port.h"

namespace {

void CopyOp(const platform::TraceOp &from, vitrail_trace_op &to) {
    to.kind = int32_t(from.kind);
    to.x1 = from.x1, to.y1 = from.y1, to.x2 = from.x2, to.y2 = from.y2;
    to.pen_width = from.penWidth, to.pen_height = from.penHeight;
    to.colour = from.colour;
    to.font = from.font, to.face = from.face, to.size = from.size, to.mode = from.mode;
    size_t n = std::min(from.text.size(), sizeof to.text - 1);
    std::memcpy(to.text, from.text.data(), n);
    to.text[n] = '\0';
}

} // namespace

extern "C" {

VITRAIL_API GrafPtr vitrail_port_new(int32_t width, int32_t height) {
    return platform::NewPort(width, height);
}

VITRAIL_API void vitrail_port_dispose(GrafPtr port) {
    if (port && !port->ownedByWindow) platform::DisposePort(port);
}

VITRAIL_API void vitrail_port_set_current(GrafPtr port) {
    platform::SetPort(port);
}

VITRAIL_API GrafPtr vitrail_port_current(void) {
    return platform::CurrentPort();
}

VITRAIL_API uint32_t vitrail_port_pixel(GrafPtr port, int32_t x, int32_t y) {
    if (!port || x < 0 || y < 0 || x >= port->width || y >= port->height) return 0;
    const uint8_t *p = &port->pixels[(size_t(y) * size_t(port->width) + size_t(x)) * 4];
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
}

VITRAIL_API int32_t vitrail_port_trace_count(GrafPtr port) {
    return port ? int32_t(port->trace.size()) : 0;
}

VITRAIL_API int32_t vitrail_port_trace_get(GrafPtr port, int32_t index, vitrail_trace_op *op) {
    if (!port || !op || index < 0 || size_t(index) >= port->trace.size()) return -1;
    CopyOp(port->trace[size_t(index)], *op);
    return 0;
}

VITRAIL_API void vitrail_port_trace_clear(GrafPtr port) {
    if (port) port->trace.clear();
}

VITRAIL_API int32_t vitrail_port_write_png(GrafPtr port, const char *path) {
    if (!port || !path) return -1;
    try {
        platform::RgbaImage image;
        image.width = port->width;
        image.height = port->height;
        image.pixels = port->pixels;
        return platform::PngWrite(path, image) ? 0 : -1;
    } catch (...) {
        return -1;
    }
}

} // extern "C"
