/*
 * vitrail — host-facing platform services: where the library's files live,
 * off-screen ports and PNG export, the backend and automation of dialogs.
 *
 *   Setting           Default                         Overridden by
 *   volumes root      "/Volumes"                      VITRAIL_VOLUMES, vitrail_set_volumes_root
 *
 * A full Mac path "Vol:dir:file" names <volumes root>/Vol/dir/file.
 */
#ifndef VITRAIL_PLATFORM_H
#define VITRAIL_PLATFORM_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* Sets the folder that holds the volumes (no trailing "/" needed). A null or
 * empty folder goes back to VITRAIL_VOLUMES, or "/Volumes" when it is unset.
 * Folders longer than 1023 bytes are refused (returns -1); otherwise 0. */
VITRAIL_API int32_t vitrail_set_volumes_root(const char *folder);

/* The volumes root in force, without a trailing "/". Valid until the next
 * vitrail_set_volumes_root. */
VITRAIL_API const char *vitrail_volumes_root(void);

VITRAIL_END_DECLS

#endif
