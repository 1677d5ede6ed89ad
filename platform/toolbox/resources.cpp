// Named resources from the resources folder.
//
//   Type    Extension   Content
//   PICT    .png        a picture; an oFFs chunk in pixels moves its frame
//   other   (none)      the raw bytes
#include "platform/toolbox/resources.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <utility>

#include <vitrail/platform.h>

#include "platform/toolbox/mac_roman.h"

namespace platform {
namespace {

constexpr size_t kMaxFolder = 1023;
constexpr std::streamoff kMaxResource = 64 << 20;

constexpr std::array<std::pair<std::string_view, std::string_view>, 1> kExtensions = {{
    {"PICT", ".png"},
}};

std::string_view ExtensionOf(std::string_view type) {
    for (const auto &[t, ext] : kExtensions)
        if (t == type) return ext;
    return {};
}

std::string Normalised(std::string_view folder) {
    while (folder.size() > 1 && folder.back() == '/') folder.remove_suffix(1);
    return std::string(folder);
}

std::string FromEnvironment() {
    const char *env = std::getenv("VITRAIL_RESOURCES");
    if (env && std::string_view(env).size() <= kMaxFolder) return Normalised(env);
    return {};
}

std::string &Folder() {
    static std::string folder = FromEnvironment();
    return folder;
}

bool UsableName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

bool ReadFile(const std::string &path, std::vector<uint8_t> &out) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) return false;
    std::streamoff size = in.tellg();
    if (size < 0 || size > kMaxResource) return false;
    out.resize(size_t(size));
    in.seekg(0);
    return bool(in.read(reinterpret_cast<char *>(out.data()), size));
}

} // namespace

const std::string &ResourcesFolder() {
    return Folder();
}

void SetResourcesFolder(std::string_view folder) {
    Folder() = folder.empty() ? FromEnvironment() : Normalised(folder);
}

std::string ResourceFile(std::string_view type, std::string_view name) {
    if (Folder().empty() || !UsableName(name) || !UsableName(type)) return {};
    return Folder() + "/" + std::string(type) + "/" + MacRomanToUtf8(name) +
           std::string(ExtensionOf(type));
}

Handle GetNamedResource(std::string_view type, ConstStr255Param name) {
    if (!name) return nullptr;
    std::string_view n(reinterpret_cast<const char *>(name + 1), name[0]);
    std::string path = ResourceFile(type, n);
    if (path.empty()) return nullptr;
    try {
        auto resource = std::make_unique<ResourceRecord>();
        if (!ReadFile(path, resource->data)) return nullptr;
        resource->type = std::string(type);
        resource->name = std::string(n);
        return resource.release();
    } catch (...) {
        return nullptr;
    }
}

void ReleaseResource(Handle resource) {
    delete resource;
}

} // namespace platform

extern "C" {

VITRAIL_API int32_t vitrail_set_resources_folder(const char *folder) {
    std::string_view f = folder ? folder : "";
    if (f.size() > platform::kMaxFolder) return -1;
    try {
        platform::SetResourcesFolder(f);
    } catch (...) {
        return -1;
    }
    return 0;
}

VITRAIL_API const char *vitrail_resources_folder(void) {
    return platform::ResourcesFolder().c_str();
}

} // extern "C"
