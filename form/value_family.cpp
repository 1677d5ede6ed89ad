// Row operations of the integer, number and date families.
#include "form/value_family.h"

namespace form {
namespace {

constexpr int32_t kWorkSize = 256;

} // namespace

template <class T, class V>
int32_t ValueFamily<T, V>::param(int32_t count) const {
    int32_t n = family.start(count);
    V *validators = *table;
    for (int32_t i = 0; i < n; ++i) {
        validity.reset(i);
        geometry.clear(i);
        values[i] = T{};
        if (validators) validators[i] = initial;
    }
    return n;
}

template <class T, class V>
void ValueFamily<T, V>::set(int32_t i, T value, int32_t mode) const {
    if (!family.has(i)) return;
    validity.init[i] = 1;
    values[i] = value;
    if (mode >= 0 && mode < 3 && modes[mode]) set_validator(i, modes[mode]);
}

template <class T, class V>
void ValueFamily<T, V>::set_validator(int32_t i, V v) const {
    if (family.has(i) && *table) (*table)[i] = v;
}

template <class T, class V>
void ValueFamily<T, V>::retrieve(int32_t i, T *dst) const {
    if (family.has(i) && dst) *dst = values[i];
}

// Valid, unless the field is empty and mandatory, or its value, written as
// text and read back by its validator, is refused. A value the formatter
// cannot write is refused and left as it is; a null validator (or table)
// accepts the value unchanged.
template <class T, class V>
void ValueFamily<T, V>::check(int32_t i) const {
    validity.ok[i] = 1;
    if (!validity.init[i]) {
        if (validity.mand[i]) validity.ok[i] = 0;
        return;
    }
    char text[kWorkSize];
    text[0] = 0;
    if (format(i, text, kWorkSize) > 1) {
        validity.ok[i] = 0;
        return;
    }
    if (validity.mand[i] && text[0] == 0) {
        validity.ok[i] = 0;
        return;
    }
    V validator = *table ? (*table)[i] : nullptr;
    if (validator && validator(text, &values[i]) != 0) validity.ok[i] = 0;
}

template struct ValueFamily<int32_t, DlgBoxIntValidProc>;
template struct ValueFamily<double, DlgBoxNumValidProc>;

} // namespace form
