/*
 * vitrail — dialog run-time: shows the form described in the tables of
 * form.h, runs it, and leaves the accepted values in those tables.
 *
 *   Entry point     Layout from                     Items
 *   QarDlgBoxEx     the tables' geometry and ranks  1 OK, 2 Cancel, then one per
 *                                                   placed field in rank order
 *                                                   (three for a date)
 *   QarDlgBox       a "DLOG" template named by the  item number = field ID
 *                   host (docs/resources.md)
 *   SelectPRES      a one-field list of prescribers read from a profile file
 *
 * Results: 1 accepted (OK, or a confirmed double click in a list box), 0
 * cancelled or not shown. Every edit is stored in the tables as it is made;
 * OK is active only while every text, integer, number and date field is
 * valid. Whatever ends a dialog disables every family (TDB ... SDB, HDB = 0)
 * and puts back the do-nothing hooks; values, counts and flags stay readable.
 *
 * Geometry (dialog units to pixels): x 2x, width 2cx, y and the dialog
 * height 7y/4, field height 5cy/4, truncated toward zero. OK and Cancel are
 * 80 pixels wide (100 when either label has 9 characters or more), 20 high,
 * 34 pixels above the bottom, 10 pixels either side of the centre.
 *
 * Texts cross this interface in the Windows character set. Texts shown are
 * converted with w2mstr (labels, titles, field values, choices) and texts
 * read back with its exact inverse, so every letter w2mstr converts comes
 * back as it was; list texts and values of fields the person does not touch
 * are never changed. Edit boxes hold at most 255 bytes.
 *
 * Choices: a popup's items are its list text split at "+" and "," (not
 * "-"), a list box's rows at "$"; an empty segment is an empty choice. They
 * are shown whether or not the field holds a value yet.
 *
 * Passwords show one "*" per character. A text field's typed "*" takes the
 * stored character at its place, and stays "*" past the end of the stored
 * value. A masked integer field gives each typed "*" a stored digit, aligned
 * to the right (edits are taken to happen at the end); a hit that leaves the
 * mask as it was shown (a click, an arrow key) keeps the stored value. The
 * length shown is kept in IDB_lPassw from the first fill on.
 *
 * One form dialog runs at a time; hooks may call the update functions below
 * but must not start another form dialog.
 */
#ifndef VITRAIL_DIALOG_H
#define VITRAIL_DIALOG_H

#include <vitrail/form.h>
#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* The last prescriber chosen with SelectPRES (Windows character set). */
VITRAIL_API extern char PRES_szSelect[128];

/* Builds the dialog described in the tables, centred over `parent` (null:
 * the front window; the screen when there is none or `parent` is not a
 * window), titled `title`
 * (Windows character set, null as empty, at most 255 characters shown;
 * HDB_szHeader replaces it when HDB is set), runs it with DlgBoxFunc and
 * returns its result: 1 accepted, 0 cancelled.
 * LDB_cx and LDB_cy are converted to pixels in place (set them again before
 * the next dialog). Fields of negative rank get no item and are never
 * addressed while the dialog runs. A description the item tables cannot
 * hold (more than 127 items, a date counting three, or a rank above 127) is
 * refused: nothing is shown, LDB_cx/LDB_cy are left alone, the description
 * is cleared as after Cancel and the result is 0. Popup menus are released
 * when the dialog ends; static texts and group boxes stay on the window
 * whatever is redrawn. */
VITRAIL_API int32_t QarDlgBoxEx(const char *title, WindowRef parent);

/* Runs a dialog whose items are in place (made by QarDlgBoxEx or QarDlgBox)
 * until OK is accepted by the final hook, Cancel is hit, or a list box row is
 * double-clicked and accepted; then clears the description, releases the
 * dialog's popup menus, disposes of the dialog and returns 1 (accepted) or 0.
 * The global hook's count is taken as at most 32 (a negative count as 0);
 * entries naming no field, or a push button, are skipped. A dialog that is
 * not one (null, disposed) gets 0 with the description cleared. */
VITRAIL_API int32_t DlgBoxFunc(DialogRef dialog);

/* Shows the dialog template `name` (zero-terminated, Mac OS Roman as the
 * file name is; docs/resources.md), whose item numbers are the field IDs,
 * with every Dlg_itemOffset and Dlg_rkOffset entry zeroed, and runs it with
 * DlgBoxFunc. A null name, or one naming no template (or a template that
 * cannot be read), returns 0 at once: nothing is shown and the tables stay
 * as they are. */
VITRAIL_API int32_t QarDlgBox(const char *name);

/* Asks the final hook with `window` (passed on as it is, null included) and
 * the tables, then clears the description (families off, default hooks)
 * whatever it answers, and returns its answer. No window is closed. */
VITRAIL_API int32_t QarDlgBox_end(WindowRef window);

/* Field updates for hooks and push-button actions while a dialog runs. Each
 * does nothing and returns 0 when its family is disabled or the index is
 * negative or not below the count (so after a dialog has ended). */

/* Stores at most TDB_BUFFERSIZE - 1 characters of `text` (Windows-1252,
 * null as empty) as text field i's value and shows it (masked for a
 * password field; in a popup the matching choice is selected, a list box is
 * left as it is). A mandatory field given "" and a text longer than
 * TDB_iCarac[i] become invalid; the validity is never raised here and OK is
 * not re-evaluated. Returns 0. */
VITRAIL_API int32_t QarDlgBox_texte_set(int32_t i, const char *text);

/* Rebuilds the choices of text field i from its list text (popup: choices
 * split at "+" and ",", none selected, the control's maximum set to the new
 * count; list box: rows split at "$"), then redraws it. Other fields: no
 * change. The value and validity are not changed. Returns 0. */
VITRAIL_API int32_t QarDlgBox_texte_set_liste(int32_t i);

/* Shows at most 255 characters of `text` (a number as realcod_d reads it,
 * null as empty) in number field i and validates it with vf[i], which
 * stores the number it reads: a mandatory field given "" or a text vf[i]
 * refuses becomes invalid, an accepted one valid. OK is not re-evaluated.
 * Returns 0. */
VITRAIL_API int32_t QarDlgBox_num_set(int32_t i, const char *text);

/* Kept for hosts that call them: they change nothing and return 0. */
VITRAIL_API int32_t QarDlgBox_bool_set(int32_t i, int32_t value);
VITRAIL_API int32_t QarDlgBox_int_set(int32_t i, int32_t value);

/* Lets the person pick a prescriber among the "+"-separated names
 * (Windows-1252, as the profile holds them) of key "Prescripteurs" in
 * section "Prescriptions" of `profile` (a Mac path; a missing file or key
 * gives one empty row). Returns PRES_szSelect, which holds the chosen name
 * when the dialog is accepted, "" when it is cancelled, and its previous
 * text when the name has 128 characters or more. `unused1` and `unused2`
 * are accepted and ignored. */
VITRAIL_API char *SelectPRES(void *unused1, void *unused2, const char *profile);

VITRAIL_END_DECLS

#endif
