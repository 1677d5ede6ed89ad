// The inline commands of formatted text: their kinds, their argument bytes
// and the tab arithmetic shared by drawing and measuring.
#pragma once

#include <cstdint>
#include <cstring>

#include <vitrail/types.h>

namespace draw {

constexpr uint8_t kEscape = 0xFF;

enum class Kind { Skip, Tab, StepTab, AlignOff, AlignOn, Square, Picture, PenPoint, Line, Frame };

// A command and the width of each of its arguments (1 or 2 bytes; 0 when
// it has none).
struct Command {
    Kind kind;
    int32_t argBytes;
};

// The command of byte `code`; codes outside the table are Skip.
Command Classify(uint8_t code);

// The picture drawn by `code`, or null.
const char *PictureName(uint8_t code);

// An argument read from the text: its value, the bytes it used and whether
// all of them were there. A cut two-byte argument holds its low digit alone.
struct Arg {
    int64_t value;
    int32_t used;
    bool complete;
};

// Horizontal argument (half units of u) and vertical argument (quarter
// lines of l) of `width` bytes at p, of which `avail` remain. Bytes below 32
// are negative digits.
Arg ReadH(const uint8_t *p, int64_t avail, int32_t width, int32_t u);
Arg ReadV(const uint8_t *p, int64_t avail, int32_t width, int32_t l);

// Forward tab: x becomes h (as unsigned 16-bit) when x is below it.
int64_t ForwardTab(int64_t x, int64_t h);

// Step tab: x becomes the smallest multiple of h (as unsigned 16-bit) above
// it; 0 when x is negative. When h is 0 or no multiple up to 65535 is above
// x, x does not move (so the search always ends).
int64_t StepTab(int64_t x, int64_t h);

// U: width of "X" with the width table `widths` (of the current port's
// font), at least 8 pixels.
int32_t UnitWidth(const int16_t *widths);

// L: ascent + descent + leading of the current port's font.
int32_t LineHeight(GrafPtr port);

// Walks `length` bytes of formatted text: run(bytes, n) for each run of
// bytes other than 0xFF, command(code, args, avail) for each command, which
// returns how many of the `avail` argument bytes it used. A 0xFF as the very
// last byte is skipped; a null text has no bytes.
template <class Run, class Command>
void Walk(const char *text, int32_t length, Run &&run, Command &&command) {
    const auto *t = reinterpret_cast<const uint8_t *>(text);
    for (int64_t i = 0; t && i < length;) {
        if (t[i] != kEscape) {
            const void *escape = std::memchr(t + i, kEscape, size_t(length - i));
            int64_t end = escape ? static_cast<const uint8_t *>(escape) - t : length;
            run(text + i, int32_t(end - i));
            i = end;
        } else if (i + 1 < length) {
            i += 2 + command(t[i + 1], t + i + 2, length - i - 2);
        } else {
            break;
        }
    }
}

} // namespace draw
