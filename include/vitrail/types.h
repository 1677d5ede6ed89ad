/*
 * vitrail — types that cross the exported interface.
 *
 * The export macro, the C linkage guards, and the toolkit records that hosts
 * pass to the library or receive from it. Windows, dialogs and ports are
 * opaque: hosts hold them and give them back, never look inside.
 *
 *   Record        Fields (in order)                      Notes
 *   RGBColor      red, green, blue                       unsigned 16-bit each
 *   Point         v, h                                   vertical first
 *   Rect          top, left, bottom, right               16-bit coordinates
 *   EventRecord   what, message, when, where, modifiers  message holds a pointer
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

/* A length-prefixed string: one length byte, at most 255 characters. */
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

typedef Boolean (*ModalFilterProcPtr)(DialogRef dialog, EventRecord *event,
                                      DialogItemIndex *itemHit);

VITRAIL_END_DECLS

#endif
