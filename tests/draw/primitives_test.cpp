// Palette, lines, rectangles and named pictures, checked through pixels.
#include <cstdio>
#include <functional>
#include <string>

#include "draw_fixture.h"
#include "support/temp_resources.h"

using namespace vitrail_test;

TEST(Palette, EveryEntryAndIndexesModulo16) {
    // Red, green and blue of each entry as levels 0, 0x8000, 0xC000, 0xFFFF.
    const char *table = "000 100 010 110 001 101 011 111 222 300 030 330 003 303 033 333";
    const uint16_t level[4] = {0, 0x8000, 0xC000, 0xFFFF};
    for (int32_t i = -3; i < 40; ++i) {
        const char *e = table + 4 * (i < 0 ? 0 : i % 16);
        RGBColor c = vga_col(i == -3 ? INT32_MIN : i);
        EXPECT_EQ(c.red, level[e[0] - '0']) << i;
        EXPECT_EQ(c.green, level[e[1] - '0']) << i;
        EXPECT_EQ(c.blue, level[e[2] - '0']) << i;
    }
}

TEST_F(DrawTest, CallsWorkOnTheirPortAndRestoreTheCurrentOne) {
    GrafPtr other = vitrail_port_new(10, 10);
    std::function<void()> calls[] = {
        [&] { ch_font_set(port, "Lucida Grande", 0, 255, 13); },
        [&] { Line_Ex(port, 0, 0, 5, 5, 12, 2); },
        [&] { Rectangle_Ex(port, 0, 0, 5, 5, 9); },
        [&] { ch_font_printstr(port, 0, 0, 50, 4, 255, 14, "Ordonnance"); },
    };
    for (auto &call : calls) {
        platform::SetPort(other);
        call();
        EXPECT_EQ(platform::CurrentPort(), other);
    }
    EXPECT_EQ(vitrail_port_trace_count(other), 0);
    EXPECT_EQ(other->txSize, 0);
    EXPECT_EQ(port->txSize, 14);
    vitrail_port_dispose(other);
}

TEST_F(DrawTest, LinesAndRectanglesLeaveANormalBlackPen) {
    Line_Ex(port, 16, 50, 144, 50, 12, 2);
    LineC_Ex(port, 10, 100, 10, 110, RGBColor{0xFFFF, 0x8000, 0}, 3);
    Rectangle_Ex(port, 10, 20, 8, 8, 9);
    Rectangle_Ex(port, 50, 50, -5, 4, 9); // inverted: nothing painted
    Line_Ex(nullptr, 0, 0, 5, 5, 0, 1);   // no port: nothing happens
    const Probe probes[] = {
        {16, 50, 0x0000FFFF}, {145, 51, 0x0000FFFF}, {146, 50, kWhite}, {15, 50, kWhite},
        {80, 52, kWhite},     {12, 112, 0xFF8000FF}, {13, 105, kWhite}, {10, 20, kBlack},
        {17, 27, kBlack},     {13, 20, kBlack},      {11, 21, kRed},    {16, 26, kRed},
        {18, 24, kWhite},     {14, 28, kWhite},      {9, 24, kWhite},   {47, 53, kWhite}};
    expectPixels(probes);
    EXPECT_EQ(boxes(vitrail_op_frame_rect), (std::vector<Box>{{10, 20, 18, 28}, {50, 50, 45, 54}}));
    EXPECT_EQ(std::pair(int(port->pnSize.h), int(port->pnSize.v)), std::pair(1, 1));
    EXPECT_EQ(port->fgColour.red + port->fgColour.blue, 0); // black
}

TEST_F(DrawTest, PicturesAreDrawnAtNaturalSizeWhateverTheFrameOffsetInTheFile) {
    // Near 2^31 the frame's sums overflowed; near 2^15 its 16-bit edges wrapped.
    vitrail_test::TempResources res;
    smallFont();
    for (int32_t origin : {5, 32757, -32790, INT32_MAX - 10, INT32_MIN}) {
        ASSERT_TRUE(res.picture("repferb", 40, 20, 0x00C000, origin, origin));
        int32_t w = -1, h = -1;
        EXPECT_EQ(BMP_affic_dimfond0("repferb", &w, &h), 0);
        EXPECT_EQ(std::pair(w, h), std::pair(40, 20)) << origin;
        vitrail_port_trace_clear(port);
        EXPECT_EQ(BMP_affic_desfond0("repferb", port, 100, 50), 0);
        EXPECT_EQ(Out(port, 200, 49, 0, 0, "\xFF\x94"), 16); // the same at (200, 50)
        EXPECT_EQ(boxes(vitrail_op_picture),
                  (std::vector<Box>{{100, 50, 140, 70}, {200, 50, 240, 70}}))
            << origin;
    }
    const Probe probes[] = {{100, 50, 0x00C000FF},
                            {139, 69, 0x00C000FF},
                            {140, 60, kWhite},
                            {120, 70, kWhite},
                            {99, 50, kWhite}};
    expectPixels(probes);

    std::FILE *f = std::fopen((res.root() / "PICT" / "broken.png").c_str(), "wb");
    std::fputs("not a png", f);
    std::fclose(f);
    std::string longName(256, 'a');
    struct Row {
        const char *name;
        int32_t drawn, measured, width;
    } rows[] = {{"absent", 1, 1, -1},
                {nullptr, 1, 1, -1},
                {"", 1, 1, -1},
                {longName.c_str(), 0, 0, -1},
                {"broken", 0, 0, 0}};
    for (const Row &r : rows) {
        int32_t w = -1, h = -1;
        EXPECT_EQ(BMP_affic_desfond0(r.name, port, 0, 0), r.drawn);
        EXPECT_EQ(BMP_affic_dimfond0(r.name, &w, &h), r.measured);
        EXPECT_EQ(w, r.width);
    }
    EXPECT_EQ(at(0, 0), kWhite);
}
