// The 16-colour palette.
//
//   0 black       4 dark blue     8 light grey   12 blue
//   1 dark red    5 dark magenta  9 red          13 magenta
//   2 dark green  6 dark cyan    10 green        14 cyan
//   3 dark yellow 7 dark grey    11 yellow       15 white
#include <array>

#include <vitrail/draw.h>

namespace {

constexpr uint16_t H = 0x8000, L = 0xC000, F = 0xFFFF;

constexpr std::array<RGBColor, 16> kPalette = {{
    {0, 0, 0},
    {H, 0, 0},
    {0, H, 0},
    {H, H, 0},
    {0, 0, H},
    {H, 0, H},
    {0, H, H},
    {H, H, H},
    {L, L, L},
    {F, 0, 0},
    {0, F, 0},
    {F, F, 0},
    {0, 0, F},
    {F, 0, F},
    {0, F, F},
    {F, F, F},
}};

} // namespace

extern "C" {

// Entry index modulo 16. A negative index gives entry 0 (black) rather than
// reaching outside the table.
VITRAIL_API RGBColor vga_col(int32_t index) {
    return kPalette[index < 0 ? 0 : size_t(index % 16)];
}

} // extern "C"
