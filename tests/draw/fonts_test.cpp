// Font, style and colour choice, char_dy, metrics, and the units U and L.
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "draw_fixture.h"

using namespace vitrail_test;

namespace {

platform::FontInfo Info() {
    platform::FontInfo fi{};
    platform::GetFontInfo(&fi);
    return fi;
}

} // namespace

TEST_F(DrawTest, FontSetChoosesFontFaceSizeColoursAndMode) {
    // name, fg, bg, size, style -> font, face, size, mode, background red
    using Row = std::tuple<const char *, int32_t, int32_t, int16_t, int32_t, std::vector<int>>;
    for (auto [name, fg, bg, size, style, expected] : {
             Row{"Geneva", 9, 15, 13, 6, {3, 6, 13, 0, 0xFFFF}},        // underline + italic
             Row{"Helvetica", 0, 255, 10, 3, {21, 5, 10, 1, 0xFFFF}},   // bold + underline
             Row{"Monaco", 1, 4, 12, 24, {4, 96, 12, 0, 0}},            // condense + extend
             Row{"Times", 1, 7, 12, 64 + 1, {20, 1, 12, 0, 0x8000}},    // other bits ignored
             Row{"No Such Font", 2, 255, 30, 1, {20, 1, 12, 1, 0x8000}} // font, face, size kept
         }) {
        EXPECT_EQ(ch_font_set_ext(port, name, fg, bg, size, style), 0);
        EXPECT_STREQ(ch_font_FontName, name);
        EXPECT_EQ((std::vector<int>{port->txFont, port->txFace, port->txSize, port->txMode,
                                    port->bgColour.red}),
                  expected)
            << name;
        EXPECT_EQ(port->fgColour.red, vga_col(fg).red) << name;
        EXPECT_EQ(char_dy, Info().ascent + 1) << name;
    }
}

TEST_F(DrawTest, EmptyOrLongNamesOnlyTouchTheRecordedName) {
    ch_font_set(port, "Arial", 9, 15, 20);
    int16_t dy = char_dy;
    ch_font_set_ext(port, "", 0, 255, 8, 1);
    EXPECT_STREQ(ch_font_FontName, "");
    EXPECT_EQ(char_dy, dy);
    EXPECT_EQ(std::pair(int(port->txSize), int(port->txMode)), std::pair(20, 0));
    EXPECT_EQ(port->fgColour.red, vga_col(9).red);
    ch_font_set(port, nullptr, 0, 255, 8);
    EXPECT_STREQ(ch_font_FontName, "");
    ch_font_set(port, std::string(100, 'n').c_str(), 0, 255, 12);
    EXPECT_EQ(std::strlen(ch_font_FontName), sizeof ch_font_FontName - 1);
    EXPECT_EQ(port->txFont, 1025); // unknown: Arial kept
}

TEST_F(DrawTest, MetricsAndTheUnitsOfFormattedText) {
    ch_font_set(port, "Arial", 0, 255, 48);
    platform::FontInfo fi = Info();
    int32_t height = -1, widMax = -1, leading = -1;
    EXPECT_EQ(ch_font_metrics(nullptr, &height, &widMax, &leading), 0);
    EXPECT_EQ((std::vector<int>{height, widMax, leading}),
              (std::vector<int>{fi.ascent + fi.descent, fi.widMax, fi.leading}));
    EXPECT_EQ(draw::LineHeight(port), height + leading);
    EXPECT_EQ(Unit(), Width("X")); // 48 points: wider than the floor of 8
    EXPECT_GT(Unit(), 20);
    smallFont();
    EXPECT_EQ(Unit(), 8);
    EXPECT_EQ(ch_font_metrics(port, nullptr, nullptr, nullptr), 0);
    platform::SetPort(nullptr);
    ch_font_metrics(port, &height, nullptr, nullptr);
    EXPECT_EQ(height, 0); // no current port
}
