// The three invokers: run a command line through popen, reached by name in
// "System.framework", and capture its output, feed it a text, or deliver
// its output line by line.
//
//   Invoker           popen mode   Data
//   BSDInvokeTool     "r"          one fread into the caller's buffer
//   BSDInvokeToolWr   "w"          one fwrite of the caller's text
//   BSDInvokeToolPr   "r"          byte by byte, lines of at most 8192 characters
#include <vitrail/unixtools.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <pthread.h>

#include "unixtools/shell.h"

namespace unixtools {
namespace {

using PopenFn = FILE *(*)(const char *, const char *);
using FreadFn = size_t (*)(void *, size_t, size_t, FILE *);
using FwriteFn = size_t (*)(const void *, size_t, size_t, FILE *);
using PcloseFn = int (*)(FILE *);

constexpr size_t kLineChars = 8192;

// The system library's pipe functions, looked up afresh for each run. The
// bundle is released when the run ends.
class SystemLibrary {
  public:
    SystemLibrary() {
        if (!RunningOnCarbonX()) return;
        CFStringRef name = vitrail_cf_string("System.framework");
        if (LoadFrameworkBundleSystem(name, &bundle_) != 0) bundle_ = nullptr;
        vitrail_cf_release(name);
    }
    ~SystemLibrary() { vitrail_cf_release(bundle_); }
    SystemLibrary(const SystemLibrary &) = delete;
    SystemLibrary &operator=(const SystemLibrary &) = delete;

    // The function `name` of the library as type F, or null.
    template <typename F>
    F Function(const char *name) const {
        return bundle_ ? reinterpret_cast<F>(vitrail_bundle_function(bundle_, name)) : nullptr;
    }

  private:
    CFBundleRef bundle_ = nullptr;
};

// Blocks SIGPIPE for this thread while a command is fed, so that a command
// which stops reading early cannot kill the host; a SIGPIPE raised meanwhile
// is consumed before the mask is restored.
class SigpipeBlock {
  public:
    SigpipeBlock() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe_, &old_);
    }
    ~SigpipeBlock() {
        sigset_t pending;
        sigpending(&pending);
        if (!wasPending_ && sigismember(&pending, SIGPIPE) == 1) {
            const timespec zero{0, 0};
            sigtimedwait(&pipe_, nullptr, &zero);
        }
        pthread_sigmask(SIG_SETMASK, &old_, nullptr);
    }
    SigpipeBlock(const SigpipeBlock &) = delete;
    SigpipeBlock &operator=(const SigpipeBlock &) = delete;

  private:
    sigset_t pipe_{};
    sigset_t old_{};
    bool wasPending_ = false;
};

// Runs `command` in `mode` and calls `use(pipe, io)` with the library's
// fread or fwrite (as IoFn) before pclose. -1 when anything is missing.
template <typename IoFn, typename Use>
int32_t RunPiped(const char *command, const char *mode, const char *ioName, Use &&use) {
    if (!command) return -1;
    SystemLibrary system;
    auto open = system.Function<PopenFn>("popen");
    auto io = system.Function<IoFn>(ioName);
    auto close = system.Function<PcloseFn>("pclose");
    if (!open || !io || !close) return -1;
    FILE *pipe = open(command, mode);
    if (!pipe) return -1;
    use(pipe, io);
    return close(pipe);
}

} // namespace

std::string ShellQuote(std::string_view text) {
    std::string quoted = "'";
    for (char c : text) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted += '\'';
}

std::string QuotePath(std::string_view path) {
    return !path.empty() && path[0] == '-' ? ShellQuote("./" + std::string(path))
                                           : ShellQuote(path);
}

int32_t InvokeLines(const char *command, LineSink sink, void *context) {
    return RunPiped<FreadFn>(command, "r", "fread", [&](FILE *pipe, FreadFn read) {
        std::array<char, kLineChars + 1> line;
        size_t held = 0;
        char c = 0;
        for (;;) {
            bool more = read(&c, 1, 1, pipe) == 1;
            if (more && c != '\n') {
                if (held < kLineChars) line[held++] = c;
                continue;
            }
            if (!more && held == 0) return;
            line[held] = '\0';
            held = 0;
            if (sink(line.data(), context) != 0 || !more) return;
        }
    });
}

} // namespace unixtools

extern "C" {

VITRAIL_API int32_t BSDInvokeTool(const char *command, char *buffer, int32_t bufferSize) {
    using namespace unixtools;
    return NoThrow<int32_t>(-1, [&] {
        return RunPiped<FreadFn>(command, "r", "fread", [&](FILE *pipe, FreadFn read) {
            if (!buffer || bufferSize <= 0) return;
            size_t got = read(buffer, 1, size_t(bufferSize) - 1, pipe);
            buffer[got] = '\0';
        });
    });
}

VITRAIL_API int32_t BSDInvokeToolWr(const char *command, const char *text) {
    using namespace unixtools;
    return NoThrow<int32_t>(-1, [&] {
        SigpipeBlock block;
        return RunPiped<FwriteFn>(command, "w", "fwrite", [&](FILE *pipe, FwriteFn write) {
            if (text && *text) write(text, 1, std::strlen(text), pipe);
        });
    });
}

VITRAIL_API int32_t BSDInvokeToolPr(const char *command, BSDLineProcPtr lineCallback) {
    if (!lineCallback) return -1;
    return unixtools::NoThrow<int32_t>(
        -1, [&] { return unixtools::InvokeLinesTo(command, lineCallback); });
}

} // extern "C"
