// The line rules of the profile format, shared by the reader and the writers,
// and the fast scans that find the lines where those rules can act.
//
//   Rule             What it does
//   line             ends at CR; LF bytes are dropped wherever they stand
//   kept part        only the first 1023 bytes of a line take part in comparisons
//   header           a line starting "[": a "]" after the wanted name enters it
//   inside           a "[" anywhere leaves the section; an "=" after the key finds it
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace profile {

constexpr size_t npos = std::string_view::npos;
constexpr size_t kLineStored = 1023;

enum class State { Outside, Inside, Found };

// What a lookup or a key writer looks for; a null key (the section writer)
// is never found.
struct Query {
    std::string_view section;
    const char *key;
};

// The line [s, e) as the rules see it: line feeds dropped. A view of the
// bytes when there are none to drop, else of `scratch`.
std::string_view CleanLine(const char *s, const char *e, std::string &scratch);

// In a line starting with "[": the index of the first "]" at or after `from`
// where the kept name between "[" and that "]" equals `section`; npos if none.
size_t HeaderEnd(std::string_view line, size_t from, std::string_view section);

// One step of the rules over `line` from index `i` in state `st`: sets `st`
// to the next state reached and answers the index of the byte that changed
// it (the "]", "[" or "="), or npos when the rest of the line changes nothing.
size_t NextStep(std::string_view line, size_t i, State &st, const Query &q);

// Where the line ended by the carriage return `cr` stops: after the CR and
// the line feed right after it, if any (before `end`). Lines start there.
inline const char *AfterLineEnd(const char *cr, const char *end) {
    return cr + 1 < end && cr[1] == '\n' ? cr + 2 : cr + 1;
}

// True when the "[" at `b` is the first kept byte of its line.
bool StartsLine(const char *begin, const char *b);

// The start of the next line at or after the line start `p` that starts
// with "["; `end` when there is none. Lines in between cannot change the
// state outside the wanted section.
const char *NextHeaderLine(const char *begin, const char *p, const char *end);

// Inside the wanted section, from the line start `p`: the start of the next
// line that needs the rules (one holding a "[", or one that may hold the
// key's "="); `end` when there is none. Lines skipped cannot change the state.
const char *NextKeyLine(const Query &q, const char *begin, const char *p, const char *end);

// True when every line of [a, b) ends with CR LF and holds no other CR or
// LF: such lines are copied to a written profile byte for byte.
bool WrittenAsIs(const char *a, const char *b);

} // namespace profile
