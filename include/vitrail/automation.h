/*
 * vitrail — automation of dialogs, and windows for hosts.
 *
 * An agent attached with vitrail_set_agent is called each time a modal
 * dialog has handled all queued input and would wait for more. It reads the
 * dialog (title, items, values, list rows and menu items) and queues input:
 * clicks, typing and keys, performed afterwards as a person's input would be,
 * through the same code. Tests, the demo's script player and hosts' own test
 * suites drive every dialog this way.
 *
 * With no agent, or an agent that queues nothing, a dialog without a display
 * (the headless backend) is answered with its default button when that is
 * active and with Escape otherwise; each answer writes one line on standard
 * error. A dialog is never left waiting forever.
 *
 *   Item kinds   4 control, 7 popup control, 8 static text, 16 edit text,
 *                32 icon, 64 picture
 *   Coordinates  rectangles and points in the window's own (local) pixels,
 *                except vitrail_window_bounds (global, on the screen)
 *   Texts        Windows character set (code page 1252) both ways; a
 *                character the dialogs' Mac OS Roman cannot hold is dropped
 *                when typed and read back as "?"
 *
 * Every function taking a WindowRef checks that the window exists: a null,
 * disposed or foreign pointer gets -1 (or null, or nothing), never a crash.
 */
#ifndef VITRAIL_AUTOMATION_H
#define VITRAIL_AUTOMATION_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- The agent ------------------------------------------------------------ */

typedef void (*vitrail_agent_fn)(WindowRef window, void *user);

/* Attaches the agent (null detaches it); `user` is passed back to it. The
 * agent gets the window of the dialog that waits. It must not start a
 * dialog itself (it is not called again while it runs). */
VITRAIL_API void vitrail_set_agent(vitrail_agent_fn agent, void *user);

/* ---- Host windows --------------------------------------------------------- */

/* A visible window of the host, in front of the others, with a white port
 * the size of the rectangle (global pixels; each side clamped to 1..8192),
 * for the host to draw in, to centre dialogs over and to carry the record
 * that MessageBoxFilter reads. Title in the Windows character set (null:
 * none). Null when memory runs out. */
VITRAIL_API WindowRef vitrail_window_new(const char *title, int16_t left, int16_t top,
                                         int16_t right, int16_t bottom);

/* Disposes of a host window; dialog windows and unknown pointers are ignored. */
VITRAIL_API void vitrail_window_dispose(WindowRef window);

/* The window's port, brought up to date (for drawing with the draw.h
 * routines, reading pixels and writing PNGs); null for no such window. */
VITRAIL_API GrafPtr vitrail_window_port(WindowRef window);

/* Sets the window's reference constant (read back by MessageBoxFilter); an
 * unknown window is left alone. */
VITRAIL_API void vitrail_window_set_refcon(WindowRef window, void *refcon);

/* Shows on the display what the host drew into the window's port (with
 * the SDL backend; a host's drawing otherwise appears when a dialog next
 * waits), and queues an update event for the window, as when a person
 * uncovers it. 0, or -1 for no such window. */
VITRAIL_API int32_t vitrail_window_invalidate(WindowRef window);

/* ---- Reading -------------------------------------------------------------- */

/* The front-most visible window, or null. */
VITRAIL_API WindowRef vitrail_front_window(void);

/* Copies at most size - 1 bytes of the title (Windows character set;
 * terminated when size > 0) and returns the title's whole length; -1 for no
 * such window. */
VITRAIL_API int32_t vitrail_window_title(WindowRef window, char *buf, int32_t size);

/* The window's content rectangle in global pixels: 0, or -1 for no such
 * window or a null rect. */
VITRAIL_API int32_t vitrail_window_bounds(WindowRef window, Rect *global);

/* The number of items of a dialog window; -1 for no such window, 0 for a
 * window that is not a dialog's. */
VITRAIL_API int32_t vitrail_dialog_item_count(WindowRef window);

enum {
    vitrail_control_none = 0,
    vitrail_control_push = 1,
    vitrail_control_check = 2,
    vitrail_control_popup = 3,
    vitrail_control_list = 4,
    vitrail_control_group = 5,
    vitrail_control_icon = 6
};

typedef struct vitrail_item_info {
    int32_t kind;    /* 4, 7, 8, 16, 32 or 64 (without the disable bit) */
    int32_t control; /* vitrail_control_* */
    Rect rect;       /* window coordinates */
    int32_t value, minimum, maximum;
    int32_t hilite; /* 0 active, 255 inactive */
    int32_t visible;
    int32_t focused;    /* the edit box with the keyboard focus */
    int32_t is_default; /* the push button that Return presses */
    int32_t count;      /* list rows, or popup menu items */
    int32_t selected;   /* the selected list row from 0, or -1 */
    char text[256];     /* edit text, static text, control title; for a popup
                           its chosen item. Cut at 255 bytes. */
} vitrail_item_info;

/* Fills *info for item 1..count: 0, or -1 for no such window or item (or a
 * null info). */
VITRAIL_API int32_t vitrail_dialog_item(WindowRef window, int32_t item, vitrail_item_info *info);

/* A list row (from 0) or a popup menu item (from 1) of `item` (Windows
 * character set): copies at most size - 1 bytes and returns the text's whole
 * length; -1 when there is no such window, item or row. */
VITRAIL_API int32_t vitrail_dialog_item_row(WindowRef window, int32_t item, int32_t row, char *buf,
                                            int32_t size);

/* Writes the window as it is shown as an RGBA PNG at `path` (a Unix path;
 * an existing file is replaced): 0, or -1 for no such window, a null path or
 * a file that cannot be written. */
VITRAIL_API int32_t vitrail_window_write_png(WindowRef window, const char *path);

/* ---- Acting (queued, performed in order when the dialog next waits) ------- */

/* Keys, OR-ed with vitrail_key_shift or vitrail_key_command as needed
 * (vitrail_key_tab | vitrail_key_shift goes back one edit box; 'a' |
 * vitrail_key_command selects all). A plain byte is typed as itself. */
enum {
    vitrail_key_home = 0x01,
    vitrail_key_enter = 0x03,
    vitrail_key_end = 0x04,
    vitrail_key_backspace = 0x08,
    vitrail_key_tab = 0x09,
    vitrail_key_return = 0x0D,
    vitrail_key_escape = 0x1B,
    vitrail_key_left = 0x1C,
    vitrail_key_right = 0x1D,
    vitrail_key_up = 0x1E,
    vitrail_key_down = 0x1F,
    vitrail_key_delete = 0x7F,
    vitrail_key_shift = 0x1000,
    vitrail_key_command = 0x2000
};

/* A click in the middle of the item (an edit box: near its right end, so
 * the caret goes after the text shown). 0, or -1 for no such window or item. */
VITRAIL_API int32_t vitrail_click_item(WindowRef window, int32_t item);

/* `clicks` (1 to 3; 2 is a double click) at window point (x, y). 0, or -1
 * for no such window or a point outside it. */
VITRAIL_API int32_t vitrail_click_at(WindowRef window, int32_t x, int32_t y, int32_t clicks);

/* A list box: scrolls row `row` (from 0) into view and clicks it `clicks`
 * times (1 to 3). A popup: opens its menu and chooses item `row` (from 1).
 * 0, or -1 for no such window, item or row. */
VITRAIL_API int32_t vitrail_choose_row(WindowRef window, int32_t item, int32_t row, int32_t clicks);

/* The rectangle (window coordinates) of list row `row` (from 0), scrolled
 * into view first, or of popup menu item `row` (from 1) as its open menu
 * shows it: where a person clicks to choose it. 0, or -1 for no such
 * window, item or row (or a null rect). */
VITRAIL_API int32_t vitrail_dialog_item_row_rect(WindowRef window, int32_t item, int32_t row,
                                                 Rect *rect);

/* Types the text (Windows character set) into the focused edit box, one key
 * a byte. 0, or -1 for no such window (or a null text). */
VITRAIL_API int32_t vitrail_type_text(WindowRef window, const char *text);

/* Presses one key (see above). 0, or -1 for no such window or a key that
 * is not one byte with optional modifier bits. */
VITRAIL_API int32_t vitrail_press_key(WindowRef window, int32_t key);

/* The backend in force, "headless" or "sdl", chosen once at its first use:
 * VITRAIL_BACKEND=headless gives headless; =sdl, or unset with DISPLAY or
 * WAYLAND_DISPLAY named, tries sdl (another value is warned about and taken
 * as unset). When sdl does not open, headless takes over with one line on
 * standard error saying why. Asking may open the display. */
VITRAIL_API const char *vitrail_backend_name(void);

VITRAIL_END_DECLS

#endif
