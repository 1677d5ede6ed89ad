// The system version query. The answer is a Mac OS X-class version unless a
// test sets another one (or a failure) to exercise the classic branch.
#pragma once

#include <cstdint>

#include "platform/toolbox/files.h"

namespace platform {

constexpr OSType gestaltSystemVersion = FourCharCode("sysv");
constexpr OSErr gestaltUndefSelectorErr = -5551;

// The version answered by default: 10.4.5 in binary-coded decimal.
constexpr int32_t kDefaultSystemVersion = 0x1045;

// Answers the value of `selector` in *response. Only gestaltSystemVersion is
// known; any other selector, or a null response, gives
// gestaltUndefSelectorErr and leaves *response alone.
OSErr Gestalt(OSType selector, int32_t *response);

// Makes Gestalt answer `version` with `result` (a non-zero result makes the
// query fail) until ResetSystemVersionForTesting.
void SetSystemVersionForTesting(int32_t version, OSErr result = noErr);
void ResetSystemVersionForTesting();

} // namespace platform
