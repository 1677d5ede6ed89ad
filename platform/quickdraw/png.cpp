// PNG reading and writing through libpng.
//
//   Chunk   Bytes used                       Meaning here
//   IHDR    width, height (32-bit), depth,   the picture's size; the bytes its
//           colour type                      pixels need once inflated
//   oFFs    x, y (32-bit), unit 0            the top-left corner of its frame
//   IDAT    length                           compressed pixels: at most 1032
//                                            bytes come out of each byte in
#include "platform/quickdraw/png.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>

#include <png.h>

namespace platform {
namespace {

constexpr uint32_t kMaxSide = 16384;
constexpr uint64_t kMaxInflation = 1032; // deflate's best ratio
constexpr uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

uint32_t Be32(const uint8_t *p) {
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
}

bool WriteRows(FILE *file, const RgbaImage &image, png_bytep *rows) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, png_uint_32(image.width), png_uint_32(image.height), 8,
                 PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (image.originX || image.originY)
        png_set_oFFs(png, info, image.originX, image.originY, PNG_OFFSET_PIXEL);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

// Calls fn(type, data, length) for each whole chunk after the signature
// until fn returns false or the bytes end.
template <class Fn>
void ForEachChunk(const std::vector<uint8_t> &bytes, Fn fn) {
    for (size_t at = 8; bytes.size() >= at && bytes.size() - at >= 12;) {
        uint32_t length = Be32(&bytes[at]);
        if (length > bytes.size() - at - 12) return;
        if (!fn(&bytes[at + 4], &bytes[at + 8], length)) return;
        at += 12 + size_t(length);
    }
}

// Whether the IDAT chunks are long enough to inflate to the pixels IHDR
// announces (rows of filter byte and samples), so that a few bytes cannot
// make the decoder allocate a huge image.
bool PixelsFit(const std::vector<uint8_t> &bytes, const RgbaImage &frame) {
    static const uint8_t kChannels[7] = {1, 0, 3, 1, 2, 0, 4}; // by colour type
    uint64_t depth = bytes[24], type = bytes[25];
    uint64_t channels = type < 7 ? kChannels[type] : 0;
    uint64_t row = 1 + (uint64_t(frame.width) * channels * depth + 7) / 8;
    uint64_t compressed = 0;
    ForEachChunk(bytes, [&](const uint8_t *t, const uint8_t *, uint32_t length) {
        if (std::memcmp(t, "IDAT", 4) == 0) compressed += length;
        return true;
    });
    return compressed * kMaxInflation + 1024 >= row * uint64_t(frame.height);
}

} // namespace

bool PngFrame(const std::vector<uint8_t> &bytes, RgbaImage &frame) {
    if (bytes.size() < 33 || std::memcmp(bytes.data(), kSignature, 8) != 0) return false;
    if (std::memcmp(&bytes[12], "IHDR", 4) != 0) return false;
    uint32_t w = Be32(&bytes[16]), h = Be32(&bytes[20]);
    if (w == 0 || h == 0 || w > kMaxSide || h > kMaxSide) return false;
    frame.width = int32_t(w);
    frame.height = int32_t(h);
    frame.originX = frame.originY = 0;
    ForEachChunk(bytes, [&](const uint8_t *type, const uint8_t *data, uint32_t length) {
        if (std::memcmp(type, "IDAT", 4) == 0) return false;
        if (std::memcmp(type, "oFFs", 4) == 0 && length == 9 && data[8] == 0) {
            frame.originX = int32_t(Be32(data));
            frame.originY = int32_t(Be32(data + 4));
        }
        return true;
    });
    return true;
}

bool PngDecode(const std::vector<uint8_t> &bytes, RgbaImage &image) {
    if (!PngFrame(bytes, image) || !PixelsFit(bytes, image)) return false;
    png_image reader;
    std::memset(&reader, 0, sizeof reader);
    reader.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&reader, bytes.data(), bytes.size())) return false;
    reader.format = PNG_FORMAT_RGBA;
    if (reader.width != png_uint_32(image.width) || reader.height != png_uint_32(image.height)) {
        png_image_free(&reader);
        return false;
    }
    image.pixels.assign(PNG_IMAGE_SIZE(reader), 0);
    if (!png_image_finish_read(&reader, nullptr, image.pixels.data(), 0, nullptr)) {
        png_image_free(&reader);
        return false;
    }
    return true;
}

bool PngWrite(const std::string &path, const RgbaImage &image) {
    if (image.width <= 0 || image.height <= 0 ||
        image.pixels.size() < size_t(image.width) * size_t(image.height) * 4)
        return false;
    std::vector<png_bytep> rows(size_t(image.height));
    for (size_t y = 0; y < rows.size(); ++y)
        rows[y] = const_cast<png_bytep>(&image.pixels[y * size_t(image.width) * 4]);
    FILE *file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    bool ok = WriteRows(file, image, rows.data());
    return std::fclose(file) == 0 && ok;
}

} // namespace platform
