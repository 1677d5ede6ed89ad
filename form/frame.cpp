// Dialog frame and OK/Cancel buttons: title, size, background colour, the
// two button texts with their saved copies, and the dialog-unit conversions.
//
//   Data                          Written by
//   HDB, HDB_szHeader[128]        TitreDlgBox_set
//   LDB, LDB_cx, LDB_cy           TailleDlgBox_set
//   FDB, FDB_bkgcol               ColorDlgBox_bkg
//   OK_sz1/2[16], OK_sz1/2_bak    BOKDlgBox_textes, BOKDlgBox_textes_reset
//   OK_def                        BOKDlgBox_def, BOKDlgBox_def_reset
//   OK_x, OK_y / OK_xt, OK_yt     BOKDlgBox_set_geo / BOKDlgBox_pos
//   OK_shadow, _dx, _dy, _c       BOKDlgBox_shadow
#include <vitrail/form.h>

#include "form/internal.h"

extern "C" {

// HDB = 1 and the first 127 characters of title (null: empty) as the title.
VITRAIL_API int32_t TitreDlgBox_set(const char *title) {
    HDB = 1;
    form::copy_text(HDB_szHeader, sizeof HDB_szHeader, title);
    return 0;
}

// Copies the title into dst only if it fits in size bytes with its terminator.
VITRAIL_API int32_t TitreDlgBox_retrieve(char *dst, uint32_t size) {
    form::retrieve_text(dst, size, HDB_szHeader);
    return 0;
}

// Dialog size in dialog units; the dialog construction converts it in place.
VITRAIL_API int32_t TailleDlgBox_set(int32_t cx, int32_t cy) {
    LDB = 1;
    LDB_cx = cx;
    LDB_cy = cy;
    return 0;
}

// Records a background colour for the host; the dialogs do not read it.
VITRAIL_API int32_t ColorDlgBox_bkg(RGBColor color) {
    FDB = 1;
    FDB_bkgcol = color;
    return 0;
}

// Records a button position for the host; the dialogs do not read it.
VITRAIL_API int32_t BOKDlgBox_set_geo(int32_t x, int32_t y) {
    OK_x = x;
    OK_y = y;
    return 0;
}

// Records two values for the host; the dialogs do not read them.
VITRAIL_API int32_t BOKDlgBox_pos(int32_t xt, int32_t yt) {
    OK_xt = xt;
    OK_yt = yt;
    return 0;
}

// Saves the present texts in OK_sz1_bak / OK_sz2_bak, then sets at most 15
// characters of each new text (null: empty, which the dialog shows as the
// default label).
VITRAIL_API int32_t BOKDlgBox_textes(const char *ok, const char *cancel) {
    form::copy_text(OK_sz1_bak, sizeof OK_sz1_bak, OK_sz1);
    form::copy_text(OK_sz2_bak, sizeof OK_sz2_bak, OK_sz2);
    form::copy_text(OK_sz1, sizeof OK_sz1, ok);
    form::copy_text(OK_sz2, sizeof OK_sz2, cancel);
    return 0;
}

// Puts back the texts saved by the last BOKDlgBox_textes.
VITRAIL_API void BOKDlgBox_textes_reset(void) {
    form::copy_text(OK_sz1, sizeof OK_sz1, OK_sz1_bak);
    form::copy_text(OK_sz2, sizeof OK_sz2, OK_sz2_bak);
}

// OK_def = button when it is 1 or 2; any other value is ignored.
VITRAIL_API int32_t BOKDlgBox_def(int32_t button) {
    if (button == 1 || button == 2) OK_def = button;
    return 0;
}

VITRAIL_API int32_t BOKDlgBox_def_reset(void) {
    OK_def = 1;
    return 0;
}

// Records a button shadow for the host; the dialogs do not read it.
VITRAIL_API int32_t BOKDlgBox_shadow(int32_t dx, int32_t dy, RGBColor color) {
    OK_shadow = 1;
    OK_shadow_dx = dx;
    OK_shadow_dy = dy;
    OK_shadow_c = color;
    return 0;
}

// Dialog units to pixels, truncating toward zero. Products are formed in 64
// bits, so no intermediate overflows; a result beyond 32 bits wraps.
VITRAIL_API int32_t Dlg_CoefX(int32_t x) {
    return static_cast<int32_t>(static_cast<uint32_t>(x) * 2u);
}

VITRAIL_API int32_t Dlg_CoefCX(int32_t cx) {
    return Dlg_CoefX(cx);
}

VITRAIL_API int32_t Dlg_CoefY(int32_t y) {
    return static_cast<int32_t>(int64_t{7} * y / 4);
}

VITRAIL_API int32_t Dlg_CoefCY(int32_t cy) {
    return static_cast<int32_t>(int64_t{5} * cy / 4);
}

} // extern "C"
