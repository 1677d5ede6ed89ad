// Text runs and formatted text: positions through the trace, the inline
// commands, and the parser on cut and hostile byte strings.
#include <random>
#include <string>

#include "draw/commands.h"
#include "draw_fixture.h"
#include "platform/quickdraw/text.h"
#include "support/temp_resources.h"

using namespace vitrail_test;

namespace {

int32_t Width(GrafPtr port, const std::string &t) {
    return GetTextExtent_0(port, t.data(), int32_t(t.size()), nullptr, nullptr);
}

} // namespace

TEST_F(DrawTest, RunsAreDrawnBelowTheLineTopInMacRomanAndCutAbove255Bytes) {
    ch_font_set(port, "Arial", 0, 255, 12);
    int32_t w = TextOut_0(port, 10, 20, "\xE9t\xE9 40\xB0", 7);
    int32_t mw = -1, mh = -1;
    EXPECT_EQ(GetTextExtent_0(port, "\xE9t\xE9 40\xB0", 7, &mw, &mh), w);
    EXPECT_EQ(mw, w);
    EXPECT_EQ(mh, 0);
    EXPECT_EQ(Out(port, 5, 7, 100, 30, "Amoxicilline"), Width(port, "Amoxicilline"));
    auto texts = ops(vitrail_op_text);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_STREQ(texts[0].text, "\xC3\xA9t\xC3\xA9 40\xC2\xB0");
    EXPECT_EQ(texts[0].x1, 10);
    EXPECT_EQ(texts[0].y1, 20 + char_dy);
    EXPECT_EQ(texts[0].x2, 10 + w);
    EXPECT_EQ(texts[1].x1, 105); // origin plus position
    EXPECT_EQ(texts[1].y1, 37 + char_dy);

    vitrail_port_trace_clear(port);
    std::string big(256, 'a');
    mw = mh = -1;
    struct Row {
        const char *text;
        int32_t length;
    } rows[] = {{big.c_str(), 256}, {big.c_str(), -1}, {nullptr, 5}};
    for (const Row &r : rows) {
        EXPECT_EQ(TextOut_0(port, 0, 0, r.text, r.length), 0);
        EXPECT_EQ(TextOut_Ext(port, 0, 0, 0, 0, r.text, r.length), 0);
        if (r.text) {
            EXPECT_EQ(GetTextExtent_0(port, r.text, r.length, &mw, &mh), 0);
        }
    }
    EXPECT_EQ(mw, -1);
    EXPECT_EQ(mh, -1);
    EXPECT_EQ(Out(port, 0, 0, 0, 0, ""), 0);
    EXPECT_GT(TextOut_0(port, 0, 0, big.c_str(), 255), 0);
    EXPECT_EQ(ops(vitrail_op_text).size(), 2u); // the empty run of null and the 255 bytes
}

TEST_F(DrawTest, TabsMoveForwardOnly) {
    smallFont();
    struct Row {
        int32_t x;
        std::string text;
        int32_t advance;
    } rows[] = {
        {0, "\xFF\x80\x20", 0},       // column 0: x is not below it
        {0, "\xFF\x80\x50", 192},     // 48 * 8 / 2
        {200, "\xFF\x80\x50", 0},     // already past the column
        {0, "\xFF\x85\x20\x21", 896}, // 112 * 1 * 8
        {20, "\xFF\x81\x24", 12},     // step 16: from 20 to 32
        {32, "\xFF\x81\x24", 16},     // a multiple moves to the next one
        {-5, "\xFF\x81\x24", 5},      // negative x: to 0
        {20, "\xFF\x81\x20", 0},      // step 0 never loops
        {65530, "\xFF\x81\x24", 0},   // no multiple within 16 bits
        {70000, "\xFF\x81\x24", 0},   // x past 65535
        {20, "\xFF\x86\x20\x20", 0},  // two-byte step 0
        {0, "\xFF\x80\x10", 65472},   // negative digit: column -64 as unsigned
    };
    for (const Row &r : rows) {
        EXPECT_EQ(Out(port, r.x, 0, 0, 0, r.text), r.advance) << r.x;
        int32_t w = -1, h = -1;
        EXPECT_EQ(GetTextExtent_Ext(port, r.x, 0, r.text.data(), int32_t(r.text.size()), &w, &h),
                  0);
        EXPECT_EQ(w, r.advance) << r.x;
    }
}

TEST_F(DrawTest, RightAlignedRunEndsAtTheTab) {
    smallFont();
    std::string text = "Total\xFF\x80\x50\xFF\x83"
                       "12,50";
    int32_t total = Out(port, 0, 0, 0, 0, text);
    auto texts = ops(vitrail_op_text);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].x1, 0);
    EXPECT_EQ(texts[1].x2, 192);
    EXPECT_EQ(total, 192);
    // A 131 at the end right-aligns the first run of the next call.
    EXPECT_EQ(Out(port, 300, 0, 0, 0, "\xFF\x83"), 0);
    EXPECT_EQ(Out(port, 300, 20, 0, 0, "abc"), 0);
    EXPECT_EQ(ops(vitrail_op_text).back().x2, 300);
}

TEST_F(DrawTest, SquaresAndPicturesAdvanceTwoUnits) {
    smallFont();
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("puceb", 6, 6, 0x0000FF));
    EXPECT_EQ(Out(port, 0, 0, 10, 20, "\xFF\x8A"), 16);
    EXPECT_EQ(boxes(vitrail_op_frame_rect), (std::vector<Box>{{14, 24, 22, 32}}));
    EXPECT_EQ(Out(port, 100, 50, 0, 0, "\xFF\xA8\xFF\x94"), 32); // puceb, then missing repferb
    auto pictures = ops(vitrail_op_picture);
    ASSERT_EQ(pictures.size(), 1u);
    EXPECT_STREQ(pictures[0].text, "puceb");
    EXPECT_EQ(pictures[0].x1, 100);
    EXPECT_EQ(pictures[0].y1, 51);
    const Probe probes[] = {{14, 24, kBlack}, {17, 27, 0xFF0000FF}, {105, 56, 0x0000FFFF}};
    expectPixels(probes);
}

TEST_F(DrawTest, PenPointLinesAndFramesAreRelativeToTheOrigin) {
    smallFont();
    int32_t L = draw::LineHeight(port);
    EXPECT_EQ(Out(port, 50, 50, 10, 5, "\xFF\xC8\x24\x28\xFF\xCA\x44\x28"), 0);
    auto lines = ops(vitrail_op_line);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(BoxOf(lines[0]), (Box{26, 5 + 2 * L, 154, 5 + 2 * L}));
    EXPECT_EQ(lines[0].pen_width, 2);
    EXPECT_EQ(at(90, 5 + 2 * L + 1), kBlack);
    EXPECT_EQ(draw::posxprev, 144);
    EXPECT_EQ(draw::posyprev, 2 * L);

    vitrail_port_trace_clear(port);
    Out(port, 0, 0, 0, 0, "\xFF\xD5\x30\x2C"); // frame from (144, 2L) to (64, 3L)
    EXPECT_EQ(boxes(vitrail_op_line), (std::vector<Box>{{144, 2 * L, 64, 2 * L},
                                                        {64, 2 * L, 64, 3 * L},
                                                        {64, 3 * L, 144, 3 * L},
                                                        {144, 3 * L, 144, 2 * L}}));
    EXPECT_EQ(draw::posxprev, 144); // the frame keeps the pen point

    Out(port, 0, 0, 0, 0, "\xFF\xC9\x22\x21\x20\x21"); // two-byte pen point
    EXPECT_EQ(draw::posxprev, 8 + 896);
    EXPECT_EQ(draw::posyprev, 56 * L);
}

TEST_F(DrawTest, CutCommandsConsumeWhatIsThereAndDrawNothing) {
    smallFont();
    int32_t L = draw::LineHeight(port);
    draw::posxprev = 7;
    struct Row {
        std::string text;
        int32_t posx, posyQuarters;
    } rows[] = {
        {"\xFF", 7, 0},                        // lone trailing escape
        {"\xFF\x80", 7, 0},                    // tab without its byte
        {"\xFF\x85\x50", 7, 0},                // two-byte tab cut after its low digit
        {"\xFF\xCA\x24", 7, 0},                // line with H only
        {"\xFF\xD6\x24\x20\x28", 7, 0},        // frame with H and half of V
        {"\xFF\xC8\x24", 16, 0},               // pen point: H stored as soon as read
        {"\xFF\xC9\x26\x21\x28", 24 + 896, 8}, // two-byte: V's low digit alone
        {"\xFF\x01", 24 + 896, 8},             // unknown command
        {"\xFF\xFF\xFF", 24 + 896, 8},         // escapes only
    };
    for (const Row &r : rows) {
        EXPECT_EQ(Out(port, 0, 0, 0, 0, r.text), 0) << r.text.size();
        EXPECT_EQ(draw::posxprev, r.posx) << r.text.size();
        EXPECT_EQ(draw::posyprev, r.posyQuarters * L / 4) << r.text.size();
    }
    EXPECT_EQ(ops(vitrail_op_line).size(), 0u);
    EXPECT_EQ(ops(vitrail_op_text).size(), 0u);
}

TEST_F(DrawTest, MeasuringSkipsPenCommandsAsTwoBytesAndKeepsItsFlag) {
    smallFont();
    struct Row {
        std::string text;
        int32_t width, height;
    } rows[] = {
        {"\xFF\x8A\xFF\xA1", 32, 16}, // a square and a picture: two units, 16 high
        {"ab\xFF\xC8\x24\x28", Width(port, "ab") + Width(port, "\x24\x28"), 0},
        {std::string("\xFF\x83") + "abc", 0, 0},
        {"abc", 0, 0}, // still set: only a 130 clears it
        {std::string("\xFF\x82") + "abc", Width(port, "abc"), 0},
    };
    for (const Row &r : rows) {
        int32_t w = -1, h = -1;
        EXPECT_EQ(GetTextExtent_Ext(port, 0, 0, r.text.data(), int32_t(r.text.size()), &w, &h), 1);
        EXPECT_EQ(w, r.width) << r.text;
        EXPECT_EQ(h, r.height) << r.text;
    }
    int32_t w = -1, h = -1;
    EXPECT_EQ(GetTextExtent_Ext(port, 0, 0, nullptr, 3, &w, &h), 1);
    EXPECT_EQ(w, 0);
}

TEST_F(DrawTest, PrintstrCentresTextWithoutTabsAndChoosesArial) {
    int32_t end = ch_font_printstr(port, 20, 40, 200, 4, 255, 14, "Ordonnance");
    EXPECT_EQ(port->txFont, 1025); // Arial
    EXPECT_EQ(port->txSize, 14);
    EXPECT_EQ(port->fgColour.blue, 0); // black again
    int32_t w = Width(port, "Ordonnance");
    auto texts = ops(vitrail_op_text);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].x1, 20 + (200 - w) / 2);
    EXPECT_EQ(texts[0].colour.blue, 0x8000);
    EXPECT_EQ(end, texts[0].x1 + w);
    EXPECT_EQ(ch_font_printstr(port, 20, 60, 200, 0, 15, 14, "a\xFF\x80\x30z"),
              8 * draw::UnitWidth(platform::CharWidths()) + Width(port, "z"));
    EXPECT_EQ(ops(vitrail_op_text)[1].x1, 20); // a tab: not centred
    EXPECT_EQ(port->txMode, 0);
    EXPECT_EQ(ch_font_printstr(port, 5, 0, 0, 0, 255, 12, nullptr), 5);
    ch_font_set(port, "Courier", 0, 255, 10);
    ch_font_printstr(port, 0, 100, 50, 0, 255, 18, "x");
    EXPECT_EQ(port->txFont, 22); // a chosen font is kept, only the size changes
    EXPECT_EQ(port->txSize, 18);
}

TEST_F(DrawTest, HostileByteStringsNeverCrashOrLoop) {
    ch_font_set(port, "Arial", 0, 255, 10);
    std::mt19937 rng(1234);
    const uint8_t interesting[] = {0xFF, 0x80, 0x81, 0x83, 0x85, 0x86, 0x8A, 0xA8, 0xC8, 0xC9,
                                   0xCA, 0xCB, 0xD5, 0xD6, 0x00, 0x1F, 0x20, 0x21, 0xFE};
    for (int round = 0; round < 300; ++round) {
        std::string text(size_t(rng() % 40), '\0');
        for (char &c : text)
            c = char(rng() % 3 ? interesting[rng() % sizeof interesting] : uint8_t(rng()));
        int32_t x = int32_t(rng() % 70000) - 1000;
        Out(port, x, int32_t(rng() % 200), int32_t(rng() % 400), 0, text);
        int32_t w = 0, h = 0;
        GetTextExtent_Ext(port, x, 0, text.data(), int32_t(text.size()), &w, &h);
        EXPECT_GE(h, 0);
    }
    std::string steps;
    for (int i = 0; i < 2000; ++i) steps += "\xFF\x86\xFF\xFF";
    EXPECT_GE(Out(port, 0, 0, 0, 0, steps), 0);
}
