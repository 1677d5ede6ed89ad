// PNG files and images: what ports are written as and pictures are read from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

// An 8-bit RGBA image, rows top to bottom; (originX, originY) is the oFFs
// offset in pixels (0, 0 when absent).
struct RgbaImage {
    int32_t width = 0;
    int32_t height = 0;
    int32_t originX = 0;
    int32_t originY = 0;
    std::vector<uint8_t> pixels;
};

// Reads the size and offset of PNG `bytes` without decoding the pixels.
// False when the bytes are not a PNG or the image exceeds 16384 x 16384.
bool PngFrame(const std::vector<uint8_t> &bytes, RgbaImage &frame);

// Decodes PNG `bytes` into `image` (any colour type becomes RGBA). False
// when they do not decode, or when their compressed data is too short to
// hold the pixels the header announces (checked before any allocation).
bool PngDecode(const std::vector<uint8_t> &bytes, RgbaImage &image);

// Writes `image` as an RGBA PNG (with an oFFs chunk when its origin is not
// 0, 0). False when the file cannot be written.
bool PngWrite(const std::string &path, const RgbaImage &image);

} // namespace platform
