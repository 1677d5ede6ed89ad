// The desktop look: shapes with antialiased edges, clipped text, and one
// drawing routine per kind of control. Every routine erases what it owns
// before drawing, so drawing a control twice gives the same pixels.
#include "platform/dialogs/look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "platform/dialogs/controls.h"
#include "platform/dialogs/windows.h"
#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/pictures.h"
#include "platform/quickdraw/png.h"
#include "platform/quickdraw/text.h"
#include "platform/toolbox/resources.h"

namespace platform::look {
namespace {

constexpr RGBColor Hex(uint32_t rgb) {
    return RGBColor{uint16_t((rgb >> 16 & 0xFF) * 0x101), uint16_t((rgb >> 8 & 0xFF) * 0x101),
                    uint16_t((rgb & 0xFF) * 0x101)};
}

constexpr RGBColor kBlack = Hex(0x000000), kWhite = Hex(0xFFFFFF);
constexpr RGBColor kGreyText = Hex(0xA0A0A0), kAccent = Hex(0x3B82F6);
constexpr RGBColor kAccentBorder = Hex(0x2563EB), kAccentPressed = Hex(0x1D4ED8);
constexpr RGBColor kButtonBorder = Hex(0xA9A9A9), kPressed = Hex(0xDADADA);
constexpr RGBColor kInactiveFill = Hex(0xF6F6F6), kInactiveBorder = Hex(0xD0D0D0);
constexpr RGBColor kFieldFrame = Hex(0xA0A0A0), kTextSelection = Hex(0xB3D7FF);
constexpr RGBColor kRowSelection = Hex(0x3875D7), kGroupFrame = Hex(0xB4B4B4);
constexpr RGBColor kTrack = Hex(0xF2F2F2), kTrackLine = Hex(0xDADADA), kThumb = Hex(0xC2C2C2);
constexpr RGBColor kCheckBorder = Hex(0x8C8C8C), kMenuFrame = Hex(0xB4B4B4);
constexpr uint8_t kRingCoverage = 200;

int16_t C16(int32_t v) {
    return int16_t(std::clamp(v, -32768, 32767));
}

Rect Box(int32_t left, int32_t top, int32_t right, int32_t bottom) {
    return Rect{C16(top), C16(left), C16(bottom), C16(right)};
}

Rect Inset(const Rect &r, int32_t d) {
    return Box(r.left + d, r.top + d, r.right - d, r.bottom - d);
}

Rect Intersect(const Rect &a, const Rect &b) {
    return Box(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
               std::min(a.bottom, b.bottom));
}

bool IsEmpty(const Rect &r) {
    return r.right <= r.left || r.bottom <= r.top;
}

void Fill(Port &p, const Rect &r, RGBColor c, uint8_t coverage = 255) {
    if (!IsEmpty(r)) FillPixels(p, r, c, coverage);
}

void Erase(Port &p, const Rect &r) {
    Fill(p, r, p.bgColour);
}

void Dot(Port &p, int32_t x, int32_t y, RGBColor c, double coverage) {
    if (coverage > 0) Fill(p, Box(x, y, x + 1, y + 1), c, uint8_t(std::lround(coverage * 255)));
}

// A rectangle with rounded corners; edge pixels get their covered share.
void FillRound(Port &p, const Rect &r, double radius, RGBColor c) {
    double w = r.right - r.left, h = r.bottom - r.top;
    if (w <= 0 || h <= 0) return;
    radius = std::clamp(radius, 0.0, std::min(w, h) / 2);
    int32_t corner = int32_t(std::ceil(radius));
    double cx = (r.left + r.right) / 2.0, cy = (r.top + r.bottom) / 2.0;
    double hx = w / 2 - radius, hy = h / 2 - radius;
    for (int32_t y = r.top; y < r.bottom; ++y) {
        double qy = std::fabs(y + 0.5 - cy) - hy;
        if (qy <= 0) {
            Fill(p, Box(r.left, y, r.right, y + 1), c);
            continue;
        }
        int32_t inLeft = std::min<int32_t>(r.left + corner, r.right);
        int32_t inRight = std::max<int32_t>(r.right - corner, inLeft);
        Fill(p, Box(inLeft, y, inRight, y + 1), c);
        auto edge = [&](int32_t x) {
            double qx = std::fabs(x + 0.5 - cx) - hx;
            double d = std::hypot(std::max(qx, 0.0), qy) + std::min(std::max(qx, qy), 0.0) - radius;
            Dot(p, x, y, c, std::clamp(0.5 - d, 0.0, 1.0));
        };
        for (int32_t x = r.left; x < inLeft; ++x) edge(x);
        for (int32_t x = inRight; x < r.right; ++x) edge(x);
    }
}

// A border of one pixel around a filled rounded rectangle.
void FillFramedRound(Port &p, const Rect &r, double radius, RGBColor border, RGBColor fill) {
    FillRound(p, r, radius, border);
    FillRound(p, Inset(r, 1), std::max(radius - 1, 0.0), fill);
}

// The band of `width` pixels just outside r.
void FillBand(Port &p, const Rect &r, int32_t width, RGBColor c, uint8_t coverage = 255) {
    Rect o = Inset(r, -width);
    Fill(p, Box(o.left, o.top, o.right, r.top), c, coverage);
    Fill(p, Box(o.left, r.bottom, o.right, o.bottom), c, coverage);
    Fill(p, Box(o.left, r.top, r.left, r.bottom), c, coverage);
    Fill(p, Box(r.right, r.top, o.right, r.bottom), c, coverage);
}

// The 1-pixel outline inside r.
void Frame(Port &p, const Rect &r, RGBColor c) {
    FillBand(p, Inset(r, 1), 1, c);
}

struct PointF {
    double x, y;
};

// A convex or concave polygon, 4 x 4 samples a pixel (even-odd rule).
void FillPolygon(Port &p, const std::vector<PointF> &pts, RGBColor c) {
    if (pts.size() < 3) return;
    double minX = pts[0].x, maxX = minX, minY = pts[0].y, maxY = minY;
    for (const PointF &q : pts) {
        minX = std::min(minX, q.x), maxX = std::max(maxX, q.x);
        minY = std::min(minY, q.y), maxY = std::max(maxY, q.y);
    }
    auto inside = [&](double x, double y) {
        bool in = false;
        for (size_t i = 0, j = pts.size() - 1; i < pts.size(); j = i++)
            if ((pts[i].y > y) != (pts[j].y > y) &&
                x < (pts[j].x - pts[i].x) * (y - pts[i].y) / (pts[j].y - pts[i].y) + pts[i].x)
                in = !in;
        return in;
    };
    for (int32_t y = int32_t(std::floor(minY)); y < int32_t(std::ceil(maxY)); ++y)
        for (int32_t x = int32_t(std::floor(minX)); x < int32_t(std::ceil(maxX)); ++x) {
            int hits = 0;
            for (int sy = 0; sy < 4; ++sy)
                for (int sx = 0; sx < 4; ++sx)
                    hits += inside(x + (sx + 0.5) / 4, y + (sy + 0.5) / 4);
            Dot(p, x, y, c, hits / 16.0);
        }
}

// A segment `width` pixels thick with round ends.
void StrokeSegment(Port &p, PointF a, PointF b, double width, RGBColor c) {
    double r = width / 2, dx = b.x - a.x, dy = b.y - a.y, len2 = dx * dx + dy * dy;
    for (int32_t y = int32_t(std::floor(std::min(a.y, b.y) - r));
         y < int32_t(std::ceil(std::max(a.y, b.y) + r)); ++y)
        for (int32_t x = int32_t(std::floor(std::min(a.x, b.x) - r));
             x < int32_t(std::ceil(std::max(a.x, b.x) + r)); ++x) {
            double px = x + 0.5 - a.x, py = y + 0.5 - a.y;
            double t = len2 > 0 ? std::clamp((px * dx + py * dy) / len2, 0.0, 1.0) : 0;
            double d = std::hypot(px - t * dx, py - t * dy) - r;
            Dot(p, x, y, c, std::clamp(0.5 - d, 0.0, 1.0));
        }
}

void FillCircle(Port &p, double cx, double cy, double radius, RGBColor c) {
    StrokeSegment(p, {cx, cy}, {cx, cy}, 2 * radius, c);
}

// ---- Text ----------------------------------------------------------------

struct Style {
    int16_t font, size, face;
    RGBColor colour;
};

// Makes a port current with a text style, putting back the caller's port
// and that port's own state afterwards.
class OnPort {
  public:
    OnPort(Port &port, const Style &s) : port_(port), saved_(port) {
        GetPort(&caller_);
        SetPort(&port);
        port.txFont = s.font, port.txSize = s.size, port.txFace = s.face;
        port.txMode = srcOr, port.fgColour = s.colour;
    }
    ~OnPort() {
        port_.txFont = saved_.txFont, port_.txSize = saved_.txSize, port_.txFace = saved_.txFace;
        port_.txMode = saved_.txMode, port_.fgColour = saved_.fgColour, port_.pnLoc = saved_.pnLoc;
        SetPort(caller_);
    }
    OnPort(const OnPort &) = delete;
    OnPort &operator=(const OnPort &) = delete;

  private:
    struct State {
        explicit State(const Port &p)
            : txFont(p.txFont), txSize(p.txSize), txFace(p.txFace), txMode(p.txMode),
              fgColour(p.fgColour), pnLoc(p.pnLoc) {}
        int16_t txFont, txSize, txFace, txMode;
        RGBColor fgColour;
        Point pnLoc;
    };
    Port &port_;
    State saved_;
    GrafPtr caller_ = nullptr;
};

Port &MeasuringPort() {
    static Port *port = NewPort(1, 1);
    return *port;
}

void ToStr255(std::string_view s, Str255 out) {
    size_t n = std::min<size_t>(s.size(), 255);
    out[0] = uint8_t(n);
    std::memcpy(out + 1, s.data(), n);
}

struct Metrics {
    int32_t ascent, descent, leading;
};

Metrics MetricsOf(const Style &s) {
    OnPort on(MeasuringPort(), s);
    FontInfo fi;
    GetFontInfo(&fi);
    return Metrics{fi.ascent, fi.descent, fi.leading};
}

int32_t WidthOf(std::string_view text, const Style &s) {
    OnPort on(MeasuringPort(), s);
    Str255 buf;
    ToStr255(text, buf);
    return StringWidth(buf);
}

// Offsets[i]: the width of the first i bytes (glyph advances add up).
std::vector<int32_t> Offsets(std::string_view text, const Style &s) {
    std::array<int32_t, 256> advance;
    advance.fill(-1);
    std::vector<int32_t> at(text.size() + 1, 0);
    for (size_t i = 0; i < text.size(); ++i) {
        uint8_t b = uint8_t(text[i]);
        if (advance[b] < 0) advance[b] = WidthOf(text.substr(i, 1), s);
        at[i + 1] = at[i] + advance[b];
    }
    return at;
}

// The baseline that centres a line of the style in a box of height h.
int32_t CentredBaseline(const Rect &r, const Style &s) {
    Metrics m = MetricsOf(s);
    return r.top + (r.bottom - r.top - m.ascent - m.descent) / 2 + m.ascent;
}

// Draws text with its baseline at (x, baseline), only inside `clip`.
void DrawText(Port &p, std::string_view text, int32_t x, int32_t baseline, const Style &s,
              const Rect &clip) {
    Rect c = Intersect(clip, Box(0, 0, p.width, p.height));
    if (text.empty() || IsEmpty(c)) return;
    Str255 buf;
    ToStr255(text, buf);
    Metrics m = MetricsOf(s);
    int32_t width = WidthOf(text, s);
    if (x >= c.left && x + width <= c.right && baseline - m.ascent - 2 >= c.top &&
        baseline + m.descent + 1 <= c.bottom) {
        OnPort on(p, s);
        MoveTo(C16(x), C16(baseline));
        DrawString(buf);
        return;
    }
    // Clipped: draw on a copy of the clip area, then put the area back.
    int32_t w = c.right - c.left, h = c.bottom - c.top;
    GrafPtr scratch = NewPort(w, h);
    if (!scratch) return;
    auto row = [&](const Port &from, int32_t fx, int32_t fy, Port &to, int32_t tx, int32_t ty) {
        std::memcpy(&to.pixels[(size_t(ty) * size_t(to.width) + size_t(tx)) * 4],
                    &from.pixels[(size_t(fy) * size_t(from.width) + size_t(fx)) * 4],
                    size_t(w) * 4);
    };
    for (int32_t y = 0; y < h; ++y) row(p, c.left, c.top + y, *scratch, 0, y);
    {
        OnPort on(*scratch, s);
        MoveTo(C16(x - c.left), C16(baseline - c.top));
        DrawString(buf);
    }
    for (int32_t y = 0; y < h; ++y) row(*scratch, 0, y, p, c.left, c.top + y);
    DisposePort(scratch);
}

Style Label(RGBColor colour = kBlack) {
    return Style{SystemFont(), kLabelSize, 0, colour};
}

// ---- Controls ------------------------------------------------------------

bool Inactive(ControlRef c) {
    return c->hilite == kControlInactivePart;
}

bool Pressed(ControlRef c) {
    return c->hilite != 0 && !Inactive(c);
}

void DrawPushButton(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    RGBColor border = kButtonBorder, fill = kWhite, text = kBlack;
    if (Inactive(c))
        border = kInactiveBorder, fill = kInactiveFill, text = kGreyText;
    else if (c->isDefault)
        border = kAccentBorder, fill = Pressed(c) ? kAccentPressed : kAccent, text = kWhite;
    else if (Pressed(c))
        fill = kPressed;
    Erase(p, r);
    FillFramedRound(p, r, 5, border, fill);
    Style s = Label(text);
    int32_t width = WidthOf(c->title, s), inner = r.right - r.left - 8;
    int32_t x = width <= inner ? r.left + (r.right - r.left - width) / 2 : r.left + 4;
    DrawText(p, c->title, x, CentredBaseline(r, s), s, Inset(r, 2));
}

void DrawCheckMark(Port &p, const Rect &box, RGBColor c) {
    double l = box.left, t = box.top;
    StrokeSegment(p, {l + 2.8, t + 6.2}, {l + 5.0, t + 8.6}, 1.8, c);
    StrokeSegment(p, {l + 5.0, t + 8.6}, {l + 9.4, t + 3.4}, 1.8, c);
}

void DrawCheckBox(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    Erase(p, r);
    int32_t top = r.top + (r.bottom - r.top - 12) / 2;
    Rect box = Box(r.left, top, r.left + 12, top + 12);
    bool on = c->value != 0;
    RGBColor border = on ? kAccentBorder : kCheckBorder, fill = on ? kAccent : kWhite;
    if (Inactive(c))
        border = kInactiveBorder, fill = on ? Hex(0xB9CFF5) : kInactiveFill;
    else if (Pressed(c))
        fill = on ? kAccentPressed : kPressed;
    FillFramedRound(p, box, 3, border, fill);
    if (on) DrawCheckMark(p, box, kWhite);
    Style s = Label(Inactive(c) ? kGreyText : kBlack);
    DrawText(p, c->title, r.left + 18, CentredBaseline(r, s), s,
             Box(r.left + 16, r.top, r.right, r.bottom));
}

std::string MenuItemText(ControlRef c, int32_t item) {
    MenuRef menu = GetControlPopupMenuHandle(c);
    if (!menu || item < 1 || size_t(item) > menu->items.size()) return {};
    return menu->items[size_t(item - 1)];
}

void DrawPopupArrows(Port &p, double cx, double cy, RGBColor c) {
    FillPolygon(p, {{cx - 3.5, cy - 1.5}, {cx + 3.5, cy - 1.5}, {cx, cy - 5.5}}, c);
    FillPolygon(p, {{cx - 3.5, cy + 1.5}, {cx + 3.5, cy + 1.5}, {cx, cy + 5.5}}, c);
}

void DrawPopupButton(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    RGBColor text = Inactive(c) ? kGreyText : kBlack;
    Erase(p, r);
    FillFramedRound(p, r, 5, Inactive(c) ? kInactiveBorder : kButtonBorder,
                    Inactive(c)  ? kInactiveFill
                    : Pressed(c) ? kPressed
                                 : kWhite);
    Style s = Label(text);
    DrawText(p, MenuItemText(c, c->value), r.left + 8, CentredBaseline(r, s), s,
             Box(r.left + 2, r.top + 1, r.right - 18, r.bottom - 1));
    DrawPopupArrows(p, r.right - 10.5, (r.top + r.bottom) / 2.0,
                    Inactive(c) ? kGreyText : Hex(0x404040));
}

Rect ListInner(ControlRef c) {
    return Inset(c->rect, 1);
}

void DrawListBox(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    ListHandle list = c->list;
    Fill(p, r, kWhite);
    Frame(p, r, kFieldFrame);
    if (!list) return;
    Rect inner = ListInner(c);
    bool bar = ListHasScrollBar(c);
    Rect rows = Box(inner.left, inner.top, inner.right - (bar ? kScrollBarWidth : 0), inner.bottom);
    Style normal{SystemFont(), kRowSize, 0, Inactive(c) ? kGreyText : kBlack};
    Style chosen{SystemFont(), kRowSize, 0, kWhite};
    int32_t h = std::max<int32_t>(list->cellHeight, 1);
    for (int32_t row = list->top, y = inner.top;
         row < int32_t(list->rows.size()) && y < inner.bottom; ++row, y += h) {
        Rect cell = Intersect(Box(rows.left, y, rows.right, y + h), rows);
        bool selected = row == list->selected;
        if (selected) Fill(p, cell, kRowSelection);
        DrawText(p, list->rows[size_t(row)], rows.left + 4,
                 CentredBaseline(Box(rows.left, y, rows.right, y + h), normal),
                 selected ? chosen : normal, Inset(cell, 0));
    }
    if (!bar) return;
    Rect track = ListScrollBar(c);
    Fill(p, track, kTrack);
    Fill(p, Box(track.left, track.top, track.left + 1, track.bottom), kTrackLine);
    Rect thumb = ListThumb(c);
    FillRound(p, Box(track.left + 4, thumb.top + 2, track.right - 3, thumb.bottom - 2), 3.5,
              kThumb);
}

void DrawGroupBox(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    Frame(p, r, kGroupFrame);
    if (c->title.empty()) return;
    Style s = Label(Inactive(c) ? kGreyText : kBlack);
    Metrics m = MetricsOf(s);
    int32_t width = WidthOf(c->title, s);
    Rect label =
        Intersect(Box(r.left + 6, r.top + 1, r.left + 10 + width, r.top + 3 + m.ascent + m.descent),
                  Inset(r, 1));
    Erase(p, label);
    DrawText(p, c->title, r.left + 8, r.top + 2 + m.ascent, s, label);
}

void DrawEditText(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    TEHandle te = c->te;
    if (c->ringShown || c->focused) FillBand(p, r, 2, p.bgColour);
    Fill(p, r, kWhite);
    Frame(p, r, kFieldFrame);
    if (c->focused) FillBand(p, r, 2, kAccent, kRingCoverage);
    c->ringShown = c->focused;
    if (!te) return;
    Rect inner = Inset(r, 1);
    Style s = Label(Inactive(c) ? kGreyText : kBlack);
    std::vector<int32_t> at = Offsets(te->text, s);
    int32_t x0 = inner.left + 2 - te->scroll, base = CentredBaseline(r, s);
    if (c->focused && te->selStart < te->selEnd)
        Fill(p,
             Intersect(Box(x0 + at[size_t(te->selStart)], inner.top, x0 + at[size_t(te->selEnd)],
                           inner.bottom),
                       inner),
             kTextSelection);
    DrawText(p, te->text, x0, base, s, inner);
    if (c->focused && te->selStart == te->selEnd) {
        Metrics m = MetricsOf(s);
        int32_t x = x0 + at[size_t(te->selStart)];
        if (x >= inner.left && x < inner.right)
            Fill(p,
                 Box(x, std::max<int32_t>(inner.top + 1, base - m.ascent + 1), x + 1,
                     std::min<int32_t>(inner.bottom - 1, base + m.descent)),
                 kBlack);
    }
}

void DrawIconControl(Port &p, ControlRef c) {
    const Rect &r = c->rect;
    int32_t left = r.left + std::max(0, (r.right - r.left - kIconSize) / 2);
    int32_t top = r.top + std::max(0, (r.bottom - r.top - kIconSize) / 2);
    Erase(p, Box(left, top, left + kIconSize, top + kIconSize));
    DrawIcon(p, c->iconID, C16(left), C16(top));
}

// ---- Icons ---------------------------------------------------------------

void DrawExclamation(Port &p, double cx, double top, double bottom, RGBColor c) {
    StrokeSegment(p, {cx, top}, {cx, bottom - 5.5}, 3.2, c);
    FillCircle(p, cx, bottom - 1.5, 1.9, c);
}

void DrawStopIcon(Port &p, double l, double t) {
    std::vector<PointF> octagon;
    for (int i = 0; i < 8; ++i) {
        double a = (i * 45 + 22.5) * M_PI / 180;
        octagon.push_back({l + 16 + 15.5 * std::cos(a), t + 16 + 15.5 * std::sin(a)});
    }
    FillPolygon(p, octagon, Hex(0xB91C1C));
    for (PointF &q : octagon) q = {l + 16 + (q.x - l - 16) * 0.9, t + 16 + (q.y - t - 16) * 0.9};
    FillPolygon(p, octagon, Hex(0xE5483F));
    DrawExclamation(p, l + 16, t + 8, t + 25, kWhite);
}

void DrawNoteIcon(Port &p, double l, double t) {
    FillCircle(p, l + 16, t + 16, 15.5, Hex(0x2563EB));
    FillCircle(p, l + 16, t + 16, 14.3, kAccent);
    FillCircle(p, l + 16, t + 9, 2.1, kWhite);
    StrokeSegment(p, {l + 16, t + 14}, {l + 16, t + 24}, 3.4, kWhite);
}

void DrawCautionIcon(Port &p, double l, double t) {
    FillPolygon(p, {{l + 16, t + 1}, {l + 31.5, t + 29.5}, {l + 0.5, t + 29.5}}, Hex(0xC58A05));
    FillPolygon(p, {{l + 16, t + 3.6}, {l + 29.4, t + 28.3}, {l + 2.6, t + 28.3}}, Hex(0xFACC15));
    DrawExclamation(p, l + 16, t + 11, t + 26.5, Hex(0x1F1F1F));
}

bool DrawIconFile(Port &p, int16_t id, int32_t left, int32_t top) {
    std::string name = std::to_string(id);
    Str255 pname;
    ToStr255(name, pname);
    Handle h = GetNamedResource("cicn", pname);
    if (!h) return false;
    RgbaImage img;
    bool ok = PngDecode(h->data, img) && img.width > 0 && img.height > 0;
    ReleaseResource(h);
    if (!ok) return false;
    for (int32_t y = 0; y < kIconSize; ++y)
        for (int32_t x = 0; x < kIconSize; ++x) {
            const uint8_t *px =
                &img.pixels[(size_t(y * img.height / kIconSize) * size_t(img.width) +
                             size_t(x * img.width / kIconSize)) *
                            4];
            RGBColor c{uint16_t(px[0] * 0x101), uint16_t(px[1] * 0x101), uint16_t(px[2] * 0x101)};
            Dot(p, left + x, top + y, c, px[3] / 255.0);
        }
    return true;
}

} // namespace

int16_t SystemFont() {
    static const int16_t font = FontNumber("Lucida Grande");
    return font;
}

int32_t TextWidth(std::string_view text, int16_t size) {
    return WidthOf(text, Style{SystemFont(), size, 0, kBlack});
}

bool DrawIcon(Port &p, int16_t id, int16_t left, int16_t top) {
    if (DrawIconFile(p, id, left, top)) return true;
    void (*draw)(Port &, double, double) = id == kStopIcon      ? DrawStopIcon
                                           : id == kNoteIcon    ? DrawNoteIcon
                                           : id == kCautionIcon ? DrawCautionIcon
                                                                : nullptr;
    if (!draw) return false;
    // Built-in icons are drawn once over each background and then copied.
    struct Cached {
        int16_t id;
        RGBColor background;
        SavedPixels pixels;
    };
    static std::vector<Cached> cache;
    const RGBColor bg = p.bgColour;
    auto same = [&](const Cached &c) {
        return c.id == id && c.background.red == bg.red && c.background.green == bg.green &&
               c.background.blue == bg.blue;
    };
    auto hit = std::find_if(cache.begin(), cache.end(), same);
    if (hit == cache.end()) {
        GrafPtr scratch = NewPort(kIconSize, kIconSize);
        if (!scratch) return false;
        Fill(*scratch, Box(0, 0, kIconSize, kIconSize), bg);
        draw(*scratch, 0, 0);
        cache.push_back(Cached{id, bg, SavePixels(*scratch, Box(0, 0, kIconSize, kIconSize))});
        DisposePort(scratch);
        hit = cache.end() - 1;
    }
    SavedPixels placed = hit->pixels;
    placed.rect = Box(left, top, left + kIconSize, top + kIconSize);
    if (left >= 0 && top >= 0 && left + kIconSize <= p.width && top + kIconSize <= p.height)
        RestorePixels(p, placed);
    return true;
}

void DrawTextBox(Port &p, std::string_view text, const Rect &box, int16_t just) {
    Style s{p.txFont, p.txSize, p.txFace, p.fgColour};
    Erase(p, box);
    Metrics m = MetricsOf(s);
    int32_t lineHeight = std::max<int32_t>(m.ascent + m.descent + m.leading, 1);
    int32_t width = box.right - box.left;
    std::vector<std::string_view> lines;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find('\r', start);
        std::string_view para = text.substr(start, end == text.npos ? text.npos : end - start);
        // Greedy wrap: the longest run of words that fits, a lone long word cut by bytes.
        while (!para.empty()) {
            size_t fit = 0, lastSpace = 0;
            while (fit < para.size() && WidthOf(para.substr(0, fit + 1), s) <= width) {
                if (para[fit] == ' ') lastSpace = fit;
                ++fit;
            }
            if (fit == para.size()) {
                lines.push_back(para);
                break;
            }
            size_t cut = lastSpace > 0 ? lastSpace : std::max<size_t>(fit, 1);
            lines.push_back(para.substr(0, cut));
            para.remove_prefix(cut);
            while (!para.empty() && para.front() == ' ') para.remove_prefix(1);
        }
        if (end == text.npos) break;
        start = end + 1;
    }
    int32_t baseline = box.top + m.ascent;
    for (std::string_view line : lines) {
        if (baseline - m.ascent >= box.bottom) break;
        int32_t w = WidthOf(line, s), x = box.left;
        if (just == 1) x += (width - w) / 2;
        if (just == -1) x = box.right - w;
        DrawText(p, line, x, baseline, s, box);
        baseline += lineHeight;
    }
}

void DrawControl(ControlRef c) {
    Port &p = *c->window->port;
    c->invalid = false;
    c->window->dirty = true;
    if (!c->visible) return;
    switch (c->kind) {
    case ControlKind::PushButton:
        DrawPushButton(p, c);
        break;
    case ControlKind::CheckBox:
        DrawCheckBox(p, c);
        break;
    case ControlKind::PopupButton:
        DrawPopupButton(p, c);
        break;
    case ControlKind::ListBox:
        DrawListBox(p, c);
        break;
    case ControlKind::GroupBox:
        DrawGroupBox(p, c);
        break;
    case ControlKind::Icon:
        DrawIconControl(p, c);
        break;
    case ControlKind::EditText:
        DrawEditText(p, c);
        break;
    case ControlKind::StaticText: {
        OnPort on(p, Label(Inactive(c) ? kGreyText : kBlack));
        DrawTextBox(p, c->title, c->rect, 0);
        break;
    }
    case ControlKind::Picture: {
        Erase(p, c->rect);
        Str255 name;
        ToStr255(c->title, name);
        if (Handle picture = GetNamedResource("PICT", name)) {
            OnPort on(p, Label());
            DrawPicture(picture, &c->rect);
            ReleaseResource(picture);
        }
        break;
    }
    }
}

int16_t EditOffsetAt(ControlRef c, int16_t x) {
    if (!c->te) return 0;
    std::vector<int32_t> at = Offsets(c->te->text, Label());
    int32_t rel = x - (c->rect.left + 3) + c->te->scroll;
    size_t best = 0;
    for (size_t i = 1; i < at.size(); ++i)
        if (std::abs(at[i] - rel) < std::abs(at[best] - rel)) best = i;
    return int16_t(best);
}

void ScrollToCaret(ControlRef c) {
    TEHandle te = c->te;
    if (!te) return;
    std::vector<int32_t> at = Offsets(te->text, Label());
    int32_t room = std::max(c->rect.right - c->rect.left - 6, 1);
    int32_t caret = at[size_t(te->selEnd)];
    if (at.back() <= room)
        te->scroll = 0;
    else if (caret - te->scroll > room)
        te->scroll = caret - room;
    else if (caret < te->scroll)
        te->scroll = caret;
    te->scroll = std::clamp(te->scroll, 0, std::max(at.back() - room, 0));
}

int32_t ListPageRows(ControlRef c) {
    Rect inner = ListInner(c);
    int32_t h = c->list ? std::max<int32_t>(c->list->cellHeight, 1) : 1;
    return std::max<int32_t>((inner.bottom - inner.top) / h, 1);
}

bool ListHasScrollBar(ControlRef c) {
    if (!c->list) return false;
    Rect inner = ListInner(c);
    return int64_t(c->list->rows.size()) * c->list->cellHeight > inner.bottom - inner.top;
}

Rect ListScrollBar(ControlRef c) {
    Rect inner = ListInner(c);
    return Box(inner.right - kScrollBarWidth, inner.top, inner.right, inner.bottom);
}

Rect ListThumb(ControlRef c) {
    Rect track = ListScrollBar(c);
    int32_t total = c->list ? int32_t(c->list->rows.size()) : 0, page = ListPageRows(c);
    int32_t trackH = track.bottom - track.top;
    int32_t thumbH =
        std::clamp<int32_t>(trackH * page / std::max(total, 1), 16, std::max(trackH, 16));
    int32_t range = std::max(total - page, 1);
    int32_t top =
        track.top + (trackH - thumbH) * std::min(c->list ? c->list->top : 0, range) / range;
    return Box(track.left, top, track.right, top + thumbH);
}

Rect ListRowRect(ControlRef c, int32_t row) {
    Rect inner = ListInner(c);
    int32_t h = c->list ? std::max<int32_t>(c->list->cellHeight, 1) : 1;
    int32_t top = inner.top + (row - (c->list ? c->list->top : 0)) * h;
    int32_t right = ListHasScrollBar(c) ? inner.right - kScrollBarWidth : inner.right;
    return Box(inner.left, top, right, top + h);
}

int32_t ListRowAt(ControlRef c, Point pt) {
    Rect inner = ListInner(c);
    if (!c->list || pt.h < inner.left || pt.h >= inner.right || pt.v < inner.top ||
        pt.v >= inner.bottom)
        return -1;
    if (ListHasScrollBar(c) && pt.h >= inner.right - kScrollBarWidth) return -1;
    int32_t row = c->list->top + (pt.v - inner.top) / std::max<int32_t>(c->list->cellHeight, 1);
    return row < int32_t(c->list->rows.size()) ? row : -1;
}

void ListScrollTo(ControlRef c, int32_t row) {
    if (!c->list) return;
    int32_t page = ListPageRows(c);
    if (row < c->list->top)
        ListScrollBy(c, row - c->list->top);
    else if (row >= c->list->top + page)
        ListScrollBy(c, row - page + 1 - c->list->top);
}

void ListScrollBy(ControlRef c, int32_t rows) {
    if (!c->list) return;
    int32_t last = std::max<int32_t>(int32_t(c->list->rows.size()) - ListPageRows(c), 0);
    int32_t top = std::clamp<int32_t>(c->list->top + rows, 0, last);
    if (top != c->list->top) {
        c->list->top = top;
        InvalControl(c);
    }
}

Rect PopupMenuFrame(ControlRef c) {
    MenuRef menu = GetControlPopupMenuHandle(c);
    int32_t count = menu ? int32_t(menu->items.size()) : 0;
    int32_t widest = 0;
    if (menu)
        for (const std::string &item : menu->items)
            widest = std::max(widest, TextWidth(item, kLabelSize));
    int32_t width = std::max<int32_t>(c->rect.right - c->rect.left, widest + 36);
    int32_t height = count * kMenuRowHeight + 8;
    int32_t winW = c->window->port->width, winH = c->window->port->height;
    int32_t top = c->rect.bottom + 2;
    if (top + height > winH) top = c->rect.top - 2 - height;
    if (top < 0) top = std::max(0, winH - height);
    int32_t left = std::clamp<int32_t>(c->rect.left, 0, std::max(winW - width, 0));
    return Box(left, top, left + width, top + height);
}

Rect PopupMenuItemRect(ControlRef c, int16_t item) {
    Rect f = PopupMenuFrame(c);
    int32_t top = f.top + 4 + (item - 1) * kMenuRowHeight;
    return Box(f.left + 4, top, f.right - 4, top + kMenuRowHeight);
}

int16_t PopupMenuItemAt(ControlRef c, Point pt) {
    MenuRef menu = GetControlPopupMenuHandle(c);
    Rect f = PopupMenuFrame(c);
    if (!menu || pt.h < f.left || pt.h >= f.right || pt.v < f.top + 4 || pt.v >= f.bottom - 4)
        return 0;
    int32_t item = (pt.v - f.top - 4) / kMenuRowHeight + 1;
    return item <= int32_t(menu->items.size()) ? int16_t(item) : 0;
}

void DrawPopupMenu(ControlRef c, int16_t highlighted) {
    Port &p = *c->window->port;
    MenuRef menu = GetControlPopupMenuHandle(c);
    Rect f = PopupMenuFrame(c);
    Fill(p, f, kWhite);
    Frame(p, f, kMenuFrame);
    c->window->dirty = true;
    if (!menu) return;
    for (int16_t k = 1; k <= int16_t(menu->items.size()); ++k) {
        Rect row = PopupMenuItemRect(c, k);
        bool lit = k == highlighted;
        if (lit) FillRound(p, row, 3, kRowSelection);
        Style s = Label(lit ? kWhite : kBlack);
        if (k == c->value)
            DrawCheckMark(p, Box(row.left + 2, row.top + 3, row.left + 14, row.top + 15),
                          lit ? kWhite : kBlack);
        DrawText(p, menu->items[size_t(k - 1)], row.left + 18, CentredBaseline(row, s), s,
                 Box(row.left + 16, row.top, row.right - 2, row.bottom));
    }
}

SavedPixels SavePixels(const Port &p, Rect r) {
    SavedPixels saved;
    saved.rect = Intersect(r, Box(0, 0, p.width, p.height));
    if (IsEmpty(saved.rect)) return saved;
    size_t w = size_t(saved.rect.right - saved.rect.left) * 4;
    for (int32_t y = saved.rect.top; y < saved.rect.bottom; ++y) {
        const uint8_t *from =
            &p.pixels[(size_t(y) * size_t(p.width) + size_t(saved.rect.left)) * 4];
        saved.rgba.insert(saved.rgba.end(), from, from + w);
    }
    return saved;
}

void RestorePixels(Port &p, const SavedPixels &saved) {
    if (IsEmpty(saved.rect) || saved.rect.right > p.width || saved.rect.bottom > p.height) return;
    size_t w = size_t(saved.rect.right - saved.rect.left) * 4;
    if (saved.rgba.size() != w * size_t(saved.rect.bottom - saved.rect.top)) return;
    for (int32_t y = saved.rect.top; y < saved.rect.bottom; ++y)
        std::memcpy(&p.pixels[(size_t(y) * size_t(p.width) + size_t(saved.rect.left)) * 4],
                    &saved.rgba[size_t(y - saved.rect.top) * w], w);
}

} // namespace platform::look
