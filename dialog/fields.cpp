// Fields and items: the family table, field IDs, the item lookup rule, the
// character-set crossing, the validity of the whole form and the end of a
// description.
//
//   Lookup           Item of field f
//   rank r >= 0      r - Dlg_rkOffset[r] (offset 0 for r > 127)
//   rank < 0         the field ID (template dialogs); none in a built dialog
//   Field ID of n    n - Dlg_itemOffset[n] (offset 0 for n > 127)
#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

#include <vitrail/dialog.h>
#include <vitrail/strings.h>

#include "dialog/internal.h"

namespace dialog {
namespace {

using namespace platform;

DialogRef built = nullptr;

template <class T, size_t N>
size_t cap(T (&)[N]) {
    return N;
}

// The inverse of w2mstr, derived from it: each Mac byte it produces back
// to the Windows byte it came from; other bytes stay.
const std::array<uint8_t, 256> &mac_to_windows() {
    static const std::array<uint8_t, 256> table = [] {
        std::array<uint8_t, 256> t{};
        for (int b = 0; b < 256; ++b) t[size_t(b)] = uint8_t(b);
        for (int b = 1; b < 256; ++b) {
            char s[2] = {char(b), 0};
            w2mstr(s);
            if (uint8_t(s[0]) != b) t[uint8_t(s[0])] = uint8_t(b);
        }
        return t;
    }();
    return table;
}

int32_t offset(const int32_t (&table)[128], int64_t n) {
    return n >= 0 && n < 128 ? table[n] : 0;
}

template <size_t N>
bool all_ok(const int32_t (&ok)[N], int32_t rows) {
    return std::all_of(ok, ok + rows, [](int32_t v) { return v != 0; });
}

} // namespace

const std::array<FamilyRef, 6> kFamilies = {{
    {Kind::Text, &TDB, &TDB_N, cap(TDB_rk), &TDB_ID_TEXTE, TDB_x, TDB_y, TDB_cx, TDB_cy, TDB_rk, 1},
    {Kind::Check, &BDB, &BDB_N, cap(BDB_rk), &BDB_ID_FLAG, BDB_x, BDB_y, BDB_cx, BDB_cy, BDB_rk, 1},
    {Kind::Int, &IDB, &IDB_N, cap(IDB_rk), &IDB_ID_INT, IDB_x, IDB_y, IDB_cx, IDB_cy, IDB_rk, 1},
    {Kind::Num, &NDB, &NDB_N, cap(NDB_rk), &NDB_ID_NUM, NDB_x, NDB_y, NDB_cx, NDB_cy, NDB_rk, 1},
    {Kind::Date, &DDB, &DDB_N, cap(DDB_rk), &DDB_ID_DATE, DDB_x, DDB_y, DDB_cx, DDB_cy, DDB_rk, 3},
    {Kind::Push, &PDB, &PDB_N, cap(PDB_rk), &PDB_ID_PUSH, PDB_x, PDB_y, PDB_cx, PDB_cy, PDB_rk, 1},
}};

const FamilyRef &family(Kind kind) {
    return kFamilies[size_t(kind)];
}

std::optional<Field> decode(int64_t id) {
    for (const FamilyRef &f : kFamilies) {
        int64_t delta = id - *f.base;
        if (delta < 0) continue;
        int64_t index = delta / f.ids;
        if (index < f.rows()) return Field{f.kind, int32_t(index)};
    }
    return std::nullopt;
}

int64_t field_id(Field f) {
    const FamilyRef &fam = family(f.kind);
    return int64_t(*fam.base) + int64_t(fam.ids) * f.index;
}

Item item(DialogRef d, int64_t n) {
    Item it;
    if (n < 1 || n > CountDITL(d)) return it;
    Rect box;
    GetDialogItem(d, int16_t(n), &it.kind, &it.handle, &box);
    it.kind = int16_t(it.kind & ~itemDisable);
    it.number = int16_t(n);
    return it;
}

Item item_of(DialogRef d, Field f) {
    int16_t rk = family(f.kind).rk[f.index];
    if (rk >= 0) return item(d, int64_t(rk) - offset(Dlg_rkOffset, rk));
    if (is_built(d)) return Item{};
    return item(d, field_id(f));
}

int64_t id_of_item(int32_t n) {
    return int64_t(n) - offset(Dlg_itemOffset, n);
}

void set_built(DialogRef d) {
    built = d;
}

bool is_built(DialogRef d) {
    return d && d == built;
}

std::string to_mac(std::string_view windows) {
    std::string s(windows);
    w2mstr(s.data());
    return s;
}

std::string to_windows(std::string_view mac) {
    std::string s(mac);
    for (char &c : s) c = char(mac_to_windows()[uint8_t(c)]);
    return s;
}

void to_pascal(std::string_view text, Str255 out) {
    out[0] = uint8_t(std::min<size_t>(text.size(), 255));
    std::memcpy(out + 1, text.data(), out[0]);
}

std::string from_pascal(const Str255 text) {
    return std::string(reinterpret_cast<const char *>(text + 1), text[0]);
}

void put_text(DialogRef d, const Item &it, std::string_view mac, bool select) {
    if (!it.is(kEditItem)) return;
    Str255 s;
    to_pascal(mac, s);
    SetDialogItemText(it.handle, s);
    if (select) SelectDialogItemText(d, it.number, 0, 32767);
}

bool all_valid() {
    return all_ok(TDB_bOK, family(Kind::Text).rows()) &&
           all_ok(IDB_bOK, family(Kind::Int).rows()) && all_ok(NDB_bOK, family(Kind::Num).rows()) &&
           all_ok(DDB_bOK, family(Kind::Date).rows());
}

void update_ok(DialogRef d) {
    Item ok = item(d, 1);
    if (ok.handle) HiliteControl(ok.handle, all_valid() ? 0 : kControlInactivePart);
}

int32_t ask_final(WindowRef window) {
    DlgBoxFinalProc hook = DlgBoxFinal_fonct ? DlgBoxFinal_fonct : DlgBoxFinal_nul;
    return hook(window, TDB, TDB_pszBuffer, TDB_N, BDB, BDB_bFlags, BDB_N, IDB, IDB_iInts, IDB_N,
                NDB, NDB_dNums, NDB_N, DDB, DDB_lDates, DDB_N);
}

void clear_description() {
    PDB = DDB = NDB = IDB = BDB = TDB = SDB = HDB = 0;
    DlgBoxGlobal_fonct = DlgBoxGlobal_nul;
    DlgBoxFinal_fonct = DlgBoxFinal_nul;
}

} // namespace dialog
