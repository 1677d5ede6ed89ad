// Inline commands.
//
//   Code           Kind      Args       Code          Kind      Args
//   128 / 133      Tab       H1 / H2    138           Square    -
//   129 / 134      StepTab   H1 / H2    148-161, 168  Picture   -
//   130            AlignOff  -          200, 211      PenPoint  H1 V1
//   131            AlignOn   -          201, 212      PenPoint  H2 V2
//   202 / 203      Line      H1 V1 / H2 V2
//   213 / 214      Frame     H1 V1 / H2 V2
#include "draw/commands.h"

#include <array>

#include <vitrail/draw.h>

#include "draw/internal.h"

namespace draw {
namespace {

struct Entry {
    uint8_t code;
    Command command;
};

constexpr std::array<Entry, 15> kCommands = {{
    {128, {Kind::Tab, 1}},
    {133, {Kind::Tab, 2}},
    {129, {Kind::StepTab, 1}},
    {134, {Kind::StepTab, 2}},
    {130, {Kind::AlignOff, 0}},
    {131, {Kind::AlignOn, 0}},
    {138, {Kind::Square, 0}},
    {200, {Kind::PenPoint, 1}},
    {211, {Kind::PenPoint, 1}},
    {201, {Kind::PenPoint, 2}},
    {212, {Kind::PenPoint, 2}},
    {202, {Kind::Line, 1}},
    {203, {Kind::Line, 2}},
    {213, {Kind::Frame, 1}},
    {214, {Kind::Frame, 2}},
}};

constexpr std::array<const char *, 14> kPictures = {
    "repferb", "repouvb", "repferr", "repouvr", "repferv", "repouvv", "repferj",
    "repouvj", "repfero", "repouvo", "repfebb", "repfebr", "repferl", "repouvl",
};

constexpr uint8_t kFirstPicture = 148;
constexpr uint8_t kBullet = 168;
constexpr int32_t kMinUnit = 8;
constexpr int64_t kCoordRange = 65536;

// Reads a digit-coded argument: d1 * unit / div, plus high * d2 * unit for
// the second byte.
Arg Read(const uint8_t *p, int64_t avail, int32_t width, int32_t unit, int32_t div, int32_t high) {
    if (avail <= 0) return {0, 0, false};
    int64_t value = int64_t(p[0] - 32) * unit / div;
    if (width == 1) return {value, 1, true};
    if (avail < 2) return {value, 1, false};
    return {value + int64_t(high) * (p[1] - 32) * unit, 2, true};
}

} // namespace

Command Classify(uint8_t code) {
    if (PictureName(code)) return {Kind::Picture, 0};
    for (const Entry &e : kCommands)
        if (e.code == code) return e.command;
    return {Kind::Skip, 0};
}

const char *PictureName(uint8_t code) {
    if (code >= kFirstPicture && code < kFirstPicture + kPictures.size())
        return kPictures[code - kFirstPicture];
    return code == kBullet ? "puceb" : nullptr;
}

Arg ReadH(const uint8_t *p, int64_t avail, int32_t width, int32_t u) {
    return Read(p, avail, width, u, 2, 112);
}

Arg ReadV(const uint8_t *p, int64_t avail, int32_t width, int32_t l) {
    return Read(p, avail, width, l, 4, 56);
}

int64_t ForwardTab(int64_t x, int64_t h) {
    int64_t column = uint16_t(uint64_t(h));
    return x < column ? column : x;
}

int64_t StepTab(int64_t x, int64_t h) {
    int64_t step = uint16_t(uint64_t(h));
    if (x < 0) return 0;
    if (step == 0) return x;
    int64_t next = (x / step + 1) * step;
    return next < kCoordRange ? next : x;
}

int32_t UnitWidth(const int16_t *widths) {
    int32_t width = RunWidth(widths, "X", 1);
    return width < kMinUnit ? kMinUnit : width;
}

int32_t LineHeight(GrafPtr port) {
    int32_t height = 0, widMax = 0, leading = 0;
    ch_font_metrics(port, &height, &widMax, &leading);
    return height + leading;
}

} // namespace draw
