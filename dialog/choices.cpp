// Choices of a text field: the popup menu or list box rows cut from its
// list text, the choice matching a value, and the menus' release.
//
//   Presentation   Item              Separators   Limit
//   popup          kind 7 control    "+" or ","   1000 choices
//   list box       kind 4 control    "$"          32767 rows
//
// Each segment between separators is one choice (an empty one included);
// choices are shown converted with w2mstr from a copy, so the list text
// itself is never changed.
#include <string_view>

#include <vitrail/form.h>

#include "dialog/internal.h"

namespace dialog {
namespace {

using namespace platform;

constexpr std::string_view kPopupSeparators = "+,";
constexpr std::string_view kRowSeparators = "$";

// Calls take(segment) for each segment of list, in order, while it answers
// true; the text after the last separator is the last segment.
template <class Take>
void for_each_segment(std::string_view list, std::string_view separators, Take take) {
    for (;;) {
        size_t at = list.find_first_of(separators);
        if (!take(list.substr(0, at)) || at == std::string_view::npos) return;
        list.remove_prefix(at + 1);
    }
}

ListHandle list_of(const Item &it) {
    ListHandle list = nullptr;
    if (!it.is(kControlItem) ||
        GetControlData(it.handle, 0, kControlListBoxListHandleTag, sizeof list, &list, nullptr))
        return nullptr;
    return list;
}

MenuRef menu_of(const Item &it) {
    return it.is(kPopupItem) ? GetControlPopupMenuHandle(it.handle) : nullptr;
}

// Text field i's popup menu (TDBC[i] = 1) or, failing that, its list box
// (TDBL[i] = 1); at most one of the two.
struct Choices {
    MenuRef menu;
    ListHandle list;
};
Choices choices_of(const Item &it, int32_t i) {
    MenuRef menu = TDBC[i] == 1 ? menu_of(it) : nullptr;
    return {menu, !menu && TDBL[i] == 1 ? list_of(it) : nullptr};
}

} // namespace

void fill_choices(const Item &it, int32_t i) {
    if (!TDB_PSZLBUFFER[i]) return;
    std::string_view text = TDB_PSZLBUFFER[i];
    const Choices c = choices_of(it, i);
    if (MenuRef menu = c.menu) {
        int16_t k = CountMenuItems(menu);
        for_each_segment(text, kPopupSeparators, [&](std::string_view segment) {
            if (k >= kMaxMenuItems) return false;
            Str255 s;
            to_pascal(to_mac(segment), s);
            InsertMenuItem(menu, s, k);
            SetControlMaximum(it.handle, ++k);
            return true;
        });
    } else if (ListHandle list = c.list) {
        Rect bounds;
        int32_t row = GetListDataBounds(list, &bounds)->bottom;
        for_each_segment(text, kRowSeparators, [&](std::string_view segment) {
            if (row >= kMaxListRows) return false;
            std::string mac = to_mac(segment.substr(0, 255));
            LAddRow(1, int16_t(row), list);
            LSetCell(mac.data(), int16_t(mac.size()), Cell{int16_t(row++), 0}, list);
            return true;
        });
    }
}

void select_choice(const Item &it, std::string_view shown, bool reset) {
    MenuRef menu = menu_of(it);
    if (!menu) return;
    if (reset) SetControlValue(it.handle, 0);
    for (int16_t k = CountMenuItems(menu); k >= 1; --k) {
        Str255 s;
        GetMenuItemText(menu, k, s);
        if (to_windows(from_pascal(s)) == shown) return SetControlValue(it.handle, k);
    }
}

bool clear_choices(const Item &it, int32_t i) {
    const Choices c = choices_of(it, i);
    if (MenuRef menu = c.menu) {
        for (int16_t k = CountMenuItems(menu); k >= 1; --k) DeleteMenuItem(menu, k);
        SetControlValue(it.handle, 0);
    } else if (ListHandle list = c.list) {
        Rect bounds;
        LDelRow(GetListDataBounds(list, &bounds)->bottom, 0, list);
    }
    return c.menu || c.list;
}

void release_menus(DialogRef d) {
    for (int32_t n = CountDITL(d); n >= 1; --n)
        if (MenuRef menu = menu_of(item(d, n))) DisposeMenu(menu);
}

} // namespace dialog
