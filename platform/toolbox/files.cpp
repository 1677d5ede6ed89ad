// File manager stand-in: Mac paths resolved under the volumes root or the
// current folder, reference numbers that are the POSIX descriptors.
#include "platform/toolbox/files.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/toolbox/volumes.h"

namespace platform {
namespace {

// One Mac name as a Unix name: "/" shows as ":".
std::string UnixName(std::string_view name) {
    std::string out(name);
    for (char &c : out)
        if (c == '/') c = ':';
    return out;
}

std::string CurrentFolder() {
    char buf[PATH_MAX];
    return getcwd(buf, sizeof buf) ? std::string(buf) : std::string(".");
}

// Appends the colon-separated names of `rest` to `base`.
std::string Join(std::string base, std::string_view rest) {
    while (!rest.empty()) {
        size_t colon = rest.find(':');
        std::string_view name = rest.substr(0, colon);
        if (!name.empty()) base += "/" + UnixName(name);
        if (colon == std::string_view::npos) break;
        rest.remove_prefix(colon + 1);
    }
    return base;
}

OSErr FromErrno() {
    switch (errno) {
    case ENOENT:
        return fnfErr;
    case EEXIST:
        return dupFNErr;
    case EACCES:
    case EPERM:
    case EROFS:
        return permErr;
    case EMFILE:
    case ENFILE:
        return tmfoErr;
    case EBADF:
        return rfNumErr;
    default:
        return ioErr;
    }
}

bool Exists(const std::string &path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0;
}

} // namespace

std::string MacPathToUnixPath(std::string_view mac) {
    size_t colon = mac.find(':');
    if (colon != std::string_view::npos && colon > 0)
        return Join(VolumesRoot() + "/" + UnixName(mac.substr(0, colon)), mac.substr(colon + 1));
    std::string base = CurrentFolder();
    if (!mac.empty() && mac[0] == ':') mac.remove_prefix(1);
    while (!mac.empty() && mac[0] == ':') { // each further colon: the parent folder
        size_t slash = base.find_last_of('/');
        base = slash == 0 || slash == std::string::npos ? "/" : base.substr(0, slash);
        mac.remove_prefix(1);
    }
    return Join(base == "/" ? std::string() : base, mac);
}

OSErr FSMakeFSSpec(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FSSpec *spec) {
    if (!spec) return paramErr;
    std::string_view mac = name
                               ? std::string_view(reinterpret_cast<const char *>(name + 1), name[0])
                               : std::string_view();
    std::string path = MacPathToUnixPath(mac);
    if (path.empty()) path = "/";
    if (path.size() >= spec->path.size()) return bdNamErr;
    spec->vRefNum = vRefNum;
    spec->parID = dirID;
    std::memcpy(spec->path.data(), path.c_str(), path.size() + 1);
    if (Exists(path)) return noErr;
    size_t slash = path.find_last_of('/');
    std::string folder = slash == 0 ? "/" : path.substr(0, slash);
    return Exists(folder) ? fnfErr : dirNFErr;
}

OSErr FSpOpenDF(const FSSpec *spec, int8_t permission, int16_t *refNum) {
    if (!spec || !refNum) return paramErr;
    int flags = permission == fsRdPerm ? O_RDONLY : permission == fsWrPerm ? O_WRONLY : O_RDWR;
    struct stat st;
    if (stat(spec->path.data(), &st) != 0) return FromErrno();
    if (S_ISDIR(st.st_mode)) return fnfErr;
    int fd = open(spec->path.data(), flags);
    if (fd < 0) return FromErrno();
    if (fd > INT16_MAX) {
        close(fd);
        return tmfoErr;
    }
    *refNum = int16_t(fd);
    return noErr;
}

OSErr FSpCreate(const FSSpec *spec, OSType, OSType, ScriptCode) {
    if (!spec) return paramErr;
    int fd = open(spec->path.data(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (fd < 0) return errno == ENOENT ? dirNFErr : FromErrno();
    close(fd);
    return noErr;
}

OSErr FSpDirCreate(const FSSpec *spec, ScriptCode, int32_t *createdDirID) {
    if (!spec) return paramErr;
    if (mkdir(spec->path.data(), 0777) != 0) return errno == ENOENT ? dirNFErr : FromErrno();
    if (createdDirID) *createdDirID = 0;
    return noErr;
}

OSErr PBGetCatInfoSync(CInfoPBRec *pb) {
    if (!pb || !pb->ioNamePtr) return paramErr;
    FSSpec spec;
    OSErr err = FSMakeFSSpec(pb->ioVRefNum, pb->ioDirID, pb->ioNamePtr, &spec);
    struct stat st;
    if (err == noErr && stat(spec.path.data(), &st) != 0) err = FromErrno();
    if (err == noErr) pb->ioFlAttrib = S_ISDIR(st.st_mode) ? kioFlAttribDirMask : 0;
    pb->ioResult = err;
    return err;
}

OSErr FSRead(int16_t refNum, int32_t *count, void *buffer) {
    if (!count || *count < 0 || (*count > 0 && !buffer)) return paramErr;
    int32_t want = *count, got = 0;
    while (got < want) {
        ssize_t n = read(refNum, static_cast<char *>(buffer) + got, size_t(want - got));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            *count = got;
            return FromErrno();
        }
        if (n == 0) break;
        got += int32_t(n);
    }
    *count = got;
    return got < want ? eofErr : noErr;
}

OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer) {
    if (!count || *count < 0 || (*count > 0 && !buffer)) return paramErr;
    int32_t want = *count, put = 0;
    while (put < want) {
        ssize_t n = write(refNum, static_cast<const char *>(buffer) + put, size_t(want - put));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            *count = put;
            return n < 0 ? FromErrno() : ioErr;
        }
        put += int32_t(n);
    }
    *count = put;
    return noErr;
}

OSErr SetFPos(int16_t refNum, int16_t posMode, int32_t posOff) {
    struct stat st;
    if (fstat(refNum, &st) != 0) return rfNumErr;
    off_t mark = lseek(refNum, 0, SEEK_CUR);
    if (mark < 0) return FromErrno();
    off_t base = posMode == fsFromStart ? 0 : posMode == fsFromLEOF ? st.st_size : mark;
    off_t target = base + posOff;
    if (target < 0) return posErr;
    if (target > st.st_size) return eofErr;
    return lseek(refNum, target, SEEK_SET) < 0 ? FromErrno() : noErr;
}

OSErr GetEOF(int16_t refNum, int32_t *logEOF) {
    struct stat st;
    if (!logEOF) return paramErr;
    if (fstat(refNum, &st) != 0) return rfNumErr;
    *logEOF = st.st_size > INT32_MAX ? INT32_MAX : int32_t(st.st_size);
    return noErr;
}

OSErr SetEOF(int16_t refNum, int32_t logEOF) {
    if (logEOF < 0) return paramErr;
    return ftruncate(refNum, logEOF) == 0 ? noErr : FromErrno();
}

OSErr FSClose(int16_t refNum) {
    return close(refNum) == 0 ? noErr : rfNumErr;
}

} // namespace platform
