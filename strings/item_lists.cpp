// Item lists: one string holding several items separated by "+", "," or "-".
//
//   Data   Size       Use
//   list   any        items between separators, taken exactly
//   szi    64 bytes   Get_item_liste's result, overwritten by every call
#include <vitrail/strings.h>

#include <string_view>

namespace {

constexpr size_t kItemArea = 64;
char szi[kItemArea];

bool IsSeparator(char c) {
    return c == '+' || c == ',' || c == '-';
}

// Calls found(item, number) for each item in order until it answers true;
// returns whether it did.
template <typename Found>
bool FindItem(std::string_view list, Found found) {
    size_t start = 0;
    int32_t number = 0;
    for (size_t i = 0; i <= list.size(); ++i) {
        if (i < list.size() && !IsSeparator(list[i])) continue;
        if (found(list.substr(start, i - start), number++)) return true;
        start = i + 1;
    }
    return false;
}

int32_t Contains(std::string_view list, const char *item, int32_t n) {
    if (n < 0 || (!item && n > 0)) return 0;
    const std::string_view wanted = n > 0 ? std::string_view(item, n) : std::string_view();
    return FindItem(list, [&](std::string_view it, int32_t) { return it == wanted; }) ? 1 : 0;
}

std::string_view View(const char *s) {
    return s ? std::string_view(s) : std::string_view();
}

} // namespace

extern "C" {

VITRAIL_API int32_t Teste_liste(const char *list) {
    int32_t count = 1;
    for (char c : View(list)) count += IsSeparator(c) ? 1 : 0;
    return count;
}

VITRAIL_API int32_t Teste_item_liste(const char *list, const char *item, int32_t n) {
    return Contains(View(list), item, n);
}

VITRAIL_API int32_t Teste_item_szliste(const char *list, int32_t len, const char *item, int32_t n) {
    if (len < 0 || (!list && len > 0)) return 0;
    return Contains(len > 0 ? std::string_view(list, len) : std::string_view(), item, n);
}

VITRAIL_API char *Get_item_liste(const char *list, int32_t index) {
    if (index < 0) return nullptr;
    bool found = FindItem(View(list), [&](std::string_view it, int32_t number) {
        if (number != index) return false;
        szcopy_0t(szi, kItemArea, it.data(), static_cast<uint32_t>(it.size()));
        return true;
    });
    return found ? szi : nullptr;
}

} // extern "C"
