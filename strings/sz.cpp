// Counted-field helpers: a field is a pointer and a byte length, with no
// terminator needed; copies stay within the destination size they are given.
//
//   Routine          Reads            Writes                      Result
//   szcnum           n bytes          blanks -> "0"               1
//   szcopy(_overlap) n bytes of src   min(n, size) bytes of dst   1 if n <= size
//   szcomp(ex, ex2)  la, lb bytes     -                           1 if they match
//   szincl           la, lb bytes     -                           1 if a lies in b
//   szcopy_0t        n bytes          at most size bytes, ended   1 or 0 if cut
//   szconcat_0t      n bytes, dst     at most size bytes, ended   1 or 0 if cut
//   szcopyex         size bytes       malloc'd buffer, grown      1 or 0
#include <vitrail/strings.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

std::string_view Field(const char *p, uint32_t n) {
    return p ? std::string_view(p, n) : std::string_view();
}

// Equal lengths and every pair of bytes equal or one of them "?".
bool WildEqual(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i] && a[i] != '?' && b[i] != '?') return false;
    return true;
}

} // namespace

extern "C" {

VITRAIL_API int32_t szcnum(char *field, uint32_t n) {
    for (uint32_t i = 0; field && i < n; ++i)
        if (field[i] == ' ') field[i] = '0';
    return 1;
}

VITRAIL_API int32_t szcopy(char *dst, uint32_t size, const char *src, uint32_t n) {
    if (!dst || !src) return n == 0 ? 1 : 0;
    if (n > 0 && size > 0) std::memmove(dst, src, std::min(n, size));
    return n <= size ? 1 : 0;
}

VITRAIL_API int32_t szcopy_overlap(char *dst, uint32_t size, const char *src, uint32_t n) {
    return szcopy(dst, size, src, n);
}

VITRAIL_API int32_t szcomp(const char *a, uint32_t la, const char *b, uint32_t lb) {
    return la == lb && Field(a, la) == Field(b, lb) ? 1 : 0;
}

VITRAIL_API int32_t szcompex(const char *a, uint32_t la, const char *b, uint32_t lb) {
    return WildEqual(Field(a, la), Field(b, lb)) ? 1 : 0;
}

// A trailing "*" on a drops it and cuts b to the same stem when b is at most
// one byte longer than that stem is; then a trailing "*" on b cuts a likewise.
VITRAIL_API int32_t szcompex2(const char *a, uint32_t la, const char *b, uint32_t lb) {
    std::string_view va = Field(a, la), vb = Field(b, lb);
    uint64_t n1 = va.size(), n2 = vb.size();
    if (n1 > 0 && va[n1 - 1] == '*' && n1 <= n2 + 1) n2 = n1 = n1 - 1;
    if (n2 > 0 && vb[n2 - 1] == '*' && n2 <= n1 + 1)
        n1 = n2 = n2 - 1;
    else if (n1 != n2)
        return 0;
    return WildEqual(va.substr(0, n1), vb.substr(0, n2)) ? 1 : 0;
}

VITRAIL_API int32_t szincl(const char *a, uint32_t la, const char *b, uint32_t lb) {
    std::string_view va = Field(a, la), vb = Field(b, lb);
    return vb.find(va) != std::string_view::npos ? 1 : 0;
}

VITRAIL_API int32_t szcopy_0t(char *dst, uint32_t size, const char *src, uint32_t n) {
    if (!dst || size == 0) return 0;
    const uint32_t k = src ? std::min(n, size - 1) : 0;
    szcopy(dst, size, src, k);
    dst[k] = '\0';
    return k == n ? 1 : 0;
}

VITRAIL_API int32_t szconcat_0t(char *dst, uint32_t size, const char *src, uint32_t n) {
    if (!dst || size == 0) return 0;
    const void *end = std::memchr(dst, '\0', size);
    if (!end) {
        dst[size - 1] = '\0';
        return 0;
    }
    const uint32_t p = static_cast<uint32_t>(static_cast<const char *>(end) - dst);
    return szcopy_0t(dst + p, size - p, src, n);
}

VITRAIL_API int32_t szcopyex(char **buf, uint32_t *cap, uint32_t offset, const char *src,
                             uint32_t size) {
    if (!buf || !cap || (!src && size > 0)) return 0;
    const uint32_t have = *buf ? *cap : 0;
    if (offset > have) return 0;
    if (have - offset >= size) {
        if (size > 0) std::memcpy(*buf + offset, src, size);
        return 1;
    }
    const uint64_t grown = offset == 0 ? size : 2 * (uint64_t{have} + size);
    if (grown > UINT32_MAX) return 0;
    char *fresh = static_cast<char *>(std::malloc(grown));
    if (!fresh) return 0;
    if (offset > 0) std::memcpy(fresh, *buf, offset);
    std::memcpy(fresh + offset, src, size);
    std::free(*buf);
    *buf = fresh;
    *cap = static_cast<uint32_t>(grown);
    return 1;
}

} // extern "C"
