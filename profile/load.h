// Pieces shared by the profile reader and writers: loading a file into a
// memory file and the line rules of the format.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace profile {

constexpr size_t kUnlimited = std::string_view::npos;

// Reads the whole open file `fd` into a new memory file, rewound. Returns the
// memory-file handle, or -1 when none can be had or a write comes back short
// (nothing is then left open).
int32_t LoadIntoMemoryFile(int32_t fd);

// The content of a memory file as one view (empty for an empty file).
std::string_view Contents(int32_t handle);

// The line [s, e) as the scanner sees it: line feeds dropped. A view of the
// bytes when there are none to drop, else of `scratch`.
std::string_view CleanLine(const char *s, const char *e, std::string &scratch);

// In a line starting with "[": the index of the first "]" at or after `from`
// where the name between "[" and that "]" equals `section`; npos if none.
// Only the first `stored` bytes of the line take part in the comparison.
size_t HeaderEnd(std::string_view line, size_t from, std::string_view section, size_t stored);

// The index of the first "=" or "[" of `line` at or after `from`; npos if none.
inline size_t FindEqualOrBracket(std::string_view line, size_t from) {
    const char *b = line.data() + from;
    size_t n = line.size() - from;
    auto *eq = static_cast<const char *>(std::memchr(b, '=', n));
    auto *br = static_cast<const char *>(std::memchr(b, '[', eq ? size_t(eq - b) : n));
    const char *hit = br ? br : eq;
    return hit ? size_t(hit - line.data()) : std::string_view::npos;
}

// True when the bytes of `line` before index `i` (at most `stored` of them)
// equal `key`.
inline bool KeyBefore(std::string_view line, size_t i, std::string_view key, size_t stored) {
    return line.substr(0, i < stored ? i : stored) == key;
}

} // namespace profile
