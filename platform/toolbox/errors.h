// Result codes and four-character codes shared by the toolbox stand-ins.
#pragma once

#include <cstdint>

#include <vitrail/types.h>

namespace platform {

using OSType = uint32_t;

// A four-character code such as 'fram', built without multi-character literals.
constexpr OSType FourCC(const char (&code)[5]) {
    return OSType(uint8_t(code[0])) << 24 | OSType(uint8_t(code[1])) << 16 |
           OSType(uint8_t(code[2])) << 8 | OSType(uint8_t(code[3]));
}

constexpr OSErr noErr = 0;
constexpr OSErr fnfErr = -43; // file or folder not found
constexpr OSErr gestaltUndefSelectorErr = -5551;
constexpr OSStatus coreFoundationUnknownErr = -4960;

} // namespace platform
