// Check boxes: labelled on/off choices; no validity, never block confirmation.
//
//   Data                               Per check box (64)
//   BDB, BDB_N, BDB_ID_FLAG            -
//   BDB_BUFFERSIZE                     48
//   BDB_x, _y, _cx, _cy, BDB_rk        int16 geometry and rank
//   BDB_bFlags                         state, stored as given (0 unchecked, 1 checked)
//   BDB_pszBuffer -> BDB_szBuffer      48-byte slice, label of at most 47 characters
#include <iterator>

#include <vitrail/form.h>

#include "form/internal.h"

namespace form {

const Family kBools{&BDB, &BDB_N, std::size(BDB_rk)};

} // namespace form

namespace {

using form::kBools;
const form::Geometry kGeometry{BDB_x, BDB_y, BDB_cx, BDB_cy, BDB_rk};

} // namespace

extern "C" {

// Starts the check boxes: BDB = 1, BDB_N = count clamped to 0..64; boxes
// below it unplaced, unchecked, with an empty label in their own slice.
VITRAIL_API int32_t BoolDlgBox_param(int32_t count, int32_t base_id) {
    int32_t n = kBools.start(count);
    BDB_BUFFERSIZE = 48;
    BDB_ID_FLAG = base_id;
    for (int32_t i = 0; i < n; ++i) {
        kGeometry.clear(i);
        BDB_pszBuffer[i] = BDB_szBuffer + BDB_BUFFERSIZE * i;
        BDB_pszBuffer[i][0] = 0;
        BDB_bFlags[i] = 0;
    }
    return 0;
}

// State of box i, stored as given (not reduced to 0 or 1).
VITRAIL_API int32_t BoolDlgBox_set(int32_t i, int32_t state) {
    if (kBools.has(i)) BDB_bFlags[i] = state;
    return 0;
}

// Geometry and rank of box i, then at most 47 characters of its label.
VITRAIL_API int32_t BoolDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk) {
    if (!kBools.has(i)) return 0;
    kGeometry.store(i, x, y, cx, cy, rk);
    form::copy_to_slice(BDB_pszBuffer[i], BDB_BUFFERSIZE, label, BDB_szBuffer, sizeof BDB_szBuffer);
    return 0;
}

// Stores the state of box i into dst; an index outside or a null dst leaves
// dst untouched.
VITRAIL_API int32_t BoolDlgBox_retrieve(int32_t i, int32_t *dst) {
    if (kBools.has(i) && dst) *dst = BDB_bFlags[i];
    return 0;
}

} // extern "C"
