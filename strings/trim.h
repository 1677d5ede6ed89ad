// Blank trimming shared with the number readers, which trim both ends of
// the text they read in place before looking at it.
#pragma once

#include <cstddef>

namespace strings {

// Removes trailing then leading blanks (0x20) of s in place, as chelibl_f
// then chelibl_d do, measuring s once; returns the new length. s not null.
size_t TrimBlanks(char *s);

} // namespace strings
