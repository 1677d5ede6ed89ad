// Text-edit records: the text, selection and scroll of one edit box, and
// the editing keys. Text is Mac OS Roman bytes, at most 255 of them.
#pragma once

#include <cstdint>
#include <string>

#include <vitrail/types.h>

namespace platform {

constexpr size_t kMaxEditText = 255;

struct TERec {
    std::string text;
    int16_t selStart = 0; // selection start and end offsets, start <= end
    int16_t selEnd = 0;
    int16_t anchor = 0; // the fixed end when the selection is extended
    Rect destRect{0, 0, 0, 0};
    Rect viewRect{0, 0, 0, 0};
    int32_t scroll = 0; // pixels the text is shifted left to keep the caret in view
};
using TEHandle = TERec *;

// A new empty record; null when memory runs out.
TEHandle TENew(const Rect *destRect, const Rect *viewRect);
void TEDispose(TEHandle te);
// Replaces the text with at most 255 bytes of `text`, caret at the end.
void TESetText(const void *text, int32_t length, TEHandle te);
// Selects start..end (clamped to the text; reversed bounds are swapped).
void TESetSelect(int32_t start, int32_t end, TEHandle te);

// Applies one key to the record: a printable byte (0x20 and above, except
// 0x7F) replaces the selection unless the text would pass 255 bytes;
// Backspace and Delete remove the selection or the byte before or after the
// caret; Left, Right, Home and End move the caret (extending the selection
// with shift); command-A selects all. True when the key was an editing key
// (whether or not it changed anything).
bool TEKey(uint8_t charCode, uint16_t modifiers, TEHandle te);

// Draws `length` bytes of text in the current port inside `box`, erased to
// the background colour first, wrapped at spaces (and at carriage returns)
// and clipped to the box; `just` 0 or below left, 1 centred, -1 right.
void TETextBox(const void *text, int32_t length, const Rect *box, int16_t just);

} // namespace platform
