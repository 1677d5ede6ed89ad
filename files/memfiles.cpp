// Global memory shims and memory files.
//
//   Data            What it holds
//   DATA_MFIL_TAB   5 memory-file slots: block, bytes allocated, mode, size, position
//   DATA_MFIL_ID    high-water mark of handles handed out in counting mode (-1 at load)
//
// A memory handle is the block's address, so locking is the identity. Handles
// outside 0..4 and negative counts or offsets are refused: reads and writes
// answer 0, seeks -1, pointers null.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <vitrail/files.h>

#include "files/slots.h"

namespace {

constexpr int32_t kMinAlloc = 4096;
constexpr int32_t kFree = files::kFreeSlot;

DATA_MFIL *Slot(int32_t handle) {
    return files::SlotOf(DATA_MFIL_TAB, handle);
}

DATA_MFIL *Readable(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    return s && (s->iMode == 0 || s->iMode == 2) ? s : nullptr;
}

DATA_MFIL *Writable(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    return s && (s->iMode == 1 || s->iMode == 2) ? s : nullptr;
}

// Copies n bytes out of the block at the position and advances it; the count or 0.
int32_t CopyOut(DATA_MFIL &s, void *buffer, int32_t n) {
    auto *block = static_cast<const char *>(GlobalLock(s.hMem));
    if (!block) return 0;
    if (n > 0) std::memcpy(buffer, block + s.lPos, size_t(n));
    s.lPos += n;
    GlobalUnlock(s.hMem);
    return n;
}

} // namespace

extern "C" {

VITRAIL_API DATA_MFIL DATA_MFIL_TAB[5] = {{nullptr, 0, kFree, 0, 0},
                                          {nullptr, 0, kFree, 0, 0},
                                          {nullptr, 0, kFree, 0, 0},
                                          {nullptr, 0, kFree, 0, 0},
                                          {nullptr, 0, kFree, 0, 0}};
VITRAIL_API int32_t DATA_MFIL_ID = -1;

VITRAIL_API HGLOBAL GlobalAlloc(uint32_t, int32_t size) {
    if (size < 0) return nullptr;
    return std::malloc(size ? size_t(size) : 1);
}

VITRAIL_API HGLOBAL GlobalReAlloc(HGLOBAL hMem, int32_t size, uint32_t) {
    if (size < 0) return nullptr;
    return std::realloc(hMem, size ? size_t(size) : 1);
}

VITRAIL_API HGLOBAL GlobalFree(HGLOBAL hMem) {
    std::free(hMem);
    return nullptr;
}

VITRAIL_API void *GlobalLock(HGLOBAL hMem) {
    return hMem;
}

VITRAIL_API int32_t GlobalUnlock(HGLOBAL) {
    return 0;
}

VITRAIL_API int32_t MFil_Open(const char *, int32_t size, int32_t minSize) {
    int32_t h = files::ChooseSlot(DATA_MFIL_TAB, DATA_MFIL_ID);
    if (h < 0) return -1;
    DATA_MFIL &s = DATA_MFIL_TAB[h];
    s.lPos = 0;
    int32_t alloc = size > kMinAlloc ? size : kMinAlloc;
    if (alloc < minSize) alloc = minSize;
    HGLOBAL mem = GlobalAlloc(0, alloc);
    if (!mem) return -1;
    if (!GlobalLock(mem)) {
        GlobalFree(mem);
        return -2;
    }
    GlobalUnlock(mem);
    s = DATA_MFIL{mem, alloc, 2, 0, 0};
    return h;
}

VITRAIL_API int32_t MFil_Close(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    if (!s || s->iMode == kFree) return 0;
    GlobalFree(s->hMem);
    *s = DATA_MFIL{nullptr, 0, kFree, 0, 0};
    files::LowerMark(handle, DATA_MFIL_ID);
    return 0;
}

VITRAIL_API int32_t MFil_Size(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    return s ? s->lSize : 0;
}

VITRAIL_API int32_t MFil_GetPos(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    return s ? s->lPos : 0;
}

VITRAIL_API int32_t MFil_Read(int32_t handle, void *buffer, int32_t count) {
    DATA_MFIL *s = Readable(handle);
    if (!s || count < 0) return 0;
    int32_t n = files::ReadCount(count, s->lSize, s->lPos);
    return CopyOut(*s, buffer, n);
}

VITRAIL_API int32_t MFil_Re_Read(int32_t handle, void *buffer, int32_t count) {
    DATA_MFIL *s = Readable(handle);
    if (!s || count < 0) return 0;
    int32_t n = files::RereadCount(count, s->lPos);
    s->lPos -= n;
    return CopyOut(*s, buffer, n);
}

VITRAIL_API int32_t MFil_Write(int32_t handle, const void *buffer, int32_t count) {
    DATA_MFIL *s = Writable(handle);
    if (!s || count < 0) return 0;
    // A source inside the block (from MFil_LockPtr) is found again after a move.
    const auto from = reinterpret_cast<uintptr_t>(buffer);
    const auto base = reinterpret_cast<uintptr_t>(s->hMem);
    const bool inside = from >= base && from - base < uintptr_t(s->lAlloc);
    if (inside && uintptr_t(count) > uintptr_t(s->lAlloc) - (from - base)) return 0;
    int64_t end = int64_t(s->lPos) + count;
    if (end > s->lAlloc) {
        int64_t want = count >= kMinAlloc ? end : int64_t(s->lPos) + kMinAlloc;
        if (want > INT32_MAX) return 0;
        HGLOBAL grown = GlobalReAlloc(s->hMem, int32_t(want), 0);
        if (!grown) return 0;
        s->hMem = grown;
        s->lAlloc = int32_t(want);
    }
    auto *block = static_cast<char *>(GlobalLock(s->hMem));
    if (!block) return 0;
    const char *source = inside ? block + (from - base) : static_cast<const char *>(buffer);
    if (count > 0) std::memmove(block + s->lPos, source, size_t(count));
    s->lPos += count;
    if (s->lPos > s->lSize) s->lSize = s->lPos;
    GlobalUnlock(s->hMem);
    return count;
}

VITRAIL_API int32_t MFil_Lseek(int32_t handle, int32_t offset) {
    DATA_MFIL *s = Slot(handle);
    if (!s || s->iMode == kFree || offset < 0 || offset > s->lSize) return -1;
    s->lPos = offset;
    return 0;
}

VITRAIL_API void *MFil_LockPtr(int32_t handle, int32_t offset) {
    DATA_MFIL *s = Readable(handle);
    if (!s || offset < 0 || offset > s->lSize - 1) return nullptr;
    auto *block = static_cast<char *>(GlobalLock(s->hMem));
    return block ? block + offset : nullptr;
}

VITRAIL_API int32_t MFil_UnLockPtr(int32_t handle) {
    DATA_MFIL *s = Slot(handle);
    return s ? GlobalUnlock(s->hMem) : 0;
}

} // extern "C"
