// Loading a profile file into a memory file.
#pragma once

#include <cstdint>
#include <string_view>

namespace profile {

// Reads the whole open file `fd` into a new memory file, rewound; its size
// comes from fstat, so a file that has not grown is read in one call.
// Returns the memory-file handle, or -1 when none can be had, the file is
// 2 GB or more, or a write comes back short (nothing is then left open).
int32_t LoadIntoMemoryFile(int32_t fd);

// The content of a memory file as one view (empty for an empty file).
std::string_view Contents(int32_t handle);

} // namespace profile
