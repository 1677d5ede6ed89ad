/*
 * vitrail — numbers and dates: integer and real number text coding, fixed-width
 * numeric fields, French dates and times.
 *
 *   Form            Layout                          Example
 *   integer text    [blanks][+|-]digits[blanks]     "  -42 "
 *   real text       [+|-]int[.|,frac][e|E exp]      "12,5"  "1.5e2"
 *   NUM field       fixed width, "0"-padded, no     "00042"  "0012.50"
 *                   terminator
 *   date integer    YYYYMMDD                        20240229
 *   time integer    HHMM                            1730
 *   display date    DD/MM/YYYY or DD/MM/YY          "29/02/2024"
 *   stored date     YYYYMMDD[HHMM[SS]]              "20240229173005"
 *
 * Text coding routines answer 0 on success and a small positive code per
 * failure; readers never store a value on failure (the NUM readers store 0).
 */
#ifndef VITRAIL_NUMDATE_H
#define VITRAIL_NUMDATE_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- Integer text coding ------------------------------------------------ */

/* Reads a decimal integer from ASCII text (a byte of 0x80 and above is not a
 * digit: code 3). The text is trimmed of blanks in place whatever the
 * outcome. Returns 0 and stores the value, or: 1 empty or blanks only,
 * 2 only a sign, 3 a byte after the sign that is not a digit, 4 magnitude
 * above 2147483647 (so -2147483648 is refused). Leading zeros are allowed in
 * any number; the magnitude is computed exactly. A null text gives 1; a null
 * value address gives the code without storing anything. */
VITRAIL_API int32_t intcod_l(char *text, int32_t *value);

/* As intcod_l with the range -32767..32767 (magnitude above 32767 gives 4). */
VITRAIL_API int32_t intcod_i(char *text, int32_t *value);

/* Writes value in decimal ASCII ("-" and digits, "0" for zero) into buf of
 * size bytes (terminator included). Returns 0; 1 when the text fits but size
 * is below 12 (a buffer too small for every value); 2 when it does not fit
 * (buf then holds its last size - 1 digits, without the "-": not a result). -2147483648 is written in full
 * ("-2147483648"). A null buf or a size below 1 gives 2 and writes nothing. */
VITRAIL_API int32_t intdco_l(int32_t value, char *buf, int32_t size);

/* As intdco_l; result 1 when size is below 7. Any 32-bit value is written. */
VITRAIL_API int32_t intdco_i(int32_t value, char *buf, int32_t size);

/* ---- Real number text coding -------------------------------------------- */

/* Reads a real number from ASCII text: blanks, sign, integer digits, "." or
 * "," and fraction digits, "e"/"E" and an exponent as intcod_l reads it
 * (the first "e", else the first "E"; the first ".", else the first ",",
 * counting only before the exponent). The text is trimmed in place (and so
 * is the exponent after its marker). Returns 0 and stores the value, or 1 empty, 2 only a sign, 3 bad
 * integer digit, 4 bad fraction digit, 5..8 the exponent's intcod_l code + 4.
 * The value is the double nearest to the decimal number ("0.3" reads as the
 * literal 0.3). No range check: beyond the double range the result is an
 * infinity or zero. Any number of leading zeros is accepted. Null text gives
 * 1; a null value address gives the code without storing. */
VITRAIL_API int32_t realcod_d(char *text, double *value);

/* As realcod_d, storing the double value converted to single precision
 * (beyond the single range: an infinity of the value's sign). */
VITRAIL_API int32_t realcod_f(char *text, float *value);

/* Writes value with exactly decimals fraction digits, "." as the point. The
 * shortest decimal text that reads back as the value is rounded half away
 * from zero (2.675 gives "2.68", 1.0625 with 3 decimals "1.063", 9.995 with 2
 * "10.00"); a negative value that rounds to zero keeps its "-" ("-0.00").
 * Returns 0; 1 when it fits but size is 20 or less; 2 when it does not fit
 * (buf then holds its first size - 1 bytes, or nothing when decimals alone
 * exceed the buffer). A negative decimals count is taken as 0 (no point). A
 * non-finite value (NaN, infinity) is not written: buf is left empty and the
 * result is 2. A null buf or a size below 1 gives 2 and writes nothing. */
VITRAIL_API int32_t realdco_d(double value, char *buf, int32_t size, int32_t decimals);

/* Writes value in scientific form with digits digits after the point
 * ("1.234e4", "1.23e-3", "5.00"); 0.0 gives "0". The digits are those of the
 * shortest decimal text that reads back as the value (so 0.00123 gives
 * "1.23e-3", not the "1.22" of its binary expansion), cut, not rounded, and
 * padded with "0". Returns 0, or 2 when the text does not fit (buf then holds
 * its first size - 1 bytes; a cut exponent is never a success). digits below
 * 0 is taken as 0. Non-finite values, a null buf or a size below 1 give 2
 * (buf left empty when it exists). */
VITRAIL_API int32_t realdco_sd(double value, char *buf, int32_t size, int32_t digits);

/* Splits *value into its integer part (truncated toward zero) and fraction,
 * both with the value's sign, exactly. Returns the integer part as a 32-bit
 * integer, saturated to INT32_MIN/INT32_MAX when it does not fit, 0 for NaN.
 * An infinity gives itself and a zero fraction; NaN gives NaN in both. Null
 * addresses: nothing is read or written, the result is 0. */
VITRAIL_API int32_t utrealds(const double *value, double *intpart, double *fraction);

/* As utrealds in single precision, without a result. */
VITRAIL_API void utrealfs(const float *value, float *intpart, float *fraction);

/* ---- Fixed-width numeric fields (NUM) ---------------------------------- */

/* Writes value right-aligned in width bytes padded with "0" (no terminator).
 * Returns 0, or 11 when the text is longer than width (or width < 1 or field
 * is null); the field is then untouched. A negative value keeps its "-" after
 * the padding ("00-42"). */
VITRAIL_API int32_t LongToNUM(int32_t value, char *field, int32_t width);

/* As LongToNUM, the text made by intdco_i. */
VITRAIL_API int32_t IntToNUM(int32_t value, char *field, int32_t width);

/* Reads len bytes as an integer text. Returns 0 and stores the value, 11 when
 * len is outside 0..11, 12 when the value is negative, or intcod_l's code.
 * On any failure *result is 0. A null field gives 11. */
VITRAIL_API int32_t NUMToLong(const char *field, int32_t len, int32_t *result);

/* As NUMToLong, read with intcod_i (magnitude at most 32767). */
VITRAIL_API int32_t NUMToInt(const char *field, int32_t len, int32_t *result);

/* As NUMToLong after dropping a trailing "%" and the blanks around it; the
 * value is not divided by 100 ("15 %" gives 15). */
VITRAIL_API int32_t NUMP100ToLong(const char *field, int32_t len, int32_t *result);

/* Reads an interval "[low, high]" (separator ",", "-" or ";", brackets and
 * blanks optional). Returns the sum of the two NUMToLong codes; a text
 * without separator gives high = 0 and code 11 for it. A negative len gives
 * 0 in both and 22. */
VITRAIL_API int32_t NUMPInterToLong(const char *field, int32_t len, int32_t *low, int32_t *high);

/* Writes value with decimals fraction digits (realdco_d) right-aligned and
 * "0"-padded in width bytes. Returns 0, 2 when the text does not fit a
 * 20-byte work area, 11 when it is longer than width; the field is untouched
 * on failure. */
VITRAIL_API int32_t DoubleToNUMD(double value, char *field, int32_t width, int32_t decimals);

/* Reads len bytes as a real number; a trailing "%" (blanks before it
 * allowed) divides the value by 100. Returns 0, 11 when the length left is
 * outside 0..19, 12 when negative, or realcod_d's code; *result is 0.0 on
 * any failure. A null field gives 11. */
VITRAIL_API int32_t NUMDToDouble(const char *field, int32_t len, double *result);

/* Number of items of the item list (separators "+", ",", "-") when every
 * item reads with NUMToLong, else 0 (an empty list is one empty item: 0). A
 * null list gives 0. Items longer than 11 bytes fail. */
VITRAIL_API int32_t Teste_NUM_liste(const char *list);

/* Value of item index of the list, 0 when that item or one before it does
 * not read; an index beyond the last item gives the last item's value, a
 * negative index or a null list gives 0. */
VITRAIL_API int32_t Get_NUM_liste(const char *list, int32_t index);

/* ---- Dates -------------------------------------------------------------- */

/* Origin year for widening two-digit years: yy < a_org - 1900 (compared
 * without sign) gives 20yy, else 19yy. 1950 at load. */
VITRAIL_API extern int32_t a_org;

/* 1 if year is a Gregorian leap year, else 0 (any signed year). */
VITRAIL_API int32_t utdately(int32_t year);

/* Days in month of year (28..31); 0 for a month outside 1..12. */
VITRAIL_API int32_t utdatedm(int32_t year, int32_t month);

/* ---- French month and day names -------------------------------------------
 *
 * The names and abbreviations below are code page 850 bytes, not Windows
 * ones: e acute is the byte 0x82 ("F\x82vrier", "D\x82cembre", "Ill\x82gal",
 * "F\x82V"); every other byte is ASCII. A host that draws or stores a name
 * with the library's Windows-text services (or keeps it beside Windows
 * text) first turns each 0x82 into 0xE9, the Windows e acute; drawn as it
 * is, 0x82 shows another glyph (the C cedilla of Mac OS Roman). The
 * pointers are to constant tables (never null); the abbreviations live in
 * static areas that the next call of the same routine overwrites.
 */

/* French month name ("Janvier".."D\x82cembre"); "Ill\x82gal" for a month
 * outside 1..12. */
VITRAIL_API const char *utdatemy(int32_t month);

/* Three-letter capital abbreviation of the month name ("JAN", "F\x82V",
 * "AOU"): its first three bytes with ASCII letters in capitals, 0x82 kept;
 * "ILL" unless 1..12. */
VITRAIL_API char *utdatemm(int32_t month);

/* French day name, 0 = "Dimanche" .. 6 = "Samedi" (ASCII); "Ill\x82gal"
 * for any other number. */
VITRAIL_API const char *utdatedn(int32_t day_of_week);

/* Three-letter capital abbreviation of the day ("DIM".."SAM"), "ILL"
 * otherwise. */
VITRAIL_API char *utdatedd(int32_t day_of_week);

/* Day of the week of a Gregorian date, 0 = Sunday .. 6 = Saturday. Always in
 * 0..6, for any arguments (out-of-range months and days are counted as the
 * formula extends them). */
VITRAIL_API int32_t utdatedw(int32_t year, int32_t month, int32_t day);

/* 1 if the date integer is a real date of the years 1800..2100, else 0. */
VITRAIL_API int32_t Validate_Date(int32_t date);

/* The date integer n days after date. A day beyond its month's length is
 * carried into the next months. A month outside 1..12 returns date unchanged;
 * a result after the year 9999 gives 0. Fast for any n. */
VITRAIL_API int32_t Get_Date_Incr(int32_t date, uint32_t n);

/* The date integer n days before date. A month outside 1..12 returns date
 * unchanged; a result before the year 0 gives 0. Fast for any n. */
VITRAIL_API int32_t Get_Date_Diff(int32_t date, uint32_t n);

/* Minutes from the start of the origin year to date (YYYYMMDD) at time
 * (HHMM), counting the day of the month itself: 1 January of origin at 00:00
 * gives 1440. Years before origin add nothing. A result beyond 32 bits is
 * saturated to INT32_MIN/INT32_MAX. */
VITRAIL_API int32_t Min_depuis_org(int32_t date, int32_t time, int32_t origin);

/* The conversions below copy fixed byte positions of their source (ASCII
 * digits expected) into a terminated text in dst (sizes: 9, 13 or 15 bytes
 * for stored forms, 9 or 11 for display dates, 20 for date and time). They
 * never check their input: a source shorter than its form reads "0" for the
 * missing bytes (never past its terminator), other bytes are copied as they
 * are, and a two-digit year of non-digits is widened as 10 x (b6 - '0') +
 * (b7 - '0') (still 4 digits). A null dst writes nothing.
 *
 * The int32_t results are always 0: "aa/bb/cc" answers 0 as "01/02/24"
 * does, so 0 never means the date is valid. A host that must know checks
 * the result itself: intcod_l of the stored text answers 0 and
 * Validate_Date of the value answers 1 only for a real date. */

/* "DD/MM/YYYY" -> "YYYYMMDD". */
VITRAIL_API int32_t Qar_Build_Date(const char *src, char *dst);
/* "DD/MM/YY" -> "YYYYMMDD", the year widened with a_org. */
VITRAIL_API int32_t Qar_Build_Date_short(const char *src, char *dst);
/* "DD/MM/YY", "HH:MM" -> "YYYYMMDDHHMM". */
VITRAIL_API int32_t Qar_Build_Date_long(const char *src, const char *time, char *dst);
/* "DD/MM/YY", "HH:MM:SS" -> "YYYYMMDDHHMMSS". */
VITRAIL_API int32_t Qar_Build_Date_slong(const char *src, const char *time, char *dst);
/* "DD/MM/YYYY" (exactly 10 bytes) or "DD/MM/YY" -> "YYYYMMDD0000". */
VITRAIL_API int32_t Qar_Build_Date_Qa(const char *src, char *dst);
/* "YYYYMMDD" -> "DD/MM/YYYY". */
VITRAIL_API int32_t Qar_Inv_Date(const char *src, char *dst);
/* "YYYYMMDD" -> "DD/MM/YY"; returns dst. */
VITRAIL_API char *Qar_Inv_Date_2(const char *src, char *dst);
/* "YYYYMMDDHHMMSS" -> "DD/MM/YYYY HH:MM:SS"; returns dst. */
VITRAIL_API char *Qar_Inv_Date_Time(const char *src, char *dst);
/* "DD/MM/YYYY" (exactly 10 bytes) or "DD/MM/YY" -> "DD/MM/YY". */
VITRAIL_API int32_t Qar_Reduc_Date(const char *src, char *dst);

/* The local date "YYYYMMDD" (9 bytes); returns 0 (null dst: nothing). */
VITRAIL_API int32_t Qar_Get_Date_short(char *dst);
/* The local date and time "YYYYMMDDHHMM" (13 bytes); returns 0. */
VITRAIL_API int32_t Qar_Get_Date_long(char *dst);
/* The local date and time "YYYYMMDDHHMMSS" (15 bytes); returns 0. */
VITRAIL_API int32_t Qar_Get_Date_slong(char *dst);

VITRAIL_END_DECLS

#endif
