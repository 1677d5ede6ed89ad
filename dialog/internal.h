// The dialog run-time's shared view of the form tables: the field families
// in their fixed order, field IDs and the items that hold them, the moves of
// values between fields and items, and the end of a dialog.
//
//   Family   Kind    IDs per field  Items  Value
//   text     Text    1              1      TDB_pszBuffer (edit, popup or list box)
//   check    Check   1              1      BDB_bFlags
//   integer  Int     1              1      IDB_iInts
//   number   Num     1              1      NDB_dNums
//   date     Date    3              3      DDB_lDates (day, month, year boxes)
//   push     Push    1              1      none (action vp[i])
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <vitrail/form.h>

#include "form/internal.h"
#include "platform/dialogs/dialogs.h"

namespace dialog {

enum class Kind : uint8_t { Text, Check, Int, Num, Date, Push };

// One family's columns as the run-time reads them.
struct FamilyRef {
    Kind kind;
    int32_t *enable, *count;
    size_t capacity;
    int32_t *base;
    int16_t *x, *y, *cx, *cy, *rk;
    int32_t ids; // IDs and items per field
    bool enabled() const { return *enable != 0; }
    // Usable rows: the count clamped to 0..capacity (0 when disabled).
    int32_t rows() const { return enabled() ? form::family_rows(*count, capacity) : 0; }
};

// The families in creation and decoding order: text, check box, integer,
// number, date, push button.
extern const std::array<FamilyRef, 6> kFamilies;
const FamilyRef &family(Kind kind);

struct Field {
    Kind kind;
    int32_t index;
};

// The field of ID `id`: the first enabled family (in the fixed order) in
// which it names a row; none when no family holds it.
std::optional<Field> decode(int64_t id);
int64_t field_id(Field f);

// A dialog item: its number (0 for none), kind without the disable bit, handle.
struct Item {
    int16_t number = 0;
    int16_t kind = 0;
    ControlRef handle = nullptr;
    bool is(int16_t k) const { return number != 0 && kind == k && handle != nullptr; }
};
constexpr int16_t kEditItem = platform::editText;
constexpr int16_t kPopupItem = platform::ctrlItem + platform::resCtrl;
constexpr int16_t kControlItem = platform::ctrlItem;

// Item n of the dialog (number 0 when there is none).
Item item(DialogRef d, int64_t n);
// The field's first item: rank - Dlg_rkOffset[rank] for a rank of 0 or more
// (the offset counting as 0 above 127), else the field ID; none for a field
// of negative rank in a dialog built by QarDlgBoxEx.
Item item_of(DialogRef d, Field f);
// Field ID of item n: n - Dlg_itemOffset[n] (offset 0 above 127).
int64_t id_of_item(int32_t n);

// The dialog most recently built from the tables (fields of negative rank
// have no item in it); null when the running dialog came from a template.
void set_built(DialogRef d);
bool is_built(DialogRef d);

// Windows text to the platform (w2mstr on a copy) and platform text back
// (the exact inverse of w2mstr, so every converted letter comes back).
std::string to_mac(std::string_view windows);
std::string to_windows(std::string_view mac);
// A length-prefixed copy of at most 255 bytes of text.
void to_pascal(std::string_view text, Str255 out);
std::string from_pascal(const Str255 text);

// Sets an edit box's text (Mac OS Roman); with `select`, gives it the focus
// with all its text selected.
void put_text(DialogRef d, const Item &it, std::string_view mac, bool select);

// Moves between a field and its item(s), per family:
//   fill    the dialog starts: the value and choices are shown, validity may drop
//   redraw  the global hook changed the value: shown again, validity recomputed
//   clear   the global hook asks for an empty field: validity from bMand
enum class Show { Fill, Redraw, Clear };
void show(DialogRef d, Field f, Show how);
// An item hit on the field: reads it back, stores and validates the value
// (a check box toggles). Text fields use read_text and store_text instead.
void read_back(DialogRef d, Field f);
// The text of text field i's item: the edit box's text, the chosen popup
// choice or the last clicked list row, in the Windows character set; none
// for an item of any other kind (nothing is then stored).
std::optional<std::string> read_text(const Item &it, int32_t i);
// Stores at most TDB_BUFFERSIZE - 1 characters of text (null as empty) as
// text field i's value and shows it; its validity may only drop.
void set_text(DialogRef d, int32_t i, const char *text);
// Validates text as number field i's value with vf[i] (which stores it).
void store_num(int32_t i, std::string text);
// Stores text as text field i's value (merging a password's "*" with the
// stored characters and masking the box again) and validates it.
void store_text(DialogRef d, int32_t i, std::string text);

// Text field i's choices (popup or list box) from its list text.
void fill_choices(const Item &it, int32_t i);
// Selects the popup choice equal to `shown`; with `reset`, none first.
void select_choice(const Item &it, std::string_view shown, bool reset);
// Deletes the choices of text field i's popup (none chosen) or list box;
// false when the field has neither.
bool clear_choices(const Item &it, int32_t i);
// Releases the popup menus of the dialog's items.
void release_menus(DialogRef d);

// True when every field of the enabled text, integer, number and date
// families is valid.
bool all_valid();
// Sets item 1's hilite from all_valid.
void update_ok(DialogRef d);

// Calls the final hook with the window and the tables; its answer.
int32_t ask_final(WindowRef window);
// The end of a description: every family off, the default hooks back.
void clear_description();

} // namespace dialog
