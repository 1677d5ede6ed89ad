// Loading profile files into memory files.
#include "profile/load.h"

#include <sys/stat.h>

#include <vitrail/files.h>

namespace profile {

namespace {

constexpr int32_t kFirstRead = 64 * 1024;

// Reads the rest of `fd` into memory file h, which holds what was read so
// far, straight into the block; `size` is the file's size when known.
bool ReadRest(int32_t fd, int32_t h, int64_t size) {
    for (;;) {
        const DATA_MFIL &slot = DATA_MFIL_TAB[h];
        int32_t room = slot.lAlloc - slot.lPos;
        char *at = static_cast<char *>(slot.hMem) + slot.lPos;
        char spill[16384];
        bool inPlace = room > 0;
        int32_t n = xFile_Read(fd, inPlace ? at : spill, inPlace ? room : int32_t(sizeof spill));
        if (n <= 0) return true;
        // MFil_Write records bytes already in place without copying them.
        if (MFil_Write(h, inPlace ? at : spill, n) != n) return false;
        if (inPlace && n < room && slot.lPos >= size) return true;
    }
}

} // namespace

int32_t LoadIntoMemoryFile(int32_t fd) {
    // A profile of up to 64 KiB is read with one call: a read that leaves
    // room unfilled has met the end of the file.
    int32_t h = MFil_Open("", kFirstRead + 1, 0);
    if (h < 0) return -1;
    auto *first = static_cast<char *>(DATA_MFIL_TAB[h].hMem);
    int32_t n = xFile_Read(fd, first, kFirstRead + 1);
    bool ok = n <= 0 || MFil_Write(h, first, n) == n;
    if (ok && n == kFirstRead + 1) {
        // Larger: a block of the file's size (and one byte) takes what was read.
        struct stat st;
        int32_t big = -1;
        ok = fstat(fd, &st) == 0 && st.st_size < INT32_MAX &&
             (big = MFil_Open("", int32_t(st.st_size) + 1, 0)) >= 0 &&
             MFil_Write(big, first, n) == n && ReadRest(fd, big, st.st_size);
        MFil_Close(h);
        h = big;
    }
    if (!ok || MFil_Lseek(h, 0) != 0) {
        MFil_Close(h);
        return -1;
    }
    return h;
}

std::string_view Contents(int32_t handle) {
    int32_t size = MFil_Size(handle);
    const char *p = size > 0 ? static_cast<const char *>(MFil_LockPtr(handle, 0)) : nullptr;
    return p ? std::string_view(p, size_t(size)) : std::string_view();
}

} // namespace profile
