// Static items: fixed texts, group boxes and icons of a built dialog.
//
//   Data                               Per item
//   SDB, SDB_N, SDB_BUFFERSIZE (512)   -
//   SDB_x, _y, _cx, _cy, SDB_type      int16 (type < 0 group box, 0 text, > 0 icon)
//   SDB_pszBuffer -> SDB_szBuffer      512-byte slice, text of at most 511 characters
#include <iterator>

#include <vitrail/form.h>

#include "form/internal.h"

namespace {

const form::Family kStatics{&SDB, &SDB_N, std::size(SDB_type)};
const form::Geometry kGeometry{SDB_x, SDB_y, SDB_cx, SDB_cy, nullptr};

} // namespace

extern "C" {

// SDB = 1, SDB_N = count clamped to 0..128; items below it get geometry and
// type 0 and an empty text in their own slice. Items beyond keep their rows.
VITRAIL_API int32_t StaticDlgBox_param(int32_t count) {
    int32_t n = kStatics.start(count);
    SDB_BUFFERSIZE = 512;
    for (int32_t i = 0; i < n; ++i) {
        kGeometry.clear(i);
        SDB_type[i] = 0;
        SDB_pszBuffer[i] = SDB_szBuffer + SDB_BUFFERSIZE * i;
        SDB_pszBuffer[i][0] = 0;
    }
    return 0;
}

// Copies at most SDB_BUFFERSIZE - 1 characters of text into item i.
VITRAIL_API int32_t StaticDlgBox_set(int32_t i, const char *text) {
    if (kStatics.has(i))
        form::copy_to_slice(SDB_pszBuffer[i], SDB_BUFFERSIZE, text, SDB_szBuffer,
                            sizeof SDB_szBuffer);
    return 0;
}

// Geometry of item i, each value stored as its low 16 bits.
VITRAIL_API int32_t StaticDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy) {
    if (kStatics.has(i)) kGeometry.store(i, x, y, cx, cy, 0);
    return 0;
}

// Type of item i, stored as its low 16 bits.
VITRAIL_API int32_t StaticDlgBox_set_type(int32_t i, int32_t type) {
    if (kStatics.has(i)) SDB_type[i] = form::low16(type);
    return 0;
}

} // extern "C"
