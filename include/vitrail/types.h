/*
 * vitrail — types that cross the exported interface.
 *
 * The export macro, the C linkage guards, and the toolkit records that hosts
 * pass to the library or receive from it. Windows, dialogs, ports, controls,
 * bundles and strings of the toolkit are opaque: hosts hold them and give
 * them back, never look inside.
 *
 *   Type             Holds                                   Notes
 *   Boolean          0 false, any other value true           8-bit
 *   OSErr, OSStatus  0 success, a negative toolkit error     16 and 32-bit
 *   Str255           a length byte, then up to 255 bytes     Mac OS Roman; the platform's own,
 *                                                            no exported function takes one
 *   RGBColor         red, green, blue                        unsigned 16-bit, 0xFFFF full
 *   Point            v, h                                    vertical first
 *   Rect             top, left, bottom, right                left <= x < right, top <= y < bottom
 *   EventRecord      what, message, when, where, modifiers   below
 *
 * Coordinates are pixels, x to the right and y downwards, 16-bit: local to
 * a port or window unless a function says global (on the screen).
 *
 * Events, as MessageBoxFilter and a host record's handler (msgbox.h) see
 * them:
 *   what        one of the kinds below; 15 is the platform's own (pointer
 *               moves, wheel, list choices): pass it on untouched
 *   message     mouseDown, mouseUp, updateEvt, activateEvt: the WindowRef;
 *               keyDown, autoKey: the character code, Mac OS Roman, in the
 *               low byte
 *   when        ticks (sixtieths of a second) since the platform started
 *   where       the mouse position, global; (0, 0) for other kinds
 *   modifiers   0x0001 window comes to the front (activateEvt), 0x0080
 *               button down, 0x0100 command, 0x0200 shift, 0x0800 option,
 *               0x1000 control
 */
#ifndef VITRAIL_TYPES_H
#define VITRAIL_TYPES_H

#include <stddef.h>
#include <stdint.h>

#define VITRAIL_API __attribute__((visibility("default")))

#ifdef __cplusplus
#define VITRAIL_BEGIN_DECLS extern "C" {
#define VITRAIL_END_DECLS }
#else
#define VITRAIL_BEGIN_DECLS
#define VITRAIL_END_DECLS
#endif

VITRAIL_BEGIN_DECLS

typedef unsigned char Boolean;
typedef int16_t OSErr;
typedef int32_t OSStatus;

typedef unsigned char Str255[256];
typedef unsigned char *StringPtr;
typedef const unsigned char *ConstStr255Param;

typedef struct RGBColor {
    uint16_t red;
    uint16_t green;
    uint16_t blue;
} RGBColor;

typedef struct Point {
    int16_t v;
    int16_t h;
} Point;

typedef struct Rect {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
} Rect;

typedef struct OpaqueGrafPtr *GrafPtr;
typedef GrafPtr CGrafPtr;
typedef struct OpaqueWindowPtr *WindowRef;
typedef WindowRef WindowPtr;
typedef struct OpaqueDialogPtr *DialogRef;
typedef DialogRef DialogPtr;
typedef struct OpaqueControlRef *ControlRef;
typedef struct __CFBundle *CFBundleRef;
typedef const struct __CFString *CFStringRef;

/* A dialog item's number, from 1 (OK is 1 and Cancel 2 in a form dialog). */
typedef int16_t DialogItemIndex;

/* Event kinds of EventRecord.what used across the interface. */
enum { nullEvent = 0, mouseDown = 1, mouseUp = 2, keyDown = 3, keyUp = 4, autoKey = 5,
       updateEvt = 6, activateEvt = 8 };

typedef struct EventRecord {
    uint16_t what;
    uintptr_t message; /* for update and activate events: the WindowRef */
    uint32_t when;
    Point where;
    uint16_t modifiers;
} EventRecord;

/* A dialog's event filter: called with each event before the dialog handles
 * it. True when the filter has dealt with the event, with *itemHit set to
 * the item it counts as hit (the dialog then ends its wait with that item);
 * false lets the dialog handle the event as usual. */
typedef Boolean (*ModalFilterProcPtr)(DialogRef dialog, EventRecord *event,
                                      DialogItemIndex *itemHit);

VITRAIL_END_DECLS

#endif
