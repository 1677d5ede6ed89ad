// Loading profile files into memory files, and the line rules shared by the
// reader and the writers.
#include "profile/load.h"

#include <cstring>

#include <vitrail/files.h>

namespace profile {

int32_t LoadIntoMemoryFile(int32_t fd) {
    int32_t size = xFile_Size(fd);
    int32_t h = MFil_Open("", size > 0 ? size : 0, 0);
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

std::string_view CleanLine(const char *s, const char *e, std::string &scratch) {
    while (s < e && *s == '\n') ++s;
    const char *lf = static_cast<const char *>(std::memchr(s, '\n', size_t(e - s)));
    if (!lf) return std::string_view(s, size_t(e - s));
    scratch.assign(s, lf);
    for (const char *p = lf; p < e; ++p)
        if (*p != '\n') scratch += *p;
    return scratch;
}

size_t HeaderEnd(std::string_view line, size_t from, std::string_view section, size_t stored) {
    for (size_t j = line.find(']', from); j != std::string_view::npos; j = line.find(']', j + 1)) {
        size_t end = j < stored ? j : stored;
        if (end >= 1 && line.substr(1, end - 1) == section) return j;
    }
    return std::string_view::npos;
}

} // namespace profile
