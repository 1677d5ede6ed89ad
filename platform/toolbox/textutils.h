// Text utilities of the toolkit: length-prefixed strings (one length byte,
// at most 255 characters) and capitals in Mac OS Roman.
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

// Converts the length-prefixed s to capitals in Mac OS Roman. With
// diacSensitive false, accented letters also lose their marks (e acute -> E);
// with it true they keep them where the accented capital exists.
void UpperString(unsigned char *s, Boolean diacSensitive);

} // namespace platform
