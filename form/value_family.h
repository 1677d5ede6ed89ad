// The integer, number and date families are built alike: a value column, a
// validator table reached through vi, vf or vd, a validator installed by
// *_param, three more selected by the mode of *_set, and a formatter that the
// validation uses to check a stored value again.
#pragma once

#include <cstdint>

#include <vitrail/form.h>

#include "form/internal.h"

namespace form {

template <class T, class Validator>
struct ValueFamily {
    Family family;
    Geometry geometry;
    Validity validity;
    T *values;
    Validator **table;  // address of vi, vf or vd
    Validator initial;  // installed by *_param
    Validator modes[3]; // installed by *_set modes 0..2; null leaves it
    // Writes the value of row i as text; 0 or 1 when the text is complete.
    int32_t (*format)(int32_t i, char *buf, int32_t size);

    // Starts the family: enabled, clamped count, rows below it reset to
    // valid, empty, mandatory, unplaced, value 0 and the initial validator.
    int32_t param(int32_t count) const;
    void set(int32_t i, T value, int32_t mode) const;
    void set_validator(int32_t i, Validator v) const;
    void retrieve(int32_t i, T *dst) const;
    void place(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t rk) const {
        if (family.has(i)) geometry.store(i, x, y, cx, cy, rk);
    }
    void mandatory(int32_t i, int32_t flag) const {
        if (family.has(i)) validity.mandatory(i, flag);
    }
    int32_t get_valid(int32_t i) const { return family.has(i) ? validity.ok[i] : 0; }
    // Applies the field rule to row i from its stored value (see QarDlgBox_valid).
    void check(int32_t i) const;
};

using IntFamily = ValueFamily<int32_t, DlgBoxIntValidProc>;
using NumFamily = ValueFamily<double, DlgBoxNumValidProc>;

extern const IntFamily kInts;
extern const NumFamily kNums;
extern const IntFamily kDates;

} // namespace form
