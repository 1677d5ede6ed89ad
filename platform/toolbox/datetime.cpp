// The local clock through the C library's localtime_r.
#include "platform/toolbox/datetime.h"

#include <ctime>

namespace platform {

void GetTime(DateTimeRec *d) {
    if (!d) return;
    const std::time_t now = std::time(nullptr);
    std::tm t{};
    localtime_r(&now, &t);
    d->year = static_cast<int16_t>(t.tm_year + 1900);
    d->month = static_cast<int16_t>(t.tm_mon + 1);
    d->day = static_cast<int16_t>(t.tm_mday);
    d->hour = static_cast<int16_t>(t.tm_hour);
    d->minute = static_cast<int16_t>(t.tm_min);
    d->second = static_cast<int16_t>(t.tm_sec);
    d->dayOfWeek = static_cast<int16_t>(t.tm_wday + 1);
}

} // namespace platform
