// Dialogs: a window with a numbered item list, the keyboard focus among its
// edit boxes, a default item, and the modal loop that returns item hits.
//
//   Item kind   Value  Handle (GetDialogItem)
//   userItem    0      the view
//   ctrlItem    4      + btnCtrl 0, chkCtrl 1, resCtrl 3 (popup: kind 7); the control
//   statText    8      a static text view
//   editText    16     an edit box view (its TERec in handle->te)
//   iconItem    32     an icon control
//   picItem     64     a view
//   itemDisable 128    added to a kind: hits on the item are not reported
#pragma once

#include <cstdint>
#include <vector>

#include <vitrail/types.h>

#include "platform/dialogs/controls.h"
#include "platform/dialogs/look.h"
#include "platform/dialogs/windows.h"

namespace platform {

enum : int16_t {
    userItem = 0,
    ctrlItem = 4,
    btnCtrl = 0,
    chkCtrl = 1,
    resCtrl = 3,
    statText = 8,
    editText = 16,
    iconItem = 32,
    picItem = 64,
    itemDisable = 128
};

struct DialogItem {
    int16_t kind;
    ControlRef view;
};

} // namespace platform

struct OpaqueDialogPtr {
    WindowRef window = nullptr;
    std::vector<platform::DialogItem> items; // item n at index n - 1
    int16_t defaultItem = 0;                 // declared default item, 0 for none
    int16_t focus = 0;                       // edit item with the keyboard focus, 0 for none
    bool tracksCursor = false;
    bool focusChosen = false; // the first edit box was given the focus
    // The modal loop's state between two events.
    ControlRef tracking = nullptr; // control pressed, waiting for the mouse up
    bool trackingEdit = false;     // selecting text by dragging
    Point downWhere{0, 0};
    uint32_t downWhen = 0;
    WindowRef downWindow = nullptr;
    int16_t clickCount = 0;
    ControlRef openMenu = nullptr; // popup whose menu is open
    int16_t menuHighlight = 0;
    platform::look::SavedPixels underMenu;
    int32_t autoAnswers = 0; // headless answers given to this dialog
};

namespace platform {

using ModalFilterUPP = ModalFilterProcPtr;

// A dialog window (invisible or visible), movable modal, in the window list
// as NewCWindow places it; title set, the system font at 13 px in its port,
// background #ECECEC. Null when memory runs out.
DialogRef NewColorDialog(void *storage, const Rect *bounds, ConstStr255Param title, Boolean visible,
                         int16_t procID, WindowRef behind, Boolean goAway, void *refCon,
                         void *items);
// Disposes of the dialog, its window, items and controls; unknown dialogs are ignored.
void DisposeDialog(DialogRef dialog);
bool IsDialog(DialogRef dialog);
WindowRef GetDialogWindow(DialogRef dialog);
// The dialog of a dialog window, or null.
DialogRef GetDialogFromWindow(WindowRef window);

// Inserts an item after item `afterItem` (clamped, so count + 1 appends).
// Control kinds need a control of the dialog's window; editText takes a
// TERec (adopted) or null; statText, userItem and picItem a view is made
// for. paramErr for anything else.
OSErr InsertDialogItem(DialogRef dialog, int16_t afterItem, int16_t kind, void *handle,
                       const Rect *box);
int16_t CountDITL(DialogRef dialog);
// Kind, handle and rectangle of item 1..count; kind 0, null and an empty
// rectangle for other items (null outputs are skipped).
void GetDialogItem(DialogRef dialog, int16_t item, int16_t *kind, ControlRef *handle, Rect *box);
// The text of an edit box (at most 255 bytes, caret at the end), a static
// text or a control's title.
void SetDialogItemText(ControlRef item, ConstStr255Param text);
void GetDialogItemText(ControlRef item, Str255 text);
// Gives the edit box `item` the keyboard focus and selects start..end.
void SelectDialogItemText(DialogRef dialog, int16_t item, int16_t start, int16_t end);
// The item that Return and Enter press; 0 for none (then item 1 when it is a button).
OSErr SetDialogDefaultItem(DialogRef dialog, int16_t item);
OSErr SetDialogTracksCursor(DialogRef dialog, Boolean tracks);
// Draws every control of the dialog again.
void DrawDialog(DialogRef dialog);
// The item Return would press, when it is an active push button; else 0.
int16_t ReturnItem(DialogRef dialog);
// The edit box with the focus, 0 for none.
int16_t FocusedItem(DialogRef dialog);
// Gives the edit box `item` the focus with all its text selected, as Tab does.
void FocusItem(DialogRef dialog, int16_t item);

// The automation agent, called with the dialog's window each time the modal
// loop has handled every queued event and would wait. Null detaches.
using AgentProc = void (*)(WindowRef window, void *user);
void SetAgent(AgentProc agent, void *user);

// Filter routines: the procedure itself stands for its routine descriptor.
ModalFilterUPP NewModalFilterUPP(ModalFilterProcPtr proc);
void DisposeModalFilterUPP(ModalFilterUPP filter);
Boolean InvokeModalFilterUPP(DialogRef dialog, EventRecord *event, DialogItemIndex *itemHit,
                             ModalFilterUPP filter);
// The standard filter: Return and Enter press the default item, Escape and
// command-period item 2 when it is an active push button.
OSErr GetStdFilterProc(ModalFilterUPP *filter);

// Runs the front dialog until an item is hit and sets *itemHit to it (0
// when there is no dialog in front). The filter (or, when it is null, the
// standard filter) sees every event first. With nothing queued, the
// automation agent is asked; with still nothing, the backend waits for a
// person; a backend without input answers for the person (the default
// button, or Escape) and never waits.
void ModalDialog(ModalFilterUPP filter, DialogItemIndex *itemHit);

} // namespace platform
