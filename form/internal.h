// Shared rules of the form model: which rows of a family a call may touch,
// the columns every family has (geometry, validity), the bounded text copies
// and the tab-stop storage of the text fields.
#pragma once

#include <cstddef>
#include <cstdint>

#include <vitrail/form.h>

namespace form {

// Number of rows of a family that calls may use: the count clamped to
// 0..capacity. A *_param stores this as the family's count, and a host that
// writes a larger *_N itself still cannot reach past the arrays.
constexpr int32_t family_rows(int32_t count, size_t capacity) {
    if (count < 0) return 0;
    return static_cast<size_t>(count) > capacity ? static_cast<int32_t>(capacity) : count;
}

// True when index names a usable row: 0 <= index < family_rows(count, capacity).
constexpr bool family_has(int32_t index, int32_t count, size_t capacity) {
    return index >= 0 && index < family_rows(count, capacity);
}

// Low 16 bits of a 32-bit geometry argument, read as signed.
constexpr int16_t low16(int32_t v) {
    return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(v) & 0xFFFFu));
}

// Geometry columns of a family; rk is null for static items, which have none.
struct Geometry {
    int16_t *x, *y, *cx, *cy, *rk;
    // Row i back to 0, 0, 0, 0 and rank -1 (not placed).
    void clear(int32_t i) const;
    // Row i from 32-bit arguments, each stored as its low 16 bits.
    void store(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t rk) const;
};

// Validity columns of the text, integer, number and date families.
struct Validity {
    int32_t *ok, *init, *mand;
    // Row i back to valid, empty and mandatory.
    void reset(int32_t i) const;
    // Non-zero flag: mandatory; zero: optional, and therefore valid at once.
    void mandatory(int32_t i, int32_t flag) const;
};

// One family: enable flag, count, capacity (the length of its arrays).
struct Family {
    int32_t *enable, *count;
    size_t capacity;
    bool has(int32_t i) const { return family_has(i, *count, capacity); }
    // Enables the family and stores the clamped count, which it returns.
    int32_t start(int32_t n) const;
};

// The text and check-box families, which the validation chain also reads.
extern const Family kTexts;
extern const Family kBools;

// Copies at most size - 1 characters of text into dst and terminates it.
// A null text copies as empty; a null dst or a size below 1 writes nothing.
void copy_text(char *dst, int32_t size, const char *text);

// copy_text into a slice of a family store (store_size bytes): never past
// the store's end when dst lies in it, whatever size says (a host may have
// changed a count or slice size since the *_param cut the store).
void copy_to_slice(char *dst, int32_t size, const char *text, const char *store, size_t store_size);

// Copies text into dst only when its length is below size; otherwise, or
// with a null dst, leaves dst untouched. A null text is taken as empty.
void retrieve_text(char *dst, uint32_t size, const char *text);

// Calls the global hook (nothing for null) for field_id with every table and
// the refresh list of `capacity` entries; returns the hook's count (0 for null).
int32_t call_global_hook(DlgBoxGlobalProc hook, int32_t field_id, int32_t *refresh,
                         int32_t capacity);

// Tab-stop list of text field i (0..19), 128 entries: lists 0..4 are the
// exported TDB_ITABSTOPS, lists 5..19 the library's own extra storage, so
// every text field has a list. Null for any other i.
int32_t *tabstop_list(int32_t i);

} // namespace form
