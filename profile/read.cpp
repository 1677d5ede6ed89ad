// Reading profile files.
//
//   Reader state   Meaning                          Leaves it
//   outside        not in the wanted section        "]" closing the wanted name in a "[" line
//   inside         in an occurrence of the section  "[" anywhere (back to outside)
//   found          the key's "=" was met            the end of that line
//
// The reader keeps at most 1023 bytes of a line for its comparisons and at
// most size - 1 bytes of the value. Lines that do not start with "[" cannot
// change the state outside the section, so the scan jumps from "[" to "[".
#include <algorithm>
#include <cstring>
#include <emmintrin.h>
#include <string>

#include <vitrail/files.h>
#include <vitrail/numdate.h>
#include <vitrail/profile.h>
#include <vitrail/strings.h>

#include "profile/load.h"

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

// Inside the section, finds the next line that needs the full rules: one
// holding a "[", or whose first bytes are the key and "=" or hold a line
// feed. Lines in between cannot change the state: a key without "=", "[" or
// line ends, shorter than the kept part of a line, matches only at its own
// length, and those bytes are kept as they stand when no line feed is among them.
// Finds carriage returns 16 bytes at a time, keeping the marks of the last
// block so that the short lines of a profile share one load.
class CrFinder {
  public:
    explicit CrFinder(const char *end) : end_(end) {}
    // The first carriage return at or after `s`, or null.
    const char *From(const char *s) {
        if (base_ && s >= base_ && s < base_ + 16) {
            uint32_t m = mask_ & (~0u << unsigned(s - base_));
            if (m) return base_ + __builtin_ctz(m);
            base_ += 16;
        } else {
            base_ = s;
        }
        const __m128i cr = _mm_set1_epi8('\r');
        for (; end_ - base_ >= 16; base_ += 16) {
            __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(base_));
            mask_ = uint32_t(_mm_movemask_epi8(_mm_cmpeq_epi8(v, cr)));
            if (mask_) return base_ + __builtin_ctz(mask_);
        }
        const char *tail = base_;
        base_ = nullptr;
        return static_cast<const char *>(std::memchr(tail, '\r', size_t(end_ - tail)));
    }

  private:
    const char *end_, *base_ = nullptr;
    uint32_t mask_ = 0;
};

class InsideSkipper {
  public:
    InsideSkipper(const Query &q, const char *end) : key_(q.key), end_(end), crs_(end) {
        usable_ = key_.size() < kLineStored && key_.find_first_of("=[\r\n") == npos;
    }
    // The start of the next line from the line start `p` that needs the rules.
    const char *Next(const char *p) {
        if (!usable_) return p;
        if (bracket_ < p) {
            auto *b = static_cast<const char *>(std::memchr(p, '[', size_t(end_ - p)));
            bracket_ = b ? b : end_;
        }
        size_t k = key_.size();
        while (p < end_) {
            const char *s = p;
            while (s < end_ && *s == '\n') ++s;
            if (s >= end_) return p;
            const char *cr = crs_.From(s);
            if (!cr || cr >= bracket_) return p;
            size_t len = size_t(cr - s);
            if (len > k && s[k] == '=' && (k == 0 || s[k - 1] == key_[k - 1]) &&
                std::memcmp(s, key_.data(), k) == 0)
                return p;
            const char *head = s + (len <= k ? len : k + 1);
            if (std::find(s, head, '\n') != head) return p;
            p = cr + 1;
        }
        return p;
    }

  private:
    std::string_view key_;
    const char *end_, *bracket_ = nullptr;
    bool usable_;
    CrFinder crs_;
};

// Scans a profile's bytes for the key; the value's length, or -1 when not found.
int32_t Lookup(std::string_view data, const Query &q, char *buffer, int32_t size) {
    const char *begin = data.data(), *end = begin + data.size(), *p = begin;
    State st = State::Outside;
    std::string scratch;
    InsideSkipper skipper(q, end);
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

} // namespace

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
    int32_t found = Lookup(profile::Contents(h), Query{section, key}, buffer, size);
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
