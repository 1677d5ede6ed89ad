// Controls: creation in a window, values, hilite, data tags and drawing.
#include "platform/dialogs/controls.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "platform/dialogs/look.h"
#include "platform/dialogs/windows.h"
#include "platform/toolbox/bundles.h"

namespace platform {
namespace {

std::string Text(ConstStr255Param s) {
    return s ? std::string(reinterpret_cast<const char *>(s + 1), s[0]) : std::string();
}

// Adds a new control of `kind` to the window; null for a bad window, a
// missing rectangle or no memory.
ControlRef Add(WindowRef window, const Rect *bounds, ControlKind kind) {
    if (!IsWindow(window) || !bounds) return nullptr;
    auto c = std::unique_ptr<OpaqueControlRef>(new (std::nothrow) OpaqueControlRef);
    if (!c) return nullptr;
    try {
        window->controls.push_back(c.get());
    } catch (...) {
        return nullptr;
    }
    c->window = window;
    c->kind = kind;
    c->rect = *bounds;
    window->dirty = true;
    return c.release();
}

OSStatus Made(ControlRef made, ControlRef *out) {
    if (out) *out = made;
    return made ? 0 : paramErr;
}

} // namespace

ControlRef NewControl(WindowRef window, const Rect *bounds, ConstStr255Param title, Boolean visible,
                      int16_t value, int16_t minimum, int16_t maximum, int16_t procID,
                      void *refCon) {
    if (procID != pushButProc && procID != checkBoxProc) return nullptr;
    ControlRef c = Add(window, bounds,
                       procID == pushButProc ? ControlKind::PushButton : ControlKind::CheckBox);
    if (!c) return nullptr;
    c->title = Text(title);
    c->visible = visible;
    c->minimum = minimum;
    c->maximum = std::max(minimum, maximum);
    c->value = std::clamp<int32_t>(value, c->minimum, c->maximum);
    c->refCon = refCon;
    return c;
}

OSStatus CreatePopupButtonControl(WindowRef window, const Rect *bounds, CFStringRef title,
                                  int16_t menuID, Boolean, int16_t, int16_t, int16_t,
                                  ControlRef *control) {
    ControlRef c = Add(window, bounds, ControlKind::PopupButton);
    if (c) {
        c->title = CFStringText(title);
        c->menuID = menuID;
        c->maximum = CountMenuItems(GetMenuHandle(menuID));
    }
    return Made(c, control);
}

OSStatus CreateListBoxControl(WindowRef window, const Rect *bounds, Boolean, int16_t rows, int16_t,
                              Boolean, Boolean, int16_t cellHeight, int16_t, Boolean,
                              const ListDefSpec *, ControlRef *control) {
    ControlRef c = Add(window, bounds, ControlKind::ListBox);
    if (c && !(c->list = new (std::nothrow) ListRec)) {
        DisposeControl(c);
        c = nullptr;
    }
    if (c) {
        c->list->owner = c;
        c->list->cellHeight = cellHeight > 0 ? cellHeight : 14;
        if (rows > 0) LAddRow(rows, 0, c->list);
    }
    return Made(c, control);
}

OSStatus CreateGroupBoxControl(WindowRef window, const Rect *bounds, CFStringRef title, Boolean,
                               ControlRef *control) {
    ControlRef c = Add(window, bounds, ControlKind::GroupBox);
    if (c) c->title = CFStringText(title);
    return Made(c, control);
}

OSStatus CreateIconControl(WindowRef window, const Rect *bounds,
                           const ControlButtonContentInfo *content, Boolean, ControlRef *control) {
    ControlRef c = Add(window, bounds, ControlKind::Icon);
    if (c) c->iconID = content ? content->resID : -1;
    return Made(c, control);
}

ControlRef NewEditView(WindowRef window, const Rect *bounds, TEHandle te) {
    ControlRef c = Add(window, bounds, ControlKind::EditText);
    if (c && !(c->te = te ? te : TENew(bounds, bounds))) {
        DisposeControl(c);
        return nullptr;
    }
    return c;
}

ControlRef NewStaticView(WindowRef window, const Rect *bounds) {
    return Add(window, bounds, ControlKind::StaticText);
}

ControlRef NewPictureView(WindowRef window, const Rect *bounds) {
    return Add(window, bounds, ControlKind::Picture);
}

bool IsControl(ControlRef c) {
    if (!c) return false;
    for (WindowRef w : WindowList())
        if (std::find(w->controls.begin(), w->controls.end(), c) != w->controls.end()) return true;
    return false;
}

void DeleteControlRecord(ControlRef c) {
    delete c->list;
    TEDispose(c->te);
    delete c;
}

void DisposeControl(ControlRef c) {
    if (!IsControl(c)) return;
    auto &all = c->window->controls;
    all.erase(std::find(all.begin(), all.end(), c));
    DeleteControlRecord(c);
}

int16_t GetControlValue(ControlRef c) {
    return IsControl(c) ? int16_t(c->value) : 0;
}

void SetControlValue(ControlRef c, int16_t value) {
    if (!IsControl(c)) return;
    int32_t v = std::clamp<int32_t>(value, c->minimum, std::max(c->minimum, c->maximum));
    if (v != c->value) InvalControl(c);
    c->value = v;
}

int16_t GetControlMinimum(ControlRef c) {
    return IsControl(c) ? int16_t(c->minimum) : 0;
}

int16_t GetControlMaximum(ControlRef c) {
    return IsControl(c) ? int16_t(c->maximum) : 0;
}

void SetControlMaximum(ControlRef c, int16_t maximum) {
    if (!IsControl(c)) return;
    c->maximum = std::max<int32_t>(maximum, c->minimum);
    SetControlValue(c, int16_t(std::min(c->value, c->maximum)));
}

void HiliteControl(ControlRef c, int16_t part) {
    if (!IsControl(c) || c->hilite == uint8_t(part)) return;
    c->hilite = uint8_t(part);
    InvalControl(c);
}

bool IsControlActive(ControlRef c) {
    return IsControl(c) && c->hilite != kControlInactivePart;
}

void SetControlTitle(ControlRef c, ConstStr255Param title) {
    if (!IsControl(c)) return;
    c->title = Text(title);
    InvalControl(c);
}

void GetControlTitle(ControlRef c, Str255 title) {
    if (!title) return;
    title[0] = 0;
    if (!IsControl(c)) return;
    size_t n = std::min<size_t>(c->title.size(), 255);
    std::memcpy(title + 1, c->title.data(), n);
    title[0] = uint8_t(n);
}

OSErr GetControlData(ControlRef c, int16_t, uint32_t tag, size_t bufferSize, void *buffer,
                     size_t *actualSize) {
    if (!IsControl(c)) return OSErr(errUnknownControl);
    if (c->kind != ControlKind::ListBox || !c->list) return errDataNotSupported;
    if (tag == kControlListBoxListHandleTag) {
        if (actualSize) *actualSize = sizeof(ListHandle);
        if (!buffer || bufferSize != sizeof(ListHandle)) return errDataSizeMismatch;
        std::memcpy(buffer, &c->list, sizeof(ListHandle));
        return 0;
    }
    if (tag == kControlListBoxDoubleClickTag) {
        if (actualSize) *actualSize = 1;
        if (!buffer || bufferSize < 1) return errDataSizeMismatch;
        *static_cast<Boolean *>(buffer) = c->list->lastDouble;
        return 0;
    }
    return errDataNotSupported;
}

MenuRef GetControlPopupMenuHandle(ControlRef c) {
    return IsControl(c) && c->kind == ControlKind::PopupButton ? GetMenuHandle(c->menuID) : nullptr;
}

void Draw1Control(ControlRef c) {
    if (IsControl(c)) look::DrawControl(c);
}

void InvalControl(ControlRef c) {
    c->invalid = true;
    c->window->dirty = true;
}

void DrawInvalidControls(WindowRef window) {
    for (ControlRef c : window->controls)
        if (c->invalid) look::DrawControl(c);
}

ControlRef FindControlAt(WindowRef window, Point pt) {
    for (auto it = window->controls.rbegin(); it != window->controls.rend(); ++it) {
        const Rect &r = (*it)->rect;
        if ((*it)->visible && (*it)->kind != ControlKind::GroupBox && pt.h >= r.left &&
            pt.h < r.right && pt.v >= r.top && pt.v < r.bottom)
            return *it;
    }
    return nullptr;
}

} // namespace platform
