// Formatted text output and measuring against their floors, done with
// FreeType directly in the same process. Prints the ratios of the medians
// after the benchmark table.
//
//   Job                 vitrail               Floor
//   draw a text line    TextOut_Ext           cached-glyph blit: FTC small-bitmap
//                                             lookup and blend of each glyph
//   measure it          GetTextExtent_Ext     sum of a 256-entry advance table
//   (for reference)                           FT_Load_Char + render and blend
//
// The line: 50 characters in DejaVu Sans at 12 pixels ("Geneva"), a tab and
// a right-aligned amount.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_CACHE_H
#include FT_MODULE_H

#include <vitrail/draw.h>
#include <vitrail/platform.h>

#include "bench/medians.h"

namespace {

constexpr int kWidth = 420, kHeight = 40, kPixels = 12;
const std::string kName = "Amoxicilline 1 g matin et soir durant 7 jours";
const std::string kAmount = "12,50";
const std::string kLine = kName + "\xFF\x80\x7C\xFF\x83" + kAmount;
const std::string kChars = kName + kAmount; // the 50 characters the floors draw

GrafPtr port;

// The floor: one face of the same font, FreeType's cache, an RGBA raster.
struct Floor {
    FT_Library library = nullptr;
    FTC_Manager manager = nullptr;
    FTC_SBitCache sbits = nullptr;
    FT_Face face = nullptr; // for the uncached reference
    std::string file;
    std::array<int16_t, 256> advance{};
    std::vector<uint8_t> raster = std::vector<uint8_t>(size_t(kWidth) * kHeight * 4, 0xFF);
    FTC_ImageTypeRec type{reinterpret_cast<FTC_FaceID>(1), 0, kPixels, FT_LOAD_DEFAULT};
} floor_;

// FreeType 2.12 weighs new small-bitmap cache nodes before setting every
// field: memory that comes back zeroed keeps the cache from flushing itself.
void *Alloc(FT_Memory, long n) {
    return std::calloc(1, size_t(n));
}
void Free(FT_Memory, void *p) {
    std::free(p);
}
void *Realloc(FT_Memory, long, long n, void *p) {
    return std::realloc(p, size_t(n));
}
FT_MemoryRec_ zeroed{nullptr, Alloc, Free, Realloc};

FT_Error Requester(FTC_FaceID, FT_Library lib, FT_Pointer, FT_Face *face) {
    return FT_New_Face(lib, floor_.file.c_str(), 0, face);
}

bool SetupFloor() {
    FcInit();
    FcPattern *p = FcNameParse(reinterpret_cast<const FcChar8 *>("DejaVu Sans:style=Book"));
    FcConfigSubstitute(nullptr, p, FcMatchPattern);
    FcDefaultSubstitute(p);
    FcResult r;
    FcPattern *m = FcFontMatch(nullptr, p, &r);
    FcChar8 *path = nullptr;
    if (m && FcPatternGetString(m, FC_FILE, 0, &path) == FcResultMatch) floor_.file = (char *)path;
    if (m) FcPatternDestroy(m);
    FcPatternDestroy(p);
    Floor &f = floor_;
    if (f.file.empty() || FT_New_Library(&zeroed, &f.library) ||
        (FT_Add_Default_Modules(f.library), FT_Set_Default_Properties(f.library), false) ||
        FTC_Manager_New(f.library, 0, 0, 0, Requester, nullptr, &f.manager) ||
        FTC_SBitCache_New(f.manager, &f.sbits) ||
        FT_New_Face(f.library, f.file.c_str(), 0, &f.face) ||
        FT_Set_Pixel_Sizes(f.face, 0, kPixels))
        return false;
    for (int c = 0; c < 256; ++c)
        if (FT_Load_Char(f.face, FT_ULong(c), FT_LOAD_DEFAULT) == 0)
            f.advance[size_t(c)] = int16_t((f.face->glyph->advance.x + 32) >> 6);
    return true;
}

void Blend(int x, int y, const uint8_t *mask, int w, int h, int pitch) {
    for (int row = 0; row < h; ++row) {
        if (y + row < 0 || y + row >= kHeight) continue;
        for (int col = 0; col < w; ++col) {
            uint8_t cover = mask[row * pitch + col];
            if (!cover || x + col < 0 || x + col >= kWidth) continue;
            uint8_t *d = &floor_.raster[(size_t(y + row) * kWidth + size_t(x + col)) * 4];
            for (int k = 0; k < 3; ++k) d[k] = uint8_t(d[k] + (0 - d[k]) * cover / 255);
            d[3] = 0xFF;
        }
    }
}

void BM_TextOutExt(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(
            TextOut_Ext(port, 4, 10, 0, 0, kLine.data(), int32_t(kLine.size())));
}

void BM_FloorCachedBlit(benchmark::State &state) {
    for (auto _ : state) {
        int pen = 4;
        for (unsigned char c : kChars) {
            FT_UInt g = FT_Get_Char_Index(floor_.face, c);
            FTC_SBit s;
            if (FTC_SBitCache_Lookup(floor_.sbits, &floor_.type, g, &s, nullptr)) continue;
            if (s->buffer)
                Blend(pen + s->left, 22 - s->top, s->buffer, s->width, s->height, s->pitch);
            pen += s->xadvance;
        }
        benchmark::DoNotOptimize(floor_.raster.data());
    }
}

void BM_FloorLoadRender(benchmark::State &state) {
    FT_Face face = floor_.face;
    for (auto _ : state) {
        int pen = 4;
        for (unsigned char c : kChars) {
            if (FT_Load_Char(face, c, FT_LOAD_RENDER)) continue;
            const FT_Bitmap &b = face->glyph->bitmap;
            Blend(pen + face->glyph->bitmap_left, 22 - face->glyph->bitmap_top, b.buffer,
                  int(b.width), int(b.rows), b.pitch);
            pen += int((face->glyph->advance.x + 32) >> 6);
        }
        benchmark::DoNotOptimize(floor_.raster.data());
    }
}

void BM_GetTextExtentExt(benchmark::State &state) {
    int32_t w = 0, h = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            GetTextExtent_Ext(port, 4, 0, kLine.data(), int32_t(kLine.size()), &w, &h));
}

void BM_FloorAdvanceSum(benchmark::State &state) {
    for (auto _ : state) {
        int32_t w = 0;
        for (unsigned char c : kChars) w += floor_.advance[c];
        benchmark::DoNotOptimize(w);
    }
}

BENCHMARK(BM_TextOutExt);
BENCHMARK(BM_FloorCachedBlit);
BENCHMARK(BM_FloorLoadRender);
BENCHMARK(BM_GetTextExtentExt);
BENCHMARK(BM_FloorAdvanceSum);

} // namespace

int main(int argc, char **argv) {
    bench::InitializeWithMedians(argc, argv, 9);
    port = vitrail_port_new(kWidth, kHeight);
    vitrail_port_set_current(port);
    ch_font_set(port, "Geneva", 0, 255, kPixels);
    if (!port || !SetupFloor()) {
        std::fprintf(stderr, "text_bench: no port or no DejaVu Sans\n");
        return 1;
    }
    bench::MedianRecorder rec;
    benchmark::RunSpecifiedBenchmarks(&rec);
    auto ratio = [&](const char *job, const char *a, const char *b, const char *target) {
        if (rec.median[a].real > 0 && rec.median[b].real > 0)
            std::printf("ratio\t%s\t%.2f\t%s\n", job, rec.median[a].real / rec.median[b].real, target);
    };
    std::printf("\n");
    ratio("TextOut_Ext / cached-glyph blit", "BM_TextOutExt", "BM_FloorCachedBlit", "<= 3");
    ratio("GetTextExtent_Ext / advance-table sum", "BM_GetTextExtentExt", "BM_FloorAdvanceSum",
          "<= 3");
    ratio("TextOut_Ext / FreeType load+render", "BM_TextOutExt", "BM_FloorLoadRender", "-");
    benchmark::Shutdown();
    vitrail_port_dispose(port);
    return 0;
}
