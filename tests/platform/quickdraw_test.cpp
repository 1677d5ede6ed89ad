// Ports, pens, rectangles, text and pictures of the drawing stand-in,
// checked through pixels and the operation trace.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <vitrail/platform.h>

#include "platform/quickdraw/fonts.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/pictures.h"
#include "platform/quickdraw/png.h"
#include "platform/quickdraw/port.h"
#include "platform/quickdraw/shapes.h"
#include "platform/quickdraw/text.h"
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

TEST(Port, SizesOutOfRangeAreRefusedAndDisposedPortsAreLeft) {
    struct Row {
        int32_t w, h;
        bool made;
    } rows[] = {{1, 1, true}, {8192, 1, true}, {0, 5, false}, {5, -1, false}, {8193, 2, false}};
    for (const Row &r : rows) {
        GrafPtr p = vitrail_port_new(r.w, r.h);
        EXPECT_EQ(p != nullptr, r.made) << r.w << "x" << r.h;
        if (p) {
            EXPECT_EQ(vitrail_port_pixel(p, r.w - 1, r.h - 1), kWhite);
            EXPECT_EQ(vitrail_port_pixel(p, r.w, 0), 0u);
        }
        vitrail_port_dispose(p);
    }
    EXPECT_EQ(vitrail_port_pixel(nullptr, 0, 0), 0u);
    EXPECT_EQ(vitrail_port_trace_count(nullptr), 0);
    vitrail_trace_op op;
    EXPECT_EQ(vitrail_port_trace_get(nullptr, 0, &op), -1);

    // Disposing the current port leaves none, and drawing is then ignored.
    GrafPtr p = vitrail_port_new(10, 10);
    SetPort(p);
    vitrail_port_dispose(p);
    GrafPtr now = reinterpret_cast<GrafPtr>(1);
    GetPort(&now);
    EXPECT_EQ(now, nullptr);
    Rect r{0, 0, 5, 5};
    PaintRect(&r);
    LineTo(4, 4);
    DrawString(Pascal("x").data());
    FontInfo fi{1, 1, 1, 1};
    GetFontInfo(&fi);
    EXPECT_EQ(fi.ascent + fi.descent + fi.widMax + fi.leading, 0);
}

TEST(Shapes, ThickFramesStayInsideTheOffsetRect) {
    ScopedPort s;
    PenSize(3, 2);
    Rect r{0, 0, 10, 10};
    OffsetRect(&r, 5, 7);
    FrameRect(&r);
    // Left edge 3 wide, top 2 high; right from 15 - 3, bottom from 17 - 2.
    const Probe probes[] = {{7, 12, kBlack},  {8, 12, kWhite},  {10, 8, kBlack}, {10, 9, kWhite},
                            {12, 12, kBlack}, {10, 15, kBlack}, {4, 12, kWhite}, {10, 17, kWhite}};
    s.expectPixels(probes);
}

TEST(Pen, LinesCoverThePenBelowAndRightOfEachPointInsideThePort) {
    ScopedPort s;
    PenSize(2, 2);
    MoveTo(16, 30);
    LineTo(40, 30);
    MoveTo(100, 10);
    LineTo(100, 20);
    for (int x = 16; x <= 41; ++x) {
        EXPECT_EQ(s.at(x, 30), kBlack) << x;
        EXPECT_EQ(s.at(x, 31), kBlack) << x;
    }
    const Probe probes[] = {{15, 30, kWhite}, {42, 30, kWhite},  {20, 29, kWhite},
                            {20, 32, kWhite}, {101, 21, kBlack}, {102, 15, kWhite},
                            {100, 22, kWhite}};
    s.expectPixels(probes);
    EXPECT_EQ(s.op(0).pen_width, 2);
    EXPECT_EQ(CurrentPort()->pnLoc.h, 100);
    EXPECT_EQ(CurrentPort()->pnLoc.v, 20);

    // Diagonals, and huge pens that must stay inside the port.
    PenSize(1, 1);
    MoveTo(0, 0);
    LineTo(9, 9);
    for (int i = 0; i <= 9; ++i) EXPECT_EQ(s.at(i, i), kBlack) << i;
    EXPECT_EQ(s.at(1, 0), kWhite);
    PenSize(32767, 32767);
    MoveTo(-32768, -32768);
    LineTo(32767, 32767);
    EXPECT_EQ(s.at(199, 99), kBlack);
    PenSize(0, 4);
    MoveTo(0, 40);
    RGBColor red{0xFFFF, 0, 0};
    RGBForeColor(&red);
    LineTo(10, 40);
    EXPECT_EQ(s.at(5, 40), kBlack); // a zero-wide pen draws nothing
}

TEST(Colours, ClassicNumbersAndUnknownOnes) {
    ScopedPort s;
    Port *p = CurrentPort();
    struct Row {
        int32_t number;
        RGBColor expected;
    } rows[] = {{205, {0xFFFF, 0, 0}},
                {33, {0, 0, 0}},
                {30, {0xFFFF, 0xFFFF, 0xFFFF}},
                {999, {0xFFFF, 0xFFFF, 0xFFFF}},
                {409, {0, 0, 0xFFFF}}};
    for (const Row &r : rows) {
        ForeColor(r.number);
        EXPECT_EQ(p->fgColour.red, r.expected.red) << r.number;
        EXPECT_EQ(p->fgColour.blue, r.expected.blue) << r.number;
    }
}

TEST(Fonts, TableNamesAndUnknownNames) {
    struct Row {
        const char *name;
        bool found;
    } rows[] = {{"Lucida Grande", true}, {"Geneva", true},         {"arial", true},
                {"Helvetica", true},     {"Times", true},          {"Courier", true},
                {"Monaco", true},        {"DejaVu Sans", true},    {"", false},
                {"Wingdings 9", false},  {"Lucida Grandee", false}};
    for (const Row &r : rows) {
        int16_t n = -1;
        GetFNum(Pascal(r.name).data(), &n);
        EXPECT_EQ(n != 0, r.found) << r.name;
    }
    int16_t n = -1;
    GetFNum(nullptr, &n);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(FontNumber("GENEVA"), 3);
}

TEST(Text, MetricsGrowWithSizeAndEveryTableFontLoads) {
    ScopedPort s;
    for (const char *name : {"Lucida Grande", "Arial", "Times", "Courier", "Monaco"}) {
        TextFont(FontNumber(name));
        FontInfo small, large;
        TextSize(10);
        GetFontInfo(&small);
        TextSize(40);
        GetFontInfo(&large);
        EXPECT_GT(small.ascent, 5) << name;
        EXPECT_GT(small.descent, 0) << name;
        EXPECT_GE(small.leading, 0) << name;
        EXPECT_GT(large.ascent, 3 * small.ascent) << name;
        EXPECT_GT(large.widMax, small.widMax) << name;
    }
}

TEST(Text, DrawStringTracesDecodedTextMovesThePenAndFacesChangeWidths) {
    ScopedPort s;
    TextFont(FontNumber("Arial"));
    TextSize(14);
    MoveTo(10, 40);
    auto text = Pascal("D\x8E"
                       "bit 1\xA1");
    int16_t width = StringWidth(text.data());
    EXPECT_GT(width, 30);
    DrawString(text.data());
    vitrail_trace_op op = s.op(0);
    EXPECT_STREQ(op.text, "D\xC3\xA9"
                          "bit 1\xC2\xB0");
    EXPECT_EQ(op.x1, 10);
    EXPECT_EQ(op.y1, 40);
    EXPECT_EQ(op.x2, 10 + width);
    EXPECT_EQ(op.size, 14);
    EXPECT_EQ(CurrentPort()->pnLoc.h, 10 + width);
    int dark = 0;
    for (int y = 25; y < 45; ++y)
        for (int x = 10; x < 10 + width; ++x) dark += s.at(x, y) != kWhite;
    EXPECT_GT(dark, 40);
    for (int y = 0; y < 100; ++y) EXPECT_EQ(s.at(10 + width + 2, y), kWhite) << y;
    // Condense and extend take one pixel per character; bold widens.
    auto word = Pascal("Ordonnance");
    int16_t plain = StringWidth(word.data());
    TextFace(condense);
    EXPECT_EQ(StringWidth(word.data()), plain - 10);
    TextFace(extend);
    EXPECT_EQ(StringWidth(word.data()), plain + 10);
    TextFace(bold);
    EXPECT_GT(StringWidth(word.data()), plain);
    EXPECT_EQ(StringWidth(Pascal("").data()), 0);
}

TEST(Text, CopyModeFillsTheGlyphBoxAndUnderlineDrawsBelowTheBaseline) {
    ScopedPort s;
    TextSize(12);
    RGBColor cyan{0, 0xFFFF, 0xFFFF};
    RGBBackColor(&cyan);
    TextMode(srcCopy);
    TextFace(underline);
    MoveTo(20, 50);
    DrawString(Pascal("ii").data());
    FontInfo fi;
    GetFontInfo(&fi);
    const Probe probes[] = {{20, int32_t(50 - fi.ascent), 0x00FFFFFF},
                            {20, int32_t(50 + fi.descent - 1), 0x00FFFFFF},
                            {20, int32_t(50 - fi.ascent - 1), kWhite},
                            {21, 51, kBlack}};
    s.expectPixels(probes);
    TextMode(srcOr);
    TextFace(0);
    MoveTo(20, 80);
    DrawString(Pascal("ii").data());
    EXPECT_EQ(s.at(20, 80 - fi.ascent), kWhite);
}

TEST(Pictures, NamedPictureIsFoundDrawnAtItsFrameAndReleased) {
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("repferb", 40, 20, 0x00FF00, 5, 5));
    ScopedPort s;
    Handle h = GetNamedResource("PICT", Pascal("repferb").data());
    ASSERT_NE(h, nullptr);
    PictInfo info{};
    ASSERT_EQ(GetPictInfo(h, &info, 0, 0, 0, 0), 0);
    const Rect &src = info.sourceRect;
    EXPECT_EQ((std::vector<int>{src.left, src.top, src.right, src.bottom}),
              (std::vector<int>{5, 5, 45, 25}));
    Rect dst{50, 100, 70, 140};
    DrawPicture(h, &dst);
    Rect clipped{-5, -20, 15, 20}; // partly outside the port
    DrawPicture(h, &clipped);
    ReleaseResource(h);
    const Probe probes[] = {{0, 0, 0x00FF00FF}, {19, 14, 0x00FF00FF},  {20, 14, kWhite},
                            {19, 15, kWhite},   {100, 50, 0x00FF00FF}, {139, 69, 0x00FF00FF},
                            {140, 69, kWhite},  {139, 70, kWhite}};
    s.expectPixels(probes);
    EXPECT_EQ(s.op(0).kind, vitrail_op_picture);
    EXPECT_STREQ(s.op(0).text, "repferb");
}

TEST(Pictures, MissingHostileAndBrokenResourcesAreNotFound) {
    vitrail_test::TempResources res;
    ASSERT_TRUE(res.picture("ok", 2, 2, 0));
    std::filesystem::create_directories(res.root() / "PICT" / "sub");
    std::FILE *f = std::fopen((res.root() / "PICT" / "broken.png").c_str(), "wb");
    std::fputs("not a png", f);
    std::fclose(f);
    for (const char *name : {"", ".", "..", "../PICT/ok", "sub/../ok", "absent"})
        EXPECT_EQ(GetNamedResource("PICT", Pascal(name).data()), nullptr) << name;
    EXPECT_EQ(GetNamedResource("PICT", nullptr), nullptr);
    Handle broken = GetNamedResource("PICT", Pascal("broken").data());
    ASSERT_NE(broken, nullptr);
    PictInfo info{};
    EXPECT_EQ(GetPictInfo(broken, &info, 0, 0, 0, 0), kPictInfoIDErr);
    ReleaseResource(broken);
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
    EXPECT_EQ(image.width, 16);
    EXPECT_EQ(image.height, 8);
    EXPECT_EQ(image.pixels[(2 * 16 + 3) * 4], 0);
    EXPECT_EQ(image.pixels[(2 * 16 + 5) * 4], 0xFF);
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
