// Dialog records: creation, the item list, the focus and the default item.
#include "platform/dialogs/dialogs.h"

#include <algorithm>
#include <memory>
#include <new>

#include "platform/dialogs/events.h"

namespace platform {
namespace {

std::vector<DialogRef> dialogs;

bool HasItem(DialogRef d, int16_t item) {
    return IsDialog(d) && item >= 1 && size_t(item) <= d->items.size();
}

ControlRef ViewFor(DialogRef d, int16_t kind, void *handle, const Rect *box) {
    WindowRef w = d->window;
    switch (kind & ~itemDisable) {
    case ctrlItem + btnCtrl:
    case ctrlItem + chkCtrl:
    case ctrlItem + 2:
    case ctrlItem + resCtrl:
    case iconItem: {
        auto c = static_cast<ControlRef>(handle);
        return std::find(w->controls.begin(), w->controls.end(), c) != w->controls.end() ? c
                                                                                         : nullptr;
    }
    case editText:
        return NewEditView(w, box, static_cast<TEHandle>(handle));
    case statText:
    case userItem:
        return NewStaticView(w, box);
    case picItem:
        return NewPictureView(w, box);
    default:
        return nullptr;
    }
}

// Marks the push button that Return presses: the declared default item, or
// item 1 when none is declared.
void MarkDefault(DialogRef d) {
    int16_t designated = d->defaultItem ? d->defaultItem : 1;
    for (size_t i = 0; i < d->items.size(); ++i) {
        ControlRef v = d->items[i].view;
        bool isDefault = int16_t(i + 1) == designated && v->kind == ControlKind::PushButton;
        if (v->isDefault != isDefault) InvalControl(v);
        v->isDefault = isDefault;
    }
}

void SetFocus(DialogRef d, int16_t item) {
    d->focusChosen = true;
    if (d->focus == item) return;
    if (HasItem(d, d->focus)) {
        d->items[size_t(d->focus - 1)].view->focused = false;
        InvalControl(d->items[size_t(d->focus - 1)].view);
    }
    d->focus = item;
    if (HasItem(d, item)) {
        d->items[size_t(item - 1)].view->focused = true;
        InvalControl(d->items[size_t(item - 1)].view);
    }
}

} // namespace

DialogRef NewColorDialog(void *, const Rect *bounds, ConstStr255Param title, Boolean visible,
                         int16_t procID, WindowRef behind, Boolean goAway, void *refCon, void *) {
    auto d = std::unique_ptr<OpaqueDialogPtr>(new (std::nothrow) OpaqueDialogPtr);
    if (!d) return nullptr;
    try {
        dialogs.push_back(d.get());
    } catch (...) {
        return nullptr;
    }
    WindowRef w =
        NewCWindow(bounds, title, false, procID, behind, goAway, refCon, kDialogBackground);
    if (!w) {
        dialogs.pop_back();
        return nullptr;
    }
    w->dialog = d.get();
    w->port->txFont = look::SystemFont();
    w->port->txSize = look::kLabelSize;
    d->window = w;
    if (visible) ShowWindow(w);
    return d.release();
}

void DisposeDialog(DialogRef d) {
    auto at = std::find(dialogs.begin(), dialogs.end(), d);
    if (at == dialogs.end()) return;
    dialogs.erase(at);
    DisposeWindow(d->window);
    delete d;
}

bool IsDialog(DialogRef d) {
    return d && std::find(dialogs.begin(), dialogs.end(), d) != dialogs.end();
}

WindowRef GetDialogWindow(DialogRef d) {
    return IsDialog(d) ? d->window : nullptr;
}

DialogRef GetDialogFromWindow(WindowRef w) {
    return IsWindow(w) ? w->dialog : nullptr;
}

OSErr InsertDialogItem(DialogRef d, int16_t afterItem, int16_t kind, void *handle,
                       const Rect *box) {
    if (!IsDialog(d) || !box) return OSErr(paramErr);
    ControlRef view = ViewFor(d, kind, handle, box);
    if (!view) return OSErr(paramErr);
    view->rect = *box;
    InvalControl(view);
    size_t at = size_t(std::clamp<int32_t>(afterItem, 0, int32_t(d->items.size())));
    try {
        d->items.insert(d->items.begin() + at, DialogItem{kind, view});
    } catch (...) {
        DisposeControl(view);
        return OSErr(paramErr);
    }
    if (d->focus > int16_t(at)) ++d->focus;
    MarkDefault(d);
    return 0;
}

int16_t CountDITL(DialogRef d) {
    return IsDialog(d) ? int16_t(d->items.size()) : 0;
}

void GetDialogItem(DialogRef d, int16_t item, int16_t *kind, ControlRef *handle, Rect *box) {
    bool has = HasItem(d, item);
    const DialogItem *it = has ? &d->items[size_t(item - 1)] : nullptr;
    if (kind) *kind = it ? it->kind : 0;
    if (handle) *handle = it ? it->view : nullptr;
    if (box) *box = it ? it->view->rect : Rect{0, 0, 0, 0};
}

void SetDialogItemText(ControlRef item, ConstStr255Param text) {
    if (!IsControl(item)) return;
    if (item->kind == ControlKind::EditText) {
        TESetText(text ? text + 1 : nullptr, text ? text[0] : 0, item->te);
        look::ScrollToCaret(item);
        InvalControl(item);
    } else {
        SetControlTitle(item, text);
    }
}

void GetDialogItemText(ControlRef item, Str255 text) {
    if (!text) return;
    if (IsControl(item) && item->kind == ControlKind::EditText && item->te) {
        text[0] = uint8_t(std::min<size_t>(item->te->text.size(), 255));
        std::copy_n(item->te->text.data(), text[0], text + 1);
    } else {
        GetControlTitle(item, text);
    }
}

void SelectDialogItemText(DialogRef d, int16_t item, int16_t start, int16_t end) {
    if (!HasItem(d, item) || d->items[size_t(item - 1)].view->kind != ControlKind::EditText) return;
    ControlRef v = d->items[size_t(item - 1)].view;
    SetFocus(d, item);
    TESetSelect(start, end, v->te);
    look::ScrollToCaret(v);
    InvalControl(v);
}

OSErr SetDialogDefaultItem(DialogRef d, int16_t item) {
    if (!IsDialog(d) || item < 0) return OSErr(paramErr);
    d->defaultItem = item;
    MarkDefault(d);
    return 0;
}

OSErr SetDialogTracksCursor(DialogRef d, Boolean tracks) {
    if (!IsDialog(d)) return OSErr(paramErr);
    d->tracksCursor = tracks;
    return 0;
}

void DrawDialog(DialogRef d) {
    if (!IsDialog(d)) return;
    for (ControlRef c : d->window->controls) InvalControl(c);
    DrawInvalidControls(d->window);
}

int16_t ReturnItem(DialogRef d) {
    int16_t item = d->defaultItem ? d->defaultItem : 1;
    if (!HasItem(d, item)) return 0;
    ControlRef v = d->items[size_t(item - 1)].view;
    return v->kind == ControlKind::PushButton && v->visible && IsControlActive(v) ? item : 0;
}

int16_t FocusedItem(DialogRef d) {
    return IsDialog(d) ? d->focus : 0;
}

void FocusItem(DialogRef d, int16_t item) {
    SetFocus(d, item);
    if (HasItem(d, item) && d->items[size_t(item - 1)].view->te) {
        ControlRef v = d->items[size_t(item - 1)].view;
        TESetSelect(0, int32_t(v->te->text.size()), v->te);
        look::ScrollToCaret(v);
    }
}

} // namespace platform
