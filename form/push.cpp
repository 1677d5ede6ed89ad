// Push buttons: up to ten extra buttons, each with a label and an action
// called with the dialog's window; no value, no validity.
//
//   Data                               Per button (10)
//   PDB, PDB_N, PDB_ID_PUSH            -
//   PDB_BUFFERSIZE                     16
//   PDB_x, _y, _cx, _cy, PDB_rk        int16 geometry and rank
//   PDB_pszBuffer -> PDB_szBuffer      16-byte slice, label of at most 15 characters
//   vp[i]                              action, null for none
#include <iterator>

#include <vitrail/form.h>

#include "form/internal.h"

namespace {

const form::Family kPushes{&PDB, &PDB_N, std::size(PDB_rk)};
const form::Geometry kGeometry{PDB_x, PDB_y, PDB_cx, PDB_cy, PDB_rk};

} // namespace

extern "C" {

// Starts the push buttons: PDB = 1, PDB_N = count clamped to 0..10; buttons
// below it unplaced, with an empty label and no action (written through
// whatever vp points at; nothing if vp is null).
VITRAIL_API int32_t PushDlgBox_param(int32_t count, int32_t base_id) {
    int32_t n = kPushes.start(count);
    PDB_BUFFERSIZE = 16;
    PDB_ID_PUSH = base_id;
    for (int32_t i = 0; i < n; ++i) {
        kGeometry.clear(i);
        PDB_pszBuffer[i] = PDB_szBuffer + PDB_BUFFERSIZE * i;
        PDB_pszBuffer[i][0] = 0;
        if (vp) vp[i] = nullptr;
    }
    return 0;
}

// Geometry and rank of button i, then at most 15 characters of its label.
VITRAIL_API int32_t PushDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk) {
    if (!kPushes.has(i)) return 0;
    kGeometry.store(i, x, y, cx, cy, rk);
    form::copy_to_slice(PDB_pszBuffer[i], PDB_BUFFERSIZE, label, PDB_szBuffer, sizeof PDB_szBuffer);
    return 0;
}

// Action of button i (null: none).
VITRAIL_API int32_t PushDlgBox_set_fvalid(int32_t i, DlgBoxPushProc action) {
    if (kPushes.has(i) && vp) vp[i] = action;
    return 0;
}

} // extern "C"
