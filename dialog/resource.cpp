// Template dialogs (item number = field ID) and the field updates that
// hooks and push-button actions make while a dialog runs. The updates reach
// the running dialog through DlgBox_hDlg; with their family disabled (no
// dialog running) they do nothing.
#include <cstring>
#include <string>

#include <vitrail/dialog.h>

#include "dialog/internal.h"
#include "platform/dialogs/templates.h"
#include "platform/toolbox/resources.h"

using namespace dialog;

namespace {

bool has_row(Kind kind, int32_t i) {
    return i >= 0 && i < family(kind).rows();
}

} // namespace

extern "C" {

VITRAIL_API int32_t QarDlgBox(const char *name) {
    if (!name || std::strlen(name) > 255) return 0;
    Str255 pname;
    to_pascal(name, pname);
    platform::Handle resource = platform::GetNamedResource("DLOG", pname);
    int16_t id = 0;
    if (resource) platform::GetResInfo(resource, &id, nullptr, nullptr);
    platform::ReleaseResource(resource);
    if (id == 0) return 0;
    DialogRef d = platform::GetNewDialog(id, nullptr, platform::FrontOfAll());
    if (!d) return 0;
    DlgBox_hDlg = d;
    WindowRef w = platform::GetDialogWindow(d);
    platform::ShowWindow(w);
    platform::SetPort(platform::GetWindowPort(w));
    std::memset(Dlg_itemOffset, 0, sizeof Dlg_itemOffset);
    std::memset(Dlg_rkOffset, 0, sizeof Dlg_rkOffset);
    return DlgBoxFunc(d);
}

VITRAIL_API int32_t QarDlgBox_texte_set(int32_t i, const char *text) {
    if (!has_row(Kind::Text, i)) return 0;
    set_text(DlgBox_hDlg, i, text);
    return 0;
}

VITRAIL_API int32_t QarDlgBox_texte_set_liste(int32_t i) {
    if (!has_row(Kind::Text, i)) return 0;
    Item it = item_of(DlgBox_hDlg, Field{Kind::Text, i});
    if (!clear_choices(it, i)) return 0;
    fill_choices(it, i);
    platform::Draw1Control(it.handle);
    return 0;
}

VITRAIL_API int32_t QarDlgBox_num_set(int32_t i, const char *text) {
    if (!has_row(Kind::Num, i)) return 0;
    std::string t(text ? text : "", text ? strnlen(text, 255) : 0);
    Item it = item_of(DlgBox_hDlg, Field{Kind::Num, i});
    put_text(DlgBox_hDlg, it, to_mac(t), false);
    store_num(i, t);
    if (it.handle) platform::Draw1Control(it.handle);
    return 0;
}

VITRAIL_API int32_t QarDlgBox_bool_set(int32_t, int32_t) {
    return 0;
}

VITRAIL_API int32_t QarDlgBox_int_set(int32_t, int32_t) {
    return 0;
}

} // extern "C"
