// Finding a key's value in the bytes of a profile.
#pragma once

#include <cstdint>
#include <string_view>

namespace profile {

// Looks for `key` in the occurrences of `section` in `data`. When found, the
// value (at most size - 1 bytes, size > 0) goes into `buffer` with a
// terminator and its length is returned; otherwise -1 and `buffer` is
// untouched. A value cut by the end of the data with no byte kept counts as
// not found.
int32_t Lookup(std::string_view data, std::string_view section, const char *key, char *buffer,
               int32_t size);

} // namespace profile
