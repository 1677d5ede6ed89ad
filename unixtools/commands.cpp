// File and process commands run through the shell.
//
//   Command          Runs (see unixtools.h)              Answers
//   BSDIsExisting    ls -a, 2-byte buffer                1 when anything was printed
//   BSDRemove(_psw)  [sudo] rm -dr                       0 when gone afterwards, else -1
//   BSDSCopy         cp -R                               the invoker's result
//   BSDCopy(_psw)    [sudo] cp -R, old copy removed      0 when the copy exists, else -1
//   BSDkill          ps -x -c | grep, kill per process   the listing's result
//   BSDtestProcess   ps -x -c | grep                     1 when a process is listed
//   BSDopen          xdg-open                            the invoker's result
#include <vitrail/unixtools.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "unixtools/shell.h"

using unixtools::NoThrow;
using unixtools::QuotePath;
using unixtools::ShellQuote;

extern "C" {
VITRAIL_API int32_t BSDtest = 0;
}

namespace {

constexpr std::string_view kSudo = "sudo ";

std::string CopyCommand(const char *source, const char *folder) {
    return "cp -R " + QuotePath(source) + " " + QuotePath(folder);
}

int32_t Run(const std::string &command) {
    return BSDInvokeTool(command.c_str(), nullptr, 0);
}

int32_t RunFed(const std::string &command, const char *password) {
    return BSDInvokeToolWr(command.c_str(), password ? password : "");
}

// Removes `path` with `remove` (which runs the command): refused when the
// path is empty or missing, 0 when it is gone afterwards.
template <typename Remove>
int32_t RemoveChecked(const char *path, Remove &&remove) {
    if (!path || !*path || !BSDIsExisting(path)) return -1;
    remove(QuotePath(path));
    return BSDIsExisting(path) ? -1 : 0;
}

// True when `folder` is `source` or lies inside it (both exist).
bool FolderWithinSource(const char *source, const char *folder) {
    std::unique_ptr<char, decltype(&std::free)> s(realpath(source, nullptr), std::free);
    std::unique_ptr<char, decltype(&std::free)> f(realpath(folder, nullptr), std::free);
    if (!s || !f) return false;
    std::string_view sv = s.get(), fv = f.get();
    return fv == sv || (fv.size() > sv.size() && fv.compare(0, sv.size(), sv) == 0 &&
                        (sv == "/" || fv[sv.size()] == '/'));
}

bool SameFile(const std::string &a, const char *b) {
    struct stat sa, sb;
    return stat(a.c_str(), &sa) == 0 && stat(b, &sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

// <folder>/<last component of source>, or nothing when that component is
// empty, "." or "..", the folder is the source or inside it, or the target
// is the source or the folder itself.
std::optional<std::string> CopyTarget(const char *source, const char *folder) {
    std::string_view s = source;
    size_t slash = s.rfind('/');
    std::string_view last = slash == std::string_view::npos ? s : s.substr(slash + 1);
    if (last.empty() || last == "." || last == "..") return std::nullopt;
    if (FolderWithinSource(source, folder)) return std::nullopt;
    std::string target = folder;
    if (target.empty() || target.back() != '/') target += '/';
    target += last;
    if (SameFile(target, source) || SameFile(target, folder)) return std::nullopt;
    return target;
}

// Copies `source` into `folder`: removes an old copy with `remove`, runs
// the copy with `copy`, and checks that the copy exists.
template <typename Remove, typename Copy>
int32_t CopyChecked(const char *source, const char *folder, Remove &&remove, Copy &&copy) {
    if (!source || !folder || !BSDIsExisting(source) || !BSDIsExisting(folder)) return -1;
    std::optional<std::string> target = CopyTarget(source, folder);
    if (!target) return -1;
    if (BSDIsExisting(target->c_str()) && remove(target->c_str()) != 0) return -1;
    copy(CopyCommand(source, folder));
    return BSDIsExisting(target->c_str()) ? 0 : -1;
}

// The command column of a `ps -x -c` line: what follows the process number,
// terminal, state and time.
std::string_view CommandColumn(std::string_view line) {
    for (int field = 0; field < 4; ++field) {
        size_t start = line.find_first_not_of(' ');
        if (start == std::string_view::npos) return {};
        size_t end = line.find(' ', start);
        if (end == std::string_view::npos) return {};
        line.remove_prefix(end);
    }
    size_t start = line.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string_view{} : line.substr(start);
}

// The process number that begins `line`, or nothing.
std::optional<long> LeadingProcess(const char *line) {
    while (*line == ' ' || *line == '\t') ++line;
    long pid = 0;
    int digits = 0;
    for (; std::isdigit(static_cast<unsigned char>(*line)) && digits < 10; ++line, ++digits)
        pid = pid * 10 + (*line - '0');
    if (digits == 0 || (*line && *line != ' ' && *line != '\t')) return std::nullopt;
    return pid;
}

// Lists the caller's processes whose command holds `name` and hands each
// line to `perLine`. -1 for an empty name, with nothing run.
int32_t ListProcesses(const char *name, BSDLineProcPtr perLine) {
    if (!name || !*name) return -1;
    std::string_view wanted = name;
    std::string command = "ps -x -c | grep -F -e " + ShellQuote(wanted);
    auto onLine = [&](const char *line) {
        bool listed =
            LeadingProcess(line) && CommandColumn(line).find(wanted) != std::string_view::npos;
        return listed ? perLine(line) : 0;
    };
    return unixtools::InvokeLinesTo(command.c_str(), onLine);
}

} // namespace

extern "C" {

VITRAIL_API int32_t BSDIsExisting(const char *path) {
    if (!path) return 0;
    return NoThrow<int32_t>(0, [&] {
        std::array<char, 2> out{};
        BSDInvokeTool(("ls -a " + QuotePath(path)).c_str(), out.data(), int32_t(out.size()));
        return out[0] != '\0' ? 1 : 0;
    });
}

VITRAIL_API int32_t BSDRemove(const char *path) {
    return NoThrow<int32_t>(-1, [&] {
        return RemoveChecked(path, [](const std::string &quoted) { Run("rm -dr " + quoted); });
    });
}

VITRAIL_API int32_t BSDRemove_psw(const char *path, const char *password) {
    return NoThrow<int32_t>(-1, [&] {
        return RemoveChecked(path, [&](const std::string &quoted) {
            RunFed(std::string(kSudo) + "rm -dr " + quoted, password);
        });
    });
}

VITRAIL_API int32_t BSDSCopy(const char *source, const char *folder) {
    if (!source || !folder) return -1;
    return NoThrow<int32_t>(-1, [&] { return Run(CopyCommand(source, folder)); });
}

VITRAIL_API int32_t BSDCopy(const char *source, const char *folder) {
    return NoThrow<int32_t>(-1, [&] {
        return CopyChecked(source, folder, BSDRemove,
                           [](const std::string &command) { Run(command); });
    });
}

VITRAIL_API int32_t BSDCopy_psw(const char *source, const char *folder, const char *password) {
    return NoThrow<int32_t>(-1, [&] {
        return CopyChecked(
            source, folder, [&](const char *target) { return BSDRemove_psw(target, password); },
            [&](const std::string &command) { RunFed(std::string(kSudo) + command, password); });
    });
}

VITRAIL_API int32_t BSDkill(const char *name) {
    return NoThrow<int32_t>(-1, [&] { return ListProcesses(name, BSDprocessf); });
}

VITRAIL_API int32_t BSDprocessf(const char *line) {
    if (!line) return 0;
    std::optional<long> pid = LeadingProcess(line);
    if (!pid || *pid <= 1 || *pid == long(getpid())) return 0;
    char command[32];
    std::snprintf(command, sizeof command, "kill %ld", *pid);
    BSDInvokeTool(command, nullptr, 0);
    return 0;
}

VITRAIL_API int32_t BSDtestProcess(const char *name) {
    BSDtest = 0;
    NoThrow<int32_t>(-1, [&] { return ListProcesses(name, BSDprocesst); });
    return BSDtest;
}

VITRAIL_API int32_t BSDprocesst(const char *) {
    BSDtest = 1;
    return 0;
}

VITRAIL_API int32_t BSDopen(const char *path) {
    if (!path) return -1;
    return NoThrow<int32_t>(-1, [&] { return Run("xdg-open " + QuotePath(path)); });
}

} // extern "C"
