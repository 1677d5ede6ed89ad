// Formatted text measuring: the same walk as drawing, without drawing.
// Pen point, line and frame commands are skipped as two-byte commands here,
// their argument bytes then being measured as text.
#include <algorithm>

#include <vitrail/draw.h>

#include "draw/commands.h"
#include "draw/internal.h"

namespace draw {

int32_t alRightExtent = 0;

namespace {

struct Measure {
    GrafPtr port;
    int64_t x;
    int32_t u;
    int64_t width = 0;
    int32_t height = 0;
    int32_t result = 1;

    void Advance(int64_t by) { x += by, width += by; }

    void Run(const char *run, int32_t n) {
        int32_t w = 0, h = 0;
        GetTextExtent_0(port, run, n, &w, &h);
        if (!alRightExtent) Advance(w);
        height = std::max(height, h);
    }

    int32_t Apply(uint8_t code, const uint8_t *p, int64_t avail) {
        Command c = Classify(code);
        switch (c.kind) {
        case Kind::Tab:
        case Kind::StepTab: {
            Arg h = ReadH(p, avail, c.argBytes, u);
            if (!h.complete) return h.used;
            Advance((c.kind == Kind::Tab ? ForwardTab(x, h.value) : StepTab(x, h.value)) - x);
            result = 0;
            return h.used;
        }
        case Kind::AlignOff:
            alRightExtent = 0;
            return 0;
        case Kind::AlignOn:
            alRightExtent = 1;
            return 0;
        case Kind::Square:
        case Kind::Picture:
            Advance(2 * int64_t(u));
            height = std::max(height, 2 * u);
            return 0;
        default:
            return 0;
        }
    }
};

} // namespace
} // namespace draw

extern "C" {

// A null text or a length of 0 or less measures 0 x 0 and returns 1; null
// outputs are skipped.
VITRAIL_API int32_t GetTextExtent_Ext(GrafPtr port, int32_t x, int32_t, const char *text,
                                      int32_t length, int32_t *width, int32_t *height) {
    draw::Measure m{port, x, draw::UnitWidth(port)};
    const auto *t = reinterpret_cast<const uint8_t *>(text);
    for (int64_t i = 0; t && i < length;) {
        if (t[i] != draw::kEscape) {
            int64_t end = i;
            while (end < length && t[end] != draw::kEscape) ++end;
            m.Run(text + i, int32_t(end - i));
            i = end;
        } else if (i + 1 < length) {
            i += 2 + m.Apply(t[i + 1], t + i + 2, length - i - 2);
        } else {
            break;
        }
    }
    if (width) *width = draw::Clamp32(m.width);
    if (height) *height = m.height;
    return m.result;
}

} // extern "C"
