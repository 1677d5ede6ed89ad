// Choice of the backend, made once, on first use.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/backends/backend.h"

namespace platform {
namespace {

Backend *chosen = nullptr;

Backend *Choose() {
    const char *asked = std::getenv("VITRAIL_BACKEND");
    if (asked && *asked && std::strcmp(asked, "headless") == 0) return NewHeadlessBackend();
    const char *why = "not built";
    if (Backend *sdl = NewSdlBackend(&why)) return sdl;
    bool wanted = asked && std::strcmp(asked, "sdl") == 0;
    const char *display = std::getenv("DISPLAY");
    if (wanted || (display && *display))
        std::fprintf(stderr, "vitrail: no display (%s): dialogs run headless\n", why);
    return NewHeadlessBackend();
}

} // namespace

// Stands in when the SDL backend is not part of the build.
__attribute__((weak)) Backend *NewSdlBackend(const char **why) {
    if (why) *why = "SDL backend not built";
    return nullptr;
}

Backend &CurrentBackend() {
    if (!chosen) chosen = Choose();
    return *chosen;
}

bool BackendChosen() {
    return chosen != nullptr;
}

} // namespace platform
