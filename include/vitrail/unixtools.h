/*
 * vitrail — Unix tools and system services: the system version, run-time
 * loading of framework bundles, shell commands run through popen, and Unix
 * folder scans.
 *
 *   Datum                      Width    Meaning
 *   BSDtest                    32-bit   1 when the last BSDtestProcess listing found a line
 *   BSDcr                      32-bit   what the file callback of the last scan answered last
 *   BSDnNbFic                  16-bit   files delivered to the callback in the last scan
 *   BSDDir_ProcessFiles_fPtr   pointer  the file callback of the last scan
 *
 * Command lines run by /bin/sh (every path, name and pattern is wrapped in
 * single quotes; a quote inside one is written '\'' so it never ends the
 * quoting and the text reaches the command intact; a path beginning with
 * "-" is written with "./" before it, so no command reads it as an option):
 *
 *   BSDIsExisting        ls -a '<path>'
 *   BSDRemove            rm -dr '<path>'
 *   BSDRemove_psw        sudo rm -dr '<path>'          (password on standard input)
 *   BSDSCopy, BSDCopy    cp -R '<source>' '<folder>'
 *   BSDCopy_psw          sudo cp -R '<source>' '<folder>'
 *   BSDkill,             ps -x -c | grep -F -e '<name>'
 *   BSDtestProcess
 *   BSDprocessf          kill <process number>
 *   BSDopen              xdg-open '<path>'
 *   scans                ls -1F '<folder>/' | grep -i -e '<pattern>'
 *   BSDMACchmodrwx       chmod 0777 '<path>'
 *
 * The process listing matches the name as fixed text (never as a pattern) in
 * the command column of `ps -x -c`, which lists the caller's own processes
 * by command name (the first 15 characters on Linux); "-e" keeps a name or
 * pattern that starts with "-" from being read as an option.
 *
 * Commands, paths, names, patterns and output lines are bytes handed to and
 * taken from the shell as they are, with no character set conversion.
 *
 * Every invoker answers -1 when the system is not Mac OS X class
 * (RunningOnCarbonX false), when "System.framework" or one of its functions
 * cannot be had, or when popen fails; otherwise the shell's wait status.
 */
#ifndef VITRAIL_UNIXTOOLS_H
#define VITRAIL_UNIXTOOLS_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* A line of a command's output (NUL-terminated, without its line feed);
 * answers 0 to go on, anything else to stop. */
typedef int32_t (*BSDLineProcPtr)(const char *line);
/* A bare file name found by a scan; answers 0 to go on, else to stop. */
typedef int32_t (*BSDFileProcPtr)(const char *name);

/* ---- System framework bridge ---- */

/* The system version in binary-coded decimal (0x1045 for 10.4.5), or 0 when
 * the query fails. */
VITRAIL_API int32_t MACOSVersion(void);

/* 1 when the version query succeeds with a value above 0xFFF (Mac OS X or
 * later), else 0. */
VITRAIL_API Boolean RunningOnCarbonX(void);

/* Loads the framework bundle named `frameworkName` ("System.framework")
 * from the system frameworks folder. Answers 0 with *bundle set to a loaded
 * bundle the caller owns (release it with vitrail_cf_release), or an error
 * with *bundle set to null: the folder lookup's error, or -4960 when the
 * bundle cannot be made or loaded (an unknown framework, a null name). A
 * null `bundle` answers -4960 and loads nothing. */
VITRAIL_API OSStatus LoadFrameworkBundleSystem(CFStringRef frameworkName, CFBundleRef *bundle);

/* The same from the local domain's frameworks folder, which holds no
 * framework on this platform: -4960 for every name. */
VITRAIL_API OSStatus LoadFrameworkBundle(CFStringRef frameworkName, CFBundleRef *bundle);

/* ---- Tool invocation ---- */

/* Runs `command` for reading. When `buffer` is not null and `bufferSize` is
 * above 0, reads once up to bufferSize - 1 bytes of output into it and ends
 * them with a NUL (the rest of the output is discarded); a negative size
 * counts as no buffer. A null command answers -1. */
VITRAIL_API int32_t BSDInvokeTool(const char *command, char *buffer, int32_t bufferSize);

/* Runs `command` for writing and writes the bytes of `text` up to its NUL
 * (no line end added; a null text writes nothing). A null command: -1. */
VITRAIL_API int32_t BSDInvokeToolWr(const char *command, const char *text);

/* Runs `command` and hands every output line to `lineCallback`: lines longer
 * than 8192 characters are cut to their first 8192, empty lines come as "",
 * a last line without a line feed comes too; a non-zero answer stops the
 * reading. A null command or callback answers -1. */
VITRAIL_API int32_t BSDInvokeToolPr(const char *command, BSDLineProcPtr lineCallback);

/* ---- File commands (Unix paths) ---- */

/* 1 when `ls -a` prints anything for `path` (it exists), else 0 (also for a
 * null or empty path, or one that cannot be listed). A relative path is
 * taken from the current folder, "-l" as the file named so. */
VITRAIL_API int32_t BSDIsExisting(const char *path);

/* Removes `path` (files and folders, recursively). 0 when it existed and is
 * gone afterwards; -1 for an empty or null path, a missing path, or one that
 * still exists. */
VITRAIL_API int32_t BSDRemove(const char *path);

/* The same under sudo, `password` written to its standard input. */
VITRAIL_API int32_t BSDRemove_psw(const char *path, const char *password);

/* Copies `source` into `folder` (cp -R: the source is never an option, so
 * "-t<dir>" names a file); answers the invoker's result (the shell's wait
 * status), -1 for a null argument; no other checks. */
VITRAIL_API int32_t BSDSCopy(const char *source, const char *folder);

/* Copies `source` into `folder` as <folder>/<last component of source>,
 * removing an old copy first. 0 when the copy exists afterwards, else -1.
 * Refused (-1, nothing removed or run) when either is missing, when the last
 * component of `source` is empty, "." or ".." (a source ending in "/"), or
 * when the target is the source or the folder itself: the destination folder
 * is never removed. */
VITRAIL_API int32_t BSDCopy(const char *source, const char *folder);

/* The same under sudo, `password` written to the commands' standard input. */
VITRAIL_API int32_t BSDCopy_psw(const char *source, const char *folder, const char *password);

/* Sends the termination signal to every process of the caller listed under
 * `name` (see above). Answers the listing's result; -1 for an empty or null
 * name, with nothing run. */
VITRAIL_API int32_t BSDkill(const char *name);

/* Kills the process whose number begins `line` (leading blanks skipped) with
 * "kill <number>". Lines that do not begin with a number, numbers 0 and 1
 * and the calling process itself are left alone. Always answers 0. */
VITRAIL_API int32_t BSDprocessf(const char *line);

/* 1 when the process listing for `name` shows at least one process, else 0
 * (also for an empty or null name). */
VITRAIL_API int32_t BSDtestProcess(const char *name);

/* Sets BSDtest to 1; answers 0. */
VITRAIL_API int32_t BSDprocesst(const char *line);

/* Opens the document or application at `path` with xdg-open; answers the
 * invoker's result (-1 for a null path). */
VITRAIL_API int32_t BSDopen(const char *path);

VITRAIL_API extern int32_t BSDtest;

/* ---- Unix folder scans ---- */

/* Lists the files of `unixFolder` whose names match `pattern` (grep -i, a
 * basic regular expression; "" matches all). Folders are skipped, a final
 * "*" (executable mark) is dropped; other marks of `ls -F` ("@" for a link,
 * "|", "=") stay in the name. A name holding a line feed is left out (the
 * listing shows it as several lines, which are dropped). The folder is read
 * first in-process: when it cannot be read, nothing is run. The first `maxCount` names go into the
 * 256-byte slots of `table` (cut to 255 characters). Only the first
 * maxCount * 256 - 1 bytes of the listing are read (255 when maxCount is 0
 * or negative). Answers the number of names found, which may exceed
 * maxCount; 0 for an empty, null or missing folder or when memory runs out.
 * A null table stores nothing. */
VITRAIL_API int16_t BSDDir_FindFiles(char (*table)[256], const char *unixFolder, int16_t maxCount,
                                     const char *pattern);

/* Hands every matching file name of `unixFolder` (as BSDDir_FindFiles lists
 * them) to `fileCallback` until it answers non-zero. Answers BSDcr, the
 * callback's last answer: 0 for an empty, null or missing folder, a null
 * callback, or when no file matched (the globals then keep their values). */
VITRAIL_API int32_t BSDDir_ProcessFiles(const char *unixFolder, const char *pattern,
                                        BSDFileProcPtr fileCallback);

/* The line handler of BSDDir_ProcessFiles: 0 for a folder line, else calls
 * BSDDir_ProcessFiles_fPtr with the name, counts it in BSDnNbFic and answers
 * BSDcr. 0 when no callback is set. */
VITRAIL_API int32_t BSDDir_ProcessFiles_f(const char *line);

/* Gives read, write and execute permission to everybody on the file or
 * folder at `macPath` (converted with BSDMAC2UNIX). 0 after running chmod,
 * whatever its outcome; -1 when the path does not exist, is null, or its
 * Unix form does not fit in 255 characters. */
VITRAIL_API int32_t BSDMACchmodrwx(const char *macPath);

VITRAIL_API extern BSDFileProcPtr BSDDir_ProcessFiles_fPtr;
VITRAIL_API extern int32_t BSDcr;
VITRAIL_API extern int16_t BSDnNbFic;

/* ---- Host helpers for the bundle loaders ---- */

/* A Core Foundation string holding `text` (null for null), to name a
 * framework or a function; release it with vitrail_cf_release. */
VITRAIL_API CFStringRef vitrail_cf_string(const char *text);

/* Releases a string or bundle made by this library; null is ignored. */
VITRAIL_API void vitrail_cf_release(const void *object);

/* The address of function `name` in a loaded bundle, or null. */
VITRAIL_API void *vitrail_bundle_function(CFBundleRef bundle, const char *name);

VITRAIL_END_DECLS

#endif
