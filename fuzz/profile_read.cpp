// Profile lookups against the byte-by-byte model of the reading rules.
// Input: section NUL key NUL size-byte profile-bytes.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "profile/lookup.h"
#include "tests/profile/model.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t n) {
    std::string_view in(reinterpret_cast<const char *>(data), n);
    size_t a = in.find('\0'), b = a == in.npos ? a : in.find('\0', a + 1);
    if (b == in.npos || b + 1 >= in.size()) return 0;
    std::string section(in.substr(0, a)), key(in.substr(a + 1, b - a - 1));
    int32_t size = 1 + uint8_t(in[b + 1]) % 64;
    std::string_view text = in.substr(b + 2);
    char buf[80];
    std::memset(buf, '#', sizeof buf);
    int32_t got = profile::Lookup(text, section, key.c_str(), buf, size);
    auto want = profile_model::Read(text, section, key, size_t(size));
    if (got != (want ? int32_t(want->size()) : -1)) std::abort();
    if (want && std::string(buf, size_t(got) + 1) != *want + '\0') std::abort();
    if (!want && buf[0] != '#') std::abort();
    return 0;
}
