// Windows on a virtual screen, ordered front to back. Each window draws
// into a port of its own (its content, in local coordinates), so any window
// can be read pixel by pixel; the backend shows the visible ones.
//
//   Field     Meaning
//   bounds    content rectangle in global (screen) coordinates
//   title     Mac OS Roman, at most 255 bytes
//   refCon    the owner's reference constant
//   port      the window's drawing port, owned
//   controls  every control and dialog item drawn in the window, owned
//   dialog    the dialog record when the window is a dialog's
//   dirty     drawn into since the backend was last shown it
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <vitrail/types.h>

#include "platform/quickdraw/port.h"
#include "platform/toolbox/files.h" // the toolbox error codes

struct OpaqueWindowPtr {
    Rect bounds{0, 0, 0, 0};
    std::string title;
    bool visible = false;
    bool goAway = false;
    int16_t procID = 0;
    void *refCon = nullptr;
    GrafPtr port = nullptr;
    std::vector<ControlRef> controls;
    DialogRef dialog = nullptr;
    void *native = nullptr; // the backend's own window
    bool dirty = false;
};

namespace platform {

constexpr int16_t kWindowGlobalPortRgn = 40;
constexpr int16_t kMovableModalDialogProc = 5;

constexpr OSStatus errInvalidWindowRef = -5600;

// The `behind` argument that puts a new window in front of all others.
inline WindowRef FrontOfAll() {
    return reinterpret_cast<WindowRef>(intptr_t(-1));
}

// Background colours of dialog windows and of host windows.
constexpr RGBColor kDialogBackground{0xECEC, 0xECEC, 0xECEC};

// The screen: 1280 x 800, or VITRAIL_SCREEN=WxH (each 64..8192).
Rect ScreenBounds();

// A new window with content `bounds` (global; sides clamped to 1..8192),
// a port painted in `background`, in front of all windows when `behind` is
// FrontOfAll() or null, else just behind `behind`. Null when memory runs out.
WindowRef NewCWindow(const Rect *bounds, ConstStr255Param title, Boolean visible, int16_t procID,
                     WindowRef behind, Boolean goAway, void *refCon, RGBColor background);
// Disposes of the window, its controls and its port; unknown windows are ignored.
void DisposeWindow(WindowRef window);
// True for a window that exists (not yet disposed of).
bool IsWindow(WindowRef window);
// The windows, front first.
const std::vector<WindowRef> &WindowList();

// The front-most visible window, or null.
WindowRef FrontWindow();
void ShowWindow(WindowRef window);
void HideWindow(WindowRef window);
// Brings the window to the front.
void SelectWindow(WindowRef window);

// The content rectangle in global coordinates (kWindowGlobalPortRgn and any
// other region alike); paramErr and an empty rectangle for a bad window.
OSStatus GetWindowBounds(WindowRef window, int16_t region, Rect *global);
// New content size (1..8192 each way): the port is repainted in the
// window's background and its controls are drawn again.
void SizeWindow(WindowRef window, int16_t width, int16_t height, Boolean update);
// Moves the content's top-left corner to (h, v), global.
void MoveWindow(WindowRef window, int16_t h, int16_t v, Boolean front);
void SetWTitle(WindowRef window, ConstStr255Param title);
void GetWTitle(WindowRef window, Str255 title);
void *GetWRefCon(WindowRef window);
void SetWRefCon(WindowRef window, void *refCon);
GrafPtr GetWindowPort(WindowRef window);

// The front-most visible window whose content holds the global point, or null.
WindowRef FindWindowAt(Point global);
// A global point in the window's local coordinates and back.
Point GlobalToLocal(WindowRef window, Point global);
Point LocalToGlobal(WindowRef window, Point local);

// Draws what changed in every visible window and shows it through the backend.
void FlushWindows();

} // namespace platform
