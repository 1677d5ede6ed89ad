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
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "unixtools/shell.h"

using unixtools::NoThrow;
using unixtools::ShellQuote;

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
    return "ls -1F " + ShellQuote(std::string(folder) + "/") + " | grep -i -e " +
           ShellQuote(pattern ? pattern : "");
}

bool UsableFolder(const char *folder) {
    return folder && *folder && BSDIsExisting(folder);
}

// Copies `name` into a 256-byte slot, cut to 255 characters.
void StoreSlot(char *slot, std::string_view name) {
    size_t n = std::min(name.size(), kSlot - 1);
    std::memcpy(slot, name.data(), n);
    slot[n] = '\0';
}

// Counts the file lines of `text`, storing the first `maxCount` in `table`.
int32_t CollectNames(std::string_view text, char (*table)[256], int32_t maxCount) {
    int32_t count = 0;
    while (!text.empty()) {
        size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        std::optional<std::string_view> name = FileNameOfLine(line);
        if (!name) continue;
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
        if (!UsableFolder(unixFolder)) return 0;
        int32_t slots = maxCount > 0 ? maxCount : 0;
        size_t size = slots > 0 ? size_t(slots) * kSlot : kSlot;
        std::unique_ptr<char[]> out(new (std::nothrow) char[size]);
        if (!out) return 0;
        out[0] = '\0';
        BSDInvokeTool(ScanCommand(unixFolder, pattern).c_str(), out.get(), int32_t(size));
        return int16_t(CollectNames(out.get(), table, slots));
    });
}

VITRAIL_API int32_t BSDDir_ProcessFiles(const char *unixFolder, const char *pattern,
                                        BSDFileProcPtr fileCallback) {
    return NoThrow<int32_t>(0, [&] {
        if (!fileCallback || !UsableFolder(unixFolder)) return 0;
        BSDnNbFic = 0;
        BSDcr = 0;
        BSDDir_ProcessFiles_fPtr = fileCallback;
        BSDInvokeToolPr(ScanCommand(unixFolder, pattern).c_str(), BSDDir_ProcessFiles_f);
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
        BSDInvokeTool(("chmod 0777 " + ShellQuote(unixPath)).c_str(), nullptr, 0);
        return 0;
    });
}

} // extern "C"
