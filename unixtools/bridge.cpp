// The system version test and run-time loading of framework bundles.
//
//   Loader                      Domain               Folder type
//   LoadFrameworkBundleSystem   kOnAppropriateDisk   frameworks ("fram")
//   LoadFrameworkBundle         kLocalDomain         frameworks ("fram")
#include <vitrail/unixtools.h>

#include "unixtools/shell.h"

#include "platform/toolbox/bundles.h"
#include "platform/toolbox/gestalt.h"

namespace {

using namespace platform;

// Finds the frameworks folder of `domain` and loads `name` from it. Answers
// 0 with *bundle loaded, or the folder error or -4960 with *bundle null and
// everything made on the way released.
OSStatus LoadFrom(int16_t domain, CFStringRef name, CFBundleRef *bundle) {
    if (!bundle) return coreFoundationUnknownErr;
    *bundle = nullptr;
    FSRef folder;
    if (OSErr err = FSFindFolder(domain, kFrameworksFolderType, kCreateFolder, &folder)) return err;
    OSStatus result = coreFoundationUnknownErr;
    CFURLRef folderUrl = CFURLCreateFromFSRef(kCFAllocatorSystemDefault, &folder);
    CFURLRef bundleUrl = folderUrl ? CFURLCreateCopyAppendingPathComponent(
                                         kCFAllocatorSystemDefault, folderUrl, name, false)
                                   : nullptr;
    if (bundleUrl) *bundle = CFBundleCreate(kCFAllocatorSystemDefault, bundleUrl);
    if (*bundle && CFBundleLoadExecutable(*bundle)) {
        result = noErr;
    } else if (*bundle) {
        CFRelease(*bundle);
        *bundle = nullptr;
    }
    CFRelease(bundleUrl);
    CFRelease(folderUrl);
    return result;
}

} // namespace

extern "C" {

VITRAIL_API int32_t MACOSVersion(void) {
    int32_t response = 0;
    return Gestalt(gestaltSystemVersion, &response) == noErr ? response : 0;
}

VITRAIL_API Boolean RunningOnCarbonX(void) {
    int32_t response = 0;
    return Gestalt(gestaltSystemVersion, &response) == noErr && response > 0xFFF;
}

VITRAIL_API OSStatus LoadFrameworkBundleSystem(CFStringRef frameworkName, CFBundleRef *bundle) {
    return unixtools::NoThrow<OSStatus>(coreFoundationUnknownErr, [&] {
        return LoadFrom(kOnAppropriateDisk, frameworkName, bundle);
    });
}

VITRAIL_API OSStatus LoadFrameworkBundle(CFStringRef frameworkName, CFBundleRef *bundle) {
    return unixtools::NoThrow<OSStatus>(
        coreFoundationUnknownErr, [&] { return LoadFrom(kLocalDomain, frameworkName, bundle); });
}

VITRAIL_API CFStringRef vitrail_cf_string(const char *text) {
    return CFStringCreateWithCString(kCFAllocatorSystemDefault, text, kCFStringEncodingMacRoman);
}

VITRAIL_API void vitrail_cf_release(const void *object) {
    CFRelease(object);
}

VITRAIL_API void *vitrail_bundle_function(CFBundleRef bundle, const char *name) {
    CFStringRef cfName = vitrail_cf_string(name);
    void *function = CFBundleGetFunctionPointerForName(bundle, cfName);
    CFRelease(cfName);
    return function;
}

} // extern "C"
