/*
 * vitrail — profile (INI) files.
 *
 *   Format (bytes, no character set conversion)
 *   line end        CR; LF bytes are dropped wherever they stand
 *   section header  a line starting "[", the name up to the next "]"
 *   key line        key=value: the key is all before the first "=", no trimming
 *   comparisons     exact, case-sensitive, whole name
 *   written lines   every line the writers emit ends with CR LF
 *   line length     the reader compares the first 1023 bytes of a line
 *
 * File paths are Mac paths, converted with MAC2UNIX when the file is opened.
 * Sections, keys, values and paths are bytes taken and given as they are:
 * a host that keeps its texts in Windows-1252 (as every other text of the
 * library) finds them in the file in Windows-1252; the bytes of a path name
 * the file as they are (ASCII names are the safe choice).
 */
#ifndef VITRAIL_PROFILE_H
#define VITRAIL_PROFILE_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* Copies the value of `key` in `section` of `file` into `buffer` and
 * returns its length; when the file, section or key is missing, copies
 * `defaultValue` instead and returns its length.
 *   section, key   bytes compared exactly; a section may occur several times
 *                  and each occurrence is searched in turn; inside it any "["
 *                  ends it; only the first 1023 bytes of a line are compared
 *   defaultValue   copied first, so it also comes back on any failure
 *   buffer, size   the value (or default) is cut to size - 1 bytes and always
 *                  terminated; a value cut by the end of the file with no
 *                  byte kept counts as missing
 *   file           a Mac path (MAC2UNIX); it must name a regular file: a
 *                  folder, FIFO or device gives the default without waiting
 * Bad input: a null section, key or file gives the default (a null default
 * counts as ""); a null buffer or size <= 0 returns 0 and writes nothing.
 * Every memory file taken (5 open) gives the default. */
VITRAIL_API int32_t GetPrivateProfileString(const char *section, const char *key,
                                            const char *defaultValue, char *buffer, int32_t size,
                                            const char *file);

/* The key's value read as a non-negative integer: blanks around it allowed,
 * at most 11 characters read. 0 for a negative value, one that is not an
 * integer or one above 2147483647. The default when the key or file is
 * missing, 0 when that default is negative. Arguments as above. */
VITRAIL_API int32_t GetPrivateProfileInt(const char *section, const char *key, int32_t defaultValue,
                                         const char *file);

/* Sets `key` of `section` to `value`, adding the key (after the section's
 * last non-blank line, ahead of the "[" that ends the first occurrence) or
 * the section (at the end, after a blank line) when missing; only the first
 * occurrence of the key in the first occurrence of the section changes.
 *   value null   deletes the key's line wherever the reader would find it
 *                (every occurrence of the section)
 *   key null     empties the section, as WritePrivateProfileSection(section,
 *                NULL, file)
 * The whole file is rewritten with CR LF line ends, lines of any length kept
 * whole. It is replaced at once: the new text goes to a temporary file
 * ".vitrail-XXXXXX" in the same folder, flushed to disk and renamed over the
 * old one, with its permissions (a symbolic link is followed); a missing
 * file is created, mode 0777. Writers in several processes take turns
 * through an advisory lock (flock) on the file, so none loses another's
 * change; a crash leaves the old file or the new one, never a mixture.
 * Returns:
 *   1  done; also, with the file left as it was, when the file exists but
 *      cannot be read or no memory file is free: a host that must know tells
 *      these apart by reading the key back with GetPrivateProfileString
 *   0  nothing changed: a null section or file; a path that names no regular
 *      file (a folder, FIFO or device) or that cannot be created; a change
 *      the reader could not read back (a section of 1023 bytes or more, or
 *      with CR or LF; a key longer than 1023 bytes or with CR, LF or "["; a
 *      value with CR or LF; a first occurrence of the section whose header
 *      line holds a "[" after its "]"); a read-only folder, a full disk or
 *      any failed write, flush or rename (the temporary file is removed)
 * Deletions are never refused. */
VITRAIL_API int32_t WritePrivateProfileString(const char *section, const char *key,
                                              const char *value, const char *file);

/* Replaces the lines of the first occurrence of `section` by `text`,
 * written verbatim after the header line and followed by CR LF; the lines
 * up to the next line holding a "[" go, and that line stays. A null text
 * leaves only the header line. Adds the section at the end when missing.
 * Results and the way the file is replaced as WritePrivateProfileString; the
 * change is refused (0) for a section name as there, a text holding a line
 * feed that does not follow a carriage return (the reader would join the
 * lines), or a first occurrence whose header line holds a "[" after its "]"
 * (the reader would never see the text). A "[" in the text ends the section
 * for the reader, as anywhere in the file. */
VITRAIL_API int32_t WritePrivateProfileSection(const char *section, const char *text,
                                               const char *file);

VITRAIL_END_DECLS

#endif
