// Palette, lines, rectangles and named pictures, checked through pixels.
#include <functional>
#include <string>

#include "draw_fixture.h"
#include "platform/quickdraw/pen.h"
#include "support/temp_resources.h"

using namespace vitrail_test;

TEST(Palette, IndexesWrapModulo16AndNegativeOnesGiveBlack) {
    struct Row {
        int32_t index;
        RGBColor colour;
    } rows[] = {
        {0, {0, 0, 0}},        {7, {0x8000, 0x8000, 0x8000}},   {8, {0xC000, 0xC000, 0xC000}},
        {9, {0xFFFF, 0, 0}},   {15, {0xFFFF, 0xFFFF, 0xFFFF}},  {16, {0, 0, 0}},
        {25, {0xFFFF, 0, 0}},  {255, {0xFFFF, 0xFFFF, 0xFFFF}}, {-1, {0, 0, 0}},
        {INT32_MIN, {0, 0, 0}}};
    for (const Row &r : rows) {
        RGBColor c = vga_col(r.index);
        EXPECT_EQ(c.red, r.colour.red) << r.index;
        EXPECT_EQ(c.green, r.colour.green) << r.index;
        EXPECT_EQ(c.blue, r.colour.blue) << r.index;
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
        GrafPtr now = nullptr;
        platform::GetPort(&now);
        EXPECT_EQ(now, other);
    }
    EXPECT_EQ(vitrail_port_trace_count(other), 0);
    EXPECT_EQ(other->txSize, 0);
    EXPECT_EQ(port->txSize, 14);
    vitrail_port_dispose(other);
}

TEST_F(DrawTest, LineExDrawsA2By2LineAndLeavesThePenNormalAndBlack) {
    Line_Ex(port, 16, 50, 144, 50, 12, 2);
    LineC_Ex(port, 10, 100, 10, 110, RGBColor{0xFFFF, 0x8000, 0}, 3);
    const Probe probes[] = {{16, 50, 0x0000FFFF},  {145, 51, 0x0000FFFF}, {80, 51, 0x0000FFFF},
                            {146, 50, kWhite},     {15, 50, kWhite},      {80, 52, kWhite},
                            {12, 112, 0xFF8000FF}, {13, 105, kWhite}};
    expectPixels(probes);
    EXPECT_EQ(port->pnSize.h, 1);
    EXPECT_EQ(port->pnSize.v, 1);
    EXPECT_EQ(port->fgColour.blue, 0);
    Line_Ex(nullptr, 0, 0, 5, 5, 0, 1); // no port: nothing happens
}

TEST_F(DrawTest, RectangleExPaintsRedWithABlackBorder) {
    Rectangle_Ex(port, 10, 20, 8, 8, 9);
    const Probe probes[] = {{10, 20, kBlack}, {17, 20, kBlack}, {10, 27, kBlack}, {17, 27, kBlack},
                            {13, 20, kBlack}, {11, 21, kRed},   {16, 26, kRed},   {18, 24, kWhite},
                            {14, 28, kWhite}, {9, 24, kWhite},  {13, 19, kWhite}};
    expectPixels(probes);
    EXPECT_EQ(boxes(vitrail_op_frame_rect), (std::vector<Box>{{10, 20, 18, 28}}));
    EXPECT_EQ(port->fgColour.red, 0);
    Rectangle_Ex(port, 50, 50, -5, 4, 9); // inverted: nothing painted
    EXPECT_EQ(at(48, 51), kWhite);
}

TEST_F(DrawTest, PicturesAreDrawnAtNaturalSizeAndMeasured) {
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("repferb", 40, 20, 0x00C000, 5, 5));
    EXPECT_EQ(BMP_affic_desfond0("repferb", port, 100, 50), 0);
    const Probe probes[] = {{100, 50, 0x00C000FF},
                            {139, 69, 0x00C000FF},
                            {140, 60, kWhite},
                            {120, 70, kWhite},
                            {99, 50, kWhite}};
    expectPixels(probes);
    int32_t w = -1, h = -1;
    EXPECT_EQ(BMP_affic_dimfond0("repferb", &w, &h), 0);
    EXPECT_EQ(w, 40);
    EXPECT_EQ(h, 20);

    std::string longName(256, 'a');
    w = h = -1;
    struct Row {
        const char *name;
        int32_t drawn, measured;
    } rows[] = {{"absent", 1, 1}, {nullptr, 1, 1}, {longName.c_str(), 0, 0}};
    for (const Row &r : rows) {
        EXPECT_EQ(BMP_affic_desfond0(r.name, port, 0, 0), r.drawn);
        EXPECT_EQ(BMP_affic_dimfond0(r.name, &w, &h), r.measured);
    }
    EXPECT_EQ(w, -1);
    EXPECT_EQ(ops(vitrail_op_picture).size(), 1u);
}

TEST_F(DrawTest, PicturesKeepTheirSizeWhateverTheFrameOffsetInTheFile) {
    // Near 2^31 the frame's sums overflowed; near 2^15 its 16-bit edges wrapped.
    vitrail_test::TempResources res;
    smallFont();
    for (int32_t origin : {0, 5, 32757, -32790, INT32_MAX - 10, INT32_MIN}) {
        ASSERT_TRUE(res.picture("repferb", 40, 20, 0x00C000, origin, origin));
        int32_t w = -1, h = -1;
        EXPECT_EQ(BMP_affic_dimfond0("repferb", &w, &h), 0);
        EXPECT_EQ(w * 100 + h, 4020) << origin;
        vitrail_port_trace_clear(port);
        EXPECT_EQ(BMP_affic_desfond0("repferb", port, 100, 50), 0);
        EXPECT_EQ(Out(port, 200, 49, 0, 0, "\xFF\x94"), 16); // the same picture at (200, 50)
        EXPECT_EQ(boxes(vitrail_op_picture),
                  (std::vector<Box>{{100, 50, 140, 70}, {200, 50, 240, 70}}))
            << origin;
    }
}
