// Windows <-> Mac OS Roman for the French letters the application uses; the
// byte tables are generated from the codecs by tools/gen_charsets.py.
//
//   Routine   Table                          Converts
//   w2mstr    strings_tables::kWindowsToMac  ° à ç è é ê ï
//   m2wstr    strings_tables::kMacToWindows  à ç é è °
#include <vitrail/strings.h>

#include "strings/charset_tables.h"

namespace {

// Replaces every byte of s by its entry in table, each byte once.
void Convert(char *s, const std::array<uint8_t, 256> &table) {
    for (; s && *s; ++s) *s = static_cast<char>(table[static_cast<unsigned char>(*s)]);
}

} // namespace

extern "C" {

VITRAIL_API void w2mstr(char *s) {
    Convert(s, strings_tables::kWindowsToMac);
}

VITRAIL_API void m2wstr(char *s) {
    Convert(s, strings_tables::kMacToWindows);
}

} // extern "C"
