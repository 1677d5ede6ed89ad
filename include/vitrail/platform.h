/*
 * vitrail — host-facing platform services: where the library's files live,
 * and off-screen ports with their pixels, trace and PNG export. Windows,
 * the backend and the automation of dialogs are in automation.h.
 *
 *   Setting           Default     Set by (the call wins over the variable)
 *   volumes root      /Volumes    vitrail_set_volumes_root, VITRAIL_VOLUMES
 *   resources folder  none        vitrail_set_resources_folder, VITRAIL_RESOURCES
 *   backend           see         VITRAIL_BACKEND (automation.h)
 *
 * A full Mac path "Vol:dir:file" names <volumes root>/Vol/dir/file. The
 * variables are read once, at the first use of the setting; a value longer
 * than 1023 bytes is ignored (the default stays).
 *
 * Character sets: folders and PNG paths here are Unix paths, bytes handed
 * to the file system as they are (UTF-8 on a usual system). Texts in the
 * trace are UTF-8.
 */
#ifndef VITRAIL_PLATFORM_H
#define VITRAIL_PLATFORM_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* Sets the folder that holds the volumes (a Unix path; trailing "/" dropped;
 * a relative one is taken from the working folder at each use). A null or
 * empty folder goes back to VITRAIL_VOLUMES, or "/Volumes" when it is unset.
 * The folder need not exist yet. Folders longer than 1023 bytes are refused
 * (returns -1, the root in force stays); otherwise 0. */
VITRAIL_API int32_t vitrail_set_volumes_root(const char *folder);

/* The volumes root in force, without a trailing "/". Valid until the next
 * vitrail_set_volumes_root. */
VITRAIL_API const char *vitrail_volumes_root(void);

/* Sets the folder of named resources (a Unix path; pictures are
 * <folder>/PICT/<name>.png, dialog templates <folder>/DLOG/<name>, a name
 * in Mac OS Roman being its UTF-8 file name; docs/resources.md). A null or
 * empty folder goes back to VITRAIL_RESOURCES, or no folder when it is
 * unset: no named resource exists then. Folders longer than 1023 bytes are
 * refused (returns -1, the folder in force stays); otherwise 0. */
VITRAIL_API int32_t vitrail_set_resources_folder(const char *folder);

/* The resources folder in force ("" when none). Valid until the next
 * vitrail_set_resources_folder. */
VITRAIL_API const char *vitrail_resources_folder(void);

/* Off-screen ports: a white RGBA raster of width x height pixels (each side
 * 1..8192) with a black pen of 1 x 1, the system font and a trace of the
 * operations drawn into it. Null when a side is out of range. */
VITRAIL_API GrafPtr vitrail_port_new(int32_t width, int32_t height);

/* Frees a port from vitrail_port_new; null and a window's port (which its
 * window owns and frees) are ignored. The port is current no more. */
VITRAIL_API void vitrail_port_dispose(GrafPtr port);

/* Makes `port` (from vitrail_port_new or vitrail_window_port) the current
 * port: the text routines that work in the current port (TextOut_0,
 * TextOut_Ext, ...) draw there. Null leaves none. Dialogs change the current
 * port while they run and leave it as their contracts say: a host sets its
 * own again before drawing. */
VITRAIL_API void vitrail_port_set_current(GrafPtr port);

/* The current port, or null. */
VITRAIL_API GrafPtr vitrail_port_current(void);

/* The pixel at (x, y) of any port (local pixels) as 0xRRGGBBAA; 0 outside
 * the port or for null. */
VITRAIL_API uint32_t vitrail_port_pixel(GrafPtr port, int32_t x, int32_t y);

/* Kinds of traced operations and their coordinates (local, in pixels):
 *   line             (x1, y1) to (x2, y2), pen_width x pen_height
 *   paint/frame rect left x1, top y1, right x2, bottom y2
 *   text             baseline from (x1, y1) to (x2, y1); text in UTF-8
 *   picture          left x1, top y1, right x2, bottom y2; text the name */
enum {
    vitrail_op_line = 1,
    vitrail_op_paint_rect = 2,
    vitrail_op_frame_rect = 3,
    vitrail_op_text = 4,
    vitrail_op_picture = 5
};

typedef struct vitrail_trace_op {
    int32_t kind;
    int16_t x1, y1, x2, y2;
    int16_t pen_width, pen_height;
    RGBColor colour; /* the foreground colour */
    int16_t font, face, size, mode;
    char text[768]; /* NUL-terminated, cut at 767 bytes */
} vitrail_trace_op;

/* The number of traced operations (the latest 65536 are kept); 0 for null. */
VITRAIL_API int32_t vitrail_port_trace_count(GrafPtr port);

/* Copies operation `index` (0 = oldest kept) into *op: 0, or -1 when the
 * port or op is null or the index is out of range. */
VITRAIL_API int32_t vitrail_port_trace_get(GrafPtr port, int32_t index, vitrail_trace_op *op);

/* Forgets the traced operations of the port; null is ignored. */
VITRAIL_API void vitrail_port_trace_clear(GrafPtr port);

/* Writes the port's raster as an RGBA PNG file at `path` (a Unix path, not a
 * Mac path; an existing file is replaced): 0, or -1 when the port or path is
 * null or the file cannot be written. */
VITRAIL_API int32_t vitrail_port_write_png(GrafPtr port, const char *path);

VITRAIL_END_DECLS

#endif
