// Dialog templates: "DLOG" resources in the resources folder, each a small
// text file (docs/resources.md) giving the dialog's ID, size, title and
// items. A template that does not parse is no template: its ID reads as 0
// and no dialog is made from it.
//
//   Kind word  Item kind             Made with
//   button     4 control             NewControl, push button
//   check      5 control             NewControl, check box
//   popup      7 control             a new listed menu, CreatePopupButtonControl
//   list       4 control             CreateListBoxControl (14-pixel rows)
//   edit       16 edit text          TENew; the text is the initial text
//   static     8 static text (off)   the text
//   icon       32 icon (off)         CreateIconControl; the text is the icon ID
//   picture    64 picture (off)      the text names the "PICT" resource
//   user       0 user item (off)     nothing drawn
// (off: hits are not reported.) Item numbers skipped by a template are
// filled with empty user items, so that a template lists only the items
// whose numbers matter.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <vitrail/types.h>

#include "platform/dialogs/dialogs.h"
#include "platform/toolbox/resources.h"

namespace platform {

constexpr int32_t kMaxTemplateItem = 255;

struct TemplateItem {
    int16_t number;
    int16_t kind; // item kind, with itemDisable for the passive kinds
    std::string word;
    Rect rect;
    std::string text; // Mac OS Roman
};

struct DialogTemplate {
    int16_t id;
    int16_t width, height;
    std::string title; // Mac OS Roman
    std::vector<TemplateItem> items;
};

// Reads a template's text; none when any line is malformed (see
// docs/resources.md), the ID is outside 1..32767, the size outside 1..8192,
// or item numbers are outside 1..255 or not increasing.
std::optional<DialogTemplate> ParseTemplate(std::string_view text);

// The ID a "DLOG" resource declares (0 for a malformed one), its type and
// its name (length-prefixed); null outputs are skipped, a null resource
// gives ID 0, type 0 and an empty name.
void GetResInfo(Handle resource, int16_t *id, uint32_t *type, Str255 name);

// A new, invisible dialog made from the template of ID dialogID, centred on
// the screen, in front of all windows (or behind `behind`); null when no
// template in the folder declares that ID. With two templates of one ID,
// the one whose file name sorts first is used. Popup menus made here stay in
// the menu list until their owner disposes of them.
DialogRef GetNewDialog(int16_t dialogID, void *storage, WindowRef behind);

} // namespace platform
