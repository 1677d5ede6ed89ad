// NUM lists: item lists ("+", "," or "-" between items, taken exactly) whose
// items are NUM texts, as "10,20+30". The walk reads items in place rather
// than through Get_item_liste, so it leaves that routine's static area (a
// host's last item) untouched.
#include <vitrail/numdate.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

bool is_separator(char c) {
    return c == '+' || c == ',' || c == '-';
}

// Reads the items of list in order with NUMToLong up to item last (all when
// last is negative). Returns the number of items read, or -1 at the first
// failure; *value holds the last value read.
int32_t read_items(const char *list, int32_t last, int32_t *value) {
    int32_t count = 0;
    for (const char *start = list;; ++count) {
        const char *end = start;
        while (*end && !is_separator(*end)) ++end;
        const auto len = static_cast<int32_t>(end - start);
        if (NUMToLong(start, len, value)) return -1;
        if (count == last || *end == '\0') return count + 1;
        start = end + 1;
    }
}

} // namespace

extern "C" {

VITRAIL_API int32_t Teste_NUM_liste(const char *list) {
    int32_t value = 0;
    return list ? std::max(read_items(list, -1, &value), 0) : 0;
}

VITRAIL_API int32_t Get_NUM_liste(const char *list, int32_t index) {
    int32_t value = 0;
    if (!list || index < 0 || read_items(list, index, &value) < 0) return 0;
    return value;
}

} // extern "C"
