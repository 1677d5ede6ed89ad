// Rectangles: painting, framing with the pen, moving.
#include "platform/quickdraw/shapes.h"

#include <algorithm>

#include "platform/quickdraw/port.h"

namespace platform {
namespace {

bool Empty(const Rect &r) {
    return r.right <= r.left || r.bottom <= r.top;
}

Rect Edge(int32_t top, int32_t left, int32_t bottom, int32_t right) {
    return Rect{int16_t(top), int16_t(left), int16_t(bottom), int16_t(right)};
}

} // namespace

void PaintRect(const Rect *r) {
    Port *p = CurrentPort();
    if (!p || !r) return;
    if (!Empty(*r)) FillPixels(*p, *r, p->fgColour);
    Record(*p, MakeOp(*p, TraceKind::PaintRect, r->left, r->top, r->right, r->bottom));
}

void FrameRect(const Rect *r) {
    Port *p = CurrentPort();
    if (!p || !r) return;
    int32_t pw = p->pnSize.h, ph = p->pnSize.v;
    if (!Empty(*r) && pw > 0 && ph > 0) {
        int32_t innerTop = std::min<int32_t>(r->top + ph, r->bottom);
        int32_t innerBottom = std::max<int32_t>(r->bottom - ph, innerTop);
        FillPixels(*p, Edge(r->top, r->left, innerTop, r->right), p->fgColour);
        FillPixels(*p, Edge(innerBottom, r->left, r->bottom, r->right), p->fgColour);
        int32_t leftEnd = std::min<int32_t>(r->left + pw, r->right);
        int32_t rightStart = std::max<int32_t>(r->right - pw, leftEnd);
        FillPixels(*p, Edge(innerTop, r->left, innerBottom, leftEnd), p->fgColour);
        FillPixels(*p, Edge(innerTop, rightStart, innerBottom, r->right), p->fgColour);
    }
    Record(*p, MakeOp(*p, TraceKind::FrameRect, r->left, r->top, r->right, r->bottom));
}

void OffsetRect(Rect *r, int16_t dh, int16_t dv) {
    if (!r) return;
    r->left = int16_t(r->left + dh);
    r->right = int16_t(r->right + dh);
    r->top = int16_t(r->top + dv);
    r->bottom = int16_t(r->bottom + dv);
}

} // namespace platform
