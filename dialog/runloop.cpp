// The run loop of every form dialog: initial fill, item hits dispatched to
// their fields, the global hook and its refresh list, the final hook, and
// the end of a dialog.
//
//   Hit                 Action
//   1 (OK)              final hook: non-zero ends with 1, 0 keeps the dialog
//   2 (Cancel)          ends with 0, no hook
//   text/int/num/date   read back and validate; when valid, the global step
//   list double click   final hook first: refused keeps the dialog, the row
//                       unstored; accepted ends with 1 after storing the row
//   check box           toggle, then the global step
//   push button         vp[i](window) when set, then the global step
//   anything else       ignored
//
//   Global step: DlgBoxGlobal_fonct(field ID, tables, refresh list, 32);
//   entries 0..min(count, 32) - 1: e >= 0 redraws field e, e < 0 clears -e.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include <vitrail/dialog.h>
#include <vitrail/strings.h>

#include "dialog/internal.h"

namespace dialog {
namespace {

using namespace platform;

constexpr int32_t kRefreshCapacity = 32;

// Fills every field of the enabled families, then puts the focus on the
// first edit box so that a person starts at the top.
void fill_all(DialogRef d) {
    for (const FamilyRef &fam : kFamilies)
        for (int32_t i = 0; i < fam.rows(); ++i) show(d, Field{fam.kind, i}, Show::Fill);
    for (int32_t n = 1; n <= CountDITL(d); ++n)
        if (item(d, n).is(kEditItem)) return SelectDialogItemText(d, int16_t(n), 0, 32767);
}

void global_step(DialogRef d, int64_t id) {
    // Room past the capacity, so that a hook writing a few entries too many
    // harms nothing.
    std::array<int32_t, 2 * kRefreshCapacity> refresh{};
    int32_t count =
        form::call_global_hook(DlgBoxGlobal_fonct, int32_t(id), refresh.data(), kRefreshCapacity);
    count = std::clamp(count, 0, kRefreshCapacity);
    for (int32_t k = 0; k < count; ++k) {
        int64_t e = refresh[size_t(k)];
        std::optional<Field> f = decode(e < 0 ? -e : e);
        if (f && f->kind != Kind::Push) show(d, *f, e < 0 ? Show::Clear : Show::Redraw);
    }
    update_ok(d);
}

// A list box's last click was a double click.
bool double_clicked(const Item &it) {
    Boolean twice = false;
    return it.is(kControlItem) &&
           GetControlData(it.handle, 0, kControlListBoxDoubleClickTag, 1, &twice, nullptr) == 0 &&
           twice;
}

struct Run {
    DialogRef d;
    int32_t result = 0;
    bool ended = false;

    // A hit on text field i. False when a refused double click leaves the
    // hit unhandled.
    bool text_hit(const Field &f) {
        Item it = item_of(d, f);
        std::optional<std::string> text = read_text(it, f.index);
        if (!text) return false;
        if (it.is(kControlItem) && double_clicked(it)) {
            if (!ask_final(GetDialogWindow(d))) {
                result = 0;
                return false;
            }
            clear_description();
            ended = true;
            result = 1;
        }
        store_text(d, f.index, std::move(*text));
        return true;
    }

    // Handles hit n; the global step follows a valid change.
    void hit(int32_t n) {
        int64_t id = id_of_item(n);
        std::optional<Field> f = decode(id);
        if (!f || (is_built(d) && !item_of(d, *f).number)) return;
        if (f->kind == Kind::Text && !text_hit(*f)) return;
        if (f->kind == Kind::Push) {
            if (vp && vp[f->index]) vp[f->index](GetDialogWindow(d));
        } else if (f->kind != Kind::Text) {
            read_back(d, *f);
        }
        update_ok(d);
        if (valid(*f)) global_step(d, id);
    }

    static bool valid(const Field &f) {
        switch (f.kind) {
        case Kind::Text:
            return TDB_bOK[f.index];
        case Kind::Int:
            return IDB_bOK[f.index];
        case Kind::Num:
            return NDB_bOK[f.index];
        case Kind::Date:
            return DDB_bOK[f.index];
        default:
            return true;
        }
    }

    int32_t finish() {
        clear_description();
        release_menus(d);
        DisposeDialog(d);
        if (is_built(d)) set_built(nullptr);
        return result;
    }
};

} // namespace
} // namespace dialog

using namespace dialog;

extern "C" {

VITRAIL_API int32_t DlgBoxFunc(DialogRef d) {
    if (!platform::IsDialog(d)) {
        clear_description();
        return 0;
    }
    WindowRef window = platform::GetDialogWindow(d);
    platform::SetDialogTracksCursor(d, true);
    if (HDB) {
        Str255 title;
        to_pascal(to_mac(std::string(HDB_szHeader, strnlen(HDB_szHeader, sizeof HDB_szHeader))),
                  title);
        platform::SetWTitle(window, title);
    }
    fill_all(d);
    update_ok(d);
    Run run{d};
    while (!run.ended) {
        DialogItemIndex n = 0;
        platform::ModalDialog(nullptr, &n);
        if (n == 0 && (!platform::IsDialog(d) || !window->visible)) break;
        if (n == 1) {
            run.result = ask_final(window) ? 1 : 0;
            run.ended = run.result == 1;
        } else if (n == 2) {
            run.result = 0;
            run.ended = true;
        } else if (n > 2) {
            run.hit(n);
        }
    }
    return run.finish();
}

VITRAIL_API int32_t QarDlgBox_end(WindowRef window) {
    int32_t answer = ask_final(window);
    clear_description();
    return answer;
}

} // extern "C"
