// The modal loop: waiting for events (from the queue, the automation agent,
// the backend, or the headless answer), the standard filter, and what
// clicks and keys do to the items of the front dialog.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/backends/backend.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/events.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

constexpr int32_t kForcedAfter = 4; // headless answers eaten before one is forced through

AgentProc agent = nullptr;
void *agentUser = nullptr;
bool inAgent = false;

bool IsPushButton(DialogRef d, int16_t item) {
    if (item < 1 || size_t(item) > d->items.size()) return false;
    ControlRef v = d->items[size_t(item - 1)].view;
    return v->kind == ControlKind::PushButton && v->visible && IsControlActive(v);
}

// The item Escape presses: 2 when it is an active push button, else 0.
int16_t EscapeItem(DialogRef d) {
    return IsPushButton(d, 2) ? 2 : 0;
}

std::string TitleOf(ControlRef v) {
    return MacRomanToUtf8(v->title);
}

// With no one to type or click, answers the dialog the way a person in a
// hurry would: its default button, then Escape when the dialog stays open;
// after kForcedAfter answers that did not get through, hands the item back
// without going through the filter.
bool HeadlessAnswer(DialogRef d, EventRecord *event, int16_t *forced) {
    int32_t n = ++d->autoAnswers;
    int16_t ret = ReturnItem(d), esc = EscapeItem(d);
    bool useReturn = ret && (n == 1 || !esc);
    int16_t item = useReturn ? ret : esc;
    std::string title = MacRomanToUtf8(d->window->title);
    std::string answer = item ? "\"" + TitleOf(d->items[size_t(item - 1)].view) + "\"" : "nothing";
    if (n > kForcedAfter) {
        *forced = item ? item : (d->items.empty() ? 0 : 1);
        std::fprintf(stderr, "vitrail: headless: dialog \"%s\" closed with item %d\n",
                     title.c_str(), *forced);
        return true;
    }
    std::fprintf(stderr, "vitrail: headless: dialog \"%s\" answered with %s (%s)\n", title.c_str(),
                 answer.c_str(), useReturn ? "Return" : "Escape");
    *event = KeyEvent(useReturn ? kReturnChar : kEscapeChar, 0, TickCount());
    return false;
}

// The next event for the dialog; true with *forced set when the headless
// answer goes straight to the caller.
bool NextEvent(DialogRef d, EventRecord *event, int16_t *forced) {
    *forced = 0;
    for (;;) {
        if (TakeEvent(event)) return false;
        FlushWindows();
        if (agent && !inAgent) {
            inAgent = true;
            agent(d->window, agentUser);
            inAgent = false;
            if (!IsDialog(d)) return true;
            if (EventsPending()) continue;
        }
        if (CurrentBackend().WaitForInput(-1)) continue;
        return HeadlessAnswer(d, event, forced);
    }
}

ControlRef ViewOf(DialogRef d, int16_t item) {
    return item >= 1 && size_t(item) <= d->items.size() ? d->items[size_t(item - 1)].view : nullptr;
}

int16_t ItemOf(DialogRef d, ControlRef v) {
    for (size_t i = 0; i < d->items.size(); ++i)
        if (d->items[i].view == v) return int16_t(i + 1);
    return 0;
}

bool Enabled(DialogRef d, int16_t item) {
    return !(d->items[size_t(item - 1)].kind & itemDisable);
}

// The item under a local point: the last one holding it, group boxes left out.
int16_t ItemAt(DialogRef d, Point pt) {
    for (size_t i = d->items.size(); i-- > 0;) {
        ControlRef v = d->items[i].view;
        const Rect &r = v->rect;
        if (v->visible && v->kind != ControlKind::GroupBox && pt.h >= r.left && pt.h < r.right &&
            pt.v >= r.top && pt.v < r.bottom)
            return int16_t(i + 1);
    }
    return 0;
}

bool Inside(const Rect &r, Point pt) {
    return pt.h >= r.left && pt.h < r.right && pt.v >= r.top && pt.v < r.bottom;
}

void CloseMenu(DialogRef d) {
    if (!d->openMenu) return;
    look::RestorePixels(*d->window->port, d->underMenu);
    d->underMenu = {};
    d->openMenu = nullptr;
    d->window->dirty = true;
}

void OpenMenu(DialogRef d, ControlRef popup) {
    DrawInvalidControls(d->window);
    d->openMenu = popup;
    d->menuHighlight = int16_t(popup->value);
    d->underMenu = look::SavePixels(*d->window->port, look::PopupMenuFrame(popup));
    look::DrawPopupMenu(popup, d->menuHighlight);
}

int16_t ChooseFromMenu(DialogRef d, int16_t menuItem) {
    ControlRef popup = d->openMenu;
    CloseMenu(d);
    if (menuItem < 1) return 0;
    SetControlValue(popup, menuItem);
    return ItemOf(d, popup);
}

void Highlight(DialogRef d, int16_t menuItem) {
    if (menuItem == d->menuHighlight) return;
    d->menuHighlight = menuItem;
    look::DrawPopupMenu(d->openMenu, menuItem);
}

int16_t ClickList(DialogRef d, ControlRef v, Point pt, int16_t item) {
    ListHandle list = v->list;
    if (look::ListHasScrollBar(v) && Inside(look::ListScrollBar(v), pt)) {
        Rect thumb = look::ListThumb(v);
        int32_t page = look::ListPageRows(v);
        if (pt.v < thumb.top) look::ListScrollBy(v, -page);
        if (pt.v >= thumb.bottom) look::ListScrollBy(v, page);
        return 0;
    }
    int32_t row = look::ListRowAt(v, pt);
    if (row < 0) return 0;
    list->lastDouble = d->clickCount >= 2 && list->lastClick.v == row;
    list->lastClick = Cell{int16_t(row), 0};
    list->selected = row;
    look::ListScrollTo(v, row);
    InvalControl(v);
    return item;
}

void ClickEdit(DialogRef d, ControlRef v, Point pt, uint16_t modifiers, int16_t item) {
    if (d->focus != item) FocusItem(d, item);
    TEHandle te = v->te;
    int16_t at = look::EditOffsetAt(v, pt.h);
    if (d->clickCount >= 2) {
        // A double click selects the word under the pointer.
        int32_t from = at, to = at;
        while (from > 0 && te->text[size_t(from - 1)] != ' ') --from;
        while (to < int32_t(te->text.size()) && te->text[size_t(to)] != ' ') ++to;
        TESetSelect(from, to, te);
    } else if (modifiers & shiftKey) {
        te->selStart = std::min(te->anchor, at);
        te->selEnd = std::max(te->anchor, at);
    } else {
        TESetSelect(at, at, te);
    }
    look::ScrollToCaret(v);
    InvalControl(v);
}

int16_t MouseDown(DialogRef d, const EventRecord &e) {
    if (EventWindow(e) != d->window) return 0; // other windows wait while the dialog runs
    Point pt = GlobalToLocal(d->window, e.where);
    bool again = d->downWindow == d->window && e.when - d->downWhen <= GetDblTime() &&
                 std::abs(e.where.h - d->downWhere.h) <= kDoubleClickDistance &&
                 std::abs(e.where.v - d->downWhere.v) <= kDoubleClickDistance;
    d->clickCount = again ? int16_t(d->clickCount + 1) : 1;
    d->downWhen = e.when, d->downWhere = e.where, d->downWindow = d->window;
    if (d->openMenu) return ChooseFromMenu(d, look::PopupMenuItemAt(d->openMenu, pt));
    int16_t item = ItemAt(d, pt);
    ControlRef v = ViewOf(d, item);
    if (!v) return 0;
    if (v->kind == ControlKind::EditText) {
        ClickEdit(d, v, pt, e.modifiers, item);
        return Enabled(d, item) ? item : 0;
    }
    if (!IsControlActive(v) || !Enabled(d, item)) return 0;
    switch (v->kind) {
    case ControlKind::PushButton:
    case ControlKind::CheckBox:
        d->tracking = v;
        HiliteControl(v, kControlButtonPart);
        return 0;
    case ControlKind::PopupButton:
        OpenMenu(d, v);
        return 0;
    case ControlKind::ListBox:
        return ClickList(d, v, pt, item);
    default:
        return item;
    }
}

int16_t MouseUp(DialogRef d, const EventRecord &e) {
    Point pt = GlobalToLocal(d->window, e.where);
    if (d->openMenu) {
        bool dragged = std::abs(e.where.h - d->downWhere.h) > kDoubleClickDistance ||
                       std::abs(e.where.v - d->downWhere.v) > kDoubleClickDistance;
        int16_t menuItem = look::PopupMenuItemAt(d->openMenu, pt);
        return dragged && menuItem ? ChooseFromMenu(d, menuItem) : 0;
    }
    ControlRef v = d->tracking;
    d->tracking = nullptr;
    if (!v || !IsControl(v)) return 0;
    HiliteControl(v, 0);
    return EventWindow(e) == d->window && Inside(v->rect, pt) ? ItemOf(d, v) : 0;
}

void Moved(DialogRef d, const EventRecord &e) {
    Point pt = GlobalToLocal(d->window, e.where);
    if (d->openMenu) Highlight(d, look::PopupMenuItemAt(d->openMenu, pt));
    if (d->tracking && IsControl(d->tracking))
        HiliteControl(d->tracking, Inside(d->tracking->rect, pt) ? kControlButtonPart : 0);
}

void Wheel(DialogRef d, const EventRecord &e) {
    int16_t rows = int16_t(uint16_t(e.message & 0xFFFF));
    ControlRef v = ViewOf(d, ItemAt(d, GlobalToLocal(d->window, e.where)));
    if (v && v->kind == ControlKind::ListBox) look::ListScrollBy(v, rows);
}

// A person scrolling a list to a row, or opening a popup, then clicking:
// the clicks go to the head of the queue, placed where the row now is.
void ChooseRow(DialogRef d, const EventRecord &e) {
    int16_t row = int16_t(e.message & 0xFFFF), item = int16_t(e.message >> 16 & 0xFFFF);
    int32_t clicks = std::clamp<int32_t>(int32_t(e.message >> 32 & 0xFF), 1, 3);
    ControlRef v = ViewOf(d, item);
    if (!v) return;
    std::vector<Point> at;
    if (v->kind == ControlKind::ListBox && v->list) {
        look::ListScrollTo(v, row);
        Rect r = look::ListRowRect(v, row);
        at.assign(size_t(clicks), Point{int16_t((r.top + r.bottom) / 2), int16_t(r.left + 7)});
    } else if (v->kind == ControlKind::PopupButton) {
        Rect menuItem = look::PopupMenuItemRect(v, row);
        at = {Point{int16_t((v->rect.top + v->rect.bottom) / 2),
                    int16_t((v->rect.left + v->rect.right) / 2)},
              Point{int16_t((menuItem.top + menuItem.bottom) / 2),
                    int16_t((menuItem.left + menuItem.right) / 2)}};
    }
    std::vector<EventRecord> clicksQueued;
    for (Point local : at) {
        Point global = LocalToGlobal(d->window, local);
        clicksQueued.push_back(MouseEvent(mouseDown, d->window, global, 0, e.when));
        clicksQueued.push_back(MouseEvent(mouseUp, d->window, global, 0, e.when));
    }
    PostEventsFirst(clicksQueued.data(), clicksQueued.size());
}

// Focus to the next (or previous) edit box in item order, wrapping.
void TabFocus(DialogRef d, bool back) {
    int32_t n = int32_t(d->items.size());
    for (int32_t step = 1; step <= n; ++step) {
        int32_t i = ((d->focus - 1 + (back ? -step : step)) % n + n) % n;
        ControlRef v = d->items[size_t(i)].view;
        if (v->kind == ControlKind::EditText && v->visible) return FocusItem(d, int16_t(i + 1));
    }
}

int16_t MenuKey(DialogRef d, uint8_t key) {
    int16_t count = CountMenuItems(GetControlPopupMenuHandle(d->openMenu));
    switch (key) {
    case kUpArrowChar:
        Highlight(d, int16_t(std::max(d->menuHighlight - 1, 1)));
        return 0;
    case kDownArrowChar:
        Highlight(d, int16_t(std::min<int>(d->menuHighlight + 1, count)));
        return 0;
    case kReturnChar:
    case kEnterChar:
    case ' ':
        return ChooseFromMenu(d, d->menuHighlight);
    case kEscapeChar:
        CloseMenu(d);
        return 0;
    default:
        return 0;
    }
}

bool IsCancelKey(uint8_t key, uint16_t modifiers) {
    return key == kEscapeChar || (key == '.' && (modifiers & cmdKey));
}

int16_t Key(DialogRef d, const EventRecord &e) {
    uint8_t key = uint8_t(e.message & 0xFF);
    if (d->openMenu) return MenuKey(d, key);
    if (key == kTabChar) {
        TabFocus(d, e.modifiers & shiftKey);
        return 0;
    }
    if (key == kReturnChar || key == kEnterChar) return ReturnItem(d);
    if (IsCancelKey(key, e.modifiers)) return EscapeItem(d);
    ControlRef v = ViewOf(d, d->focus);
    if (!v || !TEKey(key, e.modifiers, v->te)) return 0;
    look::ScrollToCaret(v);
    InvalControl(v);
    return Enabled(d, d->focus) ? d->focus : 0;
}

int16_t Dispatch(DialogRef d, const EventRecord &e) {
    switch (e.what) {
    case mouseDown:
        return MouseDown(d, e);
    case mouseUp:
        return MouseUp(d, e);
    case keyDown:
    case autoKey:
        return Key(d, e);
    case osEvt:
        if (OsEventKind(e) == kMouseMoved) Moved(d, e);
        if (OsEventKind(e) == kWheel) Wheel(d, e);
        if (OsEventKind(e) == kChooseRow) ChooseRow(d, e);
        return 0;
    default:
        return 0; // update and activate: the window keeps its pixels
    }
}

Boolean StandardFilter(DialogRef d, EventRecord *e, DialogItemIndex *itemHit) {
    if (!IsDialog(d) || !e || !itemHit || d->openMenu || (e->what != keyDown && e->what != autoKey))
        return false;
    uint8_t key = uint8_t(e->message & 0xFF);
    int16_t item = 0;
    if (key == kReturnChar || key == kEnterChar)
        item = ReturnItem(d);
    else if (IsCancelKey(key, e->modifiers))
        item = EscapeItem(d);
    if (!item) return false;
    *itemHit = item;
    return true;
}

// The front-most visible dialog.
DialogRef FrontDialog() {
    for (WindowRef w : WindowList())
        if (w->visible && w->dialog) return w->dialog;
    return nullptr;
}

} // namespace

void SetAgent(AgentProc proc, void *user) {
    agent = proc;
    agentUser = user;
}

ModalFilterUPP NewModalFilterUPP(ModalFilterProcPtr proc) {
    return proc;
}

void DisposeModalFilterUPP(ModalFilterUPP) {}

Boolean InvokeModalFilterUPP(DialogRef dialog, EventRecord *event, DialogItemIndex *itemHit,
                             ModalFilterUPP filter) {
    return filter ? filter(dialog, event, itemHit) : false;
}

OSErr GetStdFilterProc(ModalFilterUPP *filter) {
    if (!filter) return OSErr(paramErr);
    *filter = StandardFilter;
    return 0;
}

void ModalDialog(ModalFilterUPP filter, DialogItemIndex *itemHit) {
    DialogItemIndex ignored = 0;
    if (!itemHit) itemHit = &ignored;
    *itemHit = 0;
    DialogRef d = FrontDialog();
    if (!d) return;
    if (!d->focusChosen) {
        d->focusChosen = true;
        for (size_t i = 0; i < d->items.size() && !d->focus; ++i)
            if (d->items[i].view->kind == ControlKind::EditText) FocusItem(d, int16_t(i + 1));
    }
    for (;;) {
        EventRecord e;
        int16_t forced = 0;
        if (NextEvent(d, &e, &forced)) {
            *itemHit = forced;
            return;
        }
        DialogItemIndex hit = 0;
        Boolean handled =
            filter ? InvokeModalFilterUPP(d, &e, &hit, filter) : StandardFilter(d, &e, &hit);
        if (handled || !IsDialog(d)) {
            *itemHit = hit;
            return;
        }
        if ((hit = Dispatch(d, e)) > 0) {
            *itemHit = hit;
            return;
        }
    }
}

} // namespace platform
