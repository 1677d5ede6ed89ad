// Profile writes against the model of the writing rules, with a read-back
// check: whatever a writer answers success for, the reader returns.
// Input: mode-byte section NUL key NUL value NUL profile-bytes; mode bit 0
// calls the section writer, bit 1 passes a null key, bit 2 a null value.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <vitrail/platform.h>
#include <vitrail/profile.h>

#include "tests/profile/model.h"

namespace {

// Profiles go to a folder in memory: every write is flushed to disk.
const std::string &Folder() {
    static const std::string dir = [] {
        char pattern[] = "/dev/shm/vitrail-fuzz-XXXXXX";
        std::string root = mkdtemp(pattern) ? pattern : "/tmp";
        vitrail_set_volumes_root(root.c_str());
        mkdir((root + "/Vol").c_str(), 0777);
        return root + "/Vol/a.ini";
    }();
    return dir;
}

std::string Slurp(const std::string &path) {
    std::ostringstream s;
    s << std::ifstream(path, std::ios::binary).rdbuf();
    return s.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t n) {
    std::string_view in(reinterpret_cast<const char *>(data), n);
    size_t a = in.find('\0', 1), b = a == in.npos ? a : in.find('\0', a + 1),
           c = b == in.npos ? b : in.find('\0', b + 1);
    if (c == in.npos) return 0;
    int mode = in[0];
    std::string section(in.substr(1, a - 1)), key(in.substr(a + 1, b - a - 1)),
        value(in.substr(b + 1, c - b - 1)), before(in.substr(c + 1));
    const char *k = mode & 2 ? nullptr : key.c_str(), *v = mode & 4 ? nullptr : value.c_str();
    std::ofstream(Folder(), std::ios::binary | std::ios::trunc) << before;
    int32_t r = mode & 1 ? WritePrivateProfileSection(section.c_str(), v, "Vol:a.ini")
                         : WritePrivateProfileString(section.c_str(), k, v, "Vol:a.ini");
    auto want = mode & 1 ? profile_model::Write(before, section, nullptr, v)
                         : profile_model::Write(before, section, k, k ? v : nullptr);
    if (r != (want ? 1 : 0) || Slurp(Folder()) != (want ? *want : before)) std::abort();
    if (r && k && !(mode & 1)) { // set values read back, deleted keys are gone
        std::string buf(value.size() + 2, '#');
        int32_t got = GetPrivateProfileString(section.c_str(), k, "\x01", buf.data(),
                                              int32_t(buf.size()), "Vol:a.ini");
        if (buf.substr(0, size_t(got)) != (v ? value : "\x01")) std::abort();
    }
    return 0;
}
