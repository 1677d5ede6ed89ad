/*
 * The demo's scripted session: an automation agent that plays one session
 * of the demo when no person is there (the headless backend), the way a
 * person would, one action each time a dialog waits.
 *
 * Before each action it writes the waiting window as <folder>/step-NN.png
 * and prints one line on stdout:
 *
 *   [step NN] <window title>: click X Y [N]   (window pixels; N clicks, 1 if absent)
 *   [step NN] <window title>: type "<text>"   (UTF-8)
 *   [step NN] <window title>: key <name>      (X keysym names: Return, shift+Tab, ...)
 *   [step NN] <window title>: close           (the close box; acts as Escape)
 *
 * followed by a comment in parentheses. The lines are also what the X
 * server tests replay with real input. A window the session does not expect
 * stops it: the dialogs then answer for themselves.
 */
#ifndef VITRAIL_DEMO_SESSION_H
#define VITRAIL_DEMO_SESSION_H

/* Attaches the agent; PNGs go into `folder` (kept, not copied). */
void session_start(const char *folder);

/* Detaches it; returns the number of steps played, or -1 when a window
 * came that the session did not expect. */
int session_stop(void);

/* Prints Windows-1252 text as UTF-8 (the bytes 0x80-0x9F as "?"). */
void put_cp1252(const char *text);

#endif
