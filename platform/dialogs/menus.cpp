// Menus and the menu list.
#include "platform/dialogs/menus.h"

#include <algorithm>
#include <memory>
#include <new>

#include "platform/dialogs/windows.h"

namespace platform {
namespace {

std::vector<MenuRef> menus; // every menu not yet disposed of

std::string ItemText(ConstStr255Param text) {
    return text ? std::string(reinterpret_cast<const char *>(text + 1), text[0]) : std::string();
}

} // namespace

int16_t UniqueID(uint32_t) {
    for (int16_t id = 128; id < INT16_MAX; ++id)
        if (std::none_of(menus.begin(), menus.end(), [&](MenuRef m) { return m->id == id; }))
            return id;
    return INT16_MAX;
}

OSStatus CreateNewMenu(int16_t id, uint32_t, MenuRef *menu) {
    if (!menu) return paramErr;
    *menu = nullptr;
    auto m = std::unique_ptr<MenuRec>(new (std::nothrow) MenuRec);
    if (!m) return paramErr;
    m->id = id;
    try {
        menus.push_back(m.get());
    } catch (...) {
        return paramErr;
    }
    *menu = m.release();
    return 0;
}

bool IsMenu(MenuRef menu) {
    return menu && std::find(menus.begin(), menus.end(), menu) != menus.end();
}

void InsertMenu(MenuRef menu, int16_t) {
    if (IsMenu(menu)) menu->inserted = true;
}

void DeleteMenu(int16_t id) {
    if (MenuRef m = GetMenuHandle(id)) m->inserted = false;
}

void DisposeMenu(MenuRef menu) {
    auto at = std::find(menus.begin(), menus.end(), menu);
    if (at == menus.end()) return;
    menus.erase(at);
    delete menu;
}

MenuRef GetMenuHandle(int16_t id) {
    for (MenuRef m : menus)
        if (m->inserted && m->id == id) return m;
    return nullptr;
}

void InsertMenuItem(MenuRef menu, ConstStr255Param text, int16_t afterItem) {
    if (!IsMenu(menu) || menu->items.size() >= size_t(kMaxMenuItems)) return;
    int32_t at = std::clamp<int32_t>(afterItem, 0, int32_t(menu->items.size()));
    try {
        menu->items.insert(menu->items.begin() + at, ItemText(text));
    } catch (...) {}
}

void AppendMenu(MenuRef menu, ConstStr255Param text) {
    if (IsMenu(menu)) InsertMenuItem(menu, text, int16_t(menu->items.size()));
}

void DeleteMenuItem(MenuRef menu, int16_t item) {
    if (IsMenu(menu) && item >= 1 && size_t(item) <= menu->items.size())
        menu->items.erase(menu->items.begin() + (item - 1));
}

int16_t CountMenuItems(MenuRef menu) {
    return IsMenu(menu) ? int16_t(menu->items.size()) : 0;
}

void GetMenuItemText(MenuRef menu, int16_t item, Str255 text) {
    if (!text) return;
    text[0] = 0;
    if (!IsMenu(menu) || item < 1 || size_t(item) > menu->items.size()) return;
    const std::string &s = menu->items[size_t(item - 1)];
    size_t n = std::min<size_t>(s.size(), 255);
    std::copy_n(s.data(), n, text + 1);
    text[0] = uint8_t(n);
}

} // namespace platform
