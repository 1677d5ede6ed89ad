// Field value transfer: what fill, redraw, clear and an item hit do to each
// family's value, validity and item(s).
//
//   Family  Item(s)             Shown as                      Read back through
//   text    edit, popup, list   value ("*" per character      read_text + store_text
//                               for a password), choices
//   check   control             low 16 bits of BDB_bFlags     toggle
//   integer edit                intdco_i (masked: "*")        vi[i] after the "*" merge
//   number  edit                realdco_d, NDB_iChiff places  vf[i]
//   date    three edits         day, month, year              intcod_l_sup0 per box, vd[i]
//
// Validity of integer, number and date fields comes from the form model's
// own rule (format, then the validator), so the dialog and QarDlgBox_valid
// never disagree; a fill only ever lowers it.
#include <algorithm>
#include <cstdint>
#include <string>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

#include "dialog/internal.h"
#include "form/value_family.h"

namespace dialog {
namespace {

using namespace platform;

constexpr int32_t kWork = 256;

std::string_view value_of(int32_t i) {
    return TDB_pszBuffer[i] ? std::string_view(TDB_pszBuffer[i]) : std::string_view();
}

std::string masked(int32_t passw, std::string_view v) {
    return passw ? std::string(v.size(), '*') : std::string(v);
}

bool text_acceptable(int32_t i, std::string_view v) {
    return !(TDB_bMand[i] && v.empty()) && int64_t(v.size()) <= TDB_iCarac[i];
}

// Bytes text field i's store may take, terminator included: TDB_BUFFERSIZE,
// and never past the end of TDB_szBuffer when the field's slice is in it.
int32_t text_room(int32_t i) {
    int64_t room = TDB_BUFFERSIZE;
    auto at = reinterpret_cast<uintptr_t>(TDB_pszBuffer[i]);
    auto store = reinterpret_cast<uintptr_t>(TDB_szBuffer);
    if (at >= store && at < store + sizeof TDB_szBuffer)
        room = std::min<int64_t>(room, int64_t(store + sizeof TDB_szBuffer - at));
    return int32_t(room);
}

std::string edit_text(const Item &it) {
    Str255 s{0};
    if (it.is(kEditItem)) GetDialogItemText(it.handle, s);
    return from_pascal(s);
}

std::string format_int(int32_t v) {
    char buf[kWork] = "";
    intdco_l(v, buf, kWork);
    return buf;
}

template <class F>
void set_validity(const F &fam, int32_t i, Show how) {
    if (how == Show::Clear) {
        fam.validity.ok[i] = fam.validity.mand[i] ? 0 : 1;
        return;
    }
    int32_t before = fam.validity.ok[i];
    fam.check(i);
    if (how == Show::Fill) fam.validity.ok[i] &= before ? 1 : 0;
}

template <class V, class T>
bool accepts(V *table, int32_t i, std::string text, T *value) {
    V validator = table ? table[i] : nullptr;
    return !validator || validator(text.data(), value) == 0;
}

// Text field i shown. A fill shows the value when the field holds one, its
// choices, and selects the box; a redraw, or a host update (`set`), shows
// the value; a clear empties the box. Only a redraw may raise the validity.
void show_text(DialogRef d, int32_t i, Show how, bool set = false) {
    Item it = item_of(d, {Kind::Text, i});
    bool fill = how == Show::Fill && !set;
    bool has = set || how == Show::Redraw || (fill && TDB_bInit[i]);
    std::string shown = has ? masked(TDB_bPassw[i], value_of(i)) : std::string();
    put_text(d, it, to_mac(shown), fill);
    if (fill) fill_choices(it, i);
    if (has && TDBC[i] == 1) select_choice(it, shown, how == Show::Redraw);
    if (how == Show::Clear) TDB_bOK[i] = TDB_bMand[i] ? 0 : 1;
    if (!has) return;
    TDB_bInit[i] = 1;
    bool ok = text_acceptable(i, value_of(i));
    TDB_bOK[i] = how == Show::Redraw ? ok : TDB_bOK[i] && ok;
}

void show_check(DialogRef d, int32_t i) {
    Item it = item_of(d, {Kind::Check, i});
    if (it.number && it.kind >= kControlItem && it.kind <= kPopupItem)
        SetControlValue(it.handle, int16_t(BDB_bFlags[i] & 0xFFFF));
}

void show_int(DialogRef d, int32_t i, Show how) {
    Item it = item_of(d, {Kind::Int, i});
    if (how == Show::Redraw) IDB_bInit[i] = 1;
    std::string shown;
    if (how != Show::Clear && IDB_bInit[i]) shown = masked(IDB_bPassw[i], format_int(IDB_iInts[i]));
    if (how != Show::Fill || IDB_bInit[i] || IDB_bMand[i])
        put_text(d, it, shown, how == Show::Fill);
    if (IDB_bPassw[i]) IDB_lPassw[i] = int16_t(shown.size());
    set_validity(form::kInts, i, how);
}

void show_num(DialogRef d, int32_t i, Show how) {
    Item it = item_of(d, {Kind::Num, i});
    if (how == Show::Redraw) NDB_bInit[i] = 1;
    if (how == Show::Clear || NDB_bInit[i]) {
        char buf[kWork] = "";
        if (how != Show::Clear) realdco_d(NDB_dNums[i], buf, kWork, NDB_iChiff[i]);
        put_text(d, it, buf, how == Show::Fill);
    }
    set_validity(form::kNums, i, how);
}

void show_date(DialogRef d, int32_t i, Show how) {
    Item day = item_of(d, {Kind::Date, i});
    if (how == Show::Redraw) DDB_bInit[i] = 1;
    int32_t v = DDB_lDates[i];
    const int32_t parts[3] = {v % 100, v / 100 % 100, v / 10000 % 10000};
    bool has = how != Show::Clear && DDB_bInit[i];
    for (int32_t k = 0; day.number && k < 3; ++k)
        put_text(d, item(d, day.number + k), has ? format_int(parts[k]) : "", how == Show::Fill);
    set_validity(form::kDates, i, how);
}

// The typed text of a masked integer with each "*" given back its digit of
// the stored value S, aligned to the right (less S's last digit when the
// text did not grow). A text that is still the mask last shown (a click or
// an arrow key) stands for S itself.
std::string merge_int(int32_t i, std::string typed) {
    std::string stored = format_int(IDB_iInts[i]);
    uint32_t shown = uint32_t(int32_t(IDB_lPassw[i]));
    IDB_lPassw[i] = int16_t(typed.size());
    if (typed.size() == shown && typed.find_first_not_of('*') == std::string::npos) return stored;
    int64_t k = int64_t(stored.size()) - (shown < typed.size() ? 1 : 2);
    for (size_t j = typed.size(); j-- > 0;)
        if (typed[j] == '*') typed[j] = k >= 0 ? stored[size_t(k--)] : '0';
    return typed;
}

void read_int(DialogRef d, int32_t i) {
    Item it = item_of(d, {Kind::Int, i});
    std::string t = edit_text(it);
    if (IDB_bPassw[i]) {
        t = merge_int(i, t);
        put_text(d, it, std::string(t.size(), '*'), false);
    }
    IDB_bInit[i] = t.empty() ? 0 : 1;
    IDB_bOK[i] = t.empty() ? !IDB_bMand[i] : accepts(vi, i, t, &IDB_iInts[i]);
}

// Day, month and year boxes: a malformed part (or an empty one of a
// mandatory date) makes the date invalid; three positive parts go to vd[i]
// as YYYYMMDD; otherwise (empty or negative parts of an optional date) the
// date stays valid with its previous value.
void read_date(DialogRef d, int32_t i) {
    Item day = item_of(d, {Kind::Date, i});
    int32_t parts[3] = {0, 0, 0};
    bool error = false, empty = true;
    for (int32_t k = 0; k < 3; ++k) {
        std::string t = edit_text(day.number ? item(d, day.number + k) : Item{});
        empty = empty && t.empty();
        if (DDB_bMand[i] && t.empty())
            error = true;
        else if (intcod_l_sup0(t.data(), &parts[k]) >= 2)
            error = true;
    }
    if (empty) DDB_bInit[i] = 0;
    if (error) {
        DDB_bOK[i] = 0;
    } else if (parts[0] > 0 && parts[1] > 0 && parts[2] > 0) {
        int64_t v = int64_t(parts[2]) * 10000 + int64_t(parts[1]) * 100 + parts[0];
        DDB_bInit[i] = 1;
        DDB_bOK[i] = accepts(vd, i, std::to_string(v), &DDB_lDates[i]);
    } else {
        DDB_bOK[i] = 1;
    }
}

void toggle_check(DialogRef d, int32_t i) {
    Item it = item_of(d, {Kind::Check, i});
    if (!it.number || it.kind < kControlItem || it.kind > kPopupItem) return;
    BDB_bFlags[i] = GetControlValue(it.handle) == 0 ? 1 : 0;
    SetControlValue(it.handle, int16_t(BDB_bFlags[i]));
}

} // namespace

void show(DialogRef d, Field f, Show how) {
    switch (f.kind) {
    case Kind::Text:
        return show_text(d, f.index, how);
    case Kind::Check:
        return show_check(d, f.index);
    case Kind::Int:
        return show_int(d, f.index, how);
    case Kind::Num:
        return show_num(d, f.index, how);
    case Kind::Date:
        return show_date(d, f.index, how);
    case Kind::Push:
        return;
    }
}

void read_back(DialogRef d, Field f) {
    switch (f.kind) {
    case Kind::Check:
        return toggle_check(d, f.index);
    case Kind::Int:
        return read_int(d, f.index);
    case Kind::Num:
        return store_num(f.index, edit_text(item_of(d, f)));
    case Kind::Date:
        return read_date(d, f.index);
    case Kind::Text:
    case Kind::Push:
        return;
    }
}

std::optional<std::string> read_text(const Item &it, int32_t i) {
    Str255 s{0};
    if (it.is(kEditItem)) {
        GetDialogItemText(it.handle, s);
    } else if (it.is(kPopupItem) && TDBC[i] == 1) {
        GetMenuItemText(GetControlPopupMenuHandle(it.handle), GetControlValue(it.handle), s);
    } else if (it.is(kControlItem) && TDBL[i]) {
        ListHandle list = nullptr;
        if (GetControlData(it.handle, 0, kControlListBoxListHandleTag, sizeof list, &list, nullptr))
            return std::nullopt;
        int16_t length = 255;
        LGetCell(s + 1, &length, LLastClick(list), list);
        s[0] = uint8_t(std::clamp<int16_t>(length, 0, 255));
    } else {
        return std::nullopt;
    }
    return to_windows(from_pascal(s));
}

void set_text(DialogRef d, int32_t i, const char *text) {
    if (TDB_pszBuffer[i]) form::copy_text(TDB_pszBuffer[i], text_room(i), text);
    show_text(d, i, Show::Fill, true);
}

void store_num(int32_t i, std::string text) {
    NDB_bInit[i] = text.empty() ? 0 : 1;
    NDB_bOK[i] = text.empty() ? !NDB_bMand[i] : accepts(vf, i, text, &NDB_dNums[i]);
}

void store_text(DialogRef d, int32_t i, std::string text) {
    if (TDB_bPassw[i]) {
        std::string_view stored = value_of(i);
        for (size_t j = 0; j < text.size() && j < stored.size(); ++j)
            if (text[j] == '*') text[j] = stored[j];
        put_text(d, item_of(d, {Kind::Text, i}), std::string(text.size(), '*'), false);
    }
    if (TDB_pszBuffer[i]) form::copy_text(TDB_pszBuffer[i], text_room(i), text.c_str());
    TDB_bInit[i] = 1;
    TDB_bOK[i] = text_acceptable(i, TDB_pszBuffer[i] ? value_of(i) : std::string_view(text));
}

} // namespace dialog
