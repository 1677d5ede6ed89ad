/*
 * The demo's scripted session (session.h): one table of steps, each one
 * action on the window that waits, in the order a person would act.
 *
 *   Window                        Actions
 *   Annuaire des prescripteurs    click the second prescriber, Return
 *   Patient                       type the name, Return
 *   Ligne de prescription         open the drug menu and close it with Escape,
 *                                 choose a drug and a route, type the intakes,
 *                                 the dose and two dates (the end before the
 *                                 start), Return
 *   Ordonnance                    the refusal: Return
 *   Ligne de prescription         correct the end date, Return
 *   Confirmation                  the close box (the answer is "Non")
 *   Ligne de prescription         Return
 *   Confirmation                  click "Oui"
 *   Enregistrement                Return
 */
#include "session.h"

#include <stdio.h>
#include <string.h>

#include <vitrail/automation.h>

#define PRES "Annuaire des prescripteurs"
#define PATIENT "Patient"
#define FORM "Ligne de prescription"
#define CONFIRM "Confirmation"

enum Act { CLICK, ROW, TYPE, KEY, CLOSE };

/* One action. CLICK and ROW aim at the first item whose text is `target`,
 * or at the first popup ("popup") or list box ("list"); ROW takes list row
 * `arg` (from 0) or menu item `arg` (from 1). TYPE types `target`; KEY
 * presses key `arg`. Texts are Windows-1252. */
struct Step {
    const char *window;
    enum Act act;
    const char *target;
    int arg;
    const char *why;
};

static const struct Step kSteps[] = {
    {PRES, ROW, "list", 1, "the second prescriber"},
    {PRES, KEY, 0, vitrail_key_return, "OK"},
    {PATIENT, TYPE,
     "L\xE9"
     "a Dupr\xE9",
     0, "the patient's name"},
    {PATIENT, KEY, 0, vitrail_key_return, "OK"},
    {FORM, CLICK, "popup", 0, "opens the drug menu"},
    {FORM, KEY, 0, vitrail_key_escape, "closes it, nothing chosen"},
    {FORM, CLICK, "popup", 0, "opens it again"},
    {FORM, ROW, "popup", 3, "a drug: its usual dose is proposed"},
    {FORM, ROW, "list", 0, "the route"},
    {FORM, TYPE, "3", 0, "intakes a day: the first edit box has the focus"},
    {FORM, KEY, 0, vitrail_key_tab, "to the dose, selected"},
    {FORM, TYPE, "200", 0, "mg an intake"},
    {FORM, KEY, 0, vitrail_key_tab, "to the start date"},
    {FORM, TYPE, "01", 0, "day"},
    {FORM, KEY, 0, vitrail_key_tab, "to the month"},
    {FORM, TYPE, "12", 0, "month"},
    {FORM, KEY, 0, vitrail_key_tab, "to the year"},
    {FORM, TYPE, "2026", 0, "year"},
    {FORM, KEY, 0, vitrail_key_tab, "to the end date"},
    {FORM, TYPE, "24", 0, "day"},
    {FORM, KEY, 0, vitrail_key_tab, "to the month"},
    {FORM, TYPE, "11", 0, "month, before the start"},
    {FORM, KEY, 0, vitrail_key_tab, "to the year"},
    {FORM, TYPE, "2026", 0, "year"},
    {FORM, KEY, 0, vitrail_key_return, "OK: the final check refuses"},
    {"Ordonnance", KEY, 0, vitrail_key_return, "OK"},
    {FORM, KEY, 0, vitrail_key_tab | vitrail_key_shift, "back to the end month"},
    {FORM, KEY, 0, vitrail_key_tab | vitrail_key_shift, "back to the end day"},
    {FORM, TYPE, "08", 0, "day"},
    {FORM, KEY, 0, vitrail_key_tab, "to the month"},
    {FORM, TYPE, "12", 0, "month"},
    {FORM, KEY, 0, vitrail_key_return, "OK: accepted"},
    {CONFIRM, CLOSE, 0, 0, "acts as Escape: \"Non\", back to the form"},
    {FORM, KEY, 0, vitrail_key_return, "OK, unchanged"},
    {CONFIRM, CLICK, "Oui", 0, "saves it"},
    {"Enregistrement", KEY, 0, vitrail_key_return, "OK"},
};

/* X keysym names of the keys the session presses. */
static const struct {
    int key;
    const char *name;
} kKeyNames[] = {
    {vitrail_key_return, "Return"},
    {vitrail_key_escape, "Escape"},
    {vitrail_key_tab, "Tab"},
};

static const char *folder = ".";
static int played = 0;
static int lost = 0;

void put_cp1252(const char *text) {
    for (; *text; ++text) {
        unsigned char c = (unsigned char)*text;
        if (c < 0x80)
            putchar(c);
        else if (c < 0xA0)
            putchar('?');
        else
            putchar(0xC0 | c >> 6), putchar(0x80 | (c & 0x3F));
    }
}

static const char *key_name(int key) {
    size_t k;
    for (k = 0; k < sizeof kKeyNames / sizeof kKeyNames[0]; ++k)
        if (kKeyNames[k].key == (key & 0xFF)) return kKeyNames[k].name;
    return "?";
}

/* The item a step aims at: 0 when the window has none. */
static int find_item(WindowRef w, const char *target) {
    int n, count = vitrail_dialog_item_count(w);
    int control = strcmp(target, "popup") == 0  ? vitrail_control_popup
                  : strcmp(target, "list") == 0 ? vitrail_control_list
                                                : -1;
    for (n = 1; n <= count; ++n) {
        vitrail_item_info info;
        if (vitrail_dialog_item(w, n, &info) != 0) continue;
        if (control >= 0 ? info.control == control : strcmp(info.text, target) == 0) return n;
    }
    return 0;
}

/* Clicks the middle of the item, or of its row `row` for ROW. */
static int click(WindowRef w, const struct Step *s) {
    vitrail_item_info info;
    Rect r;
    int item = find_item(w, s->target);
    if (!item || vitrail_dialog_item(w, item, &info) != 0) return -1;
    r = info.rect;
    if (s->act == ROW && vitrail_dialog_item_row_rect(w, item, s->arg, &r) != 0) return -1;
    printf("click %d %d", (r.left + r.right) / 2, (r.top + r.bottom) / 2);
    return vitrail_click_at(w, (r.left + r.right) / 2, (r.top + r.bottom) / 2, 1);
}

static int act(WindowRef w, const struct Step *s) {
    switch (s->act) {
    case CLICK:
    case ROW:
        return click(w, s);
    case TYPE:
        printf("type \"");
        put_cp1252(s->target);
        printf("\"");
        return vitrail_type_text(w, s->target);
    case KEY:
        printf("key %s%s", s->arg & vitrail_key_shift ? "shift+" : "", key_name(s->arg));
        return vitrail_press_key(w, s->arg);
    case CLOSE:
        printf("close");
        return vitrail_press_key(w, vitrail_key_escape);
    }
    return -1;
}

static void agent(WindowRef w, void *user) {
    char title[256] = "", path[1200];
    const struct Step *s = &kSteps[played < (int)(sizeof kSteps / sizeof kSteps[0]) ? played : 0];
    (void)user;
    vitrail_window_title(w, title, sizeof title);
    if (played >= (int)(sizeof kSteps / sizeof kSteps[0]) || strcmp(title, s->window) != 0) {
        printf("[step %02d] unexpected window \"", played + 1);
        put_cp1252(title);
        printf("\": the session stops, the dialogs answer for themselves\n");
        lost = 1;
        vitrail_set_agent(NULL, NULL);
        return;
    }
    snprintf(path, sizeof path, "%s/step-%02d.png", folder, ++played);
    vitrail_window_write_png(w, path);
    printf("[step %02d] ", played);
    put_cp1252(title);
    printf(": ");
    if (act(w, s) != 0) printf(" failed");
    printf(" (");
    put_cp1252(s->why);
    printf(")\n");
}

void session_start(const char *png_folder) {
    folder = png_folder;
    played = lost = 0;
    vitrail_set_agent(agent, NULL);
}

int session_stop(void) {
    vitrail_set_agent(NULL, NULL);
    return lost ? -1 : played;
}
