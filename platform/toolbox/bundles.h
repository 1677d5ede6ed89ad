// Frameworks folders and bundles. The frameworks folders are known by path
// only (nothing is created on disk); a bundle is loaded when its path names
// a framework this platform knows: "System.framework" in the system
// frameworks folder is the C library. Core Foundation objects made here are
// released with CFRelease.
//
//   Domain                          Frameworks folder
//   kOnAppropriateDisk, kSystemDomain  /System/Library/Frameworks
//   kLocalDomain                    /Library/Frameworks
#pragma once

#include <cstdint>
#include <string>

#include "platform/toolbox/files.h"

struct __CFURL;

namespace platform {

constexpr OSStatus coreFoundationUnknownErr = -4960;

constexpr int16_t kOnAppropriateDisk = -32767;
constexpr int16_t kSystemDomain = -32766;
constexpr int16_t kLocalDomain = -32765;
constexpr OSType kFrameworksFolderType = FourCharCode("fram");
constexpr Boolean kCreateFolder = 1;

// A folder found by FSFindFolder: its Unix path.
struct FSRef {
    std::string path;
};

// Finds the folder of `folderType` in `domain`. Only the frameworks folder
// is known: any other type or domain, or a null ref, gives fnfErr.
OSErr FSFindFolder(int16_t domain, OSType folderType, Boolean createFolder, FSRef *ref);

using CFAllocatorRef = const void *;
constexpr CFAllocatorRef kCFAllocatorSystemDefault = nullptr;
using CFURLRef = const struct ::__CFURL *;
using CFStringEncoding = uint32_t;
constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;

// A string holding `text` (null for a null text or when memory runs out).
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char *text, CFStringEncoding);
// The text of a string ("" for null).
const std::string &CFStringText(CFStringRef string);

// A URL for the folder of `ref`; null for a null ref.
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *ref);
// `url` with "/" and `component` appended; null when either is null.
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory);

// The bundle at `url`, or null when no known framework lives there.
CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url);
// Loads the bundle's library; false when it cannot be loaded or is null.
Boolean CFBundleLoadExecutable(CFBundleRef bundle);
// The address of function `name` in a loaded bundle, or null.
void *CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name);

// Drops one reference to a string, URL or bundle (a bundle unloads its
// library when freed). Null is ignored.
void CFRelease(const void *object);

} // namespace platform
