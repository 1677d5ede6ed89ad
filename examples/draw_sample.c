/* draw_sample OUTPUT.png
 *
 * Draws a formatted prescription sample into an off-screen port and writes
 * it as a PNG: a centred title, columns set by tabs, right-aligned amounts,
 * pictures and squares at the start of the lines, a frame around the table
 * and a coloured legend. The two pictures it uses are drawn first, written
 * into a temporary resources folder, and removed at the end. The formatted
 * lines are built with the command constants and writers of vitrail/draw.h. */
#define _POSIX_C_SOURCE 200809L

#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vitrail/draw.h>
#include <vitrail/platform.h>

enum { WIDTH = 424, HEIGHT = 270, X0 = 20, Y0 = 76 };

/* Table columns in half units of U (the width of "X"): the name, the
 * dosage, and the right edge of the price. */
enum { COL_NAME = 7, COL_DOSE = 50, COL_PRICE = 92 };

/* Table rows, Windows character set: the command that starts the row (a
 * picture, a red square or a bullet), then the columns. */
static const struct {
    int lead;
    const char *name, *dose, *price;
} rows[] = {
    {VITRAIL_TX_PICTURE(0), "Amoxicilline 1 g", "matin et soir", "4,20"},
    {VITRAIL_TX_PICTURE(0), "Parac\xE9tamol 500 mg", "3 fois par jour", "2,18"},
    {VITRAIL_TX_SQUARE, "Vitamine D 100 000 UI", "1 ampoule", "12,50"},
    {VITRAIL_TX_BULLET, "S\xE9rum physiologique", "2 fois par jour", "3,05"},
};

/* Formats one table line into buf (at least 128 bytes) and returns its
 * length: the lead command (none when 0), the name (none when null) and the
 * dosage at their columns, the price right-aligned to its column. */
static int32_t table_line(char *buf, int lead, const char *name, const char *dose,
                          const char *price) {
    int32_t n = 0;
    if (lead) {
        buf[n++] = (char)VITRAIL_TX_ESC;
        buf[n++] = (char)lead;
    }
    if (name) {
        n += VITRAIL_TX_TAB_TO(buf + n, COL_NAME);
        n += sprintf(buf + n, "%.40s", name);
    }
    n += VITRAIL_TX_TAB_TO(buf + n, COL_DOSE);
    n += sprintf(buf + n, "%.30s", dose);
    n += VITRAIL_TX_TAB_TO(buf + n, COL_PRICE);
    n += sprintf(buf + n, VITRAIL_TXS_ALIGN_RIGHT "%.10s", price);
    return n;
}

/* Draws a picture into its own port and writes it as <folder>/PICT/<name>.png. */
static int make_picture(const char *folder, const char *name, int kind) {
    char path[1200];
    GrafPtr port = vitrail_port_new(kind ? 12 : 16, kind ? 12 : 13);
    int ok;
    if (!port) return 0;
    if (kind == 0) { /* a closed folder */
        Rectangle_Ex(port, 0, 2, 7, 3, 11);
        Rectangle_Ex(port, 0, 4, 16, 9, 11);
    } else { /* a bullet */
        Rectangle_Ex(port, 2, 2, 8, 8, 12);
        Line_Ex(port, 4, 4, 7, 4, 15, 1);
    }
    snprintf(path, sizeof path, "%s/PICT/%s.png", folder, name);
    ok = vitrail_port_write_png(port, path) == 0;
    vitrail_port_dispose(port);
    return ok;
}

static int32_t text_out(GrafPtr port, int32_t x, int32_t y, const char *text, int32_t length) {
    return TextOut_Ext(port, x, y, X0, Y0, text, length);
}

static void draw_sample(GrafPtr port) {
    int32_t i, n, height = 0, widMax = 0, leading = 0, lineHeight, step, bottom, quarters;
    char line[128];

    /* The text routines draw in the current port. */
    vitrail_port_set_current(port);

    ch_font_set_ext(port, "Helvetica", 4, 255, 20, 1);
    ch_font_printstr(port, 0, 14, WIDTH, 4, 255, 20, "Ordonnance");
    ch_font_set_ext(port, "Helvetica", 7, 255, 12, 4);
    ch_font_printstr(port, 0, 44, WIDTH, 7, 255, 12,
                     "Dr Martin, m\xE9"
                     "decin g\xE9n\xE9raliste");

    ch_font_set(port, "Geneva", 0, 255, 12);
    ch_font_metrics(port, &height, &widMax, &leading);
    lineHeight = height + leading > 0 ? height + leading : 1;
    step = lineHeight + 6;
    bottom = 8 + 5 * step + lineHeight + 8;

    /* The frame: pen point at the origin, opposite corner 48U to the right
     * and `bottom` pixels down, in quarter lines. */
    quarters = (bottom * 4 + lineHeight - 1) / lineHeight;
    n = VITRAIL_TX_PEN_AT(line, 0, 0);
    n += VITRAIL_TX_FRAME_TO(line + n, 96, quarters);
    text_out(port, 0, 0, line, n);

    /* Columns scale with the width of "X": the header keeps the plain font
     * (underlined, in blue) so that its columns match the rows. */
    ch_font_set_ext(port, "Geneva", 4, 255, 12, 2);
    text_out(port, 8, 8, line,
             table_line(line, 0,
                        "M\xE9"
                        "dicament",
                        "Posologie", "Prix"));
    ch_font_set(port, "Geneva", 0, 255, 12);
    for (i = 0; i < 4; ++i)
        text_out(port, 8, 8 + (i + 1) * step, line,
                 table_line(line, rows[i].lead, rows[i].name, rows[i].dose, rows[i].price));
    Line_Ex(port, X0 + 8, (int16_t)(Y0 + 5 * step + 4), X0 + 376, (int16_t)(Y0 + 5 * step + 4), 7,
            1);
    ch_font_set(port, "Geneva", 0, 14, 12);
    text_out(port, 8, 8 + 5 * step, line, table_line(line, 0, NULL, "Total", "21,93"));

    Rectangle_Ex(port, X0, 240, 14, 14, 10);
    ch_font_set(port, "Geneva", 0, 255, 11);
    TextOut_0(port, X0 + 20, 240, "renouvelable 3 mois", 19);
    Rectangle_Ex(port, X0 + 200, 240, 14, 14, 9);
    TextOut_0(port, X0 + 220, 240, "non rembours\xE9", 13);
}

/* The number of pictures the trace shows (two folders and a bullet are
 * expected). */
static int pictures_drawn(GrafPtr port) {
    vitrail_trace_op op;
    int32_t i, n = 0;
    for (i = 0; vitrail_port_trace_get(port, i, &op) == 0; ++i) n += op.kind == vitrail_op_picture;
    return n;
}

int main(int argc, char **argv) {
    char folder[] = "/tmp/vitrail-sample-XXXXXX";
    char sub[64], file[96];
    GrafPtr port;
    int status = 1;
    if (argc != 2) {
        fprintf(stderr, "usage: draw_sample OUTPUT.png\n");
        return 2;
    }
    if (!mkdtemp(folder)) return 1;
    snprintf(sub, sizeof sub, "%s/PICT", folder);
    port = vitrail_port_new(WIDTH, HEIGHT);
    if (port && mkdir(sub, 0700) == 0 && make_picture(folder, "repferb", 0) &&
        make_picture(folder, "puceb", 1) && vitrail_set_resources_folder(folder) == 0) {
        draw_sample(port);
        status = pictures_drawn(port) == 3 && vitrail_port_write_png(port, argv[1]) == 0 ? 0 : 1;
    }
    vitrail_port_dispose(port);
    snprintf(file, sizeof file, "%s/repferb.png", sub);
    remove(file);
    snprintf(file, sizeof file, "%s/puceb.png", sub);
    remove(file);
    rmdir(sub);
    rmdir(folder);
    if (status) fprintf(stderr, "draw_sample: could not draw %s\n", argv[1]);
    return status;
}
