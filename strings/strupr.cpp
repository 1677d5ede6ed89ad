// Capitals in place: the string goes to the toolbox's UpperString 255 bytes
// at a time, through a length-prefixed work area.
//
//   Data        Size        Use
//   chunk       255 bytes   one length-prefixed string for UpperString
//   work area   256 bytes   the chunk and its length byte
#include <vitrail/strings.h>

#include <algorithm>
#include <cstring>

#include "platform/toolbox/textutils.h"

namespace {

constexpr size_t kChunk = 255;

// Capitals of the n (<= 255) bytes at s, none of them a terminator.
void UpperChunk(char *s, size_t n) {
    char text[kChunk + 1];
    Str255 pascal;
    std::memcpy(text, s, n);
    text[n] = '\0';
    platform::c2pstrcpy(pascal, text);
    platform::UpperString(pascal, false);
    platform::p2cstrcpy(text, pascal);
    std::memcpy(s, text, n);
}

} // namespace

extern "C" {

// Chunk k runs while len / 255 >= k, so an empty string and one whose length
// is a multiple of 255 end with an empty chunk.
VITRAIL_API char *strupr(char *s) {
    if (!s) return s;
    const size_t len = std::strlen(s);
    for (size_t k = 0; len / kChunk >= k; ++k) {
        const size_t at = k * kChunk;
        UpperChunk(s + at, std::min(len - at, kChunk));
    }
    return s;
}

} // extern "C"
