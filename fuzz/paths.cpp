// Mac paths to Unix paths against a model of the conversion, under a
// volumes root holding the volume "Vol" and the file "File"; and every path handed to a shell
// command comes back intact from the quoting, never as an option.
#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <vitrail/files.h>
#include <vitrail/platform.h>

#include "check.h"
#include "unixtools/shell.h"

namespace {

std::string Root() {
    static std::string root = [] {
        char pattern[] = "/tmp/vitrail-fuzz-XXXXXX";
        std::string r = mkdtemp(pattern);
        mkdir((r + "/Vol").c_str(), 0700);
        fclose(fopen((r + "/File").c_str(), "w")); // a file is no volume
        vitrail_set_volumes_root(r.c_str());
        return r;
    }();
    return root;
}

// The words /bin/sh makes of a single-quoted text ('...' and \' only).
std::string Unquoted(const std::string &word) {
    std::string out;
    for (size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '\\')
            out += word[++i];
        else if (word[i] == '\'')
            for (++i; word[i] != '\''; ++i) out += word[i];
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string mac(reinterpret_cast<const char *>(data), strnlen((const char *)data, size));
    const size_t colon = mac.find(':');
    const std::string volume = mac.substr(0, colon);
    const bool onVolume = volume != "File";
    std::string model = onVolume ? Root() + "/" : "";
    for (char c : onVolume ? mac : colon == std::string::npos ? "" : mac.substr(colon))
        model += c == ':' ? '/' : c == '/' ? ':' : c;
    char unix[256];
    MAC2UNIX(mac.c_str(), unix);
    CHECK(model.substr(0, 255) == unix || volume.find('/') != std::string::npos);
    const std::string word = unixtools::QuotePath(mac);
    CHECK(Unquoted(word) == (mac[0] == '-' ? "./" + mac : mac) && Unquoted(word)[0] != '-');
    return 0;
}
