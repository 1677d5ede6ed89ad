/*
 * vitrail — numbers and dates: integer and real number text coding, fixed-width
 * numeric fields, French dates and times.
 */
#ifndef VITRAIL_NUMDATE_H
#define VITRAIL_NUMDATE_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* Origin year for widening two-digit years: yy < a_org - 1900 gives 20yy,
 * else 19yy. 1950 at load. */
VITRAIL_API extern int32_t a_org;

VITRAIL_END_DECLS

#endif
