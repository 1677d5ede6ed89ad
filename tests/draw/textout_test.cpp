// Text runs and formatted text: positions through the trace, the inline
// commands (written with the writers of vitrail/draw.h where they have
// arguments) and the parser on cut byte strings. Hostile strings are the
// fuzz target's (fuzz/textout.cpp).
#include <string>
#include <tuple>

#include "draw_fixture.h"
#include "support/temp_resources.h"

using namespace vitrail_test;

// The bytes a writer of vitrail/draw.h puts at b.
#define TX(call)                                                                                   \
    ([] {                                                                                          \
        char b[8];                                                                                 \
        int n = (call);                                                                            \
        return std::string(b, size_t(n));                                                          \
    }())

TEST_F(DrawTest, RunsAreDrawnBelowTheLineTopInMacRomanAndCutAbove255Bytes) {
    ch_font_set(port, "Arial", 0, 255, 12);
    int32_t w = TextOut_0(port, 10, 20, "\xE9t\xE9 40\xB0", 7), mw = -1, mh = -1;
    EXPECT_EQ(GetTextExtent_0(port, "\xE9t\xE9 40\xB0", 7, &mw, &mh), w);
    EXPECT_EQ(std::pair(mw, mh), std::pair(w, 0));
    EXPECT_EQ(Out(port, 5, 7, 100, 30, "Amoxicilline"), Width("Amoxicilline"));
    EXPECT_EQ(TextOut_0(port, 0, 60, "ab\0cd", 5), Width("ab")); // a NUL ends the run
    EXPECT_EQ(Width(std::string("ab\0cd", 5)), Width("ab"));
    auto texts = ops(vitrail_op_text);
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_STREQ(texts[0].text, "\xC3\xA9t\xC3\xA9 40\xC2\xB0");
    EXPECT_EQ((Box{texts[0].x1, texts[0].y1, texts[0].x2, texts[0].y2}),
              (Box{10, 20 + char_dy, 10 + w, 20 + char_dy}));
    EXPECT_EQ(std::pair(int(texts[1].x1), int(texts[1].y1)), std::pair(105, 37 + char_dy));
    EXPECT_STREQ(texts[2].text, "ab");

    vitrail_port_trace_clear(port);
    std::string big(256, 'a');
    mw = mh = -1;
    for (auto [text, length] : {std::pair{big.c_str(), 256}, {big.c_str(), -1}, {nullptr, 5}}) {
        EXPECT_EQ(TextOut_0(port, 0, 0, text, length), 0);
        EXPECT_EQ(TextOut_Ext(port, 0, 0, 0, 0, text, length), 0);
        EXPECT_EQ(GetTextExtent_0(port, text, length, &mw, &mh), 0);
    }
    EXPECT_EQ(mw, 0); // only the null text of length 5 measured (0)
    EXPECT_EQ(Out(port, 0, 0, 0, 0, ""), 0);
    EXPECT_GT(TextOut_0(port, 0, 0, big.c_str(), 255), 0);
    EXPECT_EQ(ops(vitrail_op_text).size(), 2u); // the empty run of null and the 255 bytes
}

TEST_F(DrawTest, TabsMoveForwardOnly) {
    smallFont();
    using Row = std::tuple<int32_t, std::string, int32_t>; // x, text, advance
    for (auto [x, text, advance] : {
             Row{0, "\xFF\x80\x20", 0},                 // column 0: x is not below it
             {0, "\xFF\x80\x50", 192},                  // 48 * 8 / 2
             {200, "\xFF\x80\x50", 0},                  // already past the column
             {0, TX(VITRAIL_TX_TAB_TO(b, 224)), 896},   // two-byte form: 112 * 1 * 8
             {20, TX(VITRAIL_TX_STEP_BY(b, 4)), 12},    // step 16: from 20 to 32
             {32, "\xFF\x81\x24", 16},                  // a multiple moves to the next one
             {-5, "\xFF\x81\x24", 5},                   // negative x: to 0
             {20, "\xFF\x81\x20", 0},                   // step 0 never loops
             {65530, "\xFF\x81\x24", 0},                // no multiple within 16 bits
             {70000, "\xFF\x81\x24", 0},                // x past 65535
             {20, "\xFF\x86\x20\x20", 0},               // two-byte step 0
             {0, TX(VITRAIL_TX_STEP_BY(b, 448)), 1792}, // two-byte step of 224 U
             {0, "\xFF\x80\x10", 65472},                // negative digit: column -64 as unsigned
         }) {
        EXPECT_EQ(Out(port, x, 0, 0, 0, text), advance) << x;
        int32_t w = -1, h = -1;
        EXPECT_EQ(GetTextExtent_Ext(port, x, 0, text.data(), int32_t(text.size()), &w, &h), 0);
        EXPECT_EQ(w, advance) << x;
    }
}

TEST_F(DrawTest, RightAlignedRunsSquaresAndPictures) {
    smallFont();
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("puceb", 6, 6, 0x0000FF));
    EXPECT_EQ(Out(port, 0, 0, 0, 0, "Total\xFF\x80\x50" VITRAIL_TXS_ALIGN_RIGHT "12,50"), 192);
    // An alignment at the end of a text aligns the first run of the next call.
    EXPECT_EQ(Out(port, 300, 0, 0, 0, VITRAIL_TXS_ALIGN_RIGHT) + Out(port, 300, 20, 0, 0, "abc"),
              0);
    auto t = boxes(vitrail_op_text);
    EXPECT_EQ((std::vector<int>{t.at(0)[0], t.at(1)[2], t.at(2)[2]}),
              (std::vector<int>{0, 192, 300}));

    EXPECT_EQ(Out(port, 0, 0, 10, 20, VITRAIL_TXS_SQUARE), 16);
    EXPECT_EQ(Out(port, 100, 50, 0, 0, VITRAIL_TXS_BULLET "\xFF\x94"), 32); // repferb is missing
    EXPECT_EQ(boxes(vitrail_op_frame_rect), (std::vector<Box>{{14, 24, 22, 32}}));
    EXPECT_EQ(boxes(vitrail_op_picture), (std::vector<Box>{{100, 51, 106, 57}}));
    const Probe probes[] = {{14, 24, kBlack}, {17, 27, 0xFF0000FF}, {105, 56, 0x0000FFFF}};
    expectPixels(probes);
}

TEST_F(DrawTest, PenPointLinesAndFramesAreRelativeToTheOrigin) {
    smallFont();
    int32_t L = draw::LineHeight(port);
    EXPECT_EQ(
        Out(port, 50, 50, 10, 5, TX(VITRAIL_TX_PEN_AT(b, 4, 8)) + TX(VITRAIL_TX_LINE_TO(b, 36, 8))),
        0);
    auto lines = ops(vitrail_op_line);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ((Box{lines[0].x1, lines[0].y1, lines[0].x2, lines[0].y2}),
              (Box{26, 5 + 2 * L, 154, 5 + 2 * L}));
    EXPECT_EQ(std::pair(int(lines[0].pen_width), draw::posxprev), std::pair(2, 144));
    EXPECT_EQ(draw::posyprev, 2 * L);
    EXPECT_EQ(at(90, 5 + 2 * L + 1), kBlack);

    vitrail_port_trace_clear(port);
    Out(port, 0, 0, 0, 0, TX(VITRAIL_TX_FRAME_TO(b, 16, 12))); // from (144, 2L) to (64, 3L)
    EXPECT_EQ(boxes(vitrail_op_line), (std::vector<Box>{{144, 2 * L, 64, 2 * L},
                                                        {64, 2 * L, 64, 3 * L},
                                                        {64, 3 * L, 144, 3 * L},
                                                        {144, 3 * L, 144, 2 * L}}));
    EXPECT_EQ(draw::posxprev, 144); // the frame keeps the pen point

    EXPECT_EQ(TX(VITRAIL_TX_PEN_AT(b, 226, 224)), "\xFF\xC9\x22\x21\x20\x21");
    Out(port, 0, 0, 0, 0, TX(VITRAIL_TX_PEN_AT(b, 226, 224))); // two-byte pen point
    EXPECT_EQ(std::pair(draw::posxprev, draw::posyprev), std::pair(8 + 896, 56 * L));
}

TEST_F(DrawTest, CutCommandsConsumeWhatIsThereAndDrawNothing) {
    smallFont();
    int32_t L = draw::LineHeight(port);
    draw::posxprev = 7;
    using Row = std::tuple<std::string, int32_t, int32_t>; // text, pen point x, y in L/4
    for (auto [text, posx, quarters] : {
             Row{"\xFF", 7, 0},                     // lone trailing escape
             {"\xFF\x80", 7, 0},                    // tab without its byte
             {"\xFF\x85\x50", 7, 0},                // two-byte tab cut after its low digit
             {"\xFF\xCA\x24", 7, 0},                // line with H only
             {"\xFF\xD6\x24\x20\x28", 7, 0},        // frame with H and half of V
             {"\xFF\xC8\x24", 16, 0},               // pen point: H stored as soon as read
             {"\xFF\xC9\x26\x21\x28", 24 + 896, 8}, // two-byte: V's low digit alone
             {"\xFF\x01", 24 + 896, 8},             // unknown command
             {"\xFF\xFF\xFF", 24 + 896, 8},         // escapes only
         }) {
        EXPECT_EQ(Out(port, 0, 0, 0, 0, text), 0) << text.size();
        EXPECT_EQ(std::pair(draw::posxprev, draw::posyprev), std::pair(posx, quarters * L / 4))
            << text.size();
    }
    EXPECT_EQ(vitrail_port_trace_count(port), 0);
}

TEST_F(DrawTest, MeasuringSkipsPenCommandsAsTwoBytesAndKeepsItsFlag) {
    smallFont();
    using Row = std::tuple<std::string, int32_t, int32_t>; // text, width, height
    for (auto [text, width, height] : {
             Row{"\xFF\x8A\xFF\xA1", 32, 16}, // a square and a picture: two units, 16 high
             {"ab\xFF\xC8\x24\x28", Width("ab") + Width("\x24\x28"), 0},
             {std::string("\xFF\x83") + "abc", 0, 0},
             {"abc", 0, 0}, // still set: only a 130 clears it
             {std::string("\xFF\x82") + "abc", Width("abc"), 0},
         }) {
        int32_t w = -1, h = -1;
        EXPECT_EQ(GetTextExtent_Ext(port, 0, 0, text.data(), int32_t(text.size()), &w, &h), 1);
        EXPECT_EQ(std::pair(w, h), std::pair(width, height)) << text;
    }
    int32_t w = -1, h = -1;
    EXPECT_EQ(GetTextExtent_Ext(port, 0, 0, nullptr, 3, &w, &h), 1);
    EXPECT_EQ(w, 0);
}

TEST_F(DrawTest, PrintstrCentresTextWithoutTabsAndChoosesArial) {
    int32_t end = ch_font_printstr(port, 20, 40, 200, 4, 255, 14, "Ordonnance");
    int32_t w = Width("Ordonnance");
    auto texts = ops(vitrail_op_text);
    ASSERT_EQ(texts.size(), 1u);
    // Arial at 14, centred, in dark blue; black again after; returns the x after the text.
    EXPECT_EQ((std::vector<int>{port->txFont, port->txSize, texts[0].x1, texts[0].colour.blue,
                                port->fgColour.blue, end}),
              (std::vector<int>{1025, 14, 20 + (200 - w) / 2, 0x8000, 0, texts[0].x1 + w}));
    EXPECT_EQ(ch_font_printstr(port, 20, 60, 200, 0, 15, 14, "a\xFF\x80\x30z"),
              8 * Unit() + Width("z"));
    EXPECT_EQ(ops(vitrail_op_text)[1].x1, 20); // a tab: not centred
    EXPECT_EQ(port->txMode, 0);
    EXPECT_EQ(ch_font_printstr(port, 5, 0, 0, 0, 255, 12, nullptr), 5);
    ch_font_set(port, "Courier", 0, 255, 10);
    ch_font_printstr(port, 0, 100, 50, 0, 255, 18, "x");
    EXPECT_EQ(std::pair(int(port->txFont), int(port->txSize)), std::pair(22, 18)); // font kept
}
