// The file manager over POSIX: FSSpec records, data forks opened by
// reference number, catalogue queries and folder creation.
//
// A full path "Vol:dir:file" (a colon, not first) names
// <volumes root>/Vol/dir/file; any other name is partial, relative to the
// current folder, each further leading colon going up one folder. A "/"
// inside a name becomes ":" on the Unix side. Creator and type codes are not
// kept (Unix files have none).
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include <vitrail/types.h>

namespace platform {

constexpr OSErr noErr = 0;
constexpr OSErr ioErr = -36;
constexpr OSErr bdNamErr = -37;
constexpr OSErr eofErr = -39;
constexpr OSErr posErr = -40;
constexpr OSErr tmfoErr = -42;
constexpr OSErr fnfErr = -43;
constexpr OSErr dupFNErr = -48;
constexpr OSErr paramErr = -50;
constexpr OSErr rfNumErr = -51;
constexpr OSErr permErr = -54;
constexpr OSErr dirNFErr = -120;

enum : int8_t { fsRdPerm = 1, fsWrPerm = 2, fsRdWrPerm = 3 };
enum : int16_t { fsFromStart = 1, fsFromLEOF = 2, fsFromMark = 3 };

using OSType = uint32_t;
using ScriptCode = int16_t;
constexpr ScriptCode smSystemScript = -1;
constexpr uint8_t kioFlAttribDirMask = 0x10;

// Builds an OSType from four characters ('????', 'TEXT').
constexpr OSType FourCharCode(const char (&c)[5]) {
    return OSType(uint8_t(c[0])) << 24 | OSType(uint8_t(c[1])) << 16 | OSType(uint8_t(c[2])) << 8 |
           OSType(uint8_t(c[3]));
}

// An FSSpec record: the Unix path of the item it names.
struct FSSpec {
    int16_t vRefNum;
    int32_t parID;
    std::array<char, 1024> path;
};

// The catalogue query record: name in, attributes out.
struct CInfoPBRec {
    StringPtr ioNamePtr;
    int16_t ioVRefNum;
    int16_t ioFDirIndex;
    int32_t ioDirID;
    uint8_t ioFlAttrib;
    OSErr ioResult;
};

// The Unix path of a Mac path (full or partial, as above).
std::string MacPathToUnixPath(std::string_view macPath);

// Fills `spec` for `name` (volume and folder references are ignored: names
// are resolved as above). noErr when the item exists, fnfErr when only its
// folder exists, dirNFErr otherwise, bdNamErr when the Unix path is too long.
OSErr FSMakeFSSpec(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FSSpec *spec);

// Opens the data fork of an existing file with fsRdPerm, fsWrPerm or
// fsRdWrPerm; the mark starts at 0.
OSErr FSpOpenDF(const FSSpec *spec, int8_t permission, int16_t *refNum);

// Creates an empty file; dupFNErr when the item exists, dirNFErr when its
// folder is missing.
OSErr FSpCreate(const FSSpec *spec, OSType creator, OSType fileType, ScriptCode script);

// Creates a folder; dupFNErr when the item exists.
OSErr FSpDirCreate(const FSSpec *spec, ScriptCode script, int32_t *createdDirID);

// Looks up pb->ioNamePtr (ioFDirIndex 0): ioFlAttrib gets 0x10 for a folder.
OSErr PBGetCatInfoSync(CInfoPBRec *pb);

// Reads *count bytes at the mark; *count becomes the bytes read, eofErr when
// fewer were available.
OSErr FSRead(int16_t refNum, int32_t *count, void *buffer);

// Writes *count bytes at the mark; *count becomes the bytes written.
OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer);

// Moves the mark; eofErr beyond the end, posErr before the start (the mark
// then stays where it was).
OSErr SetFPos(int16_t refNum, int16_t posMode, int32_t posOff);

OSErr GetEOF(int16_t refNum, int32_t *logEOF);

// Sets the file's length; the mark is not moved.
OSErr SetEOF(int16_t refNum, int32_t logEOF);

OSErr FSClose(int16_t refNum);

} // namespace platform
