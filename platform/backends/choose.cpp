// Choice of the backend, made once, on first use.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/backends/backend.h"

namespace platform {
namespace {

Backend *chosen = nullptr;

bool DisplayNamed() {
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY"})
        if (const char *value = std::getenv(name); value && *value) return true;
    return false;
}

// VITRAIL_BACKEND=headless: headless. =sdl: SDL, whatever the environment
// says. Unset (or unknown, with a warning): SDL when a display is named and
// SDL opens it. Headless otherwise, said once on standard error.
Backend *Choose() {
    const char *env = std::getenv("VITRAIL_BACKEND");
    std::string_view asked = env ? env : "";
    if (asked == "headless") return NewHeadlessBackend();
    if (!asked.empty() && asked != "sdl")
        std::fprintf(stderr, "vitrail: unknown VITRAIL_BACKEND \"%s\" (headless or sdl)\n", env);
    const char *why = "DISPLAY is not set";
    if (asked == "sdl" || DisplayNamed())
        if (Backend *sdl = NewSdlBackend(&why)) return sdl;
    std::fprintf(stderr, "vitrail: no display (%s): dialogs run headless\n", why);
    return NewHeadlessBackend();
}

} // namespace

#ifndef VITRAIL_SDL
// Stands in when the SDL backend is not part of the build.
Backend *NewSdlBackend(const char **why) {
    if (why) *why = "SDL backend not built";
    return nullptr;
}
#endif

Backend &CurrentBackend() {
    if (!chosen) chosen = Choose();
    return *chosen;
}

bool BackendChosen() {
    return chosen != nullptr;
}

} // namespace platform
