// Formatted text drawing: runs of text in the current port, and the inline
// commands (tabs, right alignment, squares, pictures, pen points, lines and
// frames) in the given port.
#include <vitrail/draw.h>

#include "draw/commands.h"
#include "draw/internal.h"
#include "platform/quickdraw/text.h"

namespace draw {

int32_t posxprev = 0;
int32_t posyprev = 0;
int32_t alRightOut = 0;

namespace {

constexpr int32_t kSquareColour = 9;
constexpr int16_t kLinePen = 2;

// The walk through one text: where it draws and how far it has gone.
struct Writer {
    GrafPtr port;
    int64_t x, y, xOrg, yOrg;
    int32_t u, l;
    int64_t total = 0;

    void Advance(int64_t by) { x += by, total += by; }
    void MoveTo(int64_t to) { Advance(to - x); }

    void Run(const char *run, int32_t n) {
        if (alRightOut) {
            int32_t w = 0, h = 0;
            GetTextExtent_0(port, run, n, &w, &h);
            Advance(-w);
            alRightOut = 0;
        }
        Advance(TextOut_0(port, Coord(xOrg + x), Coord(yOrg + y), run, n));
    }

    void Line(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
        Line_Ex(port, Coord(xOrg + x1), Coord(yOrg + y1), Coord(xOrg + x2), Coord(yOrg + y2), 0,
                kLinePen);
    }

    // Reads H then V; stores each in the pen point as soon as it is read.
    int32_t PenPoint(const uint8_t *p, int64_t avail, int32_t width) {
        Arg h = ReadH(p, avail, width, u);
        if (h.used) posxprev = Coord(h.value);
        if (!h.complete) return h.used;
        Arg v = ReadV(p + h.used, avail - h.used, width, l);
        if (v.used) posyprev = Coord(v.value);
        return h.used + v.used;
    }

    // Line (or frame) from the pen point to (H, V) when both are complete.
    int32_t Stroke(const uint8_t *p, int64_t avail, int32_t width, bool frame) {
        Arg h = ReadH(p, avail, width, u);
        Arg v = h.complete ? ReadV(p + h.used, avail - h.used, width, l) : Arg{0, 0, false};
        if (!v.complete) return h.used + v.used;
        int16_t qx = Coord(h.value), qy = Coord(v.value);
        if (frame) {
            Line(posxprev, posyprev, qx, posyprev);
            Line(qx, posyprev, qx, qy);
            Line(qx, qy, posxprev, qy);
            Line(posxprev, qy, posxprev, posyprev);
        } else {
            Line(posxprev, posyprev, qx, qy);
            posxprev = qx, posyprev = qy;
        }
        return h.used + v.used;
    }

    // Applies the command `code` whose argument bytes start at p; returns
    // the argument bytes used.
    int32_t Apply(uint8_t code, const uint8_t *p, int64_t avail) {
        Command c = Classify(code);
        switch (c.kind) {
        case Kind::Tab:
        case Kind::StepTab: {
            Arg h = ReadH(p, avail, c.argBytes, u);
            if (h.complete)
                MoveTo(c.kind == Kind::Tab ? ForwardTab(x, h.value) : StepTab(x, h.value));
            return h.used;
        }
        case Kind::AlignOff:
            alRightOut = 0;
            return 0;
        case Kind::AlignOn:
            alRightOut = 1;
            return 0;
        case Kind::Square:
            Rectangle_Ex(port, Coord(xOrg + x + u / 2), Coord(yOrg + y + u / 2), u, u,
                         kSquareColour);
            Advance(2 * int64_t(u));
            return 0;
        case Kind::Picture:
            BMP_affic_desfond0(PictureName(code), port, Coord(xOrg + x), Coord(yOrg + y + 1));
            Advance(2 * int64_t(u));
            return 0;
        case Kind::PenPoint:
            return PenPoint(p, avail, c.argBytes);
        case Kind::Line:
            return Stroke(p, avail, c.argBytes, false);
        case Kind::Frame:
            return Stroke(p, avail, c.argBytes, true);
        case Kind::Skip:
            return 0;
        }
        return 0;
    }
};

} // namespace
} // namespace draw

extern "C" {

// A null text or a length of 0 or less draws nothing and returns 0. Runs
// above 255 bytes are skipped; see draw/commands.h for the tab limits.
VITRAIL_API int32_t TextOut_Ext(GrafPtr port, int32_t x, int32_t y, int32_t xOrg, int32_t yOrg,
                                const char *text, int32_t length) {
    if (!text || length <= 0) return 0;
    draw::Writer w{
        port, x, y, xOrg, yOrg, draw::UnitWidth(platform::CharWidths()), draw::LineHeight(port)};
    draw::Walk(
        text, length, [&](const char *run, int32_t n) { w.Run(run, n); },
        [&](uint8_t code, const uint8_t *p, int64_t avail) { return w.Apply(code, p, avail); });
    return draw::Clamp32(w.total);
}

} // extern "C"
