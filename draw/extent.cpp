// Formatted text measuring: the same walk as drawing, without drawing.
// Pen point, line and frame commands are skipped as two-byte commands here,
// their argument bytes then being measured as text.
#include <algorithm>

#include <vitrail/draw.h>

#include "draw/commands.h"
#include "draw/internal.h"
#include "platform/quickdraw/text.h"

namespace draw {

int32_t alRightExtent = 0;

namespace {

struct Measure {
    const int16_t *widths; // of the current port's font
    int64_t x;
    int32_t u;
    int64_t width = 0;
    int32_t height = 0; // runs measure 0 high
    int32_t result = 1;

    void Advance(int64_t by) { x += by, width += by; }

    void Run(const char *run, int32_t n) {
        if (!alRightExtent) Advance(RunWidth(widths, run, n));
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
VITRAIL_API int32_t GetTextExtent_Ext(GrafPtr, int32_t x, int32_t, const char *text, int32_t length,
                                      int32_t *width, int32_t *height) {
    const int16_t *widths = platform::CharWidths();
    draw::Measure m{widths, x, draw::UnitWidth(widths)};
    draw::Walk(
        text, length, [&](const char *run, int32_t n) { m.Run(run, n); },
        [&](uint8_t code, const uint8_t *p, int64_t avail) { return m.Apply(code, p, avail); });
    if (width) *width = draw::Clamp32(m.width);
    if (height) *height = m.height;
    return m.result;
}

} // extern "C"
