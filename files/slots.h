// The open policy shared by the file and memory-file tables: hand out the
// slot above the high-water mark while there is one, then the first free
// slot; closing the top slot lowers the mark by one.
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

} // namespace files
