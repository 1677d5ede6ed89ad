// The event queue of the dialogs: what a person (through a backend) or an
// automation agent does, waiting to be handled by the modal loop.
//
//   what          message                          where
//   mouseDown/Up  the window clicked (WindowRef)   global point
//   keyDown       the character code (Mac OS Roman) in the low byte   -
//   updateEvt     the window to redraw             -
//   activateEvt   the window; modifiers activeFlag set when it comes to the front
//   osEvt         kind << 56: kMouseMoved; kWheel with the rows (signed) in
//                 the low 16 bits; kChooseRow with clicks << 32 | item << 16 | row
//                 (a person scrolling to a list row or opening a popup, then
//                 clicking: the clicks are placed when the event is handled)
#pragma once

#include <cstdint>

#include <vitrail/types.h>

namespace platform {

enum : uint16_t { osEvt = 15 };
enum : uint16_t {
    activeFlag = 0x0001,
    btnState = 0x0080,
    cmdKey = 0x0100,
    shiftKey = 0x0200,
    optionKey = 0x0800,
    controlKey = 0x1000
};

// Character codes of the keys the dialogs act on.
enum : uint8_t {
    kHomeChar = 0x01,
    kEnterChar = 0x03,
    kEndChar = 0x04,
    kBackspaceChar = 0x08,
    kTabChar = 0x09,
    kReturnChar = 0x0D,
    kEscapeChar = 0x1B,
    kLeftArrowChar = 0x1C,
    kRightArrowChar = 0x1D,
    kUpArrowChar = 0x1E,
    kDownArrowChar = 0x1F,
    kDeleteChar = 0x7F
};

enum : uint8_t { kMouseMoved = 0xFA, kWheel = 0xFB, kChooseRow = 0xFC };

constexpr uint32_t kDoubleClickTicks = 30; // half a second
constexpr int kDoubleClickDistance = 4;    // pixels, each way

// Ticks (sixtieths of a second) since the first call.
uint32_t TickCount();
uint32_t GetDblTime();

// Event builders: `when` is the tick count unless given.
EventRecord MouseEvent(uint16_t what, WindowRef window, Point global, uint16_t modifiers,
                       uint32_t when);
EventRecord KeyEvent(uint8_t charCode, uint16_t modifiers, uint32_t when);
EventRecord WindowEvent(uint16_t what, WindowRef window, uint16_t modifiers = 0);
EventRecord MovedEvent(Point global);
EventRecord WheelEvent(Point global, int16_t rows);
EventRecord ChooseRowEvent(int16_t item, int16_t row, int16_t clicks);

// Appends an event (at most 4096 wait; beyond, the event is dropped).
void PostEvent(const EventRecord &event);
// Puts events at the head of the queue, in their order, to be taken next.
void PostEventsFirst(const EventRecord *events, size_t count);
// Takes the oldest event into *event; false when none waits.
bool TakeEvent(EventRecord *event);
bool EventsPending();
// Forgets the events aimed at a window (it is being disposed of).
void FlushEventsFor(WindowRef window);

// The window of a mouse, update or activate event; null for other events.
WindowRef EventWindow(const EventRecord &event);
// The osEvt kind (kMouseMoved, kWheel) or 0.
uint8_t OsEventKind(const EventRecord &event);

} // namespace platform
