// Reading profile files.
//
//   Reader state   Meaning                          Leaves it
//   outside        not in the wanted section        "]" closing the wanted name in a "[" line
//   inside         in an occurrence of the section  "[" anywhere (back to outside)
//   found          the key's "=" was met            the end of that line
//
// The reader keeps at most 1023 bytes of a line for its comparisons and at
// most size - 1 bytes of the value. Lines that do not start with "[" cannot
// change the state outside the section, so the scan jumps from "[" to "[";
// inside it, only lines near a "[" or an "=" after the key's last byte are read.
#include <algorithm>
#include <cstring>
#include <immintrin.h>
#include <string>

#include <vitrail/files.h>
#include <vitrail/numdate.h>
#include <vitrail/profile.h>
#include <vitrail/strings.h>

#include "profile/load.h"
#include "profile/lookup.h"

namespace {

using profile::kUnlimited;
constexpr size_t kLineStored = 1023;
constexpr size_t npos = std::string_view::npos;

enum class State { Outside, Inside, Found };

struct Query {
    std::string_view section, key;
};

// Runs the reader's rules over one clean line from state `st`; on Found,
// `value` gets the index where the value starts.
State ScanLine(std::string_view line, State st, const Query &q, size_t &value) {
    size_t i = 0;
    while (i < line.size()) {
        if (st == State::Outside) {
            if (line[0] != '[') return st;
            size_t j = profile::HeaderEnd(line, i, q.section, kLineStored);
            if (j == npos) return st;
            st = State::Inside;
            i = j + 1;
            continue;
        }
        size_t j = profile::FindEqualOrBracket(line, i);
        if (j == npos) return st;
        if (line[j] == '[') {
            st = State::Outside;
        } else if (profile::KeyBefore(line, j, q.key, kLineStored)) {
            value = j + 1;
            return State::Found;
        }
        i = j + 1;
    }
    return st;
}

// True when the "[" at `b` is the first kept byte of its line.
bool StartsLine(const char *begin, const char *b) {
    while (b > begin && b[-1] == '\n') --b;
    return b == begin || b[-1] == '\r';
}

// Copies the found value into the caller's buffer; the length kept, or -1
// when the data ended with nothing kept (the default then stays).
int32_t TakeValue(std::string_view value, bool endedByCR, char *buffer, int32_t size) {
    size_t n = value.size() < size_t(size) - 1 ? value.size() : size_t(size) - 1;
    if (n == 0 && !endedByCR) return -1;
    std::memcpy(buffer, value.data(), n);
    buffer[n] = '\0';
    return int32_t(n);
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
    auto load = [](const char *b) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(b)); };
    const __m128i eq = _mm_set1_epi8('='), lf = _mm_set1_epi8('\n'), ls = _mm_set1_epi8(last),
                  br = _mm_set1_epi8('[');
    for (; stop - e >= 16; e += 16) {
        __m128i prev = load(e - 1);
        __m128i after = _mm_or_si128(_mm_cmpeq_epi8(prev, ls), _mm_cmpeq_epi8(prev, lf));
        __m128i here = load(e);
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

// Inside the section, finds the next line that needs the full rules: one
// holding a "[", or one that, line feeds dropped, starts with the key and
// "=". Lines in between cannot change the state: a key without "=", "[" or
// line ends, shorter than the kept part of a line, matches only at its own
// length. Such a line has its "=" right after the key's last byte or after a
// line feed, so only those "=" bytes are looked at closely.
class InsideSkipper {
  public:
    InsideSkipper(const Query &q, const char *begin, const char *end)
        : key_(q.key), begin_(begin), end_(end) {
        usable_ = key_.size() < kLineStored && key_.find_first_of("=[\r\n") == npos;
        last_ = key_.empty() ? '\r' : key_.back();
    }
    // The start of the next line from the line start `p` that needs the rules.
    const char *Next(const char *p) {
        if (!usable_ || p <= begin_ || p >= end_) return p;
        auto *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end_ - p)));
        if (!cr || std::memchr(p, '[', size_t(cr - p))) return p;
        const char *s = p;
        while (s < cr && *s == '\n') ++s;
        if (FirstLineNeedsRules(s, cr)) return p;
        const char *e = cr + 1;
        for (; (e = NextMark(e, end_, last_)) < end_ && *e == '='; ++e)
            if (const char *line = Check(cr, e)) return line;
        return LineOf(cr, e);
    }

  private:
    // True when the line [s, cr) starts with the key and "=", or holds a line
    // feed among its first bytes.
    bool FirstLineNeedsRules(const char *s, const char *cr) const {
        size_t k = key_.size(), len = size_t(cr - s);
        if (len > k && s[k] == '=' && std::memcmp(s, key_.data(), k) == 0) return true;
        const char *head = s + (len <= k ? len : k + 1);
        return std::find(s, head, '\n') != head;
    }
    // For an "=" at `e` after the carriage return `c0`: the start of its line
    // when the line starts with the key and that "=", or when a line feed that
    // does not follow a carriage return stands among the bytes looked at; else
    // null. Walks back from `e` over the key, then to the line start.
    const char *Check(const char *c0, const char *e) const {
        const char *s = e;
        for (size_t i = key_.size(); i > 0; --i) {
            if (*--s == '\n') return s[-1] == '\r' ? nullptr : LineOf(c0, e);
            if (*s != key_[i - 1]) return nullptr;
        }
        --s;
        if (*s == '\r' || (*s == '\n' && s[-1] == '\r')) return s + 1;
        return *s == '\n' ? LineOf(c0, e) : nullptr;
    }
    // The start of the line holding `x`, knowing `c0` < `x` is a carriage return.
    static const char *LineOf(const char *c0, const char *x) {
        return static_cast<const char *>(memrchr(c0, '\r', size_t(x - c0))) + 1;
    }

    std::string_view key_;
    const char *begin_, *end_;
    char last_;
    bool usable_;
};

} // namespace

namespace profile {

int32_t Lookup(std::string_view data, std::string_view section, std::string_view key, char *buffer,
               int32_t size) {
    const Query q{section, key};
    const char *begin = data.data(), *end = begin + data.size(), *p = begin;
    State st = State::Outside;
    std::string scratch;
    InsideSkipper skipper(q, begin, end);
    while (p < end) {
        if (st == State::Inside && (p = skipper.Next(p)) >= end) return -1;
        if (st == State::Outside) { // jump to the next line starting with "["
            const char *b = static_cast<const char *>(std::memchr(p, '[', size_t(end - p)));
            if (!b) return -1;
            if (!StartsLine(begin, b)) {
                p = b + 1;
                continue;
            }
            p = b;
        }
        const char *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
        const char *e = cr ? cr : end;
        std::string_view line = profile::CleanLine(p, e, scratch);
        size_t value = 0;
        st = ScanLine(line, st, q, value);
        if (st == State::Found) return TakeValue(line.substr(value), cr != nullptr, buffer, size);
        if (!cr) return -1;
        p = cr + 1;
    }
    return -1;
}

int32_t LookupByRules(std::string_view data, std::string_view section, std::string_view key,
                      char *buffer, int32_t size) {
    const Query q{section, key};
    const char *p = data.data(), *end = p + data.size();
    State st = State::Outside;
    std::string scratch;
    while (p < end) {
        const char *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
        std::string_view line = profile::CleanLine(p, cr ? cr : end, scratch);
        size_t value = 0;
        st = ScanLine(line, st, q, value);
        if (st == State::Found) return TakeValue(line.substr(value), cr != nullptr, buffer, size);
        if (!cr) return -1;
        p = cr + 1;
    }
    return -1;
}

} // namespace profile

extern "C" {

VITRAIL_API int32_t GetPrivateProfileString(const char *section, const char *key,
                                            const char *defaultValue, char *buffer, int32_t size,
                                            const char *file) {
    if (!buffer || size <= 0) return 0;
    std::string_view def = defaultValue ? defaultValue : "";
    int32_t result = szcopy_0t(buffer, uint32_t(size), def.data(), uint32_t(def.size()))
                         ? int32_t(def.size())
                         : size - 1;
    if (!section || !key || !file) return result;
    int32_t fd = xFile_Open(file, 1, 0);
    if (fd < 0) return result;
    int32_t h = profile::LoadIntoMemoryFile(fd);
    xFile_Close(fd);
    if (h < 0) return result;
    int32_t found = profile::Lookup(profile::Contents(h), section, key, buffer, size);
    MFil_Close(h);
    return found >= 0 ? found : result;
}

VITRAIL_API int32_t GetPrivateProfileInt(const char *section, const char *key, int32_t defaultValue,
                                         const char *file) {
    char text[12];
    if (intdco_i(defaultValue, text, sizeof text) != 0) return 0;
    GetPrivateProfileString(section, key, text, text, sizeof text, file);
    int32_t value = 0;
    if (intcod_l(text, &value) != 0) return 0;
    return value < 0 ? 0 : value;
}

} // extern "C"
