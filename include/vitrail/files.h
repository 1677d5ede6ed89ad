/*
 * vitrail — file services.
 *
 *   Data            Layout                                         Initial
 *   DATA_FILE_TAB   5 slots: szName[144], refNum, iMode, lSize,     zero-filled, iMode -1
 *                   lPos (handles 0..4)
 *   DATA_FILE_ID    highest handle handed out in counting mode      -1
 *   DATA_MFIL_TAB   5 slots: hMem, lAlloc, iMode, lSize, lPos       zero-filled, iMode -1
 *   DATA_MFIL_ID    highest memory-file handle in counting mode     -1
 *
 * Both tables open a slot by handing out the one above the mark while there
 * is one, then the first free slot; closing the top slot lowers the mark by
 * one. Handles outside 0..4, free slots and negative counts, offsets or
 * lengths are refused with the operation's "nothing done" result (0 for
 * reads, writes and sizes, -1 for seeks and closes, null for pointers).
 *
 * Paths are Mac paths "Vol:dir:file" naming <volumes root>/Vol/dir/file
 * (the volumes root is "/Volumes" unless changed, see platform.h); in the
 * Unix form a "/" inside a Mac name becomes ":". Path bytes are not converted
 * from any character set: a Windows-1252 "\xE9" in a Mac path is the byte
 * 0xE9 in the Unix file name. Names and contents of files are bytes.
 */
#ifndef VITRAIL_FILES_H
#define VITRAIL_FILES_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- POSIX files and path conversion ------------------------------------
 *
 *   Item           What it is
 *   descriptor     the POSIX file descriptor itself (0 or more)
 *   unixPath       a caller buffer of 256 bytes
 *   positions      32-bit signed (larger file offsets are cut to 32 bits)
 *
 * Both converters take the text before the first ":" as the volume name
 * (the whole path when there is no ":") and probe <volumes root>/<volume>:
 *   MAC2UNIX     probe with stat: a regular file there means "no volume" and
 *                gives the path without its volume name, rooted at "/";
 *                anything else gives <root>/<whole path>.
 *   BSDMAC2UNIX  probe with `ls -a`: existing gives <root>/<whole path>,
 *                missing gives the path without its volume, rooted at "/".
 * The result is cut to 255 characters and a NUL (so it always fits the
 * 256-byte buffer). A null macPath gives ""; a null unixPath writes nothing.
 * The functions below that act on a path refuse (-1) a path whose Unix form
 * does not fit, rather than act on a cut one.
 */
VITRAIL_API void MAC2UNIX(const char *macPath, char *unixPath);
VITRAIL_API void BSDMAC2UNIX(const char *macPath, char *unixPath);

/* Opens the file at `macPath` (converted with MAC2UNIX). A flag counts as
 * set when above 0.
 *   both       read and write; the file must exist.
 *   read only  the path must name an existing regular file (the open never
 *              waits: anything else, a FIFO among them, is closed at once
 *              and answers -1).
 *   write only creates the file readable and writable by everybody (mode
 *              0777, set explicitly: the process's creation mask is left
 *              as it was), or empties it when present.
 *   neither    opens nothing and answers -1.
 * Answers the descriptor, or -1. Descriptors are not inherited by the shell
 * commands the library runs. */
VITRAIL_API int32_t xFile_Open(const char *macPath, int32_t bRead, int32_t bWrite);

/* Closes `fd`: 0, or -1 for a descriptor that is not open. */
VITRAIL_API int32_t xFile_Close(int32_t fd);

/* The file's length; the position is then set to the start of the file.
 * -1 when the descriptor cannot seek. */
VITRAIL_API int32_t xFile_Size(int32_t fd);

/* Reads up to `count` bytes: the bytes read, 0 at the end of the file and
 * on any error (also for a null buffer or a count of 0 or less). */
VITRAIL_API int32_t xFile_Read(int32_t fd, void *buffer, int32_t count);

/* Writes `count` bytes: the bytes written, or -1 on error (also for a null
 * buffer or a negative count). */
VITRAIL_API int32_t xFile_Write(int32_t fd, const void *buffer, int32_t count);

/* Moves to `offset` from the start: the new position, or -1 (a negative
 * offset is refused). */
VITRAIL_API int32_t xFile_Lseek(int32_t fd, int32_t offset);

/* The current position, or -1. */
VITRAIL_API int32_t xFile_GetPos(int32_t fd);

/* Sets the file's length to `length` and moves there: 0, or -1 (a negative
 * length is refused and changes nothing). */
VITRAIL_API int32_t xFile_SetEOF(int32_t fd, int32_t length);

/* Removes the file (or empty folder) at `macPath` (converted with
 * BSDMAC2UNIX): 0 or -1. */
VITRAIL_API int32_t MACRemove(const char *macPath);

/* Renames `oldMacPath` to `newMacPath` (both converted with BSDMAC2UNIX):
 * 0 or -1. */
VITRAIL_API int32_t MACRename(const char *oldMacPath, const char *newMacPath);

/* ---- Global memory and memory files ------------------------------------ */

/* A memory handle is the block's address. */
typedef void *HGLOBAL;

/* One memory file: a growable block read and written like a file.
 * iMode: -1 free, 2 open (reads allowed in modes 0 and 2, writes in 1 and 2).
 * Invariants: 0 <= lPos <= lSize <= lAlloc. */
typedef struct DATA_MFIL {
    HGLOBAL hMem;
    int32_t lAlloc;
    int32_t iMode;
    int32_t lSize;
    int32_t lPos;
} DATA_MFIL;

VITRAIL_API extern DATA_MFIL DATA_MFIL_TAB[5];
VITRAIL_API extern int32_t DATA_MFIL_ID;

/* A new block of `size` bytes (not zeroed), or null; a negative size gives
 * null. `flags` is ignored. */
VITRAIL_API HGLOBAL GlobalAlloc(uint32_t flags, int32_t size);
/* The block resized to `size` bytes, contents kept up to the smaller size, or
 * null when it cannot be had (the old block stays valid); a negative size
 * gives null. A null hMem allocates. `flags` is ignored. */
VITRAIL_API HGLOBAL GlobalReAlloc(HGLOBAL hMem, int32_t size, uint32_t flags);
/* Releases the block (null is allowed); returns null. */
VITRAIL_API HGLOBAL GlobalFree(HGLOBAL hMem);
/* The block's address: hMem itself. */
VITRAIL_API void *GlobalLock(HGLOBAL hMem);
/* Returns 0. */
VITRAIL_API int32_t GlobalUnlock(HGLOBAL hMem);

/* Opens an empty memory file of max(size, 4096, minSize) bytes; `name` is
 * ignored. Returns the handle 0..4, -1 when no slot is free or memory is
 * short, -2 when the block cannot be locked. */
VITRAIL_API int32_t MFil_Open(const char *name, int32_t size, int32_t minSize);
/* Frees the slot's block and the slot; returns 0 (also for a handle outside
 * 0..4 or a free slot, which are left alone). */
VITRAIL_API int32_t MFil_Close(int32_t handle);
/* The bytes written so far (the highest position reached); 0 for a handle
 * outside 0..4 (a free slot holds 0). */
VITRAIL_API int32_t MFil_Size(int32_t handle);
/* The position; 0 for a handle outside 0..4. */
VITRAIL_API int32_t MFil_GetPos(int32_t handle);
/* Copies up to `count` bytes from the position, clipped to the size, and
 * moves past them; returns the bytes copied (0 at the end, for a slot not
 * open for reading or a negative count). */
VITRAIL_API int32_t MFil_Read(int32_t handle, void *buffer, int32_t count);
/* Copies again the `count` bytes just before the position (fewer at the
 * start); the position ends where it was. Returns the bytes copied. */
VITRAIL_API int32_t MFil_Re_Read(int32_t handle, void *buffer, int32_t count);
/* Writes `count` bytes at the position, growing the block by at least 4096
 * bytes when needed (the block may move: pointers from MFil_LockPtr are
 * then stale), and moves past them. The source may lie in the file's own
 * block (from MFil_LockPtr, overlapping the target or not): it is read
 * where the block is after growing. Returns `count`; 0 when the block
 * cannot grow (or would pass 2 GiB), for a slot not open for writing, a
 * negative count, or a source inside the block whose `count` bytes run past
 * the block's end. Nothing changes when 0 is returned for a count above 0. */
VITRAIL_API int32_t MFil_Write(int32_t handle, const void *buffer, int32_t count);
/* Moves to `offset` (0..size); returns 0, or -1 out of range or for a
 * handle outside 0..4 or a free slot. */
VITRAIL_API int32_t MFil_Lseek(int32_t handle, int32_t offset);
/* The address of the byte at `offset` (0..size-1) of a slot open for
 * reading, or null (an empty file has none). Valid until the next write
 * that grows the block or the close. */
VITRAIL_API void *MFil_LockPtr(int32_t handle, int32_t offset);
/* Pairs with MFil_LockPtr; returns 0. */
VITRAIL_API int32_t MFil_UnLockPtr(int32_t handle);

/* ---- File handle table --------------------------------------------------- */

/* One open file. iMode: -1 free, 0 reading, 1 writing, 2 reading and writing.
 * lSize and lPos are the length and position as the table knows them. */
typedef struct DATA_FILE {
    char szName[144];
    int16_t refNum;
    int32_t iMode;
    int32_t lSize;
    int32_t lPos;
} DATA_FILE;

VITRAIL_API extern DATA_FILE DATA_FILE_TAB[5];
VITRAIL_API extern int32_t DATA_FILE_ID;

/* 1 when the Mac path names an existing item that is not a folder, else 0
 * (also for a null path or one longer than 255 bytes). */
VITRAIL_API int32_t File_Is_Existing(const char *path);
/* 1 when the Mac path names an existing folder, else 0 (as above). */
VITRAIL_API int32_t Dir_Is_Existing(const char *path);
/* Creates the folder, open to everybody; 1 on success, 0 when it exists or
 * cannot be made (also for a null path or one longer than 255 bytes). */
VITRAIL_API int32_t MakeDir(const char *path);
/* Opens the file for reading (bRead > 0), writing (bWrite > 0, created when
 * missing, never emptied) or both (must exist). Returns the handle 0..4, -1
 * when no slot is free, -2 when the file cannot be opened (also for a null
 * path or one longer than 143 bytes), -3 when neither is asked for. A
 * failed open keeps the mark where choosing the slot put it. */
VITRAIL_API int32_t File_Open(const char *path, int32_t bRead, int32_t bWrite);
/* 0, or -1 when the close fails or the handle is not an open slot. */
VITRAIL_API int32_t File_Close(int32_t handle);
/* The known length and position; 0 for a handle outside 0..4. */
VITRAIL_API int32_t File_Size(int32_t handle);
VITRAIL_API int32_t File_GetPos(int32_t handle);
/* Reads up to `count` bytes, clipped to the known length: the bytes read, 0
 * when not open for reading (or a bad handle or negative count), -1 on error. */
VITRAIL_API int32_t File_Read(int32_t handle, void *buffer, int32_t count);
/* Reads again the `count` bytes before the position (fewer at the start);
 * the position ends where it was. Results as File_Read. */
VITRAIL_API int32_t File_Re_Read(int32_t handle, void *buffer, int32_t count);
/* Writes `count` bytes: `count`, 0 when not open for writing (or a bad
 * handle or negative count), -1 on error. */
VITRAIL_API int32_t File_Write(int32_t handle, const void *buffer, int32_t count);
/* Moves to `offset` from the start (0..length): 0, else -1. */
VITRAIL_API int32_t File_Lseek(int32_t handle, int32_t offset);
/* Sets the file's length; the table's length and position and the file's
 * mark all move to it, as with xFile_SetEOF. 0, else -1 (negative lengths
 * and bad handles refused). */
VITRAIL_API int32_t File_SetEOF(int32_t handle, int32_t length);

/* ---- Directory listing and sorting ------------------------------------- */

/* Lists the files (never folders) of the Mac folder `macFolder` (no final
 * ":") whose names contain the filter: `pattern` without one leading and one
 * trailing "*", matched by grep -i as a basic regular expression ("" matches
 * every name). The first `maxCount` go into the 256-byte slots of `table` as
 * "<macFolder>:<name>" (cut to 255 bytes). Returns the number of matching
 * files, which may exceed maxCount (only the first maxCount * 256 - 1 bytes
 * of the listing are examined); 0 for a missing or null folder. */
VITRAIL_API int16_t Dir_FindFiles(char (*table)[256], const char *macFolder, int16_t maxCount,
                                  const char *pattern);

/* Hands the bare name of every matching file (as Dir_FindFiles) to
 * `fileCallback` until it answers non-zero; returns its last answer, 0 for a
 * missing folder or when no file matched. */
VITRAIL_API int32_t Dir_ProcessFiles(const char *macFolder, const char *pattern,
                                     int32_t (*fileCallback)(const char *name));

/* Sorts the first `count` slots by name (chcomp, ascending) with exchange
 * passes; returns the exchanges made. count < 2 (or a null table) gives 0. */
VITRAIL_API int16_t Dir_SortFiles(char (*table)[256], int16_t count);

/* Sorts the first `count` slots (Mac paths) by file size, largest first,
 * equal sizes keeping their order; a file that cannot be opened counts as
 * empty. At most `count` passes. Returns the exchanges made. */
VITRAIL_API int16_t Dir_SortSizeFiles(char (*table)[256], int16_t count);

VITRAIL_END_DECLS

#endif
