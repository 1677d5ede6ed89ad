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
#include <cstring>

#include <vitrail/files.h>
#include <vitrail/numdate.h>
#include <vitrail/profile.h>
#include <vitrail/strings.h>

#include "profile/load.h"
#include "profile/lookup.h"
#include "profile/rules.h"

namespace profile {

int32_t Lookup(std::string_view data, std::string_view section, const char *key, char *buffer,
               int32_t size) {
    const Query q{section, key};
    const char *begin = data.data(), *end = begin + data.size(), *p = begin;
    State st = State::Outside;
    std::string scratch;
    while (p < end) {
        p = st == State::Inside ? NextKeyLine(q, begin, p, end) : NextHeaderLine(begin, p, end);
        if (p >= end) return -1;
        const char *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
        std::string_view line = CleanLine(p, cr ? cr : end, scratch);
        size_t i = 0;
        while ((i = NextStep(line, i, st, q)) != npos && st != State::Found) ++i;
        if (st == State::Found) {
            // The value runs to the line end; with nothing kept at the end of
            // the data, the default stays.
            size_t n = std::min(line.size() - i - 1, size_t(size) - 1);
            if (n == 0 && !cr) return -1;
            std::memcpy(buffer, line.data() + i + 1, n);
            buffer[n] = '\0';
            return int32_t(n);
        }
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
