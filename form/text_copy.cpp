// Bounded text copies shared by every setter and retrieve function of the
// form model; both rest on szcopy_0t.
#include <cstring>

#include <vitrail/strings.h>

#include "form/internal.h"

namespace form {

void copy_text(char *dst, int32_t size, const char *text) {
    if (!dst || size < 1) return;
    if (!text) text = "";
    szcopy_0t(dst, static_cast<uint32_t>(size), text, static_cast<uint32_t>(std::strlen(text)));
}

void retrieve_text(char *dst, uint32_t size, const char *text) {
    if (!dst) return;
    if (!text) text = "";
    size_t n = std::strlen(text);
    if (n < size) szcopy_0t(dst, size, text, static_cast<uint32_t>(n));
}

} // namespace form
