/*
 * vitrail — strings and lists: zero-terminated and counted string helpers,
 * item lists, conversion between the Windows and Mac OS Roman character sets.
 *
 *   Data              Form                                     Routines
 *   string            8-bit bytes up to a zero terminator      ch*, strupr
 *   counted field     pointer + byte length (uint32_t),        sz*
 *                     no terminator, any byte
 *   growable buffer   malloc'd pointer + capacity, caller-kept szcopyex
 *   item list         items separated by "+", "," or "-"       Teste_*, Get_item_liste
 *
 * A blank is the space 0x20 only. Positions are 0-based; a failed search
 * gives -1. Destination sizes count the terminator where one is written.
 * Bytes compare as raw values; only strupr knows a character set.
 * A null string pointer is read as an empty string and never written.
 */
#ifndef VITRAIL_STRINGS_H
#define VITRAIL_STRINGS_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- zero-terminated strings ------------------------------------------- */

/* Removes trailing blanks in place; returns the new length (0 for null). */
VITRAIL_API int32_t chelibl_f(char *s);

/* Removes leading blanks, moving the rest to the front; returns the new
 * length (the unchanged length when there was no leading blank; 0 for
 * null). */
VITRAIL_API int32_t chelibl_d(char *s);

/* Removes trailing bytes equal to c; returns the new length. c = 0 removes
 * nothing. */
VITRAIL_API int32_t chelicar_f(char *s, char c);

/* Removes leading bytes equal to c; returns the new length. c = 0 removes
 * nothing. */
VITRAIL_API int32_t chelicar_d(char *s, char c);

/* Compares byte by byte up to the first difference or the common terminator.
 * Returns 0 when equal, else a[i] - b[i] of the first differing bytes, each
 * read as a signed 8-bit value (so 0xE9 counts as -23). */
VITRAIL_API int32_t chcomp(const char *a, const char *b);

/* Position of the first occurrence of pattern in s, or -1. An empty pattern
 * is found at 0 in a non-empty s and not at all in an empty s. */
VITRAIL_API int32_t chcher(const char *pattern, const char *s);

/* Position of the first byte equal to c in s, or -1. The terminator (c = 0)
 * is never found. */
VITRAIL_API int32_t chcher_c(char c, const char *s);

/* Deletes count bytes at pos. With len the length of s: nothing happens when
 * len is 0 or count is below 1 or above len; a negative pos becomes 0 and a
 * pos at or past the end becomes len - 1; a count running past the end is cut
 * at the end. */
VITRAIL_API void chdelch(char *s, int32_t count, int32_t pos);

/* Inserts ins into dst (of size bytes) at pos; returns the number of bytes
 * inserted. When the result would need more than size - 1 bytes (any size
 * below 1 included) it returns 0 and dst is unchanged. A negative pos inserts
 * at the front, a pos at or past the end appends. ins may lie anywhere in
 * dst's buffer: inside the string or past its terminator (it is read before
 * anything moves). A null ins inserts nothing (0). */
VITRAIL_API int32_t chinsch(char *dst, int32_t size, const char *ins, int32_t pos);

/* Inserts the byte c into dst (of size bytes) at pos, positions clamped as
 * chinsch does; returns 1, or 0 with dst unchanged when it does not fit.
 * c = 0 (a terminator) is not inserted: the result is 0. */
VITRAIL_API int32_t chinsch_c(char *dst, int32_t size, char c, int32_t pos);

/* Converts s to capitals in place, reading it as Mac OS Roman: letters
 * become capitals and accented letters lose their marks (e acute and E acute
 * -> E, c cedilla -> C, y diaeresis -> Y, dotless i -> I); ae, o slash and oe
 * become their capitals. Letters whose capital is not a byte of the set stay
 * as they are: sharp s, the fi and fl ligatures, f with hook, micro sign, pi.
 * Other bytes are unchanged. Works 255 bytes at a time. Returns s (a null s
 * is returned as is). */
VITRAIL_API char *strupr(char *s);

/* ---- counted fields ------------------------------------------------------ */

/* Replaces each blank among the first n bytes by "0". Returns 1. */
VITRAIL_API int32_t szcnum(char *field, uint32_t n);

/* Copies min(n, size) bytes of src to dst, no terminator. Returns 1 when all
 * n bytes were copied (n <= size), else 0. Overlapping areas are copied
 * correctly. A null dst or src copies nothing (result 1 only for n = 0). */
VITRAIL_API int32_t szcopy(char *dst, uint32_t size, const char *src, uint32_t n);

/* As szcopy, for areas known to overlap. */
VITRAIL_API int32_t szcopy_overlap(char *dst, uint32_t size, const char *src, uint32_t n);

/* 1 when la = lb and the bytes are equal, else 0. Two empty fields are
 * equal. */
VITRAIL_API int32_t szcomp(const char *a, uint32_t la, const char *b, uint32_t lb);

/* As szcomp, where "?" on either side matches any one byte. Two empty fields
 * are equal. */
VITRAIL_API int32_t szcompex(const char *a, uint32_t la, const char *b, uint32_t lb);

/* As szcompex, where a trailing "*" on either side also matches any rest
 * (including none): "AB*" matches "AB", "ABC", "ABCD"; two fields ending in
 * "*" match when their common stem does. A field that is only "*" matches
 * every field, the empty one included; two empty fields match. */
VITRAIL_API int32_t szcompex2(const char *a, uint32_t la, const char *b, uint32_t lb);

/* 1 when the la bytes of a occur anywhere in the lb bytes of b, else 0. An
 * empty a (la = 0) is contained in every b. */
VITRAIL_API int32_t szincl(const char *a, uint32_t la, const char *b, uint32_t lb);

/* Copies n bytes of src to dst and terminates. Returns 1, or 0 when dst is
 * too small: it then holds the first size - 1 bytes and a terminator. Size 0
 * writes nothing and returns 0. Reads only the n bytes of src; a null src
 * leaves dst empty (result 1 only for n = 0). */
VITRAIL_API int32_t szcopy_0t(char *dst, uint32_t size, const char *src, uint32_t n);

/* Appends n bytes of src to the string in dst and terminates. Returns 1, or
 * 0 when truncated: dst is then cut at size - 1 bytes. A dst with no
 * terminator within size receives nothing and is cut at size - 1. Size 0
 * writes nothing and returns 0. */
VITRAIL_API int32_t szconcat_0t(char *dst, uint32_t size, const char *src, uint32_t n);

/* Stores size bytes of src at offset in a growable buffer (*buf, of *cap
 * bytes, from malloc; the caller starts with NULL and 0 and frees it).
 * When it fits, the bytes are copied. Otherwise, at offset 0, the buffer is
 * replaced by one of exactly size bytes (earlier contents discarded); at
 * another offset, by one of 2 x (cap + size) bytes keeping the first offset
 * bytes. Returns 1, or 0 when the allocation fails, the new capacity would
 * pass 4 GiB, offset is beyond *cap, or an argument is null: the buffer, its
 * capacity and its contents are then unchanged. */
VITRAIL_API int32_t szcopyex(char **buf, uint32_t *cap, uint32_t offset, const char *src,
                             uint32_t size);

/* ---- item lists ------------------------------------------------------------
 *
 *   Form      items separated by any of "+", "," and "-": "12,15+20", "A-B"
 *   Items     taken exactly (blanks kept, no escape), numbered from 0;
 *             adjacent separators delimit an empty item, "" is one empty item
 *   Length    a string ends at its terminator; Teste_item_szliste's list ends
 *             after its given length (a zero byte inside it is ordinary)
 */

/* Number of items: the number of separator bytes + 1. */
VITRAIL_API int32_t Teste_liste(const char *list);

/* 1 when some item of list has exactly the n bytes of item (no terminator
 * needed), else 0. n = 0 asks for an empty item; a negative n gives 0. */
VITRAIL_API int32_t Teste_item_liste(const char *list, const char *item, int32_t n);

/* As Teste_item_liste, for a list of len bytes. A negative len gives 0; len
 * = 0 is the list of one empty item. */
VITRAIL_API int32_t Teste_item_szliste(const char *list, int32_t len, const char *item, int32_t n);

/* Item number index of list, in a 64-byte static area that every call
 * overwrites: at most its first 63 bytes and a terminator. Null when there is
 * no such item (a negative index, or one at or past the number of items). */
VITRAIL_API char *Get_item_liste(const char *list, int32_t index);

/* ---- Windows <-> Mac OS Roman ----------------------------------------------
 *
 *   Letter   Windows   Mac OS Roman   w2mstr   m2wstr
 *   deg      0xB0      0xA1           yes      yes
 *   a grave  0xE0      0x88           yes      yes
 *   c ced.   0xE7      0x8D           yes      yes
 *   e grave  0xE8      0x8F           yes      yes
 *   e acute  0xE9      0x8E           yes      yes
 *   e circ.  0xEA      0x90           yes      no
 *   i diaer. 0xEF      0x95           yes      no
 *
 * Both convert in place, each byte once; every other byte (all of 0x00-0x7F
 * among them) is left as it is and the length never changes. A null s is
 * ignored. Only these French letters are converted: any other byte of
 * 0x80 and above keeps its value and so shows the other set's glyph for it
 * (the Windows euro 0x80 is drawn as the Mac OS Roman A diaeresis, the
 * Mac OS Roman e circumflex 0x90 reaches Windows unchanged).
 */

/* Windows to Mac OS Roman, before a text reaches the platform. */
VITRAIL_API void w2mstr(char *s);

/* Mac OS Roman to Windows, for texts read back from the platform. */
VITRAIL_API void m2wstr(char *s);

/* ==== Chained-string lists ====
 *
 *   Layout     item bytes, 0x00, item bytes, 0x00, ..., 0x00 (the closing zero)
 *   Example    "a" 0x00 "bc" 0x00 0x00
 *   Empty      0x00 0x00: counts as one empty item
 *
 * An empty item ends the list. Lists live in caller buffers and are changed
 * in place, never grown. A null list or item pointer is ignored (results 0
 * or the pointer given).
 */

/* Makes the string in `buf` (`size` bytes) a one-item list: writes the
 * closing zero after it, or, when the string fills the buffer, zeros at
 * size-1 and size-2. Nothing when size <= 0. */
VITRAIL_API void ChCh_Put_00(char *buf, int32_t size);
/* 1 when `item` is empty or the last item of its list, else 0. */
VITRAIL_API int32_t ChCh_Is_00(const char *item);
/* The next item; `item` itself when it is empty or the last. */
VITRAIL_API char *ChCh_Get_Next_Item(char *item);
/* The number of items (1 for the empty list). */
VITRAIL_API int32_t ChCh_Count_Item(const char *list);
/* Replaces every "+" and "," of the string by a zero byte (not "-"); the
 * byte after the terminator must already be zero to close the list. */
VITRAIL_API void ChCh_Cut(char *s);
/* As ChCh_Cut with one separator byte. */
VITRAIL_API void ChCh_Cut_sep(char *s, char sep);
/* Joins the items into one string with "+" between them; the closing zero
 * stays. Nothing for an empty list. */
VITRAIL_API void ChCh_Bind(char *list);
/* As ChCh_Bind with one separator byte. */
VITRAIL_API void ChCh_Bind_sep(char *list, char sep);
/* Removes the first item, moving the rest and the closing zero to the front;
 * the only item removed leaves the empty list. Nothing for an empty list. */
VITRAIL_API void ChCh_Delete_Item(char *list);
/* Tests each item as a file of folder `folder` (a Mac path; "folder:item",
 * or "item" alone when the folder is empty). 1 with *item set to the first
 * item whose file is missing (not a file, or a path beyond 255 bytes), else
 * 0. The empty list is tested as one empty name. */
VITRAIL_API int32_t ChCh_Detect_Missing_File(const char *folder, char *list, char **item);
/* Removes every item whose file is missing, as ChCh_Detect_Missing_File
 * tests them; returns the number of items removed. */
VITRAIL_API int32_t ChCh_Remove_Missing_File(const char *folder, char *list);

VITRAIL_END_DECLS

#endif
