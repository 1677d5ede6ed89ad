// The rules shared by the file and memory-file tables. Open: hand out the
// slot above the high-water mark while there is one, then the first free
// slot; closing the top slot lowers the mark by one. Reads are clipped to
// the known size, re-reads to the bytes before the position.
#pragma once

#include <cstdint>

namespace files {

constexpr int32_t kFreeSlot = -1;

// The slot index to use, raising `mark` in counting mode; -1 when all are taken.
template <class Slot, int32_t N>
int32_t ChooseSlot(Slot (&table)[N], int32_t &mark) {
    if (mark + 1 < N) return ++mark;
    for (int32_t i = 0; i < N; ++i)
        if (table[i].iMode == kFreeSlot) return i;
    return -1;
}

// After closing `handle`: only the top slot lowers the mark, by one.
inline void LowerMark(int32_t handle, int32_t &mark) {
    if (handle == mark) mark = handle - 1;
}

// The slot of a handle inside the table, or null.
template <class Slot, int32_t N>
Slot *SlotOf(Slot (&table)[N], int32_t handle) {
    return handle >= 0 && handle < N ? &table[handle] : nullptr;
}

// Bytes a read of `count` may take at `pos` of `size` bytes: clipped to
// what lies after the position, never negative.
inline int32_t ReadCount(int32_t count, int32_t size, int32_t pos) {
    int32_t left = size - pos;
    return count < left ? count : (left > 0 ? left : 0);
}

// Bytes a re-read of `count` may take back before `pos`.
inline int32_t RereadCount(int32_t count, int32_t pos) {
    return count < pos ? count : pos;
}

} // namespace files
