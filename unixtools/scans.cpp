// Unix folder scans: "ls -1F" filtered by "grep -i", turned into bare file
// names (folders skipped), collected into a table or handed to a callback;
// and opening a file or folder to everybody with chmod.
//
//   Datum                      Set by
//   BSDDir_ProcessFiles_fPtr   BSDDir_ProcessFiles (the scan's callback)
//   BSDcr                      each callback answer; 0 at the start of a scan
//   BSDnNbFic                  files delivered in the scan (stops at 32767)
#include <vitrail/files.h>
#include <vitrail/unixtools.h>

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <sys/stat.h>

#include "unixtools/shell.h"

using unixtools::NoThrow;
using unixtools::QuotePath;

extern "C" {
VITRAIL_API BSDFileProcPtr BSDDir_ProcessFiles_fPtr = nullptr;
VITRAIL_API int32_t BSDcr = 0;
VITRAIL_API int16_t BSDnNbFic = 0;
}

namespace {

constexpr size_t kSlot = 256;
constexpr int32_t kMaxCount = 32767;

// The file name of one `ls -1F` line: a final "*" dropped, then nothing for
// a folder (ends in "/") or an empty line, else the part after the last "/".
std::optional<std::string_view> FileNameOfLine(std::string_view line) {
    if (!line.empty() && line.back() == '*') line.remove_suffix(1);
    if (line.empty() || line.back() == '/') return std::nullopt;
    size_t slash = line.rfind('/');
    return slash == std::string_view::npos ? line : line.substr(slash + 1);
}

std::string ScanCommand(const char *folder, const char *pattern) {
    return "ls -1F " + QuotePath(std::string(folder) + "/") + " | grep -i -e " +
           unixtools::ShellQuote(pattern ? pattern : "");
}

// The lines that names holding a line feed put into an `ls -1F` listing of
// `folder`: their pieces, the last one with its type mark. Such names are
// left out of the scans by dropping one listing line per piece. False when
// the folder cannot be read (missing, not a folder, not readable) or no
// tool can run (a classic system): then no command is run.
bool ReadFolder(const char *folder, std::multiset<std::string> &pieces) {
    if (!folder || !*folder || !RunningOnCarbonX()) return false;
    std::unique_ptr<DIR, int (*)(DIR *)> dir(opendir(folder), closedir);
    if (!dir) return false;
    while (const dirent *entry = readdir(dir.get())) {
        std::string_view name = entry->d_name;
        if (name.find('\n') == std::string_view::npos) continue;
        struct stat st {};
        fstatat(dirfd(dir.get()), entry->d_name, &st, AT_SYMLINK_NOFOLLOW);
        std::string last(name.substr(name.rfind('\n') + 1));
        if (S_ISDIR(st.st_mode))
            last += '/';
        else if (S_ISLNK(st.st_mode))
            last += '@';
        else if (S_ISFIFO(st.st_mode))
            last += '|';
        else if (S_ISSOCK(st.st_mode))
            last += '=';
        else if (st.st_mode & 0111)
            last += '*';
        for (size_t end; (end = name.find('\n')) != std::string_view::npos;
             name.remove_prefix(end + 1))
            pieces.emplace(name.substr(0, end));
        pieces.insert(std::move(last));
    }
    return true;
}

// True (and forgotten) when `line` is one of the pieces.
bool IsPiece(std::multiset<std::string> &pieces, std::string_view line) {
    if (pieces.empty()) return false;
    auto it = pieces.find(std::string(line));
    if (it == pieces.end()) return false;
    pieces.erase(it);
    return true;
}

// Copies `name` into a 256-byte slot, cut to 255 characters.
void StoreSlot(char *slot, std::string_view name) {
    size_t n = std::min(name.size(), kSlot - 1);
    std::memcpy(slot, name.data(), n);
    slot[n] = '\0';
}

// Counts the file lines of `text`, storing the first `maxCount` in `table`.
int32_t CollectNames(std::string_view text, std::multiset<std::string> &pieces, char (*table)[256],
                     int32_t maxCount) {
    int32_t count = 0;
    while (!text.empty()) {
        size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        std::optional<std::string_view> name = FileNameOfLine(line);
        if (!name || IsPiece(pieces, line)) continue;
        if (table && count < maxCount) StoreSlot(table[count], *name);
        if (count < kMaxCount) ++count;
    }
    return count;
}

} // namespace

extern "C" {

VITRAIL_API int16_t BSDDir_FindFiles(char (*table)[256], const char *unixFolder, int16_t maxCount,
                                     const char *pattern) {
    return NoThrow<int16_t>(0, [&]() -> int16_t {
        std::multiset<std::string> pieces;
        if (!ReadFolder(unixFolder, pieces)) return 0;
        int32_t slots = maxCount > 0 ? maxCount : 0;
        size_t size = slots > 0 ? size_t(slots) * kSlot : kSlot;
        std::unique_ptr<char[]> out(new (std::nothrow) char[size]);
        if (!out) return 0;
        out[0] = '\0';
        BSDInvokeTool(ScanCommand(unixFolder, pattern).c_str(), out.get(), int32_t(size));
        return int16_t(CollectNames(out.get(), pieces, table, slots));
    });
}

VITRAIL_API int32_t BSDDir_ProcessFiles(const char *unixFolder, const char *pattern,
                                        BSDFileProcPtr fileCallback) {
    return NoThrow<int32_t>(0, [&] {
        std::multiset<std::string> pieces;
        if (!fileCallback || !ReadFolder(unixFolder, pieces)) return 0;
        BSDnNbFic = 0;
        BSDcr = 0;
        BSDDir_ProcessFiles_fPtr = fileCallback;
        auto onLine = [&](const char *line) {
            return IsPiece(pieces, line) ? 0 : BSDDir_ProcessFiles_f(line);
        };
        unixtools::InvokeLinesTo(ScanCommand(unixFolder, pattern).c_str(), onLine);
        return BSDcr;
    });
}

VITRAIL_API int32_t BSDDir_ProcessFiles_f(const char *line) {
    if (!line || !BSDDir_ProcessFiles_fPtr) return 0;
    return NoThrow<int32_t>(0, [&] {
        std::optional<std::string_view> name = FileNameOfLine(line);
        if (!name) return 0;
        BSDcr = BSDDir_ProcessFiles_fPtr(std::string(*name).c_str());
        if (BSDnNbFic < kMaxCount) ++BSDnNbFic;
        return BSDcr;
    });
}

VITRAIL_API int32_t BSDMACchmodrwx(const char *macPath) {
    if (!macPath) return -1;
    return NoThrow<int32_t>(-1, [&] {
        char unixPath[kSlot];
        BSDMAC2UNIX(macPath, unixPath);
        if (std::strlen(unixPath) >= kSlot - 1 || !BSDIsExisting(unixPath)) return -1;
        BSDInvokeTool(("chmod 0777 " + QuotePath(unixPath)).c_str(), nullptr, 0);
        return 0;
    });
}

} // extern "C"
