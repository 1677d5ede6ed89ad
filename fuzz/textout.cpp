// Formatted text through TextOut_0, GetTextExtent_0, TextOut_Ext and
// GetTextExtent_Ext. Input: size, style, x and y bytes, then the text (at
// most 512 bytes). Besides the sanitizers, it checks that
//   - the drawn advance equals the measured width once the commands the two
//     walks treat differently (131 and 200-214) are made harmless;
//   - TextOut_0 returns the width GetTextExtent_0 measures;
//   - a measured height is 0 or 2U;
//   - every pixel drawn lies inside the box of a traced operation (a text's
//     box widened by half its size for overhanging glyphs).
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <vitrail/draw.h>
#include <vitrail/platform.h>

#include "draw/commands.h"
#include "draw/internal.h"
#include "platform/quickdraw/png.h"
#include "platform/quickdraw/port.h"
#include "platform/quickdraw/text.h"

namespace {

constexpr int kW = 240, kH = 80;

GrafPtr Setup() {
    static char dir[] = "/tmp/vitrail-fuzz-textout-XXXXXX";
    if (!mkdtemp(dir) || mkdir((std::string(dir) + "/PICT").c_str(), 0700) != 0) std::abort();
    for (const char *name : {"repferb", "puceb"}) {
        platform::RgbaImage image{12, 10, 3, -4, std::vector<uint8_t>(12 * 10 * 4, 0x40)};
        platform::PngWrite(std::string(dir) + "/PICT/" + name + ".png", image);
    }
    vitrail_set_resources_folder(dir);
    GrafPtr port = vitrail_port_new(kW, kH);
    vitrail_port_set_current(port);
    return port;
}

// Every non-white pixel lies inside the box of some traced operation.
void CheckDrawnInsideTrace(GrafPtr port) {
    std::vector<bool> allowed(size_t(kW) * kH);
    int32_t height = 0, widMax = 0, leading = 0;
    ch_font_metrics(port, &height, &widMax, &leading);
    vitrail_trace_op op;
    for (int32_t i = 0; vitrail_port_trace_get(port, i, &op) == 0; ++i) {
        int x0 = std::min(op.x1, op.x2), x1 = std::max(op.x1, op.x2);
        int y0 = std::min(op.y1, op.y2), y1 = std::max(op.y1, op.y2);
        if (op.kind == vitrail_op_line) x1 += op.pen_width, y1 += op.pen_height;
        if (op.kind == vitrail_op_text) {
            int m = (op.size > 0 ? op.size : 12) / 2 + 2;
            x0 -= m, x1 += m, y0 -= height + m, y1 += height + m;
        }
        for (int y = std::max(y0, 0); y < std::min(y1, kH); ++y)
            for (int x = std::max(x0, 0); x < std::min(x1, kW); ++x)
                allowed[size_t(y) * kW + x] = true;
    }
    for (int y = 0; y < kH; ++y)
        for (int x = 0; x < kW; ++x)
            if (vitrail_port_pixel(port, x, y) != 0xFFFFFFFF && !allowed[size_t(y) * kW + x])
                std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static GrafPtr port = Setup();
    if (size < 4) return 0;
    int16_t points = int16_t(data[0] < 192 ? data[0] % 64 : 64 + (data[0] - 192) * 4);
    ch_font_set_ext(port, "Geneva", 0, data[1] & 0x80 ? 14 : 255, points, data[1] & 31);
    int32_t x = data[2] - 64, y = data[3] % 100 - 20;
    std::string text(reinterpret_cast<const char *>(data + 4), std::min<size_t>(size - 4, 512));
    int32_t n = int32_t(text.size());
    std::fill(port->pixels.begin(), port->pixels.end(), 0xFF);
    vitrail_port_trace_clear(port);
    draw::posxprev = draw::posyprev = draw::alRightOut = draw::alRightExtent = 0;

    int32_t w = -1, h = -1, run = std::min(n, 255);
    if (TextOut_0(port, x, y, text.data(), run) != GetTextExtent_0(port, text.data(), run, &w, &h))
        std::abort();
    GetTextExtent_Ext(port, x, y, text.data(), n, &w, &h);
    if (h != 0 && h != 2 * draw::UnitWidth(platform::CharWidths())) std::abort();
    TextOut_Ext(port, x, y, 0, 0, text.data(), n);
    CheckDrawnInsideTrace(port);

    std::string same = text;
    for (char &c : same)
        if (uint8_t(c) == 131 || (uint8_t(c) >= 200 && uint8_t(c) <= 214)) c = char(130);
    draw::alRightOut = draw::alRightExtent = 0;
    GetTextExtent_Ext(port, x, y, same.data(), n, &w, &h);
    if (TextOut_Ext(port, x, y, 0, 0, same.data(), n) != w) std::abort();
    return 0;
}
