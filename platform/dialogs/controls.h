// Controls: the views drawn in a window. Push buttons, check boxes, popup
// buttons, list boxes, group boxes and icons are controls as the toolkit
// knows them; edit boxes and static texts of a dialog are views of the same
// record, so that a dialog item's handle is always a ControlRef.
//
//   Kind         value              title          extra
//   PushButton   -                  label          -
//   CheckBox     0 or 1             label          -
//   PopupButton  chosen item, 0     -              menuID
//   ListBox      -                  -              list (owned)
//   GroupBox     -                  title          -
//   Icon         -                  -              iconID
//   EditText     -                  -              te (owned)
//   StaticText   -                  text           -
//   Picture      -                  picture name   -
//
// Changing a control invalidates it; windows draw their invalid controls
// before they are shown, read or waited on (FlushWindows).
#pragma once

#include <cstdint>
#include <string>

#include <vitrail/types.h>

#include "platform/dialogs/lists.h"
#include "platform/dialogs/menus.h"
#include "platform/dialogs/textedit.h"

namespace platform {

enum class ControlKind : uint8_t {
    PushButton,
    CheckBox,
    PopupButton,
    ListBox,
    GroupBox,
    Icon,
    EditText,
    StaticText,
    Picture
};

} // namespace platform

struct OpaqueControlRef {
    WindowRef window = nullptr;
    platform::ControlKind kind = platform::ControlKind::PushButton;
    Rect rect{0, 0, 0, 0};
    std::string title; // Mac OS Roman
    int32_t value = 0, minimum = 0, maximum = 1;
    uint8_t hilite = 0; // 0 active, 255 inactive, other values: that part pressed
    bool visible = true;
    bool invalid = true;
    void *refCon = nullptr;
    int16_t menuID = 0;
    platform::ListHandle list = nullptr;
    platform::TEHandle te = nullptr;
    int16_t iconID = -1;
    bool focused = false;   // edit box with the keyboard focus
    bool isDefault = false; // push button that Return presses
    bool ringShown = false; // a focus ring was drawn around the box
};

namespace platform {

constexpr int16_t pushButProc = 0;
constexpr int16_t checkBoxProc = 1;
constexpr uint8_t kControlInactivePart = 255;
constexpr uint8_t kControlButtonPart = 10;

constexpr uint32_t kControlListBoxListHandleTag = 0x6C68616E;  // 'lhan'
constexpr uint32_t kControlListBoxDoubleClickTag = 0x64626C63; // 'dblc'
constexpr OSErr errDataNotSupported = -30582;
constexpr OSErr errDataSizeMismatch = -30598;
constexpr OSStatus errUnknownControl = -30584;

// What an icon control shows: content kind 2 is a colour icon resource.
struct ControlButtonContentInfo {
    int16_t contentType;
    int16_t resID;
};
constexpr int16_t kControlContentCIconRes = 2;
constexpr int16_t kStopIcon = 0, kNoteIcon = 1, kCautionIcon = 2;

struct ListDefSpec {
    int16_t defType;
};

// A push button (procID 0) or check box (procID 1) in the window; value,
// minimum and maximum as given; null for a bad window or procID.
ControlRef NewControl(WindowRef window, const Rect *bounds, ConstStr255Param title, Boolean visible,
                      int16_t value, int16_t minimum, int16_t maximum, int16_t procID,
                      void *refCon);
// A popup button showing the items of the listed menu `menuID`; value 0.
OSStatus CreatePopupButtonControl(WindowRef window, const Rect *bounds, CFStringRef title,
                                  int16_t menuID, Boolean variableWidth, int16_t titleWidth,
                                  int16_t titleJustification, int16_t titleStyle,
                                  ControlRef *control);
// A list box with `rows` empty rows of cellHeight pixels (14 when 0 or less).
OSStatus CreateListBoxControl(WindowRef window, const Rect *bounds, Boolean autoSize, int16_t rows,
                              int16_t columns, Boolean horizScroll, Boolean vertScroll,
                              int16_t cellHeight, int16_t cellWidth, Boolean hasGrowSpace,
                              const ListDefSpec *listDef, ControlRef *control);
OSStatus CreateGroupBoxControl(WindowRef window, const Rect *bounds, CFStringRef title,
                               Boolean primary, ControlRef *control);
// An icon: 32 x 32, centred in the bounds, the built-in stop, note or
// caution icon for IDs 0, 1, 2 unless the resources folder holds
// cicn/<id>.png; other IDs without a file show nothing.
OSStatus CreateIconControl(WindowRef window, const Rect *bounds,
                           const ControlButtonContentInfo *content, Boolean dontTrack,
                           ControlRef *control);
// Views of a dialog's edit box and static text.
ControlRef NewEditView(WindowRef window, const Rect *bounds, TEHandle te);
ControlRef NewStaticView(WindowRef window, const Rect *bounds);
// A view showing the "PICT" resource named by its title, scaled to its bounds.
ControlRef NewPictureView(WindowRef window, const Rect *bounds);

// True for a control that exists in a window that exists.
bool IsControl(ControlRef control);
void DisposeControl(ControlRef control);
// Frees the record (the window is disposing of its controls).
void DeleteControlRecord(ControlRef control);

int16_t GetControlValue(ControlRef control);
// Sets the value clamped to minimum..maximum.
void SetControlValue(ControlRef control, int16_t value);
int16_t GetControlMinimum(ControlRef control);
int16_t GetControlMaximum(ControlRef control);
void SetControlMaximum(ControlRef control, int16_t maximum);
// 0 active, 255 inactive, another part: shown pressed.
void HiliteControl(ControlRef control, int16_t part);
bool IsControlActive(ControlRef control);
void SetControlTitle(ControlRef control, ConstStr255Param title);
void GetControlTitle(ControlRef control, Str255 title);
// List boxes: "lhan" gives the list (sizeof(ListHandle) bytes), "dblc" one
// byte, 1 when the last click was a double click.
OSErr GetControlData(ControlRef control, int16_t part, uint32_t tag, size_t bufferSize,
                     void *buffer, size_t *actualSize);
// The popup button's menu, or null.
MenuRef GetControlPopupMenuHandle(ControlRef control);
// Draws the control now.
void Draw1Control(ControlRef control);
// Marks the control to be drawn at the next flush.
void InvalControl(ControlRef control);
// Draws the window's invalid controls.
void DrawInvalidControls(WindowRef window);
// The control under a local point, the last created first, group boxes
// (which only frame others) left out; null when none.
ControlRef FindControlAt(WindowRef window, Point local);

} // namespace platform
