// The event queue and the tick clock.
#include "platform/dialogs/events.h"

#include <chrono>
#include <deque>

namespace platform {
namespace {

constexpr size_t kMaxQueued = 4096;
std::deque<EventRecord> queue;

} // namespace

uint32_t TickCount() {
    using namespace std::chrono;
    static const steady_clock::time_point start = steady_clock::now();
    return uint32_t(duration_cast<milliseconds>(steady_clock::now() - start).count() * 60 / 1000);
}

uint32_t GetDblTime() {
    return kDoubleClickTicks;
}

EventRecord MouseEvent(uint16_t what, WindowRef window, Point global, uint16_t modifiers,
                       uint32_t when) {
    return EventRecord{what, reinterpret_cast<uintptr_t>(window), when, global, modifiers};
}

EventRecord KeyEvent(uint8_t charCode, uint16_t modifiers, uint32_t when) {
    return EventRecord{keyDown, charCode, when, Point{0, 0}, modifiers};
}

EventRecord WindowEvent(uint16_t what, WindowRef window, uint16_t modifiers) {
    return EventRecord{what, reinterpret_cast<uintptr_t>(window), TickCount(), Point{0, 0},
                       modifiers};
}

EventRecord MovedEvent(Point global) {
    return EventRecord{osEvt, uintptr_t(kMouseMoved) << 56, TickCount(), global, 0};
}

EventRecord WheelEvent(Point global, int16_t rows) {
    return EventRecord{osEvt, uintptr_t(kWheel) << 56 | uint16_t(rows), TickCount(), global, 0};
}

EventRecord ChooseRowEvent(int16_t item, int16_t row, int16_t clicks) {
    uintptr_t m = uintptr_t(kChooseRow) << 56 | uintptr_t(uint8_t(clicks)) << 32 |
                  uintptr_t(uint16_t(item)) << 16 | uint16_t(row);
    return EventRecord{osEvt, m, TickCount(), Point{0, 0}, 0};
}

void PostEventsFirst(const EventRecord *events, size_t count) {
    if (queue.size() + count <= kMaxQueued) queue.insert(queue.begin(), events, events + count);
}

void PostEvent(const EventRecord &event) {
    if (queue.size() < kMaxQueued) queue.push_back(event);
}

bool TakeEvent(EventRecord *event) {
    if (queue.empty()) return false;
    *event = queue.front();
    queue.pop_front();
    return true;
}

bool EventsPending() {
    return !queue.empty();
}

void FlushEventsFor(WindowRef window) {
    for (auto it = queue.begin(); it != queue.end();)
        it = EventWindow(*it) == window ? queue.erase(it) : it + 1;
}

WindowRef EventWindow(const EventRecord &event) {
    switch (event.what) {
    case mouseDown:
    case mouseUp:
    case updateEvt:
    case activateEvt:
        return reinterpret_cast<WindowRef>(event.message);
    default:
        return nullptr;
    }
}

uint8_t OsEventKind(const EventRecord &event) {
    return event.what == osEvt ? uint8_t(event.message >> 56) : 0;
}

} // namespace platform
