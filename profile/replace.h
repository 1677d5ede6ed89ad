// Replacing a profile file whole: the old file is held under an advisory
// lock while the new text goes to a temporary file in the same folder, which
// is flushed to disk and renamed over the old one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace profile {

// The file being rewritten: open for reading and locked from Open to the
// end of the object's life.
class Replacement {
  public:
    enum Opened { kOpened, kRefused, kUnreadable };

    Replacement() = default;
    ~Replacement();
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

    // Opens and locks the regular file at the Unix path `path`, creating it
    // empty (mode 0777) when missing. kRefused when it is something else or
    // cannot be created; kUnreadable when it exists but cannot be read.
    Opened Open(const std::string &path);
    int fd() const { return fd_; }

    // Starts the temporary file; false when it cannot be made (read-only
    // folder, no room for a new name).
    bool Begin();
    // Appends bytes to the temporary file; false once a write has failed.
    bool Write(std::string_view bytes);
    // Flushes the temporary file to disk and renames it over the file, with
    // the old file's permissions; false (the file untouched) on any failure.
    bool Commit();

  private:
    void Discard();

    std::string path_, temp_;
    int fd_ = -1, out_ = -1;
    struct stat st_ {};
    bool ok_ = true;
};

} // namespace profile
