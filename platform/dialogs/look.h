// The look of the dialogs: one quiet desktop style drawn with the ports and
// fonts of the drawing stand-in, and the geometry that hit-testing shares
// with drawing (edit offsets, list rows and scroll bar, popup menus).
//
//   Element        Look
//   window         #ECECEC
//   text           system font ("Lucida Grande") 13 px, black; inactive #A0A0A0
//   push button    rounded (radius 5), white fill, #A9A9A9 border; pressed #DADADA
//   default        #3B82F6 fill, #2563EB border, white label
//   inactive       #F6F6F6 fill, #D0D0D0 border, #A0A0A0 label
//   edit box       white, 1-px #A0A0A0 frame; focused: 2-px #3B82F6 ring
//                  outside, 1-px black caret, selection #B3D7FF
//   check box      12 x 12 rounded box; checked: #3B82F6 with a white mark
//   popup          rounded button, current choice, double arrow at the right
//   list box       white, 1-px frame; rows 12 px; selection #3875D7, white
//                  text; 15-px scroll bar when rows overflow
//   group box      1-px #B4B4B4 frame, title at the top left inside
//   popup menu     white, 1-px frame, 18-px rows, chosen row marked, the
//                  highlighted row #3875D7 with white text
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <vitrail/types.h>

#include "platform/quickdraw/port.h"

namespace platform::look {

constexpr int16_t kLabelSize = 13;
constexpr int16_t kRowSize = 12;
constexpr int16_t kScrollBarWidth = 15;
constexpr int16_t kMenuRowHeight = 18;
constexpr int16_t kIconSize = 32;

// Font number of the dialogs' system font.
int16_t SystemFont();

// Draws the control into its window's port (no current port needed).
void DrawControl(ControlRef control);

// Edit boxes: the text offset nearest to local x, and the scroll that keeps
// the caret in view.
int16_t EditOffsetAt(ControlRef edit, int16_t x);
void ScrollToCaret(ControlRef edit);

// List boxes.
int32_t ListPageRows(ControlRef list);
bool ListHasScrollBar(ControlRef list);
Rect ListScrollBar(ControlRef list);
// The thumb of the scroll bar (its position shows the first row shown).
Rect ListThumb(ControlRef list);
// The rectangle of `row` with the list scrolled as it is (local; outside
// the box for a row scrolled away), from the left edge to the scroll bar.
Rect ListRowRect(ControlRef list, int32_t row);
// The row under a local point, or -1 (outside the rows or on the scroll bar).
int32_t ListRowAt(ControlRef list, Point local);
// Moves the first row shown so that `row` is in view.
void ListScrollTo(ControlRef list, int32_t row);
// Scrolls by `rows` (negative: up), bounded by the rows.
void ListScrollBy(ControlRef list, int32_t rows);

// Popup menus: the frame of the open menu of a popup button (local
// coordinates, inside the window) and the rectangle of item 1..count.
Rect PopupMenuFrame(ControlRef popup);
Rect PopupMenuItemRect(ControlRef popup, int16_t item);
// The item under a local point, or 0.
int16_t PopupMenuItemAt(ControlRef popup, Point local);
// Draws the open menu over the window, `highlighted` item in the selection colour.
void DrawPopupMenu(ControlRef popup, int16_t highlighted);

// Pixels of a port rectangle, saved and put back (what an open menu covers).
struct SavedPixels {
    Rect rect{0, 0, 0, 0};
    std::vector<uint8_t> rgba;
};
SavedPixels SavePixels(const Port &port, Rect rect);
void RestorePixels(Port &port, const SavedPixels &saved);

// Draws a built-in icon (0 stop, 1 note, 2 caution) or cicn/<id>.png from
// the resources folder into the 32 x 32 square at (left, top). False when
// there is neither.
bool DrawIcon(Port &port, int16_t id, int16_t left, int16_t top);

// Width of Mac OS Roman text in the system font at `size` pixels.
int32_t TextWidth(std::string_view text, int16_t size);

// Draws wrapped text the way TETextBox does, in the port's own font.
void DrawTextBox(Port &port, std::string_view text, const Rect &box, int16_t just);

} // namespace platform::look
