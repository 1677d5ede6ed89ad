/*
 * The demo host: a C program that uses the library the way a prescription
 * module does, through the public headers and the shared object only.
 *
 *   Step            What it shows
 *   directory       the prescribers, kept in a profile under the volumes root
 *   main window     the current prescription, drawn with TextOut_Ext
 *   prescriber      SelectPRES
 *   patient         a one-field form
 *   prescription    the form of prescription.c; its final check refuses an
 *                   end before the start with a message box
 *   confirmation    a question through MessageBox; "Non" goes back to the form
 *   result          drawn in the main window, saved to a profile, written
 *                   as <folder>/prescription.png
 *
 * With a display (the SDL backend) a person works the dialogs. Without one,
 * or when VITRAIL_DEMO_SCRIPT is set, the session of session.c plays them
 * and writes a PNG of every step. The
 * folder is the first argument (default "demo-output"); the volumes live in
 * <folder>/volumes unless VITRAIL_VOLUMES names them. Exit status 0 when a
 * prescription was saved, 1 when the person gave up, 2 on an error.
 */
#define _POSIX_C_SOURCE 200809L

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

#include <vitrail/automation.h>
#include <vitrail/dialog.h>
#include <vitrail/draw.h>
#include <vitrail/msgbox.h>
#include <vitrail/numdate.h>
#include <vitrail/platform.h>
#include <vitrail/profile.h>

#include "prescription.h"
#include "session.h"

#define MAIN_WIDTH 460
#define MAIN_HEIGHT 230

static const char kDirectory[] = "Cabinet:praticiens.ini";
static const char kSaved[] = "Cabinet:ordonnance.ini";
static const char kSection[] = "Ordonnance";
static const char kPrescribers[] = "Dr Martin+Dr Nguyen-Lefort+Dr Durand";

/* One saved prescription: who, for whom, what. */
typedef struct Record {
    char prescriber[128];
    char patient[64];
    Prescription rx;
} Record;

/* Text field `key` of the saved prescription into buf; its length. */
static int32_t saved_text(const char *key, char *buf, int32_t size) {
    return GetPrivateProfileString(kSection, key, "", buf, size, kSaved);
}

static void save_number(const char *key, int32_t value) {
    char text[16];
    intdco_l(value, text, sizeof text);
    WritePrivateProfileString(kSection, key, text, kSaved);
}

static void save_record(const Record *r) {
    char dose[32];
    WritePrivateProfileString(kSection, "Prescripteur", r->prescriber, kSaved);
    WritePrivateProfileString(kSection, "Patient", r->patient, kSaved);
    WritePrivateProfileString(kSection, "Medicament", r->rx.drug, kSaved);
    WritePrivateProfileString(kSection, "Voie", r->rx.route, kSaved);
    save_number("PrisesParJour", r->rx.daily);
    realdco_d(r->rx.dose, dose, sizeof dose, 2);
    WritePrivateProfileString(kSection, "DoseMg", dose, kSaved);
    save_number("Debut", r->rx.start);
    save_number("Fin", r->rx.end);
    save_number("Renouvelable", r->rx.renewable);
}

/* The saved prescription; 0 when there is none. */
static int load_record(Record *r) {
    char dose[32];
    memset(r, 0, sizeof *r);
    if (saved_text("Patient", r->patient, sizeof r->patient) == 0) return 0;
    saved_text("Prescripteur", r->prescriber, sizeof r->prescriber);
    saved_text("Medicament", r->rx.drug, sizeof r->rx.drug);
    saved_text("Voie", r->rx.route, sizeof r->rx.route);
    r->rx.daily = GetPrivateProfileInt(kSection, "PrisesParJour", 0, kSaved);
    saved_text("DoseMg", dose, sizeof dose);
    realcod_d(dose, &r->rx.dose);
    r->rx.start = GetPrivateProfileInt(kSection, "Debut", 0, kSaved);
    r->rx.end = GetPrivateProfileInt(kSection, "Fin", 0, kSaved);
    r->rx.renewable = GetPrivateProfileInt(kSection, "Renouvelable", 0, kSaved);
    return 1;
}

/* A date integer as DD/MM/YYYY. */
static const char *shown_date(int32_t date, char out[11]) {
    char stored[16];
    intdco_l(date, stored, sizeof stored);
    Qar_Inv_Date(stored, out);
    return out;
}

static void draw_line(GrafPtr port, int32_t y, const char *text) {
    TextOut_Ext(port, 0, y, 0, 0, text, (int32_t)strlen(text));
}

/* Draws the prescription (or that there is none) into the main window with
 * inline commands: 0xFF 0x80 c tabs to a column, 0xFF 0x83 right-aligns the
 * next run at the column, 0xFF 0x8A draws a square, 0xFF 0xC8 h v sets the
 * pen point and 0xFF 0xD5 h v frames from it. */
static void draw_record(WindowRef window, const Record *r) {
    char line[320], dose[32], from[11], to[11];
    GrafPtr port = vitrail_window_port(window);
    vitrail_port_set_current(port);
    Rectangle_Ex(port, -1, -1, MAIN_WIDTH + 2, MAIN_HEIGHT + 2, 15);
    ch_font_set_ext(port, "Helvetica", 0, 255, 18, 1);
    ch_font_printstr(port, 0, 14, MAIN_WIDTH, 4, 255, 18, "Ordonnance");
    ch_font_set(port, "Helvetica", 0, 255, 12);
    if (!r) {
        ch_font_printstr(port, 0, 100, MAIN_WIDTH, 8, 255, 12,
                         "Aucune ordonnance enregistr\xE9"
                         "e.");
        return;
    }
    snprintf(line, sizeof line, "\xFF\x80\x28Prescripteur :\xFF\x80\x44%s", r->prescriber);
    draw_line(port, 56, line);
    snprintf(line, sizeof line, "\xFF\x80\x28Patient :\xFF\x80\x44%s", r->patient);
    draw_line(port, 76, line);
    realdco_d(r->rx.dose, dose, sizeof dose, 2);
    snprintf(line, sizeof line,
             "\xFF\x80\x28\xFF\x8A\xFF\x80\x34%s, voie %s\xFF\x80\x8B\xFF\x83%s mg", r->rx.drug,
             r->rx.route, dose);
    draw_line(port, 118, line);
    snprintf(line, sizeof line, "\xFF\x80\x34%d prise%s par jour, du %s au %s%s", (int)r->rx.daily,
             r->rx.daily > 1 ? "s" : "", shown_date(r->rx.start, from), shown_date(r->rx.end, to),
             r->rx.renewable ? ", renouvelable" : "");
    draw_line(port, 140, line);
    /* A frame around the drug lines, from (20, 108) to (436, 171): half
     * units of 8 pixels across, quarter lines of 14 pixels down. */
    draw_line(port, 0, "\xFF\xC8\x25\x3F\xFF\xD5\x8D\x51");
}

static void print_record(const Record *r) {
    char from[11], to[11], dose[32];
    realdco_d(r->rx.dose, dose, sizeof dose, 2);
    printf("  ");
    put_cp1252(r->prescriber);
    printf(" for ");
    put_cp1252(r->patient);
    printf(": ");
    put_cp1252(r->rx.drug);
    printf(", ");
    put_cp1252(r->rx.route);
    printf(", %d a day, %s mg, %s to %s%s\n", (int)r->rx.daily, dose, shown_date(r->rx.start, from),
           shown_date(r->rx.end, to), r->rx.renewable ? ", renewable" : "");
}

/* Prints a file's bytes, line ends made visible. */
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
        else {
            char one[2] = {(char)c, 0};
            put_cp1252(one);
        }
    }
    putchar('\n');
    fclose(f);
}

/* The volumes root (made under the folder unless VITRAIL_VOLUMES names
 * one), its volume "Cabinet" and the prescriber directory. */
static int prepare_volumes(const char *folder) {
    char path[1200], list[4096];
    if (!getenv("VITRAIL_VOLUMES") || !*getenv("VITRAIL_VOLUMES")) {
        snprintf(path, sizeof path, "%s/volumes", folder);
        mkdir(path, 0777);
        if (vitrail_set_volumes_root(path) != 0) return 0;
    }
    snprintf(path, sizeof path, "%s/Cabinet", vitrail_volumes_root());
    mkdir(path, 0777);
    if (GetPrivateProfileString("Prescriptions", "Prescripteurs", "", list, sizeof list,
                                kDirectory) == 0) {
        WritePrivateProfileString("Prescriptions", "Prescripteurs", kPrescribers, kDirectory);
        GetPrivateProfileString("Prescriptions", "Prescripteurs", "", list, sizeof list,
                                kDirectory);
    }
    printf("== prescribers in %s (under %s): ", kDirectory, vitrail_volumes_root());
    put_cp1252(list);
    printf("\n");
    return list[0] != '\0';
}

/* The patient's name, asked in a one-field form; 0 when cancelled. */
static int ask_patient(WindowRef parent, char *name, int32_t size) {
    TailleDlgBox_set(150, 64);
    StaticDlgBox_param(1);
    StaticDlgBox_set(0, "Nom du patient :");
    StaticDlgBox_set_geo(0, 10, 8, 130, 8);
    TexteDlgBox_param(1, 100);
    TexteDlgBox_set(0, "");
    TexteDlgBox_set_geo(0, 10, 18, 130, 16, 0);
    if (!QarDlgBoxEx("Patient", parent)) return 0;
    return TexteDlgBox_retrieve(0, name, size) == 0 && name[0] != '\0';
}

/* The prescription form until it is accepted and confirmed; 0 when given up. */
static int ask_prescription(WindowRef parent, Record *r) {
    char question[512];
    Prescription shown;
    memset(&shown, 0, sizeof shown);
    for (;;) {
        prescription_describe(&shown);
        if (!QarDlgBoxEx("Ligne de prescription", parent)) return 0;
        prescription_read(&r->rx);
        printf("== prescription form accepted\n");
        print_record(r);
        snprintf(question, sizeof question, "Enregistrer l'ordonnance de %s pour %s ?",
                 r->prescriber, r->patient);
        if (MessageBox(parent, question, "Confirmation", MSGBOX_QUESTION) == MSGBOX_OUI) return 1;
        printf("== not confirmed: back to the form\n");
        shown = r->rx;
    }
}

/* Prescriber, patient and prescription; 0 when the person gave up. */
static int run_session(WindowRef main_window, Record *r) {
    char *chosen = SelectPRES(NULL, NULL, kDirectory);
    printf("== prescriber chosen with SelectPRES: \"");
    put_cp1252(chosen);
    printf("\"\n");
    if (!chosen[0]) return 0;
    snprintf(r->prescriber, sizeof r->prescriber, "%s", chosen);
    if (!ask_patient(main_window, r->patient, sizeof r->patient)) return 0;
    printf("== patient: \"");
    put_cp1252(r->patient);
    printf("\"\n");
    return ask_prescription(main_window, r);
}

int main(int argc, char **argv) {
    const char *folder = argc > 1 ? argv[1] : "demo-output";
    char path[1200], today[16], shown[16];
    Record record, saved;
    WindowRef main_window;
    int scripted, done;

    setvbuf(stdout, NULL, _IOLBF, 0);
    mkdir(folder, 0777);
    Qar_Get_Date_short(today);
    Qar_Inv_Date(today, shown);
    printf("vitrail demo host, %s\n", shown);
    if (!prepare_volumes(folder)) return 2;

    main_window =
        vitrail_window_new("Ordonnance courante", 60, 60, 60 + MAIN_WIDTH, 60 + MAIN_HEIGHT);
    if (!main_window) return 2;
    scripted = strcmp(vitrail_backend_name(), "headless") == 0 || getenv("VITRAIL_DEMO_SCRIPT");
    printf("== backend %s: %s\n", vitrail_backend_name(),
           scripted ? "a scripted session plays the dialogs" : "the dialogs wait for you");
    if (load_record(&saved)) {
        printf("== main window: the prescription saved last time\n");
        print_record(&saved);
    } else {
        printf("== main window: no prescription saved yet\n");
    }
    draw_record(main_window, load_record(&saved) ? &saved : NULL);

    if (scripted) session_start(folder);
    memset(&record, 0, sizeof record);
    done = run_session(main_window, &record);
    if (done) {
        draw_record(main_window, &record);
        save_record(&record);
        printf("== saved to %s:\n", kSaved);
        snprintf(path, sizeof path, "%s/Cabinet/ordonnance.ini", vitrail_volumes_root());
        print_file(path);
        snprintf(path, sizeof path, "%s/prescription.png", folder);
        if (vitrail_window_write_png(main_window, path) == 0) printf("== written %s\n", path);
        MessageBox(main_window,
                   "Ordonnance enregistr\xE9"
                   "e.",
                   "Enregistrement", MSGBOX_ICON_NOTE);
    } else {
        printf("== given up: nothing saved\n");
    }
    vitrail_window_dispose(main_window);
    if (scripted) {
        int steps = session_stop();
        if (steps < 0) return 2;
        printf("== scripted session: %d steps, PNGs in %s\n", steps, folder);
    }
    return done ? 0 : 1;
}
