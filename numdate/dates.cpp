// Dates: French names, calendar arithmetic and the stored and displayed forms.
#include <vitrail/numdate.h>

extern "C" {

VITRAIL_API int32_t a_org = 1950;

} // extern "C"
