// Length-prefixed string conversions of the toolkit's text utilities.
#pragma once

#include <vitrail/types.h>

namespace platform {

// Copies the C string `src` into the length-prefixed `dst` (at most 255
// bytes; `dstSize` bytes of room, length byte included). A null `src` gives
// the empty string; nothing is written when dstSize is 0.
void c2pstrcpy(unsigned char *dst, const char *src, size_t dstSize = 256);

// Copies the length-prefixed `src` into the C string `dst` (256 bytes of
// room are enough); a null `src` gives "".
void p2cstrcpy(char *dst, const unsigned char *src);

} // namespace platform
