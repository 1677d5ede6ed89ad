// PNG reading and writing through libpng.
//
//   Chunk   Bytes used               Meaning here
//   IHDR    width, height (32-bit)   the picture's size
//   oFFs    x, y (32-bit), unit 0    the top-left corner of its frame
#include "platform/quickdraw/png.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>

#include <png.h>

namespace platform {
namespace {

constexpr uint32_t kMaxSide = 16384;
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

} // namespace

bool PngFrame(const std::vector<uint8_t> &bytes, RgbaImage &frame) {
    if (bytes.size() < 33 || std::memcmp(bytes.data(), kSignature, 8) != 0) return false;
    if (std::memcmp(&bytes[12], "IHDR", 4) != 0) return false;
    uint32_t w = Be32(&bytes[16]), h = Be32(&bytes[20]);
    if (w == 0 || h == 0 || w > kMaxSide || h > kMaxSide) return false;
    frame.width = int32_t(w);
    frame.height = int32_t(h);
    frame.originX = frame.originY = 0;
    for (size_t at = 8; bytes.size() - at >= 12;) {
        uint32_t length = Be32(&bytes[at]);
        if (length > bytes.size() - at - 12) break;
        const uint8_t *type = &bytes[at + 4];
        if (std::memcmp(type, "IDAT", 4) == 0) break;
        if (std::memcmp(type, "oFFs", 4) == 0 && length == 9 && bytes[at + 16] == 0) {
            frame.originX = int32_t(Be32(&bytes[at + 8]));
            frame.originY = int32_t(Be32(&bytes[at + 12]));
        }
        at += 12 + size_t(length);
    }
    return true;
}

bool PngDecode(const std::vector<uint8_t> &bytes, RgbaImage &image) {
    if (!PngFrame(bytes, image)) return false;
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
