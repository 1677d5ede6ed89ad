/*
 * vitrail — text and drawing: the 16-colour palette, lines, rectangles and
 * named pictures; font, style and colour choice for a port; formatted text
 * output with inline commands, and its measurement.
 *
 *   Datum              Type        At load  Meaning
 *   ch_font_FontName   char[80]    ""       last name given to ch_font_set_ext
 *   char_dy            int16_t     0        ascent + 1 of the chosen font
 *
 * Character sets:
 *   - drawn and measured text (TextOut_*, GetTextExtent_*, ch_font_printstr):
 *     Windows-1252. ASCII and the letters ° à ç è é ê ï are drawn as such;
 *     any other byte above 0x7F is drawn as the Mac OS Roman character of
 *     the same value (the conversion of w2mstr).
 *   - font names (ch_font_set*): ASCII, compared without case with the font
 *     table of docs/drawing.md; other bytes match no font.
 *   - picture names (BMP_affic_*): Mac OS Roman, as resources are named; the
 *     file <resources>/PICT/<name>.png carries the name in UTF-8.
 *
 * Coordinates are local pixels of the port, x to the right and y downwards,
 * used as 16-bit values (sums wrap at 16 bits). A rectangle covers
 * left <= x < right, top <= y < bottom. Text routines take y as the TOP of
 * the text line: the baseline is at y + char_dy.
 *
 * Ports: Line_Ex, LineC_Ex, Rectangle_Ex, BMP_affic_desfond0, ch_font_set*
 * and ch_font_printstr draw in the port they are given and restore the
 * caller's current port. TextOut_0, GetTextExtent_0, TextOut_Ext,
 * GetTextExtent_Ext and ch_font_metrics work in the CURRENT port
 * (vitrail_port_set_current); their port argument is not used for text.
 *
 * Palette (vga_col; red, green, blue as 16-bit components; an index is
 * taken modulo 16):
 *   0 black         0000 0000 0000      8 light grey  C000 C000 C000
 *   1 dark red      8000 0000 0000      9 red         FFFF 0000 0000
 *   2 dark green    0000 8000 0000     10 green       0000 FFFF 0000
 *   3 dark yellow   8000 8000 0000     11 yellow      FFFF FFFF 0000
 *   4 dark blue     0000 0000 8000     12 blue        0000 0000 FFFF
 *   5 dark magenta  8000 0000 8000     13 magenta     FFFF 0000 FFFF
 *   6 dark cyan     0000 8000 8000     14 cyan        0000 FFFF FFFF
 *   7 dark grey     8000 8000 8000     15 white       FFFF FFFF FFFF
 * As a background, 255 means none: text is then drawn transparently (text
 * mode 1); any other index fills the glyph boxes first (text mode 0).
 *
 * Style flags (ch_font_set_ext): 1 bold, 2 underline, 4 italic, 8 condense
 * (1 pixel less per character), 16 extend (1 pixel more); other bits ignored.
 */
#ifndef VITRAIL_DRAW_H
#define VITRAIL_DRAW_H

#include <vitrail/types.h>

/* ---- Formatted text --------------------------------------------------------
 *
 * A formatted text is a byte string with an explicit length (NUL has no
 * special meaning) in which VITRAIL_TX_ESC and a command code start a
 * command; every other byte belongs to a run, drawn as text. A run longer
 * than 255 bytes is neither drawn nor measured; a NUL inside a run ends what
 * is drawn of it.
 *
 * Units: U is the width of "X" in the current font (at least 8 pixels); L is
 * the line height (ascent + descent + leading). Argument bytes are digits:
 * byte = 32 + digit, digit 0..223 (VITRAIL_TX_DIGIT). A horizontal argument
 * counts half units (H = h * U / 2, truncated), a vertical one quarter lines
 * (V = v * L / 4). One-byte forms take h or v up to 223; two-byte forms take
 * a low digit then a high digit, up to 223 + 224 * 223 = 50175. Tab columns
 * are taken modulo 65536.
 *
 *   Code                   Arguments  Effect
 *   VITRAIL_TX_TAB         h          move x forward to column H (never back)
 *   VITRAIL_TX_TAB2        h (2)      the same
 *   VITRAIL_TX_STEP        h          move x to the smallest multiple of H
 *                                     above it (0 from a negative x; no move
 *                                     for H = 0 or beyond 65535)
 *   VITRAIL_TX_STEP2       h (2)      the same
 *   VITRAIL_TX_ALIGN_RIGHT -          the next run ends at x (and x stays)
 *   VITRAIL_TX_ALIGN_OFF   -          cancels a pending right alignment
 *   VITRAIL_TX_SQUARE      -          a U x U square, red (9) framed in
 *                                     black, its top-left U/2 right of and
 *                                     U/2 below the text position; x += 2U
 *   VITRAIL_TX_PICTURE(i)  -          picture i (below) with its top-left at
 *                                     (x, y + 1), natural size; x += 2U
 *   VITRAIL_TX_BULLET      -          picture "puceb", likewise
 *   VITRAIL_TX_PEN         h v        set the pen point to (H, V)
 *   VITRAIL_TX_PEN2        h v (2)    the same (0xD3 and 0xD4 are aliases)
 *   VITRAIL_TX_LINE        h v        black 2 x 2 line from the pen point to
 *                                     (H, V), which becomes the pen point
 *   VITRAIL_TX_LINE2       h v (2)    the same
 *   VITRAIL_TX_FRAME       h v        black 2 x 2 rectangle between the pen
 *                                     point and (H, V); the pen point stays
 *   VITRAIL_TX_FRAME2      h v (2)    the same
 *
 * Pictures by index i of VITRAIL_TX_PICTURE(i), i = 0..13: repferb repouvb
 * repferr repouvr repferv repouvv repferj repouvj repfero repouvo repfebb
 * repfebr repferl repouvl (a missing picture draws nothing and still
 * advances). Any other code is skipped with the VITRAIL_TX_ESC before it.
 *
 * Runs, squares and pictures are placed from the text position (xOrg + x,
 * yOrg + y); pen points, lines and frames from the origin (xOrg, yOrg) alone.
 *
 * Persistence between calls (process-wide, not per port): the pen point;
 * the right alignment of TextOut_Ext, set by ALIGN_RIGHT and cleared by the
 * next run it aligns (so a text ending with ALIGN_RIGHT aligns the first run
 * of the next TextOut_Ext call) or by ALIGN_OFF; and the separate flag of
 * GetTextExtent_Ext, which stays set until ALIGN_OFF (while it is set, runs
 * add no width).
 */
#define VITRAIL_TX_ESC 0xFF
#define VITRAIL_TX_TAB 0x80
#define VITRAIL_TX_STEP 0x81
#define VITRAIL_TX_ALIGN_OFF 0x82
#define VITRAIL_TX_ALIGN_RIGHT 0x83
#define VITRAIL_TX_TAB2 0x85
#define VITRAIL_TX_STEP2 0x86
#define VITRAIL_TX_SQUARE 0x8A
#define VITRAIL_TX_PICTURE(i) (0x94 + (i))
#define VITRAIL_TX_BULLET 0xA8
#define VITRAIL_TX_PEN 0xC8
#define VITRAIL_TX_PEN2 0xC9
#define VITRAIL_TX_LINE 0xCA
#define VITRAIL_TX_LINE2 0xCB
#define VITRAIL_TX_FRAME 0xD5
#define VITRAIL_TX_FRAME2 0xD6

/* The commands without arguments, as string literals to paste into text:
 * "Total" VITRAIL_TXS_ALIGN_RIGHT "12,50". */
#define VITRAIL_TXS_ALIGN_OFF "\xFF\x82"
#define VITRAIL_TXS_ALIGN_RIGHT "\xFF\x83"
#define VITRAIL_TXS_SQUARE "\xFF\x8A"
#define VITRAIL_TXS_BULLET "\xFF\xA8"

/* The argument byte of digit d (0..223); the low and high bytes of a
 * two-byte value v (0..50175). */
#define VITRAIL_TX_DIGIT(d) ((char)(32 + (d)))
#define VITRAIL_TX_LOW(v) VITRAIL_TX_DIGIT((v) % 224)
#define VITRAIL_TX_HIGH(v) VITRAIL_TX_DIGIT((v) / 224)

/* Writers of the commands with arguments: each writes its command at the
 * char pointer p, in the one-byte form when the values fit (below 224) and
 * the two-byte form otherwise, and evaluates to the number of bytes written
 * (3 or 4 for one value, 4 or 6 for two). h counts half units, v quarter
 * lines, both 0..50175; arguments are evaluated more than once.
 *   n += VITRAIL_TX_TAB_TO(buf + n, 48);   tab to column 24U
 */
#define VITRAIL_TX_HEAD_(p, code) ((p)[0] = (char)VITRAIL_TX_ESC, (p)[1] = (char)(code))
#define VITRAIL_TX_SET1_(p, i, d) ((p)[i] = VITRAIL_TX_DIGIT(d))
#define VITRAIL_TX_SET2_(p, i, v) ((p)[i] = VITRAIL_TX_LOW(v), (p)[(i) + 1] = VITRAIL_TX_HIGH(v))
#define VITRAIL_TX_ONE_(p, c1, c2, h)                                                             \
    ((h) < 224 ? (VITRAIL_TX_HEAD_(p, c1), VITRAIL_TX_SET1_(p, 2, h), 3)                          \
               : (VITRAIL_TX_HEAD_(p, c2), VITRAIL_TX_SET2_(p, 2, h), 4))
#define VITRAIL_TX_TWO_(p, c1, c2, h, v)                                                          \
    ((h) < 224 && (v) < 224                                                                       \
         ? (VITRAIL_TX_HEAD_(p, c1), VITRAIL_TX_SET1_(p, 2, h), VITRAIL_TX_SET1_(p, 3, v), 4)     \
         : (VITRAIL_TX_HEAD_(p, c2), VITRAIL_TX_SET2_(p, 2, h), VITRAIL_TX_SET2_(p, 4, v), 6))

#define VITRAIL_TX_TAB_TO(p, h) VITRAIL_TX_ONE_(p, VITRAIL_TX_TAB, VITRAIL_TX_TAB2, h)
#define VITRAIL_TX_STEP_BY(p, h) VITRAIL_TX_ONE_(p, VITRAIL_TX_STEP, VITRAIL_TX_STEP2, h)
#define VITRAIL_TX_PEN_AT(p, h, v) VITRAIL_TX_TWO_(p, VITRAIL_TX_PEN, VITRAIL_TX_PEN2, h, v)
#define VITRAIL_TX_LINE_TO(p, h, v) VITRAIL_TX_TWO_(p, VITRAIL_TX_LINE, VITRAIL_TX_LINE2, h, v)
#define VITRAIL_TX_FRAME_TO(p, h, v) VITRAIL_TX_TWO_(p, VITRAIL_TX_FRAME, VITRAIL_TX_FRAME2, h, v)

VITRAIL_BEGIN_DECLS

VITRAIL_API extern char ch_font_FontName[80];
VITRAIL_API extern int16_t char_dy;

/* ---- Palette, lines, rectangles, pictures --------------------------------- */

/* The palette entry of index modulo 16 (table above), by value. A negative
 * index gives entry 0 (black) rather than reaching outside the table. */
VITRAIL_API RGBColor vga_col(int32_t index);

/* Draws a line from (x1, y1) to (x2, y2) in `port` with a penSize x penSize
 * pen hanging below and right of each point, in palette colour colourIndex
 * (as vga_col takes it); LineC_Ex in rgbColour. The port is left with a
 * 1 x 1 pen and a black foreground; the caller's current port is restored.
 * A null port or a pen of 0 or less draws nothing. No result. */
VITRAIL_API void Line_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                         int16_t colourIndex, int16_t penSize);
VITRAIL_API void LineC_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                          RGBColor rgbColour, int16_t penSize);

/* Fills the rectangle left x, top y, right x + width, bottom y + height
 * (edges taken as 16-bit) of `port` in palette colour colourIndex and frames
 * it in black, 1 pixel wide inside its edges. The port is left with a 1 x 1
 * pen and a black foreground; the caller's current port is restored. An
 * empty or inverted rectangle (width or height of 0 or less) draws nothing;
 * a null port draws nothing. No result. */
VITRAIL_API void Rectangle_Ex(GrafPtr port, int32_t x, int32_t y, int32_t width, int32_t height,
                              int32_t colourIndex);

/* Draws the picture named pictureName (Mac OS Roman, NUL-terminated) into
 * `port` at its natural size, its top-left corner at (x, y), blended by its
 * alpha; the caller's current port is restored. Returns 0 when drawn; 1 when
 * no picture of that name exists (or pictureName is null or empty); 0
 * without drawing when the name is longer than 255 bytes or the file is not
 * a PNG that decodes. */
VITRAIL_API int32_t BMP_affic_desfond0(const char *pictureName, GrafPtr port, int16_t x, int16_t y);

/* Writes the width and height in pixels of the picture named pictureName
 * (Mac OS Roman) into *width and *height (null outputs are skipped). Returns
 * 0; 1 when no picture of that name exists, outputs untouched; 0 with the
 * outputs untouched when the name is longer than 255 bytes. A file that is
 * not a PNG measures 0 x 0. */
VITRAIL_API int32_t BMP_affic_dimfond0(const char *pictureName, int32_t *width, int32_t *height);

/* ---- Fonts ------------------------------------------------------------------ */

/* Chooses the text of `port`: records fontName (ASCII, NUL-terminated; cut
 * to 79 bytes; null counts as "") in ch_font_FontName, then, when it is not
 * empty: the font (when the name is in the font table) with the face of
 * `style` and `size` pixels (0 or less: 12; above 1000: 1000); foreground
 * vga_col(fgColour); background vga_col(bgColour) and text mode 0, or text
 * mode 1 alone when bgColour is 255; and char_dy = ascent + 1. An unknown
 * name leaves font, face and size as they were but sets the rest. An empty
 * name changes nothing but ch_font_FontName. The caller's current port is
 * restored. Returns 0. */
VITRAIL_API int32_t ch_font_set_ext(GrafPtr port, const char *fontName, int32_t fgColour,
                                    int32_t bgColour, int16_t size, int32_t style);

/* ch_font_set_ext with style 0. Returns 0. */
VITRAIL_API int32_t ch_font_set(GrafPtr port, const char *fontName, int32_t fgColour,
                                int32_t bgColour, int16_t size);

/* Writes the CURRENT port's font metrics in pixels: ascent + descent into
 * *height, the widest advance into *widMax, the leading into *leading (null
 * outputs are skipped; all 0 with no current port). port is not used.
 * Returns 0. */
VITRAIL_API int32_t ch_font_metrics(GrafPtr port, int32_t *height, int32_t *widMax,
                                    int32_t *leading);

/* ---- Text output ------------------------------------------------------------ */

/* Draws `length` bytes of text (Windows-1252; up to a NUL) in the CURRENT
 * port's font and colours, starting at x with the top of the line at y (the
 * baseline at y + char_dy). Returns the width drawn. Length negative or
 * above 255: returns 0 and draws nothing. A null text draws nothing and
 * returns 0. port is not used. */
VITRAIL_API int32_t TextOut_0(GrafPtr port, int32_t x, int32_t y, const char *text, int32_t length);

/* Measures `length` bytes of text (Windows-1252; up to a NUL) in the CURRENT
 * port's font: the width into *width, 0 into *height (null outputs are
 * skipped); returns the width. Length negative or above 255: returns 0 with
 * the outputs untouched. A null text measures 0. port is not used. */
VITRAIL_API int32_t GetTextExtent_0(GrafPtr port, const char *text, int32_t length, int32_t *width,
                                    int32_t *height);

/* Draws the formatted text (Windows-1252 runs and inline commands, see
 * above) of `length` bytes: runs in the CURRENT port, squares, pictures,
 * lines and frames in `port`. The text starts at x with the top of the line
 * at y, both from the origin (xOrg, yOrg). Returns the total advance (the
 * sum of the runs, tabs, squares and pictures; a right-aligned run adds
 * nothing). A null text or a length of 0 or less draws nothing and returns
 * 0; a command cut by the end of the text uses the argument bytes there are
 * and draws nothing (a pen point keeps the values it could read). */
VITRAIL_API int32_t TextOut_Ext(GrafPtr port, int32_t x, int32_t y, int32_t xOrg, int32_t yOrg,
                                const char *text, int32_t length);

/* Measures the formatted text as TextOut_Ext would advance from x in the
 * CURRENT port's font: the total advance into *width, the height of the
 * tallest square or picture (2U) into *height, 0 when there is none (null
 * outputs are skipped). Pen point, line and frame commands are skipped as
 * two bytes here, their argument bytes then measured as text. Returns 1 when
 * no tab command was applied, 0 when one was. A null text or a length of 0
 * or less measures 0 x 0 and returns 1. port and y are not used. */
VITRAIL_API int32_t GetTextExtent_Ext(GrafPtr port, int32_t x, int32_t y, const char *text,
                                      int32_t length, int32_t *width, int32_t *height);

/* Draws the NUL-terminated formatted text (Windows-1252) in `port` at size
 * `size`, in font "Arial" (plain) when no font name has been chosen with
 * ch_font_set_ext, else in the port's font; colours and text mode as
 * ch_font_set_ext sets them; char_dy updated. When the text has no tab and
 * is narrower than boxWidth it is centred in boxWidth from x; otherwise it
 * starts at x. The top of the line is at y. Returns the x after the text.
 * The port is left with a black foreground; the caller's current port is
 * restored. A null text counts as "" (returns x). */
VITRAIL_API int32_t ch_font_printstr(GrafPtr port, int32_t x, int32_t y, int32_t boxWidth,
                                     int32_t fgColour, int32_t bgColour, int16_t size,
                                     const char *text);

VITRAIL_END_DECLS

#endif
