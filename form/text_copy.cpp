// Bounded text copies shared by every setter and retrieve function of the
// form model; all rest on szcopy_0t.
#include <cstring>
#include <functional>

#include <vitrail/strings.h>

#include "form/internal.h"

namespace form {

void copy_text(char *dst, int32_t size, const char *text) {
    if (!dst || size < 1) return;
    if (!text) text = "";
    // Reads no further into text than the copy can use.
    size_t n = strnlen(text, static_cast<size_t>(size));
    szcopy_0t(dst, static_cast<uint32_t>(size), text, static_cast<uint32_t>(n));
}

void copy_to_slice(char *dst, int32_t size, const char *text, const char *store,
                   size_t store_size) {
    std::less<const char *> before;
    const char *end = store + store_size;
    if (dst && !before(dst, store) && before(dst, end) && size > end - dst)
        size = static_cast<int32_t>(end - dst);
    copy_text(dst, size, text);
}

void retrieve_text(char *dst, uint32_t size, const char *text) {
    if (!dst) return;
    if (!text) text = "";
    size_t n = std::strlen(text);
    if (n < size) szcopy_0t(dst, size, text, static_cast<uint32_t>(n));
}

} // namespace form
