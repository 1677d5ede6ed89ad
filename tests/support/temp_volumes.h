// TempVolumes: a temporary volumes root for one test. It makes a fresh
// folder, points the library's volumes root at it, and on destruction
// restores the previous root and removes the folder with all it holds.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include <vitrail/platform.h>

namespace vitrail_test {

class TempVolumes {
  public:
    TempVolumes() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vitrail-volumes-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        root_ = pattern;
        previous_ = vitrail_volumes_root();
        vitrail_set_volumes_root(root_.c_str());
    }
    ~TempVolumes() {
        vitrail_set_volumes_root(previous_.c_str());
        std::error_code ec;
        std::filesystem::remove_all(root_, ec);
    }
    TempVolumes(const TempVolumes &) = delete;
    TempVolumes &operator=(const TempVolumes &) = delete;

    // The Unix folder of the root.
    const std::filesystem::path &root() const { return root_; }

    // Makes volume `name` (a folder under the root) and returns its Unix path.
    std::filesystem::path volume(std::string_view name) const {
        auto p = root_ / std::string(name);
        std::filesystem::create_directories(p);
        return p;
    }

    // Writes `bytes` to the Unix path `p` (relative paths are under the root).
    void write(const std::filesystem::path &p, std::string_view bytes) const {
        auto full = p.is_absolute() ? p : root_ / p;
        std::filesystem::create_directories(full.parent_path());
        std::ofstream(full, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    }

    // Reads the whole file at the Unix path `p`; empty if it cannot be read.
    std::string read(const std::filesystem::path &p) const {
        auto full = p.is_absolute() ? p : root_ / p;
        std::ifstream in(full, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

  private:
    std::filesystem::path root_;
    std::string previous_;
};

} // namespace vitrail_test
