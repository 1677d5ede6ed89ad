// The system version query and its test override.
#include "platform/toolbox/gestalt.h"

namespace platform {
namespace {

struct SystemVersion {
    int32_t version = kDefaultSystemVersion;
    OSErr result = noErr;
};

SystemVersion &Current() {
    static SystemVersion current;
    return current;
}

} // namespace

OSErr Gestalt(OSType selector, int32_t *response) {
    if (selector != gestaltSystemVersion || !response) return gestaltUndefSelectorErr;
    if (Current().result != noErr) return Current().result;
    *response = Current().version;
    return noErr;
}

void SetSystemVersionForTesting(int32_t version, OSErr result) {
    Current() = SystemVersion{version, result};
}

void ResetSystemVersionForTesting() {
    Current() = SystemVersion{};
}

} // namespace platform
