// Loading profile files into memory files.
#include "profile/load.h"

#include <sys/stat.h>

#include <vitrail/files.h>

namespace profile {

int32_t LoadIntoMemoryFile(int32_t fd) {
    struct stat st;
    if (fstat(fd, &st) != 0 || st.st_size >= INT32_MAX) return -1;
    // One byte of room past the size: a read that leaves it unfilled has met
    // the end of the file, and no second read is needed to learn it.
    int32_t h = MFil_Open("", int32_t(st.st_size) + 1, 0);
    if (h < 0) return -1;
    // The file is read straight into the block; MFil_Write then records the
    // bytes in place without copying them again.
    bool ok = true;
    for (;;) {
        const DATA_MFIL &slot = DATA_MFIL_TAB[h];
        int32_t room = slot.lAlloc - slot.lPos;
        char *at = static_cast<char *>(slot.hMem) + slot.lPos;
        char spill[16384];
        bool inPlace = room > 0;
        int32_t n = xFile_Read(fd, inPlace ? at : spill, inPlace ? room : int32_t(sizeof spill));
        if (n <= 0) break;
        if (MFil_Write(h, inPlace ? at : spill, n) != n) {
            ok = false;
            break;
        }
        if (inPlace && n < room && slot.lPos >= st.st_size) break;
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
