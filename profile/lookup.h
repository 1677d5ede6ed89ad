// Finding a key's value in the bytes of a profile, with the skipping scan the
// reader uses and with the plain line-by-line rules it must agree with.
#pragma once

#include <cstdint>
#include <string_view>

namespace profile {

// Looks for `key` in the occurrences of `section` in `data`. When found, the
// value (at most size - 1 bytes, size > 0) goes into `buffer` with a
// terminator and its length is returned; otherwise -1 and `buffer` is
// untouched. A value cut by the end of the data with no byte kept counts as
// not found.
int32_t Lookup(std::string_view data, std::string_view section, std::string_view key, char *buffer,
               int32_t size);

// The same answer, found by running the rules over every line in turn.
int32_t LookupByRules(std::string_view data, std::string_view section, std::string_view key,
                      char *buffer, int32_t size);

} // namespace profile
