// A port made current for one test, with the text statics back at their
// load values, and readers of its pixels and trace.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include <vitrail/draw.h>
#include <vitrail/platform.h>

#include "draw/commands.h"
#include "draw/internal.h"
#include "platform/quickdraw/port.h"
#include "platform/quickdraw/text.h"

namespace vitrail_test {

constexpr uint32_t kWhite = 0xFFFFFFFF, kBlack = 0x000000FF, kRed = 0xFF0000FF;

using Box = std::array<int32_t, 4>; // x1, y1, x2, y2 of a traced operation

struct Probe {
    int32_t x, y;
    uint32_t rgba;
};

inline int32_t Out(GrafPtr port, int32_t x, int32_t y, int32_t xo, int32_t yo,
                   const std::string &t) {
    return TextOut_Ext(port, x, y, xo, yo, t.data(), int32_t(t.size()));
}

inline int32_t Width(const std::string &t) {
    return GetTextExtent_0(nullptr, t.data(), int32_t(t.size()), nullptr, nullptr);
}

inline int32_t Unit() {
    return draw::UnitWidth(platform::CharWidths());
}

class DrawTest : public ::testing::Test {
  protected:
    void SetUp() override {
        port = vitrail_port_new(400, 200);
        platform::SetPort(port);
        ch_font_FontName[0] = '\0';
        char_dy = 0;
        draw::posxprev = draw::posyprev = draw::alRightOut = draw::alRightExtent = 0;
    }
    void TearDown() override { vitrail_port_dispose(port); }

    uint32_t at(int32_t x, int32_t y) const { return vitrail_port_pixel(port, x, y); }
    template <size_t N>
    void expectPixels(const Probe (&probes)[N]) const {
        for (const Probe &p : probes) EXPECT_EQ(at(p.x, p.y), p.rgba) << p.x << "," << p.y;
    }

    // The traced operations of one kind, oldest first, and their corners.
    std::vector<vitrail_trace_op> ops(int32_t kind) const {
        std::vector<vitrail_trace_op> out;
        vitrail_trace_op op;
        for (int32_t i = 0; vitrail_port_trace_get(port, i, &op) == 0; ++i)
            if (op.kind == kind) out.push_back(op);
        return out;
    }
    std::vector<Box> boxes(int32_t kind) const {
        std::vector<Box> out;
        for (const vitrail_trace_op &op : ops(kind)) out.push_back({op.x1, op.y1, op.x2, op.y2});
        return out;
    }

    // A font whose "X" is narrower than 8 pixels, so that U is 8.
    void smallFont() { ch_font_set(port, "Geneva", 0, 255, 9); }

    GrafPtr port = nullptr;
};

} // namespace vitrail_test
