// The SDL2 backend: one SDL window per visible platform window, showing its
// port, and SDL input turned into the platform's events.
//
//   SDL                                    Platform event
//   left button down / up                  mouseDown / mouseUp, global point
//   mouse motion                           osEvt kMouseMoved, global point
//   wheel                                  osEvt kWheel, 3 rows a notch
//   key down, special key (table below)    keyDown (autoKey when repeated)
//   key down, control/logo + printable     keyDown with cmdKey
//   text input (UTF-8)                     keyDown per Mac OS Roman character
//   window exposed                         updateEvt
//   focus gained / lost                    activateEvt with / without activeFlag
//   close box of a dialog                  keyDown Escape
#include "platform/backends/sdl/sdl_backend.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialogs/events.h"
#include "platform/dialogs/windows.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

struct SpecialKey {
    SDL_Keycode sym;
    uint8_t code;
};

constexpr SpecialKey kSpecialKeys[] = {
    {SDLK_RETURN, kReturnChar},  {SDLK_KP_ENTER, kEnterChar},      {SDLK_ESCAPE, kEscapeChar},
    {SDLK_TAB, kTabChar},        {SDLK_BACKSPACE, kBackspaceChar}, {SDLK_DELETE, kDeleteChar},
    {SDLK_LEFT, kLeftArrowChar}, {SDLK_RIGHT, kRightArrowChar},    {SDLK_UP, kUpArrowChar},
    {SDLK_DOWN, kDownArrowChar}, {SDLK_HOME, kHomeChar},           {SDLK_END, kEndChar},
};

constexpr int16_t kRowsPerNotch = 3;
constexpr const char *kWindowKey = "vitrail";

// What the backend keeps for a window: the SDL window and the pixels it shows.
struct Native {
    SDL_Window *window = nullptr;
    std::vector<uint8_t> shown;
};

Native *NativeOf(WindowRef w) {
    return static_cast<Native *>(w->native);
}

uint16_t Modifiers(uint16_t sdl) {
    return uint16_t((sdl & KMOD_SHIFT ? shiftKey : 0) |
                    (sdl & (KMOD_CTRL | KMOD_GUI) ? cmdKey : 0) | (sdl & KMOD_ALT ? optionKey : 0));
}

// The character code of a special key, 0 for the others.
uint8_t SpecialCode(SDL_Keycode sym) {
    for (const SpecialKey &k : kSpecialKeys)
        if (k.sym == sym) return k.code;
    return 0;
}

// The platform window behind an SDL window id, or null.
WindowRef Owner(uint32_t windowID) {
    SDL_Window *sdl = SDL_GetWindowFromID(windowID);
    auto w = sdl ? static_cast<WindowRef>(SDL_GetWindowData(sdl, kWindowKey)) : nullptr;
    return IsWindow(w) ? w : nullptr;
}

// Copies the port into the window's surface (converted to the surface's
// format, no scaling) and shows it.
void Show(WindowRef w) {
    Native *n = NativeOf(w);
    SDL_Surface *surface = n ? SDL_GetWindowSurface(n->window) : nullptr;
    if (!surface) return;
    const Port &port = *w->port;
    int width = std::min(port.width, surface->w), height = std::min(port.height, surface->h);
    SDL_ConvertPixels(width, height, SDL_PIXELFORMAT_RGBA32, port.pixels.data(), port.width * 4,
                      surface->format->format, surface->pixels, surface->pitch);
    SDL_UpdateWindowSurface(n->window);
    try {
        n->shown = port.pixels;
    } catch (...) {
        n->shown.clear(); // shown again at the next wait
    }
}

// Shows again every visible window whose port changed since it was shown
// (a host draws into its own windows without telling anyone).
void ShowChanged() {
    for (WindowRef w : WindowList())
        if (w->visible && NativeOf(w) && NativeOf(w)->shown != w->port->pixels) Show(w);
}

// The visible window just behind `w` that has an SDL window, or null.
Native *NativeBehind(WindowRef w) {
    const std::vector<WindowRef> &list = WindowList();
    auto at = std::find(list.begin(), list.end(), w);
    for (at = at == list.end() ? at : at + 1; at != list.end(); ++at)
        if ((*at)->visible && NativeOf(*at)) return NativeOf(*at);
    return nullptr;
}

Point Global(WindowRef w, int x, int y) {
    return LocalToGlobal(
        w, Point{int16_t(std::clamp(y, -32768, 32767)), int16_t(std::clamp(x, -32768, 32767))});
}

void PostButton(const SDL_MouseButtonEvent &e) {
    WindowRef w = Owner(e.windowID);
    if (!w || e.button != SDL_BUTTON_LEFT) return;
    uint16_t what = e.type == SDL_MOUSEBUTTONDOWN ? mouseDown : mouseUp;
    PostEvent(MouseEvent(what, w, Global(w, e.x, e.y), Modifiers(SDL_GetModState()), TickCount()));
}

void PostMotion(const SDL_MouseMotionEvent &e) {
    if (WindowRef w = Owner(e.windowID)) PostEvent(MovedEvent(Global(w, e.x, e.y)));
}

void PostWheel(const SDL_MouseWheelEvent &e) {
    WindowRef w = Owner(e.windowID);
    int32_t notches = std::clamp(e.direction == SDL_MOUSEWHEEL_FLIPPED ? e.y : -e.y, -1000, 1000);
    if (!w || notches == 0) return;
    int16_t rows = int16_t(notches * kRowsPerNotch);
    PostEvent(WheelEvent(Global(w, e.mouseX, e.mouseY), rows));
}

class Sdl final : public Backend {
  public:
    const char *Name() const override { return "sdl"; }

    void WindowShown(WindowRef w) override {
        if (!NativeOf(w) && !Create(w)) return;
        Sync(w); // it may have changed while hidden
        SDL_ShowWindow(NativeOf(w)->window);
        SDL_RaiseWindow(NativeOf(w)->window);
        Show(w);
    }

    void WindowHidden(WindowRef w) override {
        if (Native *n = NativeOf(w)) SDL_HideWindow(n->window);
    }

    void WindowDisposed(WindowRef w) override {
        Native *n = NativeOf(w);
        if (!n) return;
        SDL_DestroyWindow(n->window);
        delete n;
        w->native = nullptr;
    }

    void WindowChanged(WindowRef w) override {
        if (!NativeOf(w)) return;
        Sync(w);
        Show(w);
    }

    void Present(WindowRef w) override { Show(w); }

    bool WaitForInput(int32_t timeoutMs) override {
        ShowChanged();
        SDL_Event e;
        if (!SDL_WaitEventTimeout(&e, timeoutMs < 0 ? -1 : timeoutMs)) {
            if (timeoutMs < 0) SDL_Delay(10); // an error: wait a little rather than spin
            return true;
        }
        do Translate(e);
        while (SDL_PollEvent(&e));
        return true;
    }

  private:
    // After a command key, the text input of the same key press is not typed.
    bool swallowText = false;

    // Title, size and position as the platform has them.
    static void Sync(WindowRef w) {
        SDL_Window *sdl = NativeOf(w)->window;
        SDL_SetWindowTitle(sdl, MacRomanToUtf8(w->title).c_str());
        SDL_SetWindowSize(sdl, w->port->width, w->port->height);
        SDL_SetWindowPosition(sdl, w->bounds.left, w->bounds.top);
    }

    bool Create(WindowRef w) {
        auto n = new (std::nothrow) Native;
        if (!n) return false;
        n->window =
            SDL_CreateWindow(MacRomanToUtf8(w->title).c_str(), w->bounds.left, w->bounds.top,
                             w->port->width, w->port->height, SDL_WINDOW_HIDDEN);
        if (!n->window) {
            delete n;
            return false;
        }
        SDL_SetWindowData(n->window, kWindowKey, w);
        if (Native *behind = w->dialog ? NativeBehind(w) : nullptr)
            SDL_SetWindowModalFor(n->window, behind->window);
        w->native = n;
        return true;
    }

    void Key(const SDL_KeyboardEvent &k) {
        uint16_t modifiers = Modifiers(k.keysym.mod);
        uint8_t code = SpecialCode(k.keysym.sym);
        swallowText = false;
        if (!code && (modifiers & cmdKey) && k.keysym.sym >= 0x20 && k.keysym.sym < 0x7F) {
            code = uint8_t(k.keysym.sym);
            swallowText = true;
        }
        if (!code) return;
        EventRecord e = KeyEvent(code, modifiers, TickCount());
        e.what = k.repeat ? autoKey : keyDown;
        PostEvent(e);
    }

    void Text(const char *utf8) {
        if (std::exchange(swallowText, false)) return;
        for (char c : Utf8ToMacRoman(utf8))
            if (uint8_t(c) >= 0x20 && uint8_t(c) != 0x7F)
                PostEvent(KeyEvent(uint8_t(c), 0, TickCount()));
    }

    void Window(const SDL_WindowEvent &e) {
        WindowRef w = Owner(e.windowID);
        if (!w) return;
        switch (e.event) {
        case SDL_WINDOWEVENT_EXPOSED:
            if (Native *n = NativeOf(w)) SDL_UpdateWindowSurface(n->window);
            PostEvent(WindowEvent(updateEvt, w));
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            PostEvent(WindowEvent(activateEvt, w, activeFlag));
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            PostEvent(WindowEvent(activateEvt, w, 0));
            break;
        case SDL_WINDOWEVENT_CLOSE:
            if (w->dialog) PostEvent(KeyEvent(kEscapeChar, 0, TickCount()));
            break;
        default:
            break;
        }
    }

    void Translate(const SDL_Event &e) {
        switch (e.type) {
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            PostButton(e.button);
            break;
        case SDL_MOUSEMOTION:
            PostMotion(e.motion);
            break;
        case SDL_MOUSEWHEEL:
            PostWheel(e.wheel);
            break;
        case SDL_KEYDOWN:
            Key(e.key);
            break;
        case SDL_TEXTINPUT:
            Text(e.text.text);
            break;
        case SDL_WINDOWEVENT:
            Window(e.window);
            break;
        default:
            break;
        }
    }
};

} // namespace

Backend *NewSdlBackend(const char **why) {
    static Sdl *made = nullptr;
    static std::string error;
    if (made) return made;
    // A library's guest on the host's display: no signal handlers, no
    // screensaver changes, no quitting when the last window closes, and a
    // click in a window that is not focused still counts.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    // A display the person sees: X11 (or Wayland when named), never one of
    // SDL's off-screen or console drivers. SDL_VIDEODRIVER still overrides.
    const char *wayland = std::getenv("WAYLAND_DISPLAY");
    SDL_SetHint(SDL_HINT_VIDEODRIVER, wayland && *wayland ? "x11,wayland" : "x11");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        error = SDL_GetError();
        if (why) *why = error.c_str();
        return nullptr;
    }
    SDL_StartTextInput();
    made = new (std::nothrow) Sdl;
    if (!made && why) *why = "out of memory";
    return made;
}

} // namespace platform
