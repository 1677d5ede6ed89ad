// Memory-file operation sequences against a std::vector model: writes from
// outside or from inside the file's own block (MFil_LockPtr), reads,
// re-reads and seeks keep the same bytes, size and position.
#include <algorithm>
#include <cstring>
#include <vector>

#include <vitrail/files.h>

#include "check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const int32_t h = MFil_Open("", 0, 0);
    CHECK(h >= 0);
    std::vector<char> model;
    int32_t pos = 0;
    char io[9000];
    for (size_t i = 0; i + 3 <= size; i += 3) {
        const int32_t n = (data[i + 1] | data[i + 2] << 8) % 9000;
        switch (data[i] % 5) {
        case 0: // write n bytes from outside
            std::memset(io, data[i + 1], size_t(n));
            break;
        case 1: { // write n bytes taken from the block itself
            const char *inside = static_cast<const char *>(MFil_LockPtr(h, data[i + 1] % 64));
            if (!inside) continue;
            const auto *block = static_cast<const char *>(DATA_MFIL_TAB[h].hMem);
            const int32_t offset = int32_t(inside - block);
            const bool whole = n <= DATA_MFIL_TAB[h].lAlloc - offset; // else refused
            if (whole) std::memcpy(io, inside, size_t(n));
            CHECK(MFil_Write(h, inside, n) == (whole ? n : 0));
            if (!whole) continue;
            break;
        }
        case 2:
            CHECK(MFil_Read(h, io, n) == std::min<int32_t>(n, int32_t(model.size()) - pos));
            CHECK(std::equal(io, io + (MFil_GetPos(h) - pos), model.begin() + pos));
            pos = MFil_GetPos(h);
            continue;
        case 3:
            CHECK(MFil_Re_Read(h, io, n) == std::min(n, pos));
            CHECK(std::equal(io, io + std::min(n, pos), model.begin() + pos - std::min(n, pos)));
            continue;
        case 4:
            CHECK(MFil_Lseek(h, n) == (n <= int32_t(model.size()) ? 0 : -1));
            pos = MFil_GetPos(h);
            continue;
        }
        if (data[i] % 5 == 0) CHECK(MFil_Write(h, io, n) == n);
        model.resize(std::max<size_t>(model.size(), size_t(pos + n)));
        if (n > 0) std::memcpy(model.data() + pos, io, size_t(n));
        pos += n;
        CHECK(MFil_Size(h) == int32_t(model.size()) && MFil_GetPos(h) == pos);
    }
    CHECK(std::equal(model.begin(), model.end(), static_cast<char *>(DATA_MFIL_TAB[h].hMem)));
    MFil_Close(h);
    return 0;
}
