// Dynamic dialog construction: the window, OK and Cancel, one item per
// placed field in rank order, the static items, then the run loop.
//
//   Field item         Rectangle (x, y, cx, cy in dialog units)
//   every field        left 2x, top 7y/4, right 2(x+cx), bottom top + 5cy/4
//   popup              bottom top + 14
//   date               day 2x..2x+20, month 2x+30..2x+50, year 2x+60..2x+100
//   static text        bottom top + max(5cy/4, 15)
//   group box          bottom top + 14(5cy/4)/10
//   icon               bottom top + 2cy
//   OK, Cancel         w = 80 (100 if a label has 9+ characters), 20 high,
//                      top LDB_cy - 34, OK right edge 10 left of the centre
//
// Item 1 is OK, item 2 Cancel, then field items in creation order;
// Dlg_itemOffset[n] = n - field ID, Dlg_rkOffset[r] = r - (item of the last
// field created at rank r, a date's day box).
#include <algorithm>
#include <cstring>
#include <string>

#include <vitrail/dialog.h>
#include <vitrail/strings.h>

#include "dialog/internal.h"
#include "platform/toolbox/bundles.h"

namespace dialog {
namespace {

using namespace platform;

constexpr int32_t kMaxItems = 127; // the offset tables hold items and ranks 0..127
constexpr int16_t kMenuItemHeight = 14;
constexpr int16_t kStaticMinHeight = 15;
constexpr int16_t kIconResource = 2;

int16_t px(int64_t v) {
    return int16_t(std::clamp<int64_t>(v, INT16_MIN, INT16_MAX));
}

int64_t y_px(int64_t y) {
    return 7 * y / 4;
}

int64_t cy_px(int64_t cy) {
    return 5 * cy / 4;
}

// The common rectangle of row i of a family, in pixels.
Rect field_rect(const int16_t *x, const int16_t *y, const int16_t *cx, const int16_t *cy,
                int32_t i) {
    int64_t top = y_px(y[i]);
    return Rect{px(top), px(2 * int64_t(x[i])), px(top + cy_px(cy[i])),
                px(2 * (int64_t(x[i]) + cx[i]))};
}

// Items a description needs (2 + one per placed field, three per date) and
// its highest rank; a description beyond the tables gives false.
bool fits(int32_t *highest) {
    int32_t items = 2;
    *highest = 0;
    for (const FamilyRef &f : kFamilies)
        for (int32_t i = 0; i < f.rows(); ++i) {
            if (f.rk[i] < 0) continue;
            items += f.ids;
            *highest = std::max<int32_t>(*highest, f.rk[i]);
        }
    return items <= kMaxItems && *highest <= kMaxItems;
}

void append(DialogRef d, int16_t kind, void *handle, const Rect &r) {
    InsertDialogItem(d, CountDITL(d), kind, handle, &r);
}

ControlRef new_button(WindowRef w, const Rect &r, std::string_view label, int16_t proc) {
    Str255 title;
    to_pascal(to_mac(label), title);
    return NewControl(w, &r, title, true, 0, 0, 1, proc, nullptr);
}

void add_edit(DialogRef d, const Rect &r) {
    append(d, kEditItem, TENew(&r, &r), r);
}

void add_popup(DialogRef d, Rect r) {
    r.bottom = px(int64_t(r.top) + kMenuItemHeight);
    int16_t id = int16_t(UniqueID(kMenuResType));
    MenuRef menu = nullptr;
    ControlRef c = nullptr;
    if (CreateNewMenu(id, 0, &menu) == 0) InsertMenu(menu, -1);
    CreatePopupButtonControl(GetDialogWindow(d), &r, nullptr, id, false, -1, 0, 0, &c);
    append(d, kPopupItem, c, r);
}

void add_list(DialogRef d, const Rect &r) {
    ListDefSpec def{1};
    ControlRef c = nullptr;
    CreateListBoxControl(GetDialogWindow(d), &r, true, 0, 1, true, true, 14,
                         int16_t(r.right - r.left - 15), true, &def, &c);
    append(d, kControlItem, c, r);
}

// Creates the item(s) of field f (item numbers from CountDITL + 1).
void add_field(DialogRef d, const FamilyRef &fam, int32_t i) {
    WindowRef w = GetDialogWindow(d);
    Rect r = field_rect(fam.x, fam.y, fam.cx, fam.cy, i);
    switch (fam.kind) {
    case Kind::Text:
        if (TDBC[i] == 1) return add_popup(d, r);
        if (TDBL[i] == 1) return add_list(d, r);
        return add_edit(d, r);
    case Kind::Check:
        return append(d, kControlItem,
                      new_button(w, r, BDB_pszBuffer[i] ? BDB_pszBuffer[i] : "", checkBoxProc), r);
    case Kind::Push:
        return append(d, kControlItem,
                      new_button(w, r, PDB_pszBuffer[i] ? PDB_pszBuffer[i] : "", pushButProc), r);
    case Kind::Int:
    case Kind::Num:
        return add_edit(d, r);
    case Kind::Date:
        for (int16_t left : {0, 30, 60}) {
            Rect box{r.top, px(int64_t(r.left) + left), r.bottom,
                     px(int64_t(r.left) + left + (left == 60 ? 40 : 20))};
            add_edit(d, box);
        }
        return;
    }
}

// Fields of every rank in order; within a rank, families in their order.
void add_fields(DialogRef d, int32_t highest) {
    for (int32_t r = 0; r <= highest; ++r)
        for (const FamilyRef &fam : kFamilies)
            for (int32_t i = 0; i < fam.rows(); ++i) {
                if (fam.rk[i] != r) continue;
                int32_t first = CountDITL(d) + 1;
                add_field(d, fam, i);
                int64_t id = field_id(Field{fam.kind, i});
                for (int32_t n = first; n <= CountDITL(d); ++n) Dlg_itemOffset[n] = int32_t(n - id);
                if (CountDITL(d) >= first) Dlg_rkOffset[r] = r - first;
            }
}

// Static items: group boxes and icons are controls of the window; texts are
// drawn into its port, which keeps them whatever controls are redrawn.
void add_statics(WindowRef w) {
    for (int32_t i = 0; SDB && i < form::family_rows(SDB_N, 128); ++i) {
        Rect r = field_rect(SDB_x, SDB_y, SDB_cx, SDB_cy, i);
        int64_t h = cy_px(SDB_cy[i]);
        char *text = SDB_pszBuffer[i] ? SDB_pszBuffer[i] : nullptr;
        if (SDB_type[i] > 0) {
            r.bottom = px(int64_t(r.top) + 2 * int64_t(SDB_cy[i]));
            ControlButtonContentInfo icon{kControlContentCIconRes, kIconResource};
            CreateIconControl(w, &r, &icon, true, nullptr);
            continue;
        }
        if (text) w2mstr(text);
        if (SDB_type[i] < 0) {
            r.bottom = px(int64_t(r.top) + 14 * h / 10);
            CFStringRef title =
                CFStringCreateWithCString(nullptr, text ? text : "", kCFStringEncodingMacRoman);
            CreateGroupBoxControl(w, &r, title, true, nullptr);
            CFRelease(title);
        } else {
            r.bottom = px(int64_t(r.top) + std::max<int64_t>(h, kStaticMinHeight));
            if (text) TETextBox(text, int32_t(std::strlen(text)), &r, 0);
        }
    }
}

// The dialog's size in pixels, converted in place.
void convert_size() {
    auto clamp32 = [](int64_t v) { return int32_t(std::clamp<int64_t>(v, INT32_MIN, INT32_MAX)); };
    LDB_cx = clamp32(2 * int64_t(LDB_cx));
    LDB_cy = clamp32(y_px(LDB_cy));
}

void add_ok_cancel(DialogRef d) {
    std::string ok = OK_sz1[0] ? std::string(OK_sz1, strnlen(OK_sz1, sizeof OK_sz1)) : "OK";
    std::string cancel =
        OK_sz2[0] ? std::string(OK_sz2, strnlen(OK_sz2, sizeof OK_sz2)) : "Annuler";
    int64_t w =
        strnlen(OK_sz1, sizeof OK_sz1) <= 8 && strnlen(OK_sz2, sizeof OK_sz2) <= 8 ? 80 : 100;
    int64_t h = LDB_cx / 2, top = int64_t(LDB_cy) - 34;
    Rect rok{px(top), px(h - w - 10), px(top + 20), px(h - 10)};
    Rect rcancel{px(top), px(h + 10), px(top + 20), px(h + 10 + w)};
    append(d, kControlItem, new_button(GetDialogWindow(d), rok, ok, pushButProc), rok);
    append(d, kControlItem, new_button(GetDialogWindow(d), rcancel, cancel, pushButProc), rcancel);
}

} // namespace
} // namespace dialog

using namespace dialog;

extern "C" {

VITRAIL_API int32_t QarDlgBoxEx(const char *title, WindowRef parent) {
    int32_t highest = 0;
    if (!fits(&highest)) {
        clear_description();
        return 0;
    }
    if (!parent) parent = FrontWindow();
    convert_size();
    Str255 pt;
    to_pascal("Dialogue utilisateur", pt);
    Rect unit{0, 0, 1, 1};
    DialogRef d = NewColorDialog(nullptr, &unit, pt, false, kMovableModalDialogProc, FrontOfAll(),
                                 false, nullptr, nullptr);
    if (!d) {
        clear_description();
        return 0;
    }
    DlgBox_hDlg = d;
    set_built(d);
    WindowRef w = GetDialogWindow(d);
    SetPort(GetWindowPort(w));
    SizeWindow(w, px(LDB_cx), px(LDB_cy), false);
    Rect around;
    if (GetWindowBounds(parent, kWindowGlobalPortRgn, &around) != 0) around = ScreenBounds();
    MoveWindow(w, px((int64_t(around.left) + around.right - LDB_cx) / 2),
               px((int64_t(around.top) + around.bottom - LDB_cy) / 2), false);
    to_pascal(to_mac(title ? title : ""), pt);
    SetWTitle(w, pt);
    ShowWindow(w);
    add_ok_cancel(d);
    add_fields(d, highest);
    add_statics(w);
    return DlgBoxFunc(d);
}

} // extern "C"
