// Ports, pens, rectangles, text and pictures of the drawing stand-in,
// checked through pixels, the operation trace and, for glyphs, FreeType's
// own rendering.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include <vitrail/platform.h>

#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/pictures.h"
#include "platform/quickdraw/png.h"
#include "platform/quickdraw/port.h"
#include "platform/quickdraw/shapes.h"
#include "platform/quickdraw/text.h"
#include "platform/toolbox/mac_roman.h"
#include "support/temp_resources.h"

using namespace platform;

namespace {

constexpr uint32_t kWhite = 0xFFFFFFFF, kBlack = 0x000000FF;

struct Probe {
    int32_t x, y;
    uint32_t rgba;
};

// A fresh port made current for one test, disposed at the end.
struct ScopedPort {
    explicit ScopedPort(int32_t w = 200, int32_t h = 100) : port(vitrail_port_new(w, h)) {
        SetPort(port);
    }
    ~ScopedPort() { vitrail_port_dispose(port); }
    uint32_t at(int32_t x, int32_t y) const { return vitrail_port_pixel(port, x, y); }
    template <size_t N>
    void expectPixels(const Probe (&probes)[N]) const {
        for (const Probe &p : probes) EXPECT_EQ(at(p.x, p.y), p.rgba) << p.x << "," << p.y;
    }
    vitrail_trace_op op(int32_t i) const {
        vitrail_trace_op o{};
        EXPECT_EQ(vitrail_port_trace_get(port, i, &o), 0);
        return o;
    }
    GrafPtr port;
};

std::vector<uint8_t> Pascal(std::string_view s) {
    std::vector<uint8_t> p(s.size() + 1, uint8_t(s.size()));
    std::copy(s.begin(), s.end(), p.begin() + 1);
    return p;
}

} // namespace

TEST(Port, SizesOutOfRangeAreRefusedAndADisposedCurrentPortIsLeft) {
    for (auto [w, h, made] : {std::tuple{1, 1, true},
                              {8192, 1, true},
                              {0, 5, false},
                              {5, -1, false},
                              {8193, 2, false}}) {
        GrafPtr p = vitrail_port_new(w, h);
        EXPECT_EQ(p != nullptr, made) << w << "x" << h;
        EXPECT_EQ(vitrail_port_pixel(p, w - 1, h - 1), made ? kWhite : 0);
        EXPECT_EQ(vitrail_port_pixel(p, w, 0), 0u);
        vitrail_port_dispose(p);
    }
    vitrail_trace_op op;
    EXPECT_EQ(vitrail_port_trace_count(nullptr) + vitrail_port_trace_get(nullptr, 0, &op), -1);

    // Disposing the current port leaves none, and drawing is then ignored.
    GrafPtr p = vitrail_port_new(10, 10);
    SetPort(p);
    vitrail_port_dispose(p);
    EXPECT_EQ(CurrentPort(), nullptr);
    Rect r{0, 0, 5, 5};
    PaintRect(&r);
    LineTo(4, 4);
    DrawString(Pascal("x").data());
    FontInfo fi{1, 1, 1, 1};
    GetFontInfo(&fi);
    EXPECT_EQ(fi.ascent + fi.descent + fi.widMax + fi.leading + StringWidth(Pascal("x").data()), 0);
    EXPECT_EQ(CharWidths(), nullptr);
}

TEST(Pen, LinesAndFramesCoverThePenBelowAndRightInsideThePort) {
    ScopedPort s;
    PenSize(2, 2);
    MoveTo(16, 30);
    LineTo(40, 30);
    MoveTo(100, 10);
    LineTo(100, 20);
    EXPECT_EQ(s.op(0).pen_width, 2);
    EXPECT_EQ(std::pair(int(CurrentPort()->pnLoc.h), int(CurrentPort()->pnLoc.v)),
              std::pair(100, 20));
    PenSize(1, 1);
    MoveTo(0, 0);
    LineTo(9, 9);
    PenSize(3, 2);
    Rect r{0, 0, 10, 10};
    OffsetRect(&r, 150, 7); // frame: left edge 3 wide, top 2 high, inside 150..160, 7..17
    FrameRect(&r);
    RGBColor red{0xFFFF, 0, 0};
    RGBForeColor(&red);
    PenSize(0, 4);
    MoveTo(0, 40);
    LineTo(10, 40); // a zero-wide pen draws nothing
    const Probe probes[] = {
        {16, 30, kBlack},  {41, 31, kBlack},  {28, 31, kBlack},  {15, 30, kWhite},
        {42, 30, kWhite},  {20, 29, kWhite},  {20, 32, kWhite},  {101, 21, kBlack},
        {102, 15, kWhite}, {100, 22, kWhite}, {5, 5, kBlack},    {9, 9, kBlack},
        {1, 0, kWhite},    {152, 12, kBlack}, {153, 12, kWhite}, {155, 8, kBlack},
        {155, 9, kWhite},  {157, 12, kBlack}, {155, 15, kBlack}, {149, 12, kWhite},
        {155, 17, kWhite}, {5, 40, kWhite}};
    s.expectPixels(probes);
    PenSize(32767, 32767); // a huge pen stays inside the port
    MoveTo(-32768, -32768);
    LineTo(32767, 32767);
    EXPECT_EQ(s.at(199, 99), 0xFF0000FF);
}

TEST(Colours, ClassicNumbersAndUnknownOnes) {
    ScopedPort s;
    for (auto [number, red, blue] : {std::tuple{205, 0xFFFF, 0},
                                     {33, 0, 0},
                                     {30, 0xFFFF, 0xFFFF},
                                     {999, 0xFFFF, 0xFFFF},
                                     {409, 0, 0xFFFF}}) {
        ForeColor(number);
        EXPECT_EQ(std::pair(int(s.port->fgColour.red), int(s.port->fgColour.blue)),
                  std::pair(red, blue))
            << number;
    }
}

TEST(Fonts, TableNamesMetricsAndUnknownNames) {
    ScopedPort s;
    for (auto [name, found] : {std::pair{"Lucida Grande", true},
                               {"Geneva", true},
                               {"arial", true},
                               {"Helvetica", true},
                               {"Times", true},
                               {"Courier", true},
                               {"Monaco", true},
                               {"DejaVu Sans", true},
                               {"", false},
                               {"Wingdings 9", false},
                               {"Lucida Grandee", false}}) {
        int16_t n = -1;
        GetFNum(Pascal(name).data(), &n);
        EXPECT_EQ(n != 0, found) << name;
        if (!n) continue;
        FontInfo small, large;
        TextFont(n);
        TextSize(10);
        GetFontInfo(&small);
        TextSize(40);
        GetFontInfo(&large);
        EXPECT_TRUE(small.ascent > 5 && small.descent > 0 && small.leading >= 0) << name;
        EXPECT_TRUE(large.ascent > 3 * small.ascent && large.widMax > small.widMax) << name;
    }
    int16_t n = -1;
    GetFNum(nullptr, &n);
    EXPECT_EQ(std::pair(int(n), int(FontNumber("GENEVA"))), std::pair(0, 3));
}

// DrawText's pixels are FreeType's own rendering of each glyph blended at
// the pen (from the small-bitmap cache at 12 pixels, the image cache at 90),
// and its advance the sum of the glyphs' rounded advances. (Copy mode and
// underline: the drawing example's reference picture.)
TEST(Text, GlyphsAreFreeTypesRenderingAtEachAdvance) {
    const std::string text = "Wj\x8E"
                             "f@ %";
    for (int16_t size : {12, 90})
        for (int face : {0, bold | italic | condense, int(extend)}) {
            ScopedPort s(420, 130);
            Port *model = NewPort(420, 130);
            FT_Face ft = FaceFor(1025, int16_t(face), size);
            int32_t pen = 10;
            for (char c : text) {
                ASSERT_EQ(FT_Load_Char(ft, MacRomanToUnicode(uint8_t(c)), FT_LOAD_RENDER), 0);
                const FT_Bitmap &bm = ft->glyph->bitmap;
                for (int32_t y = 0; y < int32_t(bm.rows); ++y)
                    for (int32_t x = 0; x < int32_t(bm.width); ++x) {
                        int16_t h = int16_t(pen + ft->glyph->bitmap_left + x);
                        int16_t v = int16_t(100 - ft->glyph->bitmap_top + y);
                        if (uint8_t cover = bm.buffer[y * bm.pitch + x])
                            FillPixels(*model, Rect{v, h, int16_t(v + 1), int16_t(h + 1)},
                                       RGBColor{0, 0, 0}, cover);
                    }
                int32_t advance = int32_t((ft->glyph->advance.x + 32) >> 6);
                pen += std::max(advance + (face & extend ? 1 : 0) - (face & condense ? 1 : 0), 0);
            }
            TextFont(1025);
            TextFace(int16_t(face));
            TextSize(size);
            MoveTo(10, 100);
            DrawText(text.data(), 0, int16_t(text.size()));
            EXPECT_TRUE(s.port->pixels == model->pixels) << size << " " << face;
            EXPECT_EQ(s.port->pnLoc.h, pen);
            EXPECT_EQ(10 + TextWidth(text.data(), 0, int16_t(text.size())), pen);
            DisposePort(model);
        }
}

TEST(Text, StringsAreTracedAsUtf8AndStrikesAreRetiredAndMadeAgain) {
    ScopedPort s;
    TextFont(FontNumber("Arial"));
    TextSize(14);
    MoveTo(10, 40);
    auto text = Pascal("D\x8E"
                       "bit 1\xA1");
    int16_t width = StringWidth(text.data());
    DrawString(text.data());
    vitrail_trace_op op = s.op(0);
    EXPECT_STREQ(op.text, "D\xC3\xA9"
                          "bit 1\xC2\xB0");
    EXPECT_EQ((std::vector<int>{op.x1, op.y1, op.x2, op.size}),
              (std::vector<int>{10, 40, 10 + width, 14}));
    EXPECT_EQ(StringWidth(Pascal("").data()) + TextWidth(nullptr, 0, 5) + TextWidth("ab", -1, 1),
              0);
    for (int16_t size = 1; size <= 70; ++size) { // more than the 64 strikes kept
        TextSize(size);
        EXPECT_GE(StringWidth(text.data()), 0);
    }
    TextSize(14);
    EXPECT_EQ(StringWidth(text.data()), width);
    EXPECT_EQ(CharWidths()['D'] + CharWidths()[0x8E], TextWidth("D\x8E", 0, 2));
}

TEST(Pictures, NamedPicturesAreFoundDrawnAtTheirFrameAndReleased) {
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("repferb", 40, 20, 0x00FF00, 5, 5));
    std::filesystem::create_directories(res.root() / "PICT" / "sub");
    ScopedPort s;
    Handle h = GetNamedResource("PICT", Pascal("repferb").data());
    ASSERT_NE(h, nullptr);
    PictInfo info{};
    ASSERT_EQ(GetPictInfo(h, &info, 0, 0, 0, 0), 0);
    const Rect &src = info.sourceRect;
    EXPECT_EQ((std::vector<int>{src.left, src.top, src.right, src.bottom}),
              (std::vector<int>{5, 5, 45, 25}));
    Rect dst{50, 100, 70, 140}, clipped{-5, -20, 15, 20}; // the second partly outside the port
    DrawPicture(h, &dst);
    DrawPicture(h, &clipped);
    ReleaseResource(h);
    const Probe probes[] = {{0, 0, 0x00FF00FF}, {19, 14, 0x00FF00FF},  {20, 14, kWhite},
                            {19, 15, kWhite},   {100, 50, 0x00FF00FF}, {139, 69, 0x00FF00FF},
                            {140, 69, kWhite},  {139, 70, kWhite}};
    s.expectPixels(probes);
    EXPECT_STREQ(s.op(0).text, "repferb");

    for (const char *name : {"", ".", "..", "../PICT/repferb", "sub/../repferb", "absent"})
        EXPECT_EQ(GetNamedResource("PICT", Pascal(name).data()), nullptr) << name;
    EXPECT_EQ(GetNamedResource("PICT", nullptr), nullptr);
    ReleaseResource(nullptr);
}

TEST(Resources, FolderSetterAndFileLayout) {
    std::string before = vitrail_resources_folder();
    EXPECT_EQ(vitrail_set_resources_folder("/tmp/res//"), 0);
    EXPECT_STREQ(vitrail_resources_folder(), "/tmp/res");
    EXPECT_EQ(ResourceFile("PICT", "puceb"), "/tmp/res/PICT/puceb.png");
    EXPECT_EQ(ResourceFile("DLOG", "Fiche"), "/tmp/res/DLOG/Fiche");
    EXPECT_EQ(ResourceFile("PICT", "caf\x8E"), "/tmp/res/PICT/caf\xC3\xA9.png");
    EXPECT_EQ(vitrail_set_resources_folder(std::string(1024, 'x').c_str()), -1);
    EXPECT_STREQ(vitrail_resources_folder(), "/tmp/res");
    vitrail_set_resources_folder(before.empty() ? nullptr : before.c_str());
}

TEST(Png, PortIsWrittenAndReadsBack) {
    ScopedPort s(16, 8);
    Rect r{2, 3, 4, 5};
    PaintRect(&r);
    std::string path = (std::filesystem::temp_directory_path() / "vitrail-port-test.png").string();
    ASSERT_EQ(vitrail_port_write_png(s.port, path.c_str()), 0);
    EXPECT_EQ(vitrail_port_write_png(s.port, "/nonexistent/dir/x.png"), -1);
    EXPECT_EQ(vitrail_port_write_png(nullptr, path.c_str()), -1);
    std::ifstream in(path, std::ios::binary);
    std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    std::remove(path.c_str());
    RgbaImage image;
    ASSERT_TRUE(PngDecode(bytes, image));
    EXPECT_EQ(std::pair(image.width, image.height), std::pair(16, 8));
    EXPECT_EQ(image.pixels == s.port->pixels, true);
}

TEST(Trace, KeepsTheLatestOperationsAndClears) {
    ScopedPort s(4, 4);
    Rect r{0, 0, 1, 1};
    for (size_t i = 0; i < kMaxTrace + 3; ++i) PaintRect(&r);
    EXPECT_EQ(vitrail_port_trace_count(s.port), int32_t(kMaxTrace));
    vitrail_trace_op op;
    EXPECT_EQ(vitrail_port_trace_get(s.port, int32_t(kMaxTrace), &op), -1);
    EXPECT_EQ(vitrail_port_trace_get(s.port, -1, &op), -1);
    vitrail_port_trace_clear(s.port);
    EXPECT_EQ(vitrail_port_trace_count(s.port), 0);
}
