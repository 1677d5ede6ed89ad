// Menus: numbered lists of item texts (Mac OS Roman), kept in a menu list
// by ID so that popup buttons can find theirs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vitrail/types.h>

namespace platform {

struct MenuRec {
    int16_t id = 0;
    std::vector<std::string> items;
    bool inserted = false;
};
using MenuRef = MenuRec *;

constexpr uint32_t kMenuResType = 0x4D454E55; // 'MENU'
constexpr int16_t kMaxMenuItems = 1000;

// An ID of the resource type that no existing menu uses (from 128 up).
int16_t UniqueID(uint32_t resType);
// A new empty menu; paramErr and null for a null out.
OSStatus CreateNewMenu(int16_t id, uint32_t attributes, MenuRef *menu);
// Puts the menu in the menu list (beforeID -1: as a popup menu).
void InsertMenu(MenuRef menu, int16_t beforeID);
// Takes the menu with that ID out of the menu list.
void DeleteMenu(int16_t id);
// Frees a menu (taking it out of the list first); unknown menus are ignored.
void DisposeMenu(MenuRef menu);
// The listed menu with that ID, or null.
MenuRef GetMenuHandle(int16_t id);
bool IsMenu(MenuRef menu);

// Inserts an item after item `afterItem` (clamped to 0..count), the text
// taken as it is (no metacharacters), at most 255 bytes; at most 1000 items.
void InsertMenuItem(MenuRef menu, ConstStr255Param text, int16_t afterItem);
void AppendMenu(MenuRef menu, ConstStr255Param text);
void DeleteMenuItem(MenuRef menu, int16_t item);
int16_t CountMenuItems(MenuRef menu);
// The text of item 1..count; "" for others.
void GetMenuItemText(MenuRef menu, int16_t item, Str255 text);

} // namespace platform
