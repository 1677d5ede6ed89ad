/*
 * A small host for the X server tests: a host window with a line of text
 * and a question box over it. It prints the answer, and writes the two
 * windows as PNGs into the folder given as argument, as the dialog first
 * waits (both backends alike).
 */
#include <stdio.h>
#include <string.h>

#include <vitrail/automation.h>
#include <vitrail/draw.h>
#include <vitrail/msgbox.h>
#include <vitrail/platform.h>

static const char *folder = ".";
static WindowRef host;

static void snapshot(WindowRef dialog, void *user) {
    char path[1024];
    (void)user;
    snprintf(path, sizeof path, "%s/host.png", folder);
    vitrail_window_write_png(host, path);
    snprintf(path, sizeof path, "%s/question.png", folder);
    vitrail_window_write_png(dialog, path);
    vitrail_set_agent(NULL, NULL);
}

int main(int argc, char **argv) {
    static const char line[] = "Bonjour \xe9t\xe9 \xFF\x8A fin";
    GrafPtr port;
    if (argc > 1) folder = argv[1];
    host = vitrail_window_new("Fen\xeatre h\xf4te", 100, 100, 500, 300);
    port = vitrail_window_port(host);
    vitrail_port_set_current(port);
    ch_font_set(port, "Helvetica", 0, 255, 14);
    TextOut_Ext(port, 20, 20, 0, 0, line, (int32_t)strlen(line));
    printf("backend %s\n", vitrail_backend_name());
    vitrail_set_agent(snapshot, NULL);
    printf("answer %d\n", (int)MessageBox(host, "Enregistrer ?", "Question", MSGBOX_QUESTION));
    return 0;
}
