// Pictures: frames read from the PNG header, pixels blended into the port.
#include "platform/quickdraw/pictures.h"

#include <algorithm>

#include "platform/quickdraw/png.h"
#include "platform/quickdraw/port.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

// The frame as 16-bit edges. The offset comes from the file and may lie
// anywhere in 32 bits: the edges wrap as coordinates do, and right - left
// taken as 16-bit still gives the width.
Rect FrameOf(const RgbaImage &image) {
    auto edge = [](int64_t v) { return int16_t(uint16_t(uint64_t(v))); };
    return Rect{edge(image.originY), edge(image.originX),
                edge(int64_t(image.originY) + image.height),
                edge(int64_t(image.originX) + image.width)};
}

// Copies `image` into `dst` of the port, each destination pixel taking the
// nearest source pixel.
void Blit(Port &port, const RgbaImage &image, const Rect &dst) {
    int32_t w = dst.right - dst.left, h = dst.bottom - dst.top;
    if (w <= 0 || h <= 0) return;
    int32_t y0 = std::max(0, -dst.top), y1 = std::min(h, port.height - dst.top);
    int32_t x0 = std::max(0, -dst.left), x1 = std::min(w, port.width - dst.left);
    for (int32_t y = y0; y < y1; ++y) {
        int32_t py = dst.top + y;
        size_t sy = size_t(int64_t(y) * image.height / h);
        for (int32_t x = x0; x < x1; ++x) {
            int32_t px = dst.left + x;
            size_t sx = size_t(int64_t(x) * image.width / w);
            const uint8_t *s = &image.pixels[(sy * size_t(image.width) + sx) * 4];
            RGBColor c{uint16_t(s[0] * 0x101), uint16_t(s[1] * 0x101), uint16_t(s[2] * 0x101)};
            Rect one{int16_t(py), int16_t(px), int16_t(py + 1), int16_t(px + 1)};
            FillPixels(port, one, c, s[3]);
        }
    }
}

} // namespace

OSErr GetPictInfo(PicHandle picture, PictInfo *info, int16_t, int16_t, int16_t, int16_t) {
    RgbaImage frame;
    if (!picture || !info || !PngFrame(picture->data, frame)) return kPictInfoIDErr;
    info->version = 0;
    info->sourceRect = FrameOf(frame);
    return 0;
}

void DrawPicture(PicHandle picture, const Rect *dst) {
    Port *p = CurrentPort();
    if (!p || !picture || !dst) return;
    try {
        RgbaImage image;
        if (PngDecode(picture->data, image)) Blit(*p, image, *dst);
        TraceOp op = MakeOp(*p, TraceKind::Picture, dst->left, dst->top, dst->right, dst->bottom);
        op.text = MacRomanToUtf8(picture->name);
        Record(*p, std::move(op));
    } catch (...) {
        // Out of memory for the pixels: the picture is not drawn.
    }
}

} // namespace platform
