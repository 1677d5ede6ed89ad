/*
 * vitrail — message boxes: the Windows-style MessageBox and the note and
 * question dialogs behind it.
 *
 *   Flag  Read by          Meaning
 *   0x01  note             note icon
 *   0x02  note, question   caution icon (before any other icon bit)
 *   0x04  note             stop icon (before 0x01)
 *   0x08  question         caution icon
 *   0x10  MessageBox       ask a question ("Oui" / "Non"); else a note ("OK")
 *   0x20  question         keep "Oui" the default button even with 0x40
 *   0x40  question         make "Non" the default button
 *
 *   Result  1 "OK" of a note, 2 "Oui", 3 "Non"; there is no cancel result.
 *
 * Geometry, in pixels (w: 400 when the caption and the text each have at
 * most 50 characters, else 540; n: the line count):
 *
 *             height      buttons                                  text baselines
 *   question  20n + 50    "Oui" w-200..w-120, "Non" w-100..w-20,   80, 26 + 14k
 *                         both 20n+18..20n+38
 *   note      14n + 62    "OK" w-100..w-20, height-32..height-12   80, 26 + 14k
 *
 * The icon is 32 x 32 at (18, 18). A box is centred over its parent window,
 * or over the screen when there is none. Return and Enter press the default
 * button; Escape presses "Non" of a question.
 */
#ifndef VITRAIL_MSGBOX_H
#define VITRAIL_MSGBOX_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

enum {
    MSGBOX_ICON_NOTE = 0x01,
    MSGBOX_ICON_CAUTION = 0x02,
    MSGBOX_ICON_STOP = 0x04,
    MSGBOX_QUESTION_CAUTION = 0x08,
    MSGBOX_QUESTION = 0x10,
    MSGBOX_DEFAULT_OUI = 0x20,
    MSGBOX_DEFAULT_NON = 0x40
};

enum { MSGBOX_OK = 1, MSGBOX_OUI = 2, MSGBOX_NON = 3 };

/* Shows `text` under `caption` (both zero-terminated, Windows character
 * set; null is empty) in a modal box over `window` (null: the front window)
 * and returns the button chosen. Lines end at carriage returns and line
 * feeds (a CR LF pair ends two), and a line is broken at its first space
 * after column 50 that is not followed by ":" or ","; a word longer than a
 * line is not cut. The line count given to the dialog is at least 2. A
 * caption over 255 characters or a text over 4095 shows "Erreur interne" /
 * "MessageBox impossible" instead. The caller's strings are not changed; the
 * parent's port is made current again before returning. */
VITRAIL_API int32_t MessageBox(WindowRef window, const char *text, const char *caption,
                               uint32_t flags);

/* The question box: caption in the Windows character set (empty: the title
 * "Dialogue utilisateur"), text already in Mac OS Roman with lines separated
 * by carriage returns, room for `lines` lines (taken in 1..400). Returns 2
 * ("Oui") or 3 ("Non"). The current port is left at none. */
VITRAIL_API int32_t QuestionDialog(WindowRef parent, const char *caption, const char *text,
                                   int32_t lines, uint32_t flags);

/* The note box, as QuestionDialog with one "OK" button; returns 1. */
VITRAIL_API int32_t NoteDialog(WindowRef parent, const char *caption, const char *text,
                               int32_t lines, uint32_t flags);

/* What a host record's handler is called with: the update or activate
 * event of the host's window. */
typedef void (*MessageBoxHostHandler)(EventRecord *event);

/* The event filter of both boxes. For an update or activate event of a
 * window whose reference constant is not null, the constant is the address
 * of a host record read as pointer-sized fields: its tenth field (index 9)
 * is a MessageBoxHostHandler, called with the event when not null; the
 * answer is then false. Every other event goes to the standard filter
 * (Return and Enter press the default button, Escape "Non"), whose answer
 * is returned. A null event answers false. */
VITRAIL_API Boolean MessageBoxFilter(DialogRef dialog, EventRecord *event,
                                     DialogItemIndex *itemHit);

VITRAIL_END_DECLS

#endif
