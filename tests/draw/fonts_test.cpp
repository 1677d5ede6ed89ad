// Font, style and colour choice, char_dy, metrics, and the units U and L.
#include <cstring>
#include <string>

#include "draw/commands.h"
#include "draw_fixture.h"
#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/text.h"

using namespace vitrail_test;

namespace {

platform::FontInfo Info() {
    platform::FontInfo fi{};
    platform::GetFontInfo(&fi);
    return fi;
}

} // namespace

TEST_F(DrawTest, FontSetChoosesFontFaceSizeColoursAndMode) {
    struct Row {
        const char *name;
        int32_t fg, bg;
        int16_t size;
        int32_t style;
        int16_t font, face, mode;
        uint16_t bgRed;
    } rows[] = {
        {"Geneva", 9, 15, 13, 6, 3, 6, 0, 0xFFFF},        // underline + italic
        {"Helvetica", 0, 255, 10, 3, 21, 5, 1, 0xFFFF},   // bold + underline
        {"Monaco", 1, 4, 12, 24, 4, 96, 0, 0},            // condense + extend
        {"Times", 1, 7, 12, 64 + 1, 20, 1, 0, 0x8000},    // other bits ignored
        {"No Such Font", 2, 255, 30, 1, 20, 1, 1, 0x8000} // font, face, size kept
    };
    for (const Row &r : rows) {
        EXPECT_EQ(ch_font_set_ext(port, r.name, r.fg, r.bg, r.size, r.style), 0);
        EXPECT_STREQ(ch_font_FontName, r.name);
        EXPECT_EQ(port->txFont, r.font) << r.name;
        EXPECT_EQ(port->txFace, r.face) << r.name;
        EXPECT_EQ(port->txMode, r.mode) << r.name;
        EXPECT_EQ(port->bgColour.red, r.bgRed) << r.name;
        EXPECT_EQ(port->fgColour.red, vga_col(r.fg).red) << r.name;
        EXPECT_EQ(char_dy, Info().ascent + 1) << r.name;
    }
    EXPECT_EQ(port->txSize, 12); // the unknown font left the size too
}

TEST_F(DrawTest, EmptyOrLongNamesOnlyTouchTheRecordedName) {
    ch_font_set(port, "Arial", 9, 15, 20);
    int16_t dy = char_dy;
    ch_font_set_ext(port, "", 0, 255, 8, 1);
    EXPECT_STREQ(ch_font_FontName, "");
    EXPECT_EQ(char_dy, dy);
    EXPECT_EQ(port->txSize, 20);
    EXPECT_EQ(port->txMode, 0);
    EXPECT_EQ(port->fgColour.red, vga_col(9).red);
    ch_font_set(port, nullptr, 0, 255, 8);
    EXPECT_STREQ(ch_font_FontName, "");
    std::string name(100, 'n');
    ch_font_set(port, name.c_str(), 0, 255, 12);
    EXPECT_EQ(std::strlen(ch_font_FontName), sizeof ch_font_FontName - 1);
    EXPECT_EQ(port->txFont, 1025); // unknown: Arial kept
}

TEST_F(DrawTest, MetricsAndTheUnitsOfFormattedText) {
    for (int16_t size : {9, 12, 24, 48}) {
        ch_font_set(port, "Arial", 0, 255, size);
        platform::FontInfo fi = Info();
        int32_t height = -1, widMax = -1, leading = -1;
        EXPECT_EQ(ch_font_metrics(nullptr, &height, &widMax, &leading), 0);
        EXPECT_EQ(height, fi.ascent + fi.descent) << size;
        EXPECT_EQ(widMax, fi.widMax) << size;
        EXPECT_EQ(leading, fi.leading) << size;
        EXPECT_EQ(draw::LineHeight(port), height + leading) << size;
        int32_t x = 0, h = -1;
        GetTextExtent_0(port, "X", 1, &x, &h);
        EXPECT_EQ(draw::UnitWidth(platform::CharWidths()), x < 8 ? 8 : x) << size;
        EXPECT_EQ(h, 0);
    }
    EXPECT_GT(draw::UnitWidth(platform::CharWidths()), 20); // 48 points: wider than the floor
    smallFont();
    EXPECT_EQ(draw::UnitWidth(platform::CharWidths()), 8);
    EXPECT_EQ(ch_font_metrics(port, nullptr, nullptr, nullptr), 0);
}
