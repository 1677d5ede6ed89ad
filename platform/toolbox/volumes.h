// The volumes root: the Unix folder under which a Mac volume name is a
// folder. Every path converter and the file manager go through it.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The root in force, without a trailing "/" ("/Volumes" by default).
const std::string &VolumesRoot();

// Sets the root; empty goes back to the environment or the default.
void SetVolumesRoot(std::string_view folder);

} // namespace platform
