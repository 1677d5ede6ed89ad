// Shared helpers of the shell tools: quoting, line-by-line invocation, and
// the guard that keeps C++ exceptions inside the library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace unixtools {

// `text` as one shell word: wrapped in single quotes, each quote inside
// written '\'' so that it never ends the quoting.
std::string ShellQuote(std::string_view text);

// `path` as one shell word that no command reads as an option: quoted as
// ShellQuote does, "./" put before a path that begins with "-".
std::string QuotePath(std::string_view path);

// Runs `command` and hands each output line to `sink` with `context` as
// BSDInvokeToolPr does. Answers the wait status, or -1 when the command
// cannot be run.
using LineSink = int32_t (*)(const char *line, void *context);
int32_t InvokeLines(const char *command, LineSink sink, void *context);

// The same with any callable taking the line.
template <typename F>
int32_t InvokeLinesTo(const char *command, F &onLine) {
    return InvokeLines(
        command, [](const char *line, void *c) { return (*static_cast<F *>(c))(line); }, &onLine);
}

// Calls `body`; answers `onError` if it throws (memory exhausted).
template <typename R, typename F>
R NoThrow(R onError, F &&body) noexcept {
    try {
        return body();
    } catch (...) {
        return onError;
    }
}

} // namespace unixtools
