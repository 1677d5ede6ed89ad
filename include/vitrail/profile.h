/*
 * vitrail — profile (INI) files.
 *
 *   Format (bytes, no character set conversion)
 *   line end        CR; LF bytes are dropped wherever they stand
 *   section header  a line starting "[", the name up to the next "]"
 *   key line        key=value: the key is all before the first "=", no trimming
 *   comparisons     exact, case-sensitive, whole name
 *   written lines   every line the writers emit ends with CR LF
 *
 * File paths are Mac paths, converted with MAC2UNIX when the file is opened.
 */
#ifndef VITRAIL_PROFILE_H
#define VITRAIL_PROFILE_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* Copies the value of `key` in `section` of `file` into `buffer` (`size`
 * bytes, value cut to size - 1) and returns its length; when the file,
 * section or key is missing, copies `defaultValue` instead (cut likewise)
 * and returns its length. Inside the wanted section any "[" ends the
 * section; every occurrence of the section is searched. A null section, key
 * or default counts as "" and as no match; a null buffer or size <= 0
 * returns 0 and writes nothing. */
VITRAIL_API int32_t GetPrivateProfileString(const char *section, const char *key,
                                            const char *defaultValue, char *buffer, int32_t size,
                                            const char *file);

/* The key's value read as a non-negative integer (blanks allowed, at most 11
 * characters); 0 for a negative value or one that is not an integer. The
 * default is returned when the key is missing, 0 when it is negative. */
VITRAIL_API int32_t GetPrivateProfileInt(const char *section, const char *key, int32_t defaultValue,
                                         const char *file);

/* Sets `key` of `section` to `value`, adding the key (after the section's
 * last non-blank line) or the section (at the end, after a blank line) when
 * missing. A null value deletes the key's line; a null key empties the
 * section (as WritePrivateProfileSection with no text). The file is created
 * when missing and rewritten in place with CR LF line ends. Returns 1 when
 * done, or when the file could not be read back (left unchanged); 0 for a
 * null section, a file that cannot be created or rewritten, or memory
 * short (file unchanged). Lines of any length are copied whole. */
VITRAIL_API int32_t WritePrivateProfileString(const char *section, const char *key,
                                              const char *value, const char *file);

/* Replaces the lines of `section` by `text` (written verbatim, then CR LF);
 * a null text leaves only the header line. Adds the section when missing.
 * Results as WritePrivateProfileString. */
VITRAIL_API int32_t WritePrivateProfileSection(const char *section, const char *text,
                                               const char *file);

VITRAIL_END_DECLS

#endif
