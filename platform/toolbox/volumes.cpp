// The volumes root: "/Volumes" unless VITRAIL_VOLUMES or the host says otherwise.
#include "platform/toolbox/volumes.h"

#include <cstdlib>

#include <vitrail/platform.h>

namespace platform {
namespace {

constexpr std::string_view kDefaultRoot = "/Volumes";
constexpr size_t kMaxRoot = 1023;

std::string Normalised(std::string_view folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.remove_suffix(1);
    return std::string(folder);
}

std::string FromEnvironment() {
    const char *env = std::getenv("VITRAIL_VOLUMES");
    if (env && *env && std::string_view(env).size() <= kMaxRoot) return Normalised(env);
    return std::string(kDefaultRoot);
}

std::string &Root() {
    static std::string root = FromEnvironment();
    return root;
}

} // namespace

const std::string &VolumesRoot() {
    return Root();
}

void SetVolumesRoot(std::string_view folder) {
    Root() = folder.empty() ? FromEnvironment() : Normalised(folder);
}

} // namespace platform

extern "C" {

VITRAIL_API int32_t vitrail_set_volumes_root(const char *folder) {
    std::string_view f = folder ? folder : "";
    if (f.size() > platform::kMaxRoot) return -1;
    platform::SetVolumesRoot(f);
    return 0;
}

VITRAIL_API const char *vitrail_volumes_root(void) {
    return platform::VolumesRoot().c_str();
}

} // extern "C"
