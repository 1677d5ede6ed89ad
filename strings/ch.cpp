// Zero-terminated string helpers: trimming, comparing, searching, deleting
// and inserting in place, in buffers the caller owns.
//
//   Routine       Reads          Writes                Result
//   chelibl_f/_d  s              s (shortened)         new length
//   chelicar_f/_d s, byte        s (shortened)         new length
//   chcomp        a, b           -                     signed byte difference
//   chcher(_c)    pattern|byte,s -                     position or -1
//   chdelch       s              s (shortened)         -
//   chinsch(_c)   dst, ins|byte  dst within size       bytes inserted or 0
#include <vitrail/strings.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "strings/trim.h"

namespace {

std::string_view View(const char *s) {
    return s ? std::string_view(s) : std::string_view();
}

// Cuts the trailing bytes equal to c from s of length n; c = 0 cuts nothing.
size_t TrimEnd(char *s, size_t n, char c) {
    if (c != '\0')
        while (n > 0 && s[n - 1] == c) --n;
    s[n] = '\0';
    return n;
}

// Cuts the leading bytes equal to c from s of length len, moving the rest
// (terminator included) down.
size_t TrimStart(char *s, size_t len, char c) {
    size_t k = 0;
    if (c != '\0')
        while (s[k] == c) ++k;
    if (k > 0) std::memmove(s, s + k, len - k + 1);
    return len - k;
}

int32_t Trimmed(char *s, char c, size_t (*trim)(char *, size_t, char)) {
    return s ? static_cast<int32_t>(trim(s, std::strlen(s), c)) : 0;
}

// Insertion point for a position into a string of length len.
size_t ClampInsert(int32_t pos, size_t len) {
    if (pos < 0) return 0;
    return static_cast<size_t>(pos) < len ? static_cast<size_t>(pos) : len;
}

} // namespace

namespace strings {

size_t TrimBlanks(char *s) {
    return TrimStart(s, TrimEnd(s, std::strlen(s), ' '), ' ');
}

} // namespace strings

extern "C" {

VITRAIL_API int32_t chelibl_f(char *s) {
    return Trimmed(s, ' ', TrimEnd);
}

VITRAIL_API int32_t chelibl_d(char *s) {
    return Trimmed(s, ' ', TrimStart);
}

VITRAIL_API int32_t chelicar_f(char *s, char c) {
    return Trimmed(s, c, TrimEnd);
}

VITRAIL_API int32_t chelicar_d(char *s, char c) {
    return Trimmed(s, c, TrimStart);
}

VITRAIL_API int32_t chcomp(const char *a, const char *b) {
    std::string_view va = View(a), vb = View(b);
    size_t i = 0;
    while (i < va.size() && i < vb.size() && va[i] == vb[i]) ++i;
    auto at = [](std::string_view v, size_t k) {
        return k < v.size() ? static_cast<int32_t>(static_cast<signed char>(v[k])) : 0;
    };
    return at(va, i) - at(vb, i);
}

VITRAIL_API int32_t chcher(const char *pattern, const char *s) {
    std::string_view p = View(pattern), v = View(s);
    if (v.empty()) return -1;
    size_t at = v.find(p);
    return at == std::string_view::npos ? -1 : static_cast<int32_t>(at);
}

VITRAIL_API int32_t chcher_c(char c, const char *s) {
    std::string_view v = View(s);
    size_t at = v.find(c);
    return at == std::string_view::npos ? -1 : static_cast<int32_t>(at);
}

VITRAIL_API void chdelch(char *s, int32_t count, int32_t pos) {
    if (!s) return;
    const int64_t len = static_cast<int64_t>(std::strlen(s));
    if (len == 0 || count < 1 || count > len) return;
    int64_t p = pos < 0 ? 0 : (pos >= len ? len - 1 : pos);
    int64_t n = p + count > len ? len - p : count;
    std::memmove(s + p, s + p + n, static_cast<size_t>(len - p - n + 1));
}

VITRAIL_API int32_t chinsch(char *dst, int32_t size, const char *ins, int32_t pos) {
    if (!dst) return 0;
    const size_t ld = std::strlen(dst);
    const size_t li = View(ins).size();
    if (static_cast<int64_t>(ld) + static_cast<int64_t>(li) > static_cast<int64_t>(size) - 1)
        return 0;
    if (li == 0) return 0;
    // Append ins (memmove copes with ins anywhere in dst, even past its
    // terminator), then rotate the appended bytes into place.
    std::memmove(dst + ld, ins, li);
    dst[ld + li] = '\0';
    std::rotate(dst + ClampInsert(pos, ld), dst + ld, dst + ld + li);
    return static_cast<int32_t>(li);
}

VITRAIL_API int32_t chinsch_c(char *dst, int32_t size, char c, int32_t pos) {
    const char one[2] = {c, '\0'};
    return chinsch(dst, size, one, pos);
}

} // extern "C"
