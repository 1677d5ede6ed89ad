// Frameworks folders and bundles over dlopen/dlsym.
//
//   Object      Holds
//   __CFString  the text
//   __CFURL     a Unix path
//   __CFBundle  the bundle's path, its library name, the dlopen handle
#include "platform/toolbox/bundles.h"

#include <array>
#include <dlfcn.h>
#include <gnu/lib-names.h>
#include <new>
#include <string_view>

namespace platform {
namespace {

// Every object starts with one reference and is freed by its last CFRelease.
struct CFObject {
    int refs = 1;
    virtual ~CFObject() = default;
};

struct KnownFramework {
    std::string_view path;
    const char *library;
};

// The frameworks this platform can load, by bundle path.
constexpr std::array<KnownFramework, 1> kFrameworks{{
    {"/System/Library/Frameworks/System.framework", LIBC_SO},
}};

// Makes an object with `make`, or null when memory runs out.
template <typename T, typename F>
T *MakeObject(F &&fill) {
    try {
        T *object = new T;
        fill(*object);
        return object;
    } catch (...) {
        return nullptr;
    }
}

} // namespace
} // namespace platform

struct __CFString : platform::CFObject {
    std::string text;
};
struct __CFURL : platform::CFObject {
    std::string path;
};
struct __CFBundle : platform::CFObject {
    const char *library = nullptr;
    void *handle = nullptr;
    ~__CFBundle() override {
        if (handle) dlclose(handle);
    }
};

namespace platform {

OSErr FSFindFolder(int16_t domain, OSType folderType, Boolean, FSRef *ref) {
    if (!ref || folderType != kFrameworksFolderType) return fnfErr;
    if (domain == kOnAppropriateDisk || domain == kSystemDomain) {
        ref->path = "/System/Library/Frameworks";
    } else if (domain == kLocalDomain) {
        ref->path = "/Library/Frameworks";
    } else {
        return fnfErr;
    }
    return noErr;
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char *text, CFStringEncoding) {
    if (!text) return nullptr;
    return MakeObject<__CFString>([&](__CFString &s) { s.text = text; });
}

const std::string &CFStringText(CFStringRef string) {
    static const std::string empty;
    return string ? string->text : empty;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *ref) {
    if (!ref) return nullptr;
    return MakeObject<__CFURL>([&](__CFURL &u) { u.path = ref->path; });
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component,
                                               Boolean) {
    if (!url || !component) return nullptr;
    return MakeObject<__CFURL>([&](__CFURL &u) { u.path = url->path + "/" + component->text; });
}

CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url) {
    if (!url) return nullptr;
    for (const auto &f : kFrameworks) {
        if (url->path == f.path)
            return MakeObject<__CFBundle>([&](__CFBundle &b) { b.library = f.library; });
    }
    return nullptr;
}

Boolean CFBundleLoadExecutable(CFBundleRef bundle) {
    if (!bundle) return false;
    if (!bundle->handle) bundle->handle = dlopen(bundle->library, RTLD_NOW | RTLD_LOCAL);
    return bundle->handle != nullptr;
}

void *CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name) {
    if (!bundle || !bundle->handle || !name) return nullptr;
    return dlsym(bundle->handle, name->text.c_str());
}

void CFRelease(const void *object) {
    if (!object) return;
    auto *o = static_cast<CFObject *>(const_cast<void *>(object));
    if (--o->refs == 0) delete o;
}

} // namespace platform
