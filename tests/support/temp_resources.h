// TempResources: a temporary resources folder for one test. It makes a
// fresh folder, points the library's resources folder at it, writes
// pictures into it, and on destruction restores the previous folder and
// removes everything it made.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <vitrail/platform.h>

#include "platform/quickdraw/png.h"

namespace vitrail_test {

class TempResources {
  public:
    TempResources() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vitrail-resources-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        root_ = pattern;
        previous_ = vitrail_resources_folder();
        vitrail_set_resources_folder(root_.c_str());
    }
    ~TempResources() {
        vitrail_set_resources_folder(previous_.empty() ? nullptr : previous_.c_str());
        std::error_code ec;
        std::filesystem::remove_all(root_, ec);
    }
    TempResources(const TempResources &) = delete;
    TempResources &operator=(const TempResources &) = delete;

    const std::filesystem::path &root() const { return root_; }

    // Writes picture `name`: width x height pixels of one opaque colour
    // (0xRRGGBB) whose frame has its top-left corner at (left, top).
    bool picture(std::string_view name, int32_t width, int32_t height, uint32_t rgb,
                 int32_t left = 0, int32_t top = 0) const {
        std::filesystem::create_directories(root_ / "PICT");
        platform::RgbaImage image;
        image.width = width;
        image.height = height;
        image.originX = left;
        image.originY = top;
        image.pixels.resize(size_t(width) * size_t(height) * 4);
        for (size_t i = 0; i < image.pixels.size(); i += 4) {
            image.pixels[i] = uint8_t(rgb >> 16);
            image.pixels[i + 1] = uint8_t(rgb >> 8);
            image.pixels[i + 2] = uint8_t(rgb);
            image.pixels[i + 3] = 0xFF;
        }
        return platform::PngWrite((root_ / "PICT" / (std::string(name) + ".png")).string(), image);
    }

  private:
    std::filesystem::path root_;
    std::string previous_;
};

} // namespace vitrail_test
