// Windows: the front-to-back list, geometry, titles and the hand-over of
// their pixels to the backend.
#include "platform/dialogs/windows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "platform/backends/backend.h"
#include "platform/dialogs/controls.h"
#include "platform/dialogs/events.h"

namespace platform {
namespace {

constexpr int32_t kMinScreenSide = 64;

std::vector<WindowRef> windows; // front first

int32_t Side(int32_t v) {
    return std::clamp<int32_t>(v, 1, kMaxPortSide);
}

std::string Title(ConstStr255Param title) {
    return title ? std::string(reinterpret_cast<const char *>(title + 1), title[0]) : std::string();
}

// Posts the activate events of a change of front window.
void FrontChanged(WindowRef before) {
    WindowRef now = FrontWindow();
    if (now == before) return;
    if (before) PostEvent(WindowEvent(activateEvt, before, 0));
    if (now) PostEvent(WindowEvent(activateEvt, now, activeFlag));
}

void Repaint(WindowRef w, RGBColor background) {
    FillPixels(*w->port, Rect{0, 0, int16_t(w->port->height), int16_t(w->port->width)}, background);
    w->port->bgColour = background;
    w->dirty = true;
}

} // namespace

Rect ScreenBounds() {
    static const Rect screen = [] {
        int w = 1280, h = 800;
        if (const char *s = std::getenv("VITRAIL_SCREEN")) {
            int sw = 0, sh = 0;
            if (std::sscanf(s, "%dx%d", &sw, &sh) == 2 && sw >= kMinScreenSide &&
                sh >= kMinScreenSide && sw <= kMaxPortSide && sh <= kMaxPortSide)
                w = sw, h = sh;
        }
        return Rect{0, 0, int16_t(h), int16_t(w)};
    }();
    return screen;
}

WindowRef NewCWindow(const Rect *bounds, ConstStr255Param title, Boolean visible, int16_t procID,
                     WindowRef behind, Boolean goAway, void *refCon, RGBColor background) {
    Rect r = bounds ? *bounds : Rect{0, 0, 1, 1};
    int32_t width = Side(r.right - r.left), height = Side(r.bottom - r.top);
    auto w = std::unique_ptr<OpaqueWindowPtr>(new (std::nothrow) OpaqueWindowPtr);
    if (!w || !(w->port = NewPort(width, height))) return nullptr;
    w->port->ownedByWindow = true;
    try {
        w->title = Title(title);
        auto at = windows.begin();
        if (behind && behind != FrontOfAll()) {
            at = std::find(windows.begin(), windows.end(), behind);
            if (at != windows.end()) ++at;
        }
        windows.insert(at, w.get());
    } catch (...) {
        DisposePort(w->port);
        return nullptr;
    }
    w->bounds = Rect{r.top, r.left, int16_t(r.top + height), int16_t(r.left + width)};
    w->procID = procID;
    w->goAway = goAway;
    w->refCon = refCon;
    Repaint(w.get(), background);
    WindowRef made = w.release();
    if (visible) ShowWindow(made);
    return made;
}

void DisposeWindow(WindowRef window) {
    auto at = std::find(windows.begin(), windows.end(), window);
    if (at == windows.end()) return;
    WindowRef front = FrontWindow();
    if ((window->visible || window->native) && BackendChosen()) CurrentBackend().WindowDisposed(window);
    windows.erase(at);
    FlushEventsFor(window);
    for (ControlRef c : window->controls) DeleteControlRecord(c);
    window->controls.clear();
    DisposePort(window->port);
    delete window;
    FrontChanged(front == window ? nullptr : front);
}

bool IsWindow(WindowRef window) {
    return window && std::find(windows.begin(), windows.end(), window) != windows.end();
}

const std::vector<WindowRef> &WindowList() {
    return windows;
}

WindowRef FrontWindow() {
    for (WindowRef w : windows)
        if (w->visible) return w;
    return nullptr;
}

void ShowWindow(WindowRef window) {
    if (!IsWindow(window) || window->visible) return;
    WindowRef front = FrontWindow();
    window->visible = true;
    window->dirty = true;
    CurrentBackend().WindowShown(window);
    PostEvent(WindowEvent(updateEvt, window));
    FrontChanged(front);
}

void HideWindow(WindowRef window) {
    if (!IsWindow(window) || !window->visible) return;
    WindowRef front = FrontWindow();
    window->visible = false;
    CurrentBackend().WindowHidden(window);
    FrontChanged(front);
}

void SelectWindow(WindowRef window) {
    auto at = std::find(windows.begin(), windows.end(), window);
    if (at == windows.end()) return;
    WindowRef front = FrontWindow();
    std::rotate(windows.begin(), at, at + 1);
    FrontChanged(front);
}

OSStatus GetWindowBounds(WindowRef window, int16_t, Rect *global) {
    if (!global) return paramErr;
    if (!IsWindow(window)) {
        *global = Rect{0, 0, 0, 0};
        return errInvalidWindowRef;
    }
    *global = window->bounds;
    return 0;
}

void SizeWindow(WindowRef window, int16_t width, int16_t height, Boolean) {
    if (!IsWindow(window)) return;
    int32_t w = Side(width), h = Side(height);
    if (w == window->port->width && h == window->port->height) return;
    GrafPtr port = NewPort(w, h);
    if (!port) return;
    port->ownedByWindow = true;
    // The new raster takes the old one's drawing state.
    port->txFont = window->port->txFont, port->txSize = window->port->txSize;
    port->txFace = window->port->txFace, port->txMode = window->port->txMode;
    port->fgColour = window->port->fgColour;
    RGBColor background = window->port->bgColour;
    GrafPtr current = CurrentPort(), old = window->port;
    DisposePort(old);
    window->port = port;
    if (current == old || !current) SetPort(port);
    window->bounds.right = int16_t(window->bounds.left + w);
    window->bounds.bottom = int16_t(window->bounds.top + h);
    Repaint(window, background);
    for (ControlRef c : window->controls) InvalControl(c);
    if (window->visible) CurrentBackend().WindowChanged(window);
}

void MoveWindow(WindowRef window, int16_t h, int16_t v, Boolean front) {
    if (!IsWindow(window)) return;
    int16_t width = int16_t(window->bounds.right - window->bounds.left);
    int16_t height = int16_t(window->bounds.bottom - window->bounds.top);
    window->bounds = Rect{v, h, int16_t(v + height), int16_t(h + width)};
    if (front) SelectWindow(window);
    if (window->visible) CurrentBackend().WindowChanged(window);
}

void SetWTitle(WindowRef window, ConstStr255Param title) {
    if (!IsWindow(window)) return;
    try {
        window->title = Title(title);
    } catch (...) {
        return;
    }
    if (window->visible) CurrentBackend().WindowChanged(window);
}

void GetWTitle(WindowRef window, Str255 title) {
    if (!title) return;
    title[0] = 0;
    if (!IsWindow(window)) return;
    size_t n = std::min<size_t>(window->title.size(), 255);
    std::copy_n(window->title.data(), n, title + 1);
    title[0] = uint8_t(n);
}

void *GetWRefCon(WindowRef window) {
    return IsWindow(window) ? window->refCon : nullptr;
}

void SetWRefCon(WindowRef window, void *refCon) {
    if (IsWindow(window)) window->refCon = refCon;
}

GrafPtr GetWindowPort(WindowRef window) {
    return IsWindow(window) ? window->port : nullptr;
}

WindowRef FindWindowAt(Point p) {
    for (WindowRef w : windows)
        if (w->visible && p.h >= w->bounds.left && p.h < w->bounds.right && p.v >= w->bounds.top &&
            p.v < w->bounds.bottom)
            return w;
    return nullptr;
}

Point GlobalToLocal(WindowRef window, Point global) {
    return Point{int16_t(global.v - window->bounds.top), int16_t(global.h - window->bounds.left)};
}

Point LocalToGlobal(WindowRef window, Point local) {
    return Point{int16_t(local.v + window->bounds.top), int16_t(local.h + window->bounds.left)};
}

void FlushWindows() {
    for (WindowRef w : windows) {
        DrawInvalidControls(w);
        if (w->dirty && w->visible && BackendChosen()) CurrentBackend().Present(w);
        w->dirty = false;
    }
}

} // namespace platform
