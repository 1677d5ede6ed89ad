// Strikes and the glyph cache.
//
//   Held by            What                                   Kept
//   Strike             metrics, 256 advances, 256 glyph ids   up to 64 strikes, then all retired
//   FTC small bitmaps  rendered glyphs up to 64 pixels        FreeType's cache, 4 MiB in all
//   FTC images         rendered glyphs of larger sizes        (same budget)
//   FaceSpec           font file of a family in a style       for the life of the process
#include "platform/quickdraw/glyphs.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_CACHE_H

#include "platform/quickdraw/fonts.h"
#include "platform/toolbox/mac_roman.h"

namespace platform {

// One font file in one style; FreeType's cache names faces by a pointer to
// one of these.
struct FaceSpec {
    std::string family;
    bool isBold, isItalic;
    bool found;
    std::string file;
    int index;
};

struct Strike {
    FTC_ImageTypeRec type{}; // face, pixel size, load flags
    int16_t adjust = 0;      // -1 condense, +1 extend
    bool small = true;       // glyphs from the small-bitmap cache
    bool measured = false;
    FontInfo info{};
    std::array<int16_t, 256> widths{};
    std::array<FT_UInt, 256> glyphs{};
};

namespace {

constexpr size_t kMaxStrikes = 64;
constexpr int16_t kMaxSmallPixels = 64;
constexpr FT_UInt kMaxFaces = 16, kMaxSizes = 32;
constexpr FT_ULong kMaxBytes = 4 << 20;

int32_t Ceil26_6(FT_Pos v) {
    return int32_t((v + 63) >> 6);
}

FontInfo InfoOf(const FT_Size_Metrics &m) {
    int32_t ascent = Ceil26_6(m.ascender), descent = Ceil26_6(-m.descender);
    return FontInfo{int16_t(ascent), int16_t(descent), int16_t(Ceil26_6(m.max_advance)),
                    int16_t(std::max(Ceil26_6(m.height) - ascent - descent, 0))};
}

class GlyphCache {
  public:
    GlyphCache() {
        FT_Library library = FontLibrary();
        if (!library || FTC_Manager_New(library, kMaxFaces, kMaxSizes, kMaxBytes, Request, nullptr,
                                        &manager_) != 0) {
            manager_ = nullptr;
        } else if (FTC_SBitCache_New(manager_, &sbits_) != 0 ||
                   FTC_ImageCache_New(manager_, &images_) != 0) {
            FTC_Manager_Done(manager_);
            manager_ = nullptr;
        }
    }
    ~GlyphCache() {
        if (manager_) FTC_Manager_Done(manager_);
    }
    GlyphCache(const GlyphCache &) = delete;
    GlyphCache &operator=(const GlyphCache &) = delete;

    Strike *Find(int16_t number, int16_t face, int16_t size) {
        if (last_ && number == lastNumber_ && face == lastFace_ && size == lastSize_) return last_;
        if (!manager_) return nullptr;
        Strike *strike = nullptr;
        try {
            strike = Make(number, face, size);
        } catch (...) {
            return nullptr;
        }
        if (strike) last_ = strike, lastNumber_ = number, lastFace_ = face, lastSize_ = size;
        return strike;
    }

    void Measure(Strike &s) {
        s.measured = true;
        FT_Size size = SizeOf(s);
        if (!size) return;
        FT_Face face = size->face;
        for (size_t b = 0; b < 256; ++b) {
            FT_ULong code = MacRomanToUnicode(uint8_t(b));
            s.glyphs[b] = face->charmap ? FT_Get_Char_Index(face, code) : FT_UInt(code);
            if (FT_Load_Glyph(face, s.glyphs[b], FT_LOAD_DEFAULT) != 0) continue;
            int32_t advance = int32_t((face->glyph->advance.x + 32) >> 6) + s.adjust;
            s.widths[b] = int16_t(std::max(advance, 0));
        }
    }

    bool Glyph(Strike &s, uint8_t byte, GlyphMask &mask) {
        FT_UInt index = s.glyphs[byte];
        if (s.small) {
            FTC_SBit sbit = nullptr;
            if (FTC_SBitCache_Lookup(sbits_, &s.type, index, &sbit, nullptr) != 0) return false;
            if (sbit->buffer) {
                mask = {sbit->buffer, sbit->width, sbit->height,
                        sbit->pitch,  sbit->left,  sbit->top};
                return sbit->format == FT_PIXEL_MODE_GRAY;
            }
            if (!sbit->width && !sbit->height) return false; // nothing to draw
            // Otherwise too large for a small bitmap: the image cache has it.
        }
        FTC_ImageTypeRec rendered = s.type;
        rendered.flags |= FT_LOAD_RENDER;
        FT_Glyph glyph = nullptr;
        if (FTC_ImageCache_Lookup(images_, &rendered, index, &glyph, nullptr) != 0 ||
            glyph->format != FT_GLYPH_FORMAT_BITMAP)
            return false;
        const auto *bitmap = reinterpret_cast<FT_BitmapGlyph>(glyph);
        const FT_Bitmap &bm = bitmap->bitmap;
        mask = {bm.buffer, int32_t(bm.width), int32_t(bm.rows),
                bm.pitch,  bitmap->left,      bitmap->top};
        return bm.buffer && bm.pixel_mode == FT_PIXEL_MODE_GRAY;
    }

  private:
    static FT_Error Request(FTC_FaceID id, FT_Library library, FT_Pointer, FT_Face *face) {
        const auto *spec = static_cast<const FaceSpec *>(id);
        if (!spec->found) return FT_Err_Cannot_Open_Resource;
        return FT_New_Face(library, spec->file.c_str(), spec->index, face);
    }

    // The size of strike `s` in FreeType's cache; null when it cannot be set.
    FT_Size SizeOf(const Strike &s) {
        FTC_ScalerRec scaler{s.type.face_id, s.type.width, s.type.height, 1, 0, 0};
        FT_Size size = nullptr;
        return FTC_Manager_LookupSize(manager_, &scaler, &size) == 0 ? size : nullptr;
    }

    FaceSpec *Spec(std::string_view family, bool isBold, bool isItalic) {
        for (auto &spec : specs_)
            if (spec->family == family && spec->isBold == isBold && spec->isItalic == isItalic)
                return spec.get();
        auto spec = std::make_unique<FaceSpec>(
            FaceSpec{std::string(family), isBold, isItalic, false, std::string(), 0});
        spec->found = FindFontFile(family, isBold, isItalic, spec->file, spec->index);
        specs_.push_back(std::move(spec));
        return specs_.back().get();
    }

    Strike *Make(int16_t number, int16_t face, int16_t size) {
        FaceSpec *spec = Spec(FamilyOf(number), face & bold, face & italic);
        int16_t pixels = PixelSize(size);
        int16_t adjust = int16_t((face & extend ? 1 : 0) - (face & condense ? 1 : 0));
        auto key = std::make_tuple(spec, pixels, adjust);
        auto it = strikes_.find(key);
        if (it != strikes_.end()) return it->second.get();
        auto strike = std::make_unique<Strike>();
        strike->type = FTC_ImageTypeRec{spec, 0, FT_UInt(pixels), FT_LOAD_DEFAULT};
        strike->adjust = adjust;
        strike->small = pixels <= kMaxSmallPixels;
        FT_Size ftSize = SizeOf(*strike);
        if (!ftSize) return nullptr;
        strike->info = InfoOf(ftSize->metrics);
        if (strikes_.size() >= kMaxStrikes) strikes_.clear(), last_ = nullptr;
        return strikes_.emplace(key, std::move(strike)).first->second.get();
    }

    FTC_Manager manager_ = nullptr;
    FTC_SBitCache sbits_ = nullptr;
    FTC_ImageCache images_ = nullptr;
    std::vector<std::unique_ptr<FaceSpec>> specs_;
    std::map<std::tuple<FaceSpec *, int16_t, int16_t>, std::unique_ptr<Strike>> strikes_;
    Strike *last_ = nullptr;
    int16_t lastNumber_ = 0, lastFace_ = 0, lastSize_ = 0;
};

GlyphCache &Cache() {
    static GlyphCache cache;
    return cache;
}

} // namespace

Strike *StrikeFor(int16_t number, int16_t face, int16_t size) {
    return Cache().Find(number, face, size);
}

const FontInfo &StrikeInfo(const Strike &strike) {
    return strike.info;
}

const std::array<int16_t, 256> &StrikeWidths(Strike &strike) {
    if (!strike.measured) Cache().Measure(strike);
    return strike.widths;
}

bool StrikeGlyph(Strike &strike, uint8_t byte, GlyphMask &mask) {
    if (!strike.measured) Cache().Measure(strike);
    return Cache().Glyph(strike, byte, mask);
}

} // namespace platform
