// The local clock as a date-time record, for the date services.
#pragma once

#include <cstdint>

namespace platform {

struct DateTimeRec {
    int16_t year;      // e.g. 2024
    int16_t month;     // 1..12
    int16_t day;       // 1..31
    int16_t hour;      // 0..23
    int16_t minute;    // 0..59
    int16_t second;    // 0..59 (60 on a leap second)
    int16_t dayOfWeek; // 1 = Sunday .. 7 = Saturday
};

// Reads the local date and time (the process's time zone) into *d.
void GetTime(DateTimeRec *d);

} // namespace platform
