// Shared helpers of the text and drawing routines (not exported).
//
//   Static          Width   Meaning
//   posxprev        32      pen point x of the line and frame commands (16-bit value)
//   posyprev        32      pen point y
//   alRightOut      32      the next run drawn by TextOut_Ext is right-aligned
//   alRightExtent   32      runs measured by GetTextExtent_Ext add no width
#pragma once

#include <algorithm>
#include <cstdint>

#include <vitrail/types.h>

#include "platform/quickdraw/port.h"

namespace draw {

extern int32_t posxprev;
extern int32_t posyprev;
extern int32_t alRightOut;
extern int32_t alRightExtent;

// A sum used as a 16-bit coordinate, wrapping as the toolkit's coordinates do.
inline int16_t Coord(int64_t v) {
    return int16_t(uint16_t(uint64_t(v)));
}

// A 64-bit total given back as a 32-bit result, saturated.
inline int32_t Clamp32(int64_t v) {
    return int32_t(std::clamp<int64_t>(v, INT32_MIN, INT32_MAX));
}

// Makes `port` current for the life of the object, then restores the
// caller's port.
class PortSwitch {
  public:
    explicit PortSwitch(GrafPtr port) {
        platform::GetPort(&saved_);
        platform::SetPort(port);
    }
    ~PortSwitch() { platform::SetPort(saved_); }
    PortSwitch(const PortSwitch &) = delete;
    PortSwitch &operator=(const PortSwitch &) = delete;

  private:
    GrafPtr saved_ = nullptr;
};

// The width of a run of Windows text as GetTextExtent_0 measures it with
// the width table `widths` (of the current port's font): the advances of its
// bytes up to a NUL, converted as w2mstr does, as a 16-bit value. 0 when
// widths is null or length is negative or above 255.
int32_t RunWidth(const int16_t *widths, const char *text, int32_t length);

// Foreground vga_col(fg); background vga_col(bg) with text mode 0, or only
// text mode 1 when bg is 255. Works on the current port.
void SetColoursAndMode(int32_t fg, int32_t bg);

// char_dy = ascent + 1 of the current port's font.
void UpdateCharDy();

} // namespace draw
