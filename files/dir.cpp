// Folder listings into file tables, and sorting of file tables.
//
//   Data         Layout
//   file table   the caller's array of 256-byte slots, one NUL-terminated
//                text each; after Dir_FindFiles, "<macFolder>:<name>"
//
// The listing itself is the Unix scan (an "ls" filtered case-insensitively
// by "grep"); this side converts the folder, builds the filter and turns bare
// names into Mac paths. Negative counts are taken as 0; a slot without a
// terminator is cut at 255 bytes before it is compared.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include <vitrail/files.h>
#include <vitrail/strings.h>
#include <vitrail/unixtools.h>

namespace {

using Slot = char[256];

// The grep filter of a pattern: one leading and one trailing "*" removed.
std::string Filter(const char *pattern) {
    std::string_view p = pattern ? pattern : "";
    if (!p.empty() && p.front() == '*') p.remove_prefix(1);
    if (!p.empty() && p.back() == '*') p.remove_suffix(1);
    return std::string(p);
}

// Rewrites a slot holding a bare name (or a path) as "<macFolder>:<name>", cut to 255 bytes.
void ToMacPath(Slot &slot, std::string_view macFolder) {
    std::string_view text(slot, strnlen(slot, sizeof slot));
    size_t slash = text.find_last_of('/');
    std::string path(macFolder);
    path += ':';
    path += text.substr(slash == std::string_view::npos ? 0 : slash + 1);
    szcopy_0t(slot, sizeof slot, path.data(), uint32_t(path.size()));
}

// The size of the file named by a slot, 0 when it cannot be opened.
uint32_t SizeOf(const Slot &slot) {
    int32_t h = File_Open(slot, 1, 0);
    if (h < 0) return 0;
    uint32_t size = uint32_t(File_Size(h));
    File_Close(h);
    return size;
}

// Exchange passes over the first `count` slots while `greater(a, b)` says
// that a belongs after b; at most `count` passes. The exchanges made.
template <class Greater>
int16_t BubbleSort(Slot *table, int16_t count, Greater greater) {
    if (!table || count < 2) return 0;
    for (int16_t i = 0; i < count; ++i) table[i][255] = '\0';
    int32_t total = 0;
    for (int16_t pass = 0; pass < count; ++pass) {
        int32_t made = 0;
        for (int16_t i = 1; i < count; ++i) {
            if (!greater(table[i - 1], table[i])) continue;
            std::array<char, 256> scratch;
            std::memcpy(scratch.data(), table[i - 1], 256);
            std::memcpy(table[i - 1], table[i], 256);
            std::memcpy(table[i], scratch.data(), 256);
            ++made;
        }
        total += made;
        if (made == 0) break;
    }
    return int16_t(total);
}

} // namespace

extern "C" {

VITRAIL_API int16_t Dir_FindFiles(char (*table)[256], const char *macFolder, int16_t maxCount,
                                  const char *pattern) {
    if (!macFolder) return 0;
    char unixFolder[256];
    BSDMAC2UNIX(macFolder, unixFolder);
    int16_t found = BSDDir_FindFiles(table, unixFolder, maxCount, Filter(pattern).c_str());
    int16_t stored = std::max<int16_t>(0, std::min(found, maxCount));
    for (int16_t i = 0; table && i < stored; ++i) ToMacPath(table[i], macFolder);
    return found;
}

VITRAIL_API int32_t Dir_ProcessFiles(const char *macFolder, const char *pattern,
                                     int32_t (*fileCallback)(const char *name)) {
    if (!macFolder) return 0;
    char unixFolder[256];
    BSDMAC2UNIX(macFolder, unixFolder);
    return BSDDir_ProcessFiles(unixFolder, Filter(pattern).c_str(), fileCallback);
}

VITRAIL_API int16_t Dir_SortFiles(char (*table)[256], int16_t count) {
    return BubbleSort(table, count, [](const Slot &a, const Slot &b) { return chcomp(a, b) > 0; });
}

VITRAIL_API int16_t Dir_SortSizeFiles(char (*table)[256], int16_t count) {
    return BubbleSort(table, count,
                      [](const Slot &a, const Slot &b) { return SizeOf(b) > SizeOf(a); });
}

} // extern "C"
