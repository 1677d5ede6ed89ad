// Row rules shared by every family: start of a description, geometry and
// validity columns.
#include "form/internal.h"

namespace form {

int32_t Family::start(int32_t n) const {
    *enable = 1;
    *count = family_rows(n, capacity);
    return *count;
}

void Geometry::clear(int32_t i) const {
    x[i] = y[i] = cx[i] = cy[i] = 0;
    if (rk) rk[i] = -1;
}

void Geometry::store(int32_t i, int32_t vx, int32_t vy, int32_t vcx, int32_t vcy,
                     int32_t vrk) const {
    x[i] = low16(vx);
    y[i] = low16(vy);
    cx[i] = low16(vcx);
    cy[i] = low16(vcy);
    if (rk) rk[i] = low16(vrk);
}

void Validity::reset(int32_t i) const {
    ok[i] = 1;
    init[i] = 0;
    mand[i] = 1;
}

void Validity::mandatory(int32_t i, int32_t flag) const {
    mand[i] = flag ? 1 : 0;
    if (!flag) ok[i] = 1;
}

} // namespace form
