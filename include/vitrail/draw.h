/*
 * vitrail — text and drawing: the 16-colour palette, lines, rectangles and
 * named pictures; font, style and colour choice for a port; formatted text
 * output with inline commands, and its measurement.
 *
 *   Datum              Type        At load  Meaning
 *   ch_font_FontName   char[80]    ""       last name given to ch_font_set_ext
 *   char_dy            int16_t     0        ascent + 1 of the chosen font
 *
 * Colours are palette indexes 0-15 (taken modulo 16), 255 meaning no
 * background. Style flags: 1 bold, 2 underline, 4 italic, 8 condense,
 * 16 extend. Coordinates are local pixels of the port, used as 16-bit
 * values. Texts are in the Windows character set.
 *
 * Formatted text: 0xFF and a command byte, then argument bytes (value - 32
 * is a digit; a 2-byte argument is low digit, high digit in base 224).
 * U = width of "X" (at least 8), L = line height. H = d*U/2 (+ 112*d2*U),
 * V = d*L/4 (+ 56*d2*L).
 *   128 H1 / 133 H2   tab to column H          129 H1 / 134 H2   step tab
 *   130 / 131         right-align off / on     138               red square
 *   148-161, 168      named picture            200, 211 / 201, 212  pen point
 *   202 / 203         line from the pen point  213 / 214         frame
 */
#ifndef VITRAIL_DRAW_H
#define VITRAIL_DRAW_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

VITRAIL_API extern char ch_font_FontName[80];
VITRAIL_API extern int16_t char_dy;

/* Palette entry index modulo 16; a negative index gives entry 0 (black). */
VITRAIL_API RGBColor vga_col(int32_t index);

/* Line from (x1, y1) to (x2, y2) with a penSize x penSize pen in palette
 * colour colourIndex (LineC_Ex: in rgbColour). The port is left with a
 * normal pen and black; the caller's current port is restored. A null port
 * draws nothing; a pen of 0 or less draws nothing. */
VITRAIL_API void Line_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                         int16_t colourIndex, int16_t penSize);
VITRAIL_API void LineC_Ex(GrafPtr port, int16_t x1, int16_t y1, int16_t x2, int16_t y2,
                          RGBColor rgbColour, int16_t penSize);

/* Paints the rectangle (left x, top y, width, height) in colourIndex and
 * frames it in black with a 1-pixel pen (left with the port). */
VITRAIL_API void Rectangle_Ex(GrafPtr port, int32_t x, int32_t y, int32_t width, int32_t height,
                              int32_t colourIndex);

/* Draws picture pictureName at its natural size with its top-left corner at
 * (x, y): 0 when drawn, 1 when there is no such picture (or pictureName is
 * null); 0 without drawing when the name is longer than 255 characters. */
VITRAIL_API int32_t BMP_affic_desfond0(const char *pictureName, GrafPtr port, int16_t x, int16_t y);

/* Writes the picture's width and height (null outputs are skipped): 0, or 1
 * when there is no such picture; 0 with nothing written when the name is
 * longer than 255 characters. */
VITRAIL_API int32_t BMP_affic_dimfond0(const char *pictureName, int32_t *width, int32_t *height);

/* Records fontName (cut to 79 bytes; null is ""); when it is not empty,
 * sets the port's font (when the name is known), face and size, the
 * foreground colour, the background colour and text mode (1 when bgColour
 * is 255, else 0) and char_dy. Returns 0. */
VITRAIL_API int32_t ch_font_set_ext(GrafPtr port, const char *fontName, int32_t fgColour,
                                    int32_t bgColour, int16_t size, int32_t style);
VITRAIL_API int32_t ch_font_set(GrafPtr port, const char *fontName, int32_t fgColour,
                                int32_t bgColour, int16_t size);

/* Writes ascent + descent, widMax and leading of the current port's font
 * (null outputs are skipped). port is not used. Returns 0. */
VITRAIL_API int32_t ch_font_metrics(GrafPtr port, int32_t *height, int32_t *widMax,
                                    int32_t *leading);

/* Draws length bytes of text in the current port with the top of the line at
 * (x, y): returns the width drawn; 0 and nothing drawn when length is
 * negative or above 255. */
VITRAIL_API int32_t TextOut_0(GrafPtr port, int32_t x, int32_t y, const char *text, int32_t length);

/* Width of length bytes of text in the current port's font into *width,
 * 0 into *height; returns the width. Length above 255 or negative: 0, and
 * the outputs are untouched. */
VITRAIL_API int32_t GetTextExtent_0(GrafPtr port, const char *text, int32_t length, int32_t *width,
                                    int32_t *height);

/* Draws a formatted text at (x, y) from the origin (xOrg, yOrg): returns the
 * total advance. Lines and frames are placed from the origin alone. */
VITRAIL_API int32_t TextOut_Ext(GrafPtr port, int32_t x, int32_t y, int32_t xOrg, int32_t yOrg,
                                const char *text, int32_t length);

/* Measures a formatted text from x: total advance into *width, the tallest
 * square or picture into *height. Returns 1 when no tab was applied, else 0.
 * y is not used. */
VITRAIL_API int32_t GetTextExtent_Ext(GrafPtr port, int32_t x, int32_t y, const char *text,
                                      int32_t length, int32_t *width, int32_t *height);

/* Sets size and colours (font "Arial" when none was chosen), centres the
 * NUL-terminated text in boxWidth when it has no tab and fits, draws it at
 * y, and returns the x after it. A null text is "". */
VITRAIL_API int32_t ch_font_printstr(GrafPtr port, int32_t x, int32_t y, int32_t boxWidth,
                                     int32_t fgColour, int32_t bgColour, int16_t size,
                                     const char *text);

VITRAIL_END_DECLS

#endif
