/*
 * The demo host: a C program that uses the library the way a prescription
 * module does, through the public headers and the shared object only.
 *
 *   Section        What it shows
 *   dates          today in French, two-digit years, date arithmetic
 *   numbers        number texts typed with "," or ".", fixed-width fields
 *   form           a prescription form described in the tables and validated
 *   profile        the prescriber directory kept in a profile (INI) file
 *   drawing        the prescription drawn with inline commands, saved as PNG
 *
 * Everything runs headless; the output is plain text on stdout and one PNG
 * in the folder given as argument (default "demo-output").
 */
#define _POSIX_C_SOURCE 200809L

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vitrail/draw.h>
#include <vitrail/form.h>
#include <vitrail/numdate.h>
#include <vitrail/platform.h>
#include <vitrail/profile.h>
#include <vitrail/strings.h>

/* Month and day names are stored in code page 850; the terminal wants UTF-8. */
static void print_cp850(const char *s) {
    for (; *s; ++s) {
        if ((unsigned char)*s == 0x82)
            fputs("\xC3\xA9", stdout); /* é */
        else
            putchar(*s);
    }
}

static void show_dates(void) {
    char today[16], shown[16], stored[16];
    int32_t date, year, month, day;

    printf("== dates\n");
    Qar_Get_Date_short(today);
    NUMToLong(today, 8, &date);
    year = date / 10000, month = date / 100 % 100, day = date % 100;
    Qar_Inv_Date(today, shown);
    printf("  today      %s, ", shown);
    print_cp850(utdatedn(utdatedw(year, month, day)));
    printf(" %d ", (int)day);
    print_cp850(utdatemy(month));
    printf(" %d\n", (int)year);

    Qar_Build_Date_short("01/02/49", stored);
    printf("  01/02/49   is stored as %s (two-digit years widen around %d)\n", stored, (int)a_org);
    printf("  20240131 + 30 days = %d; 20010305 - 10 days = %d\n", (int)Get_Date_Incr(20240131, 30),
           (int)Get_Date_Diff(20010305, 10));
}

static void show_numbers(void) {
    static const char *typed[] = {"12,5", " 0.333 ", "1e3", "abc", "-2,75"};
    char text[32], field[16];
    double value;
    size_t i;

    printf("== numbers\n");
    for (i = 0; i < sizeof typed / sizeof *typed; ++i) {
        strcpy(text, typed[i]);
        if (realcod_d(text, &value) == 0) {
            realdco_d(value, text, (int32_t)sizeof text, 2);
            printf("  typed \"%s\" reads %s\n", typed[i], text);
        } else {
            printf("  typed \"%s\" is not a number\n", typed[i]);
        }
    }
    DoubleToNUMD(12.5, field, 7, 2);
    field[7] = '\0';
    printf("  12.5 in a 7-wide NUM field with 2 decimals: %s\n", field);
}

/* Final check of the prescription form: a treatment ends after it starts. */
static int32_t check_dates(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n, int32_t bdb,
                           int32_t *flags, int32_t bdb_n, int32_t idb, int32_t *ints, int32_t idb_n,
                           int32_t ndb, double *nums, int32_t ndb_n, int32_t ddb, int32_t *dates,
                           int32_t ddb_n) {
    (void)window, (void)tdb, (void)texts, (void)tdb_n, (void)bdb, (void)flags, (void)bdb_n;
    (void)idb, (void)ints, (void)idb_n, (void)ndb, (void)nums, (void)ndb_n;
    if (ddb && ddb_n >= 2 && dates[1] < dates[0]) {
        DlgBoxFinal_Erreur_set("La date de fin precede la date de debut.");
        return 0;
    }
    return 1;
}

static void show_form(void) {
    char drug[64];

    printf("== form\n");
    TitreDlgBox_set("Prescription");
    TexteDlgBox_param(1, 100);
    TexteDlgBox_set(0, "Amoxicilline 500 mg");
    IntDlgBox_param(1, 200);
    IntDlgBox_set(0, 3, 1); /* three a day, must be above 0 */
    NumDlgBox_param(1, 300);
    NumDlgBox_set_nchiff(0, 2);
    NumDlgBox_set(0, 1.23456, 0);
    DateDlgBox_param(2, 400);
    DateDlgBox_set(0, 20261123, 1);
    DateDlgBox_set(1, 20261130, 1);
    DlgBoxFinal_set(check_dates);

    printf("  fields valid: %d\n", (int)QarDlgBox_valid());
    TexteDlgBox_retrieve(0, drug, sizeof drug);
    printf("  drug \"%s\", %d a day, dose %.2f (rounded to 2 decimals on validation)\n", drug,
           (int)IDB_iInts[0], NDB_dNums[0]);
    printf("  final hook accepts: %d\n",
           (int)DlgBoxFinal_fonct(NULL, TDB, TDB_pszBuffer, TDB_N, BDB, BDB_bFlags, BDB_N, IDB,
                                  IDB_iInts, IDB_N, NDB, NDB_dNums, NDB_N, DDB, DDB_lDates, DDB_N));
    DateDlgBox_set(1, 20261101, 1);
    printf("  with the end before the start: accepts %d, says \"%s\"\n",
           (int)DlgBoxFinal_fonct(NULL, TDB, TDB_pszBuffer, TDB_N, BDB, BDB_bFlags, BDB_N, IDB,
                                  IDB_iInts, IDB_N, NDB, NDB_dNums, NDB_N, DDB, DDB_lDates, DDB_N),
           DlgBoxFinal_Erreur());
    IntDlgBox_set(0, 0, 2); /* zero a day is refused by intcod_i_ssup0 */
    printf("  with 0 doses a day: fields valid %d\n", (int)QarDlgBox_valid());
    IntDlgBox_set(0, 3, 1);
    DateDlgBox_set(1, 20261130, 1);
}

/* Prints a profile file's bytes with its line ends made visible. */
static void print_file(const char *path) {
    FILE *f = fopen(path, "rb");
    int c;
    if (!f) return;
    fputs("    | ", stdout);
    while ((c = fgetc(f)) != EOF) {
        if (c == '\r')
            fputs("\\r", stdout);
        else if (c == '\n')
            fputs("\\n\n    | ", stdout);
        else
            putchar(c);
    }
    putchar('\n');
    fclose(f);
}

static void show_profile(void) {
    char folder[] = "/tmp/vitrail-demo-XXXXXX";
    char unix_path[1200], name[64];
    const char *ini = "Cabinet:praticiens.ini";

    printf("== profile\n");
    if (!mkdtemp(folder)) return;
    vitrail_set_volumes_root(folder);
    snprintf(unix_path, sizeof unix_path, "%s/Cabinet", folder);
    mkdir(unix_path, 0777);

    WritePrivateProfileString("PRES", "Nombre", "2", ini);
    WritePrivateProfileString("PRES1", "Nom", "Dr Martin", ini);
    WritePrivateProfileString("PRES1", "RPPS", "10001234567", ini);
    WritePrivateProfileString("PRES2", "Nom", "Dr Nguyen", ini);
    WritePrivateProfileString("PRES2", "Nom", "Dr Nguyen-Lefort", ini);
    WritePrivateProfileString("PRES1", "RPPS", NULL, ini);

    GetPrivateProfileString("PRES2", "Nom", "?", name, sizeof name, ini);
    printf("  %d prescribers; the second is \"%s\"; PRES1 RPPS now \"",
           (int)GetPrivateProfileInt("PRES", "Nombre", 0, ini), name);
    GetPrivateProfileString("PRES1", "RPPS", "absent", name, sizeof name, ini);
    printf("%s\"\n  %s/Cabinet/praticiens.ini:\n", name, folder);
    snprintf(unix_path, sizeof unix_path, "%s/Cabinet/praticiens.ini", folder);
    print_file(unix_path);

    remove(unix_path);
    snprintf(unix_path, sizeof unix_path, "%s/Cabinet", folder);
    rmdir(unix_path);
    rmdir(folder);
    vitrail_set_volumes_root(NULL);
}

/* Draws the accepted prescription: a title centred by ch_font_printstr, then
 * lines laid out with inline commands (0xFF 0x80 c: tab; 0xFF 0x83: the next
 * run ends at the tab; 0xFF 0x8A: a square; 0xFF 0xD5: a frame). */
static void show_drawing(const char *out_folder) {
    char path[1024], line[256], drug[64], dose[32];
    GrafPtr port = vitrail_port_new(360, 150);

    printf("== drawing\n");
    if (!port) return;
    vitrail_port_set_current(port);
    ch_font_set(port, "Helvetica", 4, 255, 18);
    ch_font_printstr(port, 0, 10, 360, 4, 255, 18, "Ordonnance");

    ch_font_set(port, "Helvetica", 0, 255, 12);
    TexteDlgBox_retrieve(0, drug, sizeof drug);
    realdco_d(NDB_dNums[0], dose, sizeof dose, 2);
    snprintf(line, sizeof line, "\xFF\x8A\xFF\x80\x26%s\xFF\x80\x6E\xFF\x83%s g", drug, dose);
    TextOut_Ext(port, 0, 60, 20, 0, line, (int32_t)strlen(line));
    snprintf(line, sizeof line, "\xFF\x80\x26%d prises par jour, pendant 7 jours",
             (int)IDB_iInts[0]);
    TextOut_Ext(port, 0, 82, 20, 0, line, (int32_t)strlen(line));
    /* A frame from the pen point (8, 49) to (348, 112): half units of 8 pixels
     * across, quarter lines of 14 pixels down. */
    TextOut_Ext(port, 0, 0, 0, 0, "\xFF\xC8\x22\x2E\xFF\xD5\x77\x40", 8);

    mkdir(out_folder, 0777);
    snprintf(path, sizeof path, "%s/prescription.png", out_folder);
    if (vitrail_port_write_png(port, path) == 0)
        printf("  written %s (%d drawing operations)\n", path, (int)vitrail_port_trace_count(port));
    vitrail_port_dispose(port);
}

int main(int argc, char **argv) {
    printf("vitrail demo host\n");
    show_dates();
    show_numbers();
    show_form();
    show_profile();
    show_drawing(argc > 1 ? argv[1] : "demo-output");
    return 0;
}
