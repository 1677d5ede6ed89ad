// The file handle table over the platform's file manager.
//
//   Data            What it holds
//   DATA_FILE_TAB   5 open-file slots: path, reference number, mode, known length, position
//   DATA_FILE_ID    high-water mark of handles handed out in counting mode (-1 at load)
//
// Sizes and positions are answered from the table. Handles outside 0..4,
// free slots for close, negative counts, offsets and lengths are refused with
// the operation's "nothing done" result; a path too long for its buffer is
// refused like one the platform cannot open.
#include <cstring>

#include <vitrail/files.h>
#include <vitrail/unixtools.h>

#include "files/slots.h"
#include "platform/toolbox/files.h"
#include "platform/toolbox/textutils.h"

namespace {

namespace pf = platform;

constexpr int32_t kFree = files::kFreeSlot;
constexpr size_t kMaxOpenPath = 143;
constexpr size_t kMaxTestPath = 255;
enum : int32_t { kRead = 0, kWrite = 1, kReadWrite = 2 };

DATA_FILE *Slot(int32_t handle) {
    return files::SlotOf(DATA_FILE_TAB, handle);
}

bool CanRead(const DATA_FILE *s) {
    return s && (s->iMode == kRead || s->iMode == kReadWrite);
}

bool CanWrite(const DATA_FILE *s) {
    return s && (s->iMode == kWrite || s->iMode == kReadWrite);
}

// A path that fits `limit` bytes, as a length-prefixed string; false otherwise.
bool ToPascal(const char *path, size_t limit, Str255 out) {
    if (!path || std::strlen(path) > limit) return false;
    pf::c2pstrcpy(out, path);
    return true;
}

// Catalogue attributes of an item: -1 when it cannot be found.
int32_t Attributes(const char *path) {
    Str255 name;
    if (!ToPascal(path, kMaxTestPath, name)) return -1;
    pf::CInfoPBRec pb{};
    pb.ioNamePtr = name;
    return pf::PBGetCatInfoSync(&pb) == pf::noErr ? pb.ioFlAttrib : -1;
}

// Opens a file or folder that this table created to everybody (on Mac OS X).
void OpenToEverybody(const char *path) {
    if (RunningOnCarbonX()) BSDMACchmodrwx(path);
}

// Opens the data fork of `spec` as `mode`; the platform's result.
OSErr OpenFork(const char *path, const pf::FSSpec &spec, int32_t mode, int16_t *ref) {
    if (mode == kReadWrite) return pf::FSpOpenDF(&spec, pf::fsRdWrPerm, ref);
    if (mode == kRead) return pf::FSpOpenDF(&spec, pf::fsRdPerm, ref);
    pf::FSpCreate(&spec, pf::FourCharCode("????"), pf::FourCharCode("TEXT"), pf::smSystemScript);
    OpenToEverybody(path);
    return pf::FSpOpenDF(&spec, pf::fsWrPerm, ref);
}

} // namespace

extern "C" {

VITRAIL_API DATA_FILE DATA_FILE_TAB[5] = {{{0}, 0, kFree, 0, 0},
                                          {{0}, 0, kFree, 0, 0},
                                          {{0}, 0, kFree, 0, 0},
                                          {{0}, 0, kFree, 0, 0},
                                          {{0}, 0, kFree, 0, 0}};
VITRAIL_API int32_t DATA_FILE_ID = -1;

VITRAIL_API int32_t File_Is_Existing(const char *path) {
    int32_t attrib = Attributes(path);
    return attrib >= 0 && !(attrib & pf::kioFlAttribDirMask) ? 1 : 0;
}

VITRAIL_API int32_t Dir_Is_Existing(const char *path) {
    int32_t attrib = Attributes(path);
    return attrib >= 0 && (attrib & pf::kioFlAttribDirMask) ? 1 : 0;
}

VITRAIL_API int32_t MakeDir(const char *path) {
    Str255 name;
    if (!ToPascal(path, kMaxTestPath, name)) return 0;
    pf::FSSpec spec;
    if (pf::FSMakeFSSpec(0, 0, name, &spec) == pf::bdNamErr) return 0;
    int32_t dirID = 0;
    if (pf::FSpDirCreate(&spec, pf::smSystemScript, &dirID) != pf::noErr) return 0;
    OpenToEverybody(path);
    return 1;
}

VITRAIL_API int32_t File_Open(const char *path, int32_t bRead, int32_t bWrite) {
    Str255 name;
    if (!ToPascal(path, kMaxOpenPath, name)) return -2;
    int32_t h = files::ChooseSlot(DATA_FILE_TAB, DATA_FILE_ID);
    if (h < 0) return -1;
    DATA_FILE &s = DATA_FILE_TAB[h];
    s.iMode = kFree;
    s.lPos = 0;
    std::memcpy(s.szName, path, std::strlen(path) + 1);
    pf::FSSpec spec;
    bool specOk = pf::FSMakeFSSpec(0, 0, name, &spec) != pf::bdNamErr;
    if (bRead <= 0 && bWrite <= 0) return -3;
    int32_t mode = bRead > 0 && bWrite > 0 ? kReadWrite : bRead > 0 ? kRead : kWrite;
    int16_t ref = 0;
    if (!specOk || OpenFork(path, spec, mode, &ref) != pf::noErr) return -2;
    s.refNum = ref;
    s.iMode = mode;
    int32_t eof = 0;
    s.lSize = pf::GetEOF(ref, &eof) == pf::noErr ? eof : 0;
    return h;
}

VITRAIL_API int32_t File_Close(int32_t handle) {
    DATA_FILE *s = Slot(handle);
    if (!s || s->iMode == kFree || pf::FSClose(s->refNum) != pf::noErr) return -1;
    s->iMode = kFree;
    s->lPos = 0;
    s->lSize = 0;
    files::LowerMark(handle, DATA_FILE_ID);
    return 0;
}

VITRAIL_API int32_t File_Size(int32_t handle) {
    DATA_FILE *s = Slot(handle);
    return s ? s->lSize : 0;
}

VITRAIL_API int32_t File_GetPos(int32_t handle) {
    DATA_FILE *s = Slot(handle);
    return s ? s->lPos : 0;
}

VITRAIL_API int32_t File_Read(int32_t handle, void *buffer, int32_t count) {
    DATA_FILE *s = Slot(handle);
    if (!CanRead(s) || count < 0) return 0;
    int32_t n = files::ReadCount(count, s->lSize, s->lPos);
    if (n > 0 && pf::FSRead(s->refNum, &n, buffer) != pf::noErr) return -1;
    s->lPos += n;
    return n;
}

VITRAIL_API int32_t File_Re_Read(int32_t handle, void *buffer, int32_t count) {
    DATA_FILE *s = Slot(handle);
    if (!CanRead(s) || count < 0) return 0;
    int32_t n = files::RereadCount(count, s->lPos);
    if (pf::SetFPos(s->refNum, pf::fsFromMark, -n) != pf::noErr) return -1;
    s->lPos -= n;
    if (n > 0 && pf::FSRead(s->refNum, &n, buffer) != pf::noErr) return -1;
    s->lPos += n;
    return n;
}

VITRAIL_API int32_t File_Write(int32_t handle, const void *buffer, int32_t count) {
    DATA_FILE *s = Slot(handle);
    if (!CanWrite(s) || count < 0) return 0;
    int32_t n = count;
    if (n > 0 && pf::FSWrite(s->refNum, &n, buffer) != pf::noErr) return -1;
    s->lPos += count;
    if (s->lPos > s->lSize) s->lSize = s->lPos;
    return count;
}

VITRAIL_API int32_t File_Lseek(int32_t handle, int32_t offset) {
    DATA_FILE *s = Slot(handle);
    if (!s || s->iMode == kFree || offset < 0) return -1;
    if (pf::SetFPos(s->refNum, pf::fsFromStart, offset) != pf::noErr) return -1;
    s->lPos = offset;
    return 0;
}

VITRAIL_API int32_t File_SetEOF(int32_t handle, int32_t length) {
    DATA_FILE *s = Slot(handle);
    if (!s || s->iMode == kFree || length < 0) return -1;
    if (pf::SetEOF(s->refNum, length) != pf::noErr) return -1;
    pf::SetFPos(s->refNum, pf::fsFromStart, length);
    s->lSize = length;
    s->lPos = length;
    return 0;
}

} // extern "C"
