// The line rules of the profile format and the scans that skip the lines
// those rules cannot act on.
#include "profile/rules.h"

#include <algorithm>
#include <immintrin.h>

namespace profile {

namespace {

// True when the bytes of `line` before index `i` (their kept part) equal `key`.
bool KeyBefore(std::string_view line, size_t i, std::string_view key) {
    return line.substr(0, std::min(i, kLineStored)) == key;
}

// The index of the first "=" or "[" of `line` at or after `from`; npos if none.
size_t FindEqualOrBracket(std::string_view line, size_t from) {
    const char *b = line.data() + from;
    size_t n = line.size() - from;
    auto *eq = static_cast<const char *>(std::memchr(b, '=', n));
    auto *br = static_cast<const char *>(std::memchr(b, '[', eq ? size_t(eq - b) : n));
    const char *hit = br ? br : eq;
    return hit ? size_t(hit - line.data()) : npos;
}

__m128i Load16(const char *b) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(b));
}

// The first byte in [e, stop) that is a "[" or may be the "=" ending a key:
// an "=" right after `last` (the key's last byte) or a line feed. `stop`
// when there is none. Reads from e - 1; 16 or 32 bytes at a time, by byte at
// the end.
const char *NextMarkByByte(const char *e, const char *stop, char last) {
    for (; e < stop; ++e)
        if (*e == '[' || (*e == '=' && (e[-1] == last || e[-1] == '\n'))) return e;
    return stop;
}

const char *NextMarkSse2(const char *e, const char *stop, char last) {
    const __m128i eq = _mm_set1_epi8('='), lf = _mm_set1_epi8('\n'), ls = _mm_set1_epi8(last),
                  br = _mm_set1_epi8('[');
    for (; stop - e >= 16; e += 16) {
        __m128i prev = Load16(e - 1);
        __m128i after = _mm_or_si128(_mm_cmpeq_epi8(prev, ls), _mm_cmpeq_epi8(prev, lf));
        __m128i here = Load16(e);
        __m128i hit =
            _mm_or_si128(_mm_and_si128(_mm_cmpeq_epi8(here, eq), after), _mm_cmpeq_epi8(here, br));
        uint32_t m = uint32_t(_mm_movemask_epi8(hit));
        if (m) return e + __builtin_ctz(m);
    }
    return NextMarkByByte(e, stop, last);
}

__attribute__((target("avx2"))) const char *NextMarkAvx2(const char *e, const char *stop,
                                                         char last) {
    const __m256i eq = _mm256_set1_epi8('='), lf = _mm256_set1_epi8('\n'),
                  ls = _mm256_set1_epi8(last), br = _mm256_set1_epi8('[');
    for (; stop - e >= 32; e += 32) {
        __m256i prev = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(e - 1));
        __m256i after = _mm256_or_si256(_mm256_cmpeq_epi8(prev, ls), _mm256_cmpeq_epi8(prev, lf));
        __m256i here = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(e));
        __m256i hit = _mm256_or_si256(_mm256_and_si256(_mm256_cmpeq_epi8(here, eq), after),
                                      _mm256_cmpeq_epi8(here, br));
        uint32_t m = uint32_t(_mm256_movemask_epi8(hit));
        if (m) return e + __builtin_ctz(m);
    }
    return NextMarkByByte(e, stop, last);
}

const char *NextMark(const char *e, const char *stop, char last) {
    static const bool avx2 = __builtin_cpu_supports("avx2");
    return avx2 ? NextMarkAvx2(e, stop, last) : NextMarkSse2(e, stop, last);
}

// The start of the line holding `x`, knowing `c0` < `x` is a carriage return.
const char *LineOf(const char *c0, const char *x) {
    return AfterLineEnd(static_cast<const char *>(memrchr(c0, '\r', size_t(x - c0))), x);
}

// True when the line [s, cr) starts with the key and "=", or holds a line
// feed among its first bytes.
bool FirstLineNeedsRules(std::string_view key, const char *s, const char *cr) {
    size_t k = key.size(), len = size_t(cr - s);
    if (len > k && s[k] == '=' && std::memcmp(s, key.data(), k) == 0) return true;
    const char *head = s + (len <= k ? len : k + 1);
    return std::find(s, head, '\n') != head;
}

// For an "=" at `e` after the carriage return `c0`: the start of its line
// when the line starts with the key and that "=", or when a line feed that
// does not follow a carriage return stands among the bytes looked at; else
// null. Walks back from `e` over the key, then to the line start.
const char *Check(std::string_view key, const char *c0, const char *e) {
    const char *s = e;
    for (size_t i = key.size(); i > 0; --i) {
        if (*--s == '\n') return s[-1] == '\r' ? nullptr : LineOf(c0, e);
        if (*s != key[i - 1]) return nullptr;
    }
    --s;
    if (*s == '\r' || (*s == '\n' && s[-1] == '\r')) return s + 1;
    return *s == '\n' ? LineOf(c0, e) : nullptr;
}

} // namespace

std::string_view CleanLine(const char *s, const char *e, std::string &scratch) {
    while (s < e && *s == '\n') ++s;
    const char *lf = static_cast<const char *>(std::memchr(s, '\n', size_t(e - s)));
    if (!lf) return std::string_view(s, size_t(e - s));
    scratch.assign(s, lf);
    for (const char *p = lf; p < e; ++p)
        if (*p != '\n') scratch += *p;
    return scratch;
}

size_t HeaderEnd(std::string_view line, size_t from, std::string_view section) {
    for (size_t j = line.find(']', from); j != npos; j = line.find(']', j + 1)) {
        size_t end = std::min(j, kLineStored);
        if (end >= 1 && line.substr(1, end - 1) == section) return j;
    }
    return npos;
}

size_t NextStep(std::string_view line, size_t i, State &st, const Query &q) {
    if (st == State::Outside) {
        size_t j = line.empty() || line[0] != '[' ? npos : HeaderEnd(line, i, q.section);
        if (j != npos) st = State::Inside;
        return j;
    }
    for (; i < line.size(); ++i) {
        if ((i = FindEqualOrBracket(line, i)) == npos) return npos;
        if (line[i] == '[') {
            st = State::Outside;
            return i;
        }
        if (q.key && KeyBefore(line, i, q.key)) {
            st = State::Found;
            return i;
        }
    }
    return npos;
}

bool StartsLine(const char *begin, const char *b) {
    while (b > begin && b[-1] == '\n') --b;
    return b == begin || b[-1] == '\r';
}

const char *NextHeaderLine(const char *begin, const char *p, const char *end) {
    for (;;) {
        auto *b = static_cast<const char *>(std::memchr(p, '[', size_t(end - p)));
        if (!b) return end;
        if (StartsLine(begin, b)) {
            while (b > p && b[-1] == '\n') --b;
            return b > p && b[-1] == '\r' ? AfterLineEnd(b - 1, end) : b;
        }
        p = b + 1;
    }
}

// Lines skipped hold no "[" and no line end; such a line can only match a
// key without "=", "[" or line ends, shorter than the kept part, at the
// key's own length: its "=" stands right after the key's last byte or after
// a line feed, so only those "=" bytes are looked at closely.
const char *NextKeyLine(const Query &q, const char *begin, const char *p, const char *end) {
    std::string_view key = q.key ? q.key : "";
    if (!q.key || key.size() >= kLineStored || key.find_first_of("=[\r\n") != npos ||
        p <= begin || p >= end)
        return p;
    auto *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
    if (!cr || std::memchr(p, '[', size_t(cr - p))) return p;
    const char *s = p;
    while (s < cr && *s == '\n') ++s;
    if (FirstLineNeedsRules(key, s, cr)) return p;
    const char last = key.empty() ? '\r' : key.back();
    const char *e = cr + 1;
    for (; (e = NextMark(e, end, last)) < end && *e == '='; ++e)
        if (const char *line = Check(key, cr, e)) return line;
    return LineOf(cr, e);
}

bool WrittenAsIs(const char *a, const char *b) {
    if (a == b) return true;
    if (*a == '\n' || b[-1] != '\n') return false;
    // From a + 1 on, a byte is a line feed exactly when the byte before it is
    // a carriage return.
    const __m128i cr = _mm_set1_epi8('\r'), lf = _mm_set1_epi8('\n');
    const char *p = a + 1;
    for (; b - p >= 16; p += 16) {
        __m128i d = _mm_xor_si128(_mm_cmpeq_epi8(Load16(p), lf), _mm_cmpeq_epi8(Load16(p - 1), cr));
        if (_mm_movemask_epi8(d)) return false;
    }
    for (; p < b; ++p)
        if ((*p == '\n') != (p[-1] == '\r')) return false;
    return true;
}

} // namespace profile
