// The exported automation interface: host windows, reading dialogs, and
// input queued as the backend's own events.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include <vitrail/automation.h>
#include <vitrail/platform.h>

#include "platform/backends/backend.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/events.h"
#include "platform/toolbox/charsets.h"

using namespace platform;

namespace {

// Windows-1252 bytes as Mac OS Roman, dropping what Mac OS Roman lacks.
std::string ToMac(std::string_view windows) {
    std::string mac;
    for (char c : windows) {
        uint8_t b;
        if (UnicodeToMacRoman(kWindows1252ToUnicode[uint8_t(c)], &b)) mac += char(b);
    }
    return mac;
}

// Mac OS Roman bytes as Windows-1252, "?" for what Windows-1252 lacks.
std::string ToWindows(std::string_view mac) {
    static const std::array<char, 256> table = [] {
        std::array<char, 256> t;
        t.fill('?');
        for (int w = 255; w >= 0; --w) {
            uint8_t m;
            if (UnicodeToMacRoman(kWindows1252ToUnicode[size_t(w)], &m)) t[m] = char(w);
        }
        return t;
    }();
    std::string out;
    for (char c : mac) out += table[uint8_t(c)];
    return out;
}

// Copies text into buf (size bytes, terminated) and returns its length.
int32_t CopyOut(const std::string &text, char *buf, int32_t size) {
    if (buf && size > 0) {
        size_t n = std::min(text.size(), size_t(size - 1));
        std::memcpy(buf, text.data(), n);
        buf[n] = '\0';
    }
    return int32_t(text.size());
}

DialogRef DialogOf(WindowRef w) {
    return IsWindow(w) ? w->dialog : nullptr;
}

ControlRef ItemView(WindowRef w, int32_t item) {
    DialogRef d = DialogOf(w);
    if (!d || item < 1 || size_t(item) > d->items.size()) return nullptr;
    return d->items[size_t(item - 1)].view;
}

int32_t ControlCode(ControlKind k) {
    switch (k) {
    case ControlKind::PushButton:
        return vitrail_control_push;
    case ControlKind::CheckBox:
        return vitrail_control_check;
    case ControlKind::PopupButton:
        return vitrail_control_popup;
    case ControlKind::ListBox:
        return vitrail_control_list;
    case ControlKind::GroupBox:
        return vitrail_control_group;
    case ControlKind::Icon:
        return vitrail_control_icon;
    default:
        return vitrail_control_none;
    }
}

std::string MenuItem(ControlRef v, int32_t item) {
    MenuRef menu = GetControlPopupMenuHandle(v);
    if (!menu || item < 1 || size_t(item) > menu->items.size()) return {};
    return menu->items[size_t(item - 1)];
}

// The time of queued input: each action a second after the last one, so
// that separate actions never make a double click.
uint32_t ActionTime() {
    static uint32_t last = 0;
    last = std::max(last + 60, TickCount() + 60);
    return last;
}

void QueueClicks(WindowRef w, Point local, int32_t clicks) {
    Point global = LocalToGlobal(w, local);
    uint32_t when = ActionTime();
    for (int32_t i = 0; i < clicks; ++i) {
        PostEvent(MouseEvent(mouseDown, w, global, 0, when));
        PostEvent(MouseEvent(mouseUp, w, global, 0, when));
    }
}

Point Centre(const Rect &r) {
    return Point{int16_t((r.top + r.bottom) / 2), int16_t((r.left + r.right) / 2)};
}

// The rectangle of list row `row` of v (from 0, scrolled into view first)
// or of popup menu item `row` (from 1); false when v has no such row.
bool RowRect(ControlRef v, int32_t row, Rect *r) {
    if (v->kind == ControlKind::ListBox && v->list && row >= 0 &&
        size_t(row) < v->list->rows.size()) {
        look::ListScrollTo(v, row);
        FlushWindows();
        *r = look::ListRowRect(v, row);
        return true;
    }
    if (v->kind == ControlKind::PopupButton && row >= 1 &&
        row <= CountMenuItems(GetControlPopupMenuHandle(v))) {
        *r = look::PopupMenuItemRect(v, int16_t(row));
        return true;
    }
    return false;
}

} // namespace

extern "C" {

VITRAIL_API void vitrail_set_agent(vitrail_agent_fn agent, void *user) {
    SetAgent(agent, user);
}

VITRAIL_API WindowRef vitrail_window_new(const char *title, int16_t left, int16_t top,
                                         int16_t right, int16_t bottom) {
    try {
        std::string mac = ToMac(title ? title : "");
        Str255 pt;
        pt[0] = uint8_t(std::min<size_t>(mac.size(), 255));
        std::memcpy(pt + 1, mac.data(), pt[0]);
        Rect r{top, left, bottom, right};
        return NewCWindow(&r, pt, true, 0, FrontOfAll(), true, nullptr,
                          RGBColor{0xFFFF, 0xFFFF, 0xFFFF});
    } catch (...) {
        return nullptr;
    }
}

VITRAIL_API void vitrail_window_dispose(WindowRef window) {
    if (IsWindow(window) && !window->dialog) DisposeWindow(window);
}

VITRAIL_API GrafPtr vitrail_window_port(WindowRef window) {
    if (!IsWindow(window)) return nullptr;
    FlushWindows();
    return window->port;
}

VITRAIL_API void vitrail_window_set_refcon(WindowRef window, void *refcon) {
    SetWRefCon(window, refcon);
}

VITRAIL_API int32_t vitrail_window_invalidate(WindowRef window) {
    if (!IsWindow(window)) return -1;
    window->dirty = true;
    FlushWindows();
    PostEvent(WindowEvent(updateEvt, window));
    return 0;
}

VITRAIL_API WindowRef vitrail_front_window(void) {
    return FrontWindow();
}

VITRAIL_API int32_t vitrail_window_title(WindowRef window, char *buf, int32_t size) {
    if (!IsWindow(window)) return -1;
    try {
        return CopyOut(ToWindows(window->title), buf, size);
    } catch (...) {
        return -1;
    }
}

VITRAIL_API int32_t vitrail_window_bounds(WindowRef window, Rect *global) {
    if (!IsWindow(window) || !global) return -1;
    *global = window->bounds;
    return 0;
}

VITRAIL_API int32_t vitrail_dialog_item_count(WindowRef window) {
    if (!IsWindow(window)) return -1;
    return window->dialog ? CountDITL(window->dialog) : 0;
}

VITRAIL_API int32_t vitrail_dialog_item(WindowRef window, int32_t item, vitrail_item_info *info) {
    ControlRef v = ItemView(window, item);
    if (!v || !info) return -1;
    try {
        *info = vitrail_item_info{};
        info->kind = window->dialog->items[size_t(item - 1)].kind & ~itemDisable;
        info->control = ControlCode(v->kind);
        info->rect = v->rect;
        info->value = v->value, info->minimum = v->minimum, info->maximum = v->maximum;
        info->hilite = v->hilite, info->visible = v->visible;
        info->focused = v->focused, info->is_default = v->isDefault;
        info->selected = -1;
        std::string text = v->title;
        if (v->kind == ControlKind::EditText && v->te) text = v->te->text;
        if (v->kind == ControlKind::PopupButton) {
            info->count = CountMenuItems(GetControlPopupMenuHandle(v));
            text = MenuItem(v, v->value);
        }
        if (v->list) {
            info->count = int32_t(v->list->rows.size());
            info->selected = v->list->selected;
        }
        CopyOut(ToWindows(text), info->text, sizeof info->text);
        return 0;
    } catch (...) {
        return -1;
    }
}

VITRAIL_API int32_t vitrail_dialog_item_row(WindowRef window, int32_t item, int32_t row, char *buf,
                                            int32_t size) {
    ControlRef v = ItemView(window, item);
    if (!v) return -1;
    try {
        if (v->list && row >= 0 && size_t(row) < v->list->rows.size())
            return CopyOut(ToWindows(v->list->rows[size_t(row)]), buf, size);
        if (v->kind == ControlKind::PopupButton && row >= 1 &&
            row <= CountMenuItems(GetControlPopupMenuHandle(v)))
            return CopyOut(ToWindows(MenuItem(v, row)), buf, size);
    } catch (...) {}
    return -1;
}

VITRAIL_API int32_t vitrail_window_write_png(WindowRef window, const char *path) {
    if (!IsWindow(window) || !path) return -1;
    FlushWindows();
    return vitrail_port_write_png(window->port, path);
}

VITRAIL_API int32_t vitrail_click_item(WindowRef window, int32_t item) {
    ControlRef v = ItemView(window, item);
    if (!v) return -1;
    Point at = Centre(v->rect);
    if (v->kind == ControlKind::EditText)
        at.h = int16_t(std::max(v->rect.right - 4, int(v->rect.left)));
    QueueClicks(window, at, 1);
    return 0;
}

VITRAIL_API int32_t vitrail_click_at(WindowRef window, int32_t x, int32_t y, int32_t clicks) {
    if (!IsWindow(window) || x < 0 || y < 0 || x >= window->port->width ||
        y >= window->port->height)
        return -1;
    QueueClicks(window, Point{int16_t(y), int16_t(x)}, std::clamp(clicks, 1, 3));
    return 0;
}

VITRAIL_API int32_t vitrail_choose_row(WindowRef window, int32_t item, int32_t row,
                                       int32_t clicks) {
    ControlRef v = ItemView(window, item);
    if (!v) return -1;
    bool listRow = v->kind == ControlKind::ListBox && v->list && row >= 0 &&
                   size_t(row) < v->list->rows.size();
    bool menuItem = v->kind == ControlKind::PopupButton && row >= 1 &&
                    row <= CountMenuItems(GetControlPopupMenuHandle(v));
    if (!listRow && !menuItem) return -1;
    EventRecord e = ChooseRowEvent(int16_t(item), int16_t(row), int16_t(std::clamp(clicks, 1, 3)));
    e.when = ActionTime();
    PostEvent(e);
    return 0;
}

VITRAIL_API int32_t vitrail_dialog_item_row_rect(WindowRef window, int32_t item, int32_t row,
                                                 Rect *rect) {
    ControlRef v = ItemView(window, item);
    return v && rect && RowRect(v, row, rect) ? 0 : -1;
}

VITRAIL_API int32_t vitrail_type_text(WindowRef window, const char *text) {
    if (!IsWindow(window) || !text) return -1;
    uint32_t when = ActionTime();
    for (char c : ToMac(text)) PostEvent(KeyEvent(uint8_t(c), 0, when));
    return 0;
}

VITRAIL_API int32_t vitrail_press_key(WindowRef window, int32_t key) {
    if (!IsWindow(window) || (key & ~(0xFF | vitrail_key_shift | vitrail_key_command))) return -1;
    uint16_t modifiers = uint16_t((key & vitrail_key_shift ? shiftKey : 0) |
                                  (key & vitrail_key_command ? cmdKey : 0));
    PostEvent(KeyEvent(uint8_t(key & 0xFF), modifiers, ActionTime()));
    return 0;
}

VITRAIL_API const char *vitrail_backend_name(void) {
    return CurrentBackend().Name();
}

} // extern "C"
