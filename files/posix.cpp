// POSIX files and Mac-to-Unix path conversion.
//
//   Item          Form
//   Mac path      "Vol:dir:name" (a "/" inside a name stays a "/")
//   Unix path     "<root>/Vol/dir/name" or "/dir/name", at most 255 characters
//   descriptor    the POSIX descriptor; offsets cut to 32 bits
#include <vitrail/files.h>
#include <vitrail/unixtools.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/toolbox/volumes.h"

namespace {

constexpr size_t kUnixPathSize = 256;

// Separators exchanged: ":" becomes "/" and "/" becomes ":".
void AppendSwapped(std::string &out, std::string_view text) {
    for (char c : text) out += c == ':' ? '/' : c == '/' ? ':' : c;
}

std::string_view VolumeName(std::string_view mac) {
    return mac.substr(0, mac.find(':'));
}

std::string VolumeFolder(std::string_view volume) {
    std::string folder = platform::VolumesRoot();
    if (folder.empty() || folder.back() != '/') folder += '/';
    return folder += volume;
}

// The Unix form of `mac`: under the volumes root when `onVolume`, else the
// path from its first ":" on (empty without one), rooted at "/".
std::string UnixForm(std::string_view mac, bool onVolume) {
    std::string out;
    if (onVolume) {
        out = VolumeFolder("");
        AppendSwapped(out, mac);
    } else {
        size_t colon = mac.find(':');
        if (colon != std::string_view::npos) AppendSwapped(out, mac.substr(colon));
    }
    return out;
}

bool IsRegularFile(const std::string &path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// Opens `path` read only when it is a regular file, else -1. The open does
// not wait (a FIFO without a writer answers at once) and the type is read
// from the open file, so the path is looked up once.
int OpenRegularForReading(const char *path) {
    int fd = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat st;
    if (fd < 0 || (fstat(fd, &st) == 0 && S_ISREG(st.st_mode))) return fd;
    close(fd);
    return -1;
}

// Opens `path` write only, emptied. A file it creates gets mode 0777 set
// explicitly, so the process's creation mask is neither used nor changed.
int OpenForWriting(const char *path) {
    int fd = open(path, O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd >= 0 || errno != ENOENT) return fd;
    fd = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0777);
    if (fd >= 0) fchmod(fd, 0777);
    return fd;
}

// Opens a file below its volume folder for reading, or -1. That path can
// only open when the volume folder is a folder, which is when MAC2UNIX
// keeps the volume name, so it saves MAC2UNIX's probe of the folder; only
// when this open fails must the probe decide.
int OpenBelowVolume(const char *macPath) {
    std::string_view mac = macPath ? macPath : "";
    size_t colon = mac.find(':');
    if (colon == std::string_view::npos || colon + 1 >= mac.size()) return -1;
    try {
        std::string path = UnixForm(mac, true);
        return path.size() < kUnixPathSize - 1 ? OpenRegularForReading(path.c_str()) : -1;
    } catch (...) {
        return -1;
    }
}

// Writes `text` into a 256-byte buffer, cut to 255 characters.
void WriteUnixPath(const std::string &text, char *unixPath) {
    if (!unixPath) return;
    size_t n = std::min(text.size(), kUnixPathSize - 1);
    std::memcpy(unixPath, text.data(), n);
    unixPath[n] = '\0';
}

// Converts with `convert` into `out`; false when the Unix form reaches 255
// characters (it may have been cut) or the Mac path is null.
template <typename Convert>
bool Converted(Convert convert, const char *macPath, char (&out)[kUnixPathSize]) {
    if (!macPath) return false;
    convert(macPath, out);
    return std::strlen(out) < kUnixPathSize - 1;
}

// Runs `f`; if it throws (memory exhausted) the path written is "".
template <typename F>
void Guarded(F &&f, char *unixPath) noexcept {
    try {
        f();
    } catch (...) {
        if (unixPath) unixPath[0] = '\0';
    }
}

} // namespace

extern "C" {

VITRAIL_API void MAC2UNIX(const char *macPath, char *unixPath) {
    Guarded(
        [&] {
            std::string_view mac = macPath ? macPath : "";
            bool notVolume = IsRegularFile(VolumeFolder(VolumeName(mac)));
            WriteUnixPath(UnixForm(mac, !notVolume), unixPath);
        },
        unixPath);
}

VITRAIL_API void BSDMAC2UNIX(const char *macPath, char *unixPath) {
    Guarded(
        [&] {
            std::string_view mac = macPath ? macPath : "";
            bool onVolume = BSDIsExisting(VolumeFolder(VolumeName(mac)).c_str()) == 1;
            WriteUnixPath(UnixForm(mac, onVolume), unixPath);
        },
        unixPath);
}

VITRAIL_API int32_t xFile_Open(const char *macPath, int32_t bRead, int32_t bWrite) {
    if (bRead > 0 && bWrite <= 0)
        if (int fd = OpenBelowVolume(macPath); fd >= 0) return fd;
    char path[kUnixPathSize];
    if (!Converted(MAC2UNIX, macPath, path)) return -1;
    if (bRead > 0 && bWrite > 0) return open(path, O_RDWR | O_CLOEXEC);
    if (bRead > 0) return OpenRegularForReading(path);
    if (bWrite > 0) return OpenForWriting(path);
    return -1;
}

VITRAIL_API int32_t xFile_Close(int32_t fd) {
    return close(fd);
}

VITRAIL_API int32_t xFile_Size(int32_t fd) {
    off_t end = lseek(fd, 0, SEEK_END);
    if (end < 0) return -1;
    lseek(fd, 0, SEEK_SET);
    return int32_t(end);
}

VITRAIL_API int32_t xFile_Read(int32_t fd, void *buffer, int32_t count) {
    if (!buffer || count <= 0) return 0;
    ssize_t got = read(fd, buffer, size_t(count));
    return got < 0 ? 0 : int32_t(got);
}

VITRAIL_API int32_t xFile_Write(int32_t fd, const void *buffer, int32_t count) {
    if (count < 0 || (!buffer && count > 0)) return -1;
    return int32_t(write(fd, buffer, size_t(count)));
}

VITRAIL_API int32_t xFile_Lseek(int32_t fd, int32_t offset) {
    if (offset < 0) return -1;
    return int32_t(lseek(fd, offset, SEEK_SET));
}

VITRAIL_API int32_t xFile_GetPos(int32_t fd) {
    return int32_t(lseek(fd, 0, SEEK_CUR));
}

VITRAIL_API int32_t xFile_SetEOF(int32_t fd, int32_t length) {
    if (length < 0) return -1;
    if (ftruncate(fd, length) != 0 || lseek(fd, length, SEEK_SET) < 0) return -1;
    return 0;
}

VITRAIL_API int32_t MACRemove(const char *macPath) {
    char path[kUnixPathSize];
    if (!Converted(BSDMAC2UNIX, macPath, path)) return -1;
    return std::remove(path);
}

VITRAIL_API int32_t MACRename(const char *oldMacPath, const char *newMacPath) {
    char from[kUnixPathSize];
    char to[kUnixPathSize];
    if (!Converted(BSDMAC2UNIX, oldMacPath, from) || !Converted(BSDMAC2UNIX, newMacPath, to))
        return -1;
    return std::rename(from, to);
}

} // extern "C"
