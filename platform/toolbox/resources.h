// Named resources read from the resources folder: a resource of type T
// named N is the file <folder>/T/N<extension of T> (docs/resources.md).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <vitrail/types.h>

namespace platform {

// A loaded resource: its type, its name (Mac OS Roman) and its bytes.
struct ResourceRecord {
    std::string type;
    std::string name;
    std::vector<uint8_t> data;
};
using Handle = ResourceRecord *;

// The folder in force, without a trailing "/"; empty when none is set.
const std::string &ResourcesFolder();

// Sets the folder; empty goes back to VITRAIL_RESOURCES (or no folder).
void SetResourcesFolder(std::string_view folder);

// The file that holds resource `name` (Mac OS Roman) of `type`, or "" when
// no folder is set or the name cannot be a file name ("", ".", "..", "/").
std::string ResourceFile(std::string_view type, std::string_view name);

// Loads the resource of `type` named by the length-prefixed `name`; null
// when there is none (or it is larger than 64 MiB). Release it with
// ReleaseResource.
Handle GetNamedResource(std::string_view type, ConstStr255Param name);

// Frees a resource from GetNamedResource; null is ignored.
void ReleaseResource(Handle resource);

} // namespace platform
