// Integer, number and date fields: edit fields whose text a validator codes
// into a value.
//
//   Family   Data (capacity)                    Validators: *_param / mode 0, 1, 2
//   integer  IDB_* (128), IDB_iInts, vi         intcod_i / intcod_i, _sup0, _ssup0
//            IDB_bPassw, IDB_lPassw (masking)
//   number   NDB_* (128), NDB_dNums, vf         realcod_d / realcod_d, _sup0, _ssup0
//            NDB_iChiff (decimals shown, 5)
//   date     DDB_* (20), DDB_lDates, vd         intcod_l / intcod_l_sup0, intcod_l_date, -
// Any other mode of *_set leaves the validator as it is.
#include <iterator>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

#include "form/value_family.h"

namespace form {

const IntFamily kInts{
    {&IDB, &IDB_N, std::size(IDB_rk)},
    {IDB_x, IDB_y, IDB_cx, IDB_cy, IDB_rk},
    {IDB_bOK, IDB_bInit, IDB_bMand},
    IDB_iInts,
    &vi,
    intcod_i,
    {intcod_i, intcod_i_sup0, intcod_i_ssup0},
    [](int32_t i, char *buf, int32_t size) { return intdco_i(IDB_iInts[i], buf, size); }};

const NumFamily kNums{{&NDB, &NDB_N, std::size(NDB_rk)},
                      {NDB_x, NDB_y, NDB_cx, NDB_cy, NDB_rk},
                      {NDB_bOK, NDB_bInit, NDB_bMand},
                      NDB_dNums,
                      &vf,
                      realcod_d,
                      {realcod_d, realcod_d_sup0, realcod_d_ssup0},
                      [](int32_t i, char *buf, int32_t size) {
                          return realdco_d(NDB_dNums[i], buf, size, NDB_iChiff[i]);
                      }};

const IntFamily kDates{
    {&DDB, &DDB_N, std::size(DDB_rk)},
    {DDB_x, DDB_y, DDB_cx, DDB_cy, DDB_rk},
    {DDB_bOK, DDB_bInit, DDB_bMand},
    DDB_lDates,
    &vd,
    intcod_l,
    {intcod_l_sup0, intcod_l_date, nullptr},
    [](int32_t i, char *buf, int32_t size) { return intdco_l(DDB_lDates[i], buf, size); }};

} // namespace form

using form::kDates;
using form::kInts;
using form::kNums;

extern "C" {

// ---- Integers ----

// Starts the integer fields (count clamped to 0..128); rows below the count
// also lose their masking.
VITRAIL_API int32_t IntDlgBox_param(int32_t count, int32_t base_id) {
    int32_t n = kInts.param(count);
    IDB_ID_INT = base_id;
    for (int32_t i = 0; i < n; ++i) {
        IDB_bPassw[i] = 0;
        IDB_lPassw[i] = 0;
    }
    return 0;
}

VITRAIL_API int32_t IntDlgBox_set(int32_t i, int32_t value, int32_t mode) {
    kInts.set(i, value, mode);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk) {
    kInts.place(i, x, y, cx, cy, rk);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator) {
    kInts.set_validator(i, validator);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_retrieve(int32_t i, int32_t *dst) {
    kInts.retrieve(i, dst);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_mandatory(int32_t i, int32_t flag) {
    kInts.mandatory(i, flag);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_password(int32_t i, int32_t flag) {
    if (kInts.family.has(i)) IDB_bPassw[i] = flag ? 1 : 0;
    return 0;
}

VITRAIL_API int32_t IntDlgBox_get_valid(int32_t i) {
    return kInts.get_valid(i);
}

// ---- Numbers ----

// Starts the number fields (count clamped to 0..128), 5 decimals each.
VITRAIL_API int32_t NumDlgBox_param(int32_t count, int32_t base_id) {
    int32_t n = kNums.param(count);
    NDB_ID_NUM = base_id;
    for (int32_t i = 0; i < n; ++i) NDB_iChiff[i] = 5;
    return 0;
}

VITRAIL_API int32_t NumDlgBox_set(int32_t i, double value, int32_t mode) {
    kNums.set(i, value, mode);
    return 0;
}

VITRAIL_API int32_t NumDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk) {
    kNums.place(i, x, y, cx, cy, rk);
    return 0;
}

// Decimals shown for field i; a negative count is stored as 0, no upper bound.
VITRAIL_API int32_t NumDlgBox_set_nchiff(int32_t i, int32_t decimals) {
    if (kNums.family.has(i)) NDB_iChiff[i] = decimals < 0 ? 0 : decimals;
    return 0;
}

VITRAIL_API int32_t NumDlgBox_set_fvalid(int32_t i, DlgBoxNumValidProc validator) {
    kNums.set_validator(i, validator);
    return 0;
}

VITRAIL_API int32_t NumDlgBox_retrieve(int32_t i, double *dst) {
    kNums.retrieve(i, dst);
    return 0;
}

VITRAIL_API int32_t NumDlgBox_mandatory(int32_t i, int32_t flag) {
    kNums.mandatory(i, flag);
    return 0;
}

VITRAIL_API int32_t NumDlgBox_get_valid(int32_t i) {
    return kNums.get_valid(i);
}

// ---- Dates ----

// Starts the date fields (count clamped to 0..20).
VITRAIL_API int32_t DateDlgBox_param(int32_t count, int32_t base_id) {
    kDates.param(count);
    DDB_ID_DATE = base_id;
    return 0;
}

VITRAIL_API int32_t DateDlgBox_set(int32_t i, int32_t value, int32_t mode) {
    kDates.set(i, value, mode);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                       int32_t rk) {
    kDates.place(i, x, y, cx, cy, rk);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator) {
    kDates.set_validator(i, validator);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_retrieve(int32_t i, int32_t *dst) {
    kDates.retrieve(i, dst);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_mandatory(int32_t i, int32_t flag) {
    kDates.mandatory(i, flag);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_get_valid(int32_t i) {
    return kDates.get_valid(i);
}

} // extern "C"
