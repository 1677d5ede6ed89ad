// The display behind the windows. A backend shows the visible windows and
// turns a person's input into platform events (PostEvent); the headless
// backend has neither display nor input. Nothing above the backends knows
// which one runs, and only a backend includes a display library.
#pragma once

#include <cstdint>

#include <vitrail/types.h>

namespace platform {

class Backend {
  public:
    virtual ~Backend() = default;
    virtual const char *Name() const = 0;
    // A window became visible, was hidden, is about to be disposed of, or
    // changed its bounds or title.
    virtual void WindowShown(WindowRef) {}
    virtual void WindowHidden(WindowRef) {}
    virtual void WindowDisposed(WindowRef) {}
    virtual void WindowChanged(WindowRef) {}
    // The window's port holds new pixels to show.
    virtual void Present(WindowRef) {}
    // Waits at most timeoutMs milliseconds (negative: until something
    // happens) for input and posts it. False when there is no input source.
    virtual bool WaitForInput(int32_t timeoutMs) = 0;
};

// The backend in force, chosen on first use: VITRAIL_BACKEND=headless or
// sdl; unset, sdl when a display answers and headless otherwise. A missing
// display falls back to headless and says so once on standard error.
Backend &CurrentBackend();

// True once CurrentBackend has been asked for: a host that never shows a
// window never opens a display.
bool BackendChosen();

// The backend without display: never any input.
Backend *NewHeadlessBackend();

// The SDL backend, or null when SDL cannot open a display (the reason goes
// to *why). Defined by backends/sdl when it is built.
Backend *NewSdlBackend(const char **why);

} // namespace platform
