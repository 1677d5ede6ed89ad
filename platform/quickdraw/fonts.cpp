// The font table and the face cache.
//
//   Number  Name              Family            Number  Name              Family
//   3       Geneva            DejaVu Sans       1024    Lucida Grande     DejaVu Sans
//   4       Monaco            DejaVu Sans Mono  1025    Arial             Liberation Sans
//   20      Times             Liberation Serif  1026    Times New Roman   Liberation Serif
//   21      Helvetica         Liberation Sans   1027    Courier New       Liberation Mono
//   22      Courier           Liberation Mono   1028    Verdana           DejaVu Sans
//   1029-1034: the installed families under their own names
// Font 0, the system font, and numbers outside the table draw in DejaVu Sans.
#include "platform/quickdraw/fonts.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string>

#include <fontconfig/fontconfig.h>
#include FT_MODULE_H

namespace platform {
namespace {

struct FontEntry {
    int16_t number;
    std::string_view name;
    std::string_view family;
};

constexpr std::string_view kSystemFamily = "DejaVu Sans";
constexpr int16_t kDefaultSize = 12;
constexpr int16_t kMaxSize = 1000;

constexpr std::array<FontEntry, 16> kFonts = {{
    {3, "Geneva", "DejaVu Sans"},
    {4, "Monaco", "DejaVu Sans Mono"},
    {20, "Times", "Liberation Serif"},
    {21, "Helvetica", "Liberation Sans"},
    {22, "Courier", "Liberation Mono"},
    {1024, "Lucida Grande", "DejaVu Sans"},
    {1025, "Arial", "Liberation Sans"},
    {1026, "Times New Roman", "Liberation Serif"},
    {1027, "Courier New", "Liberation Mono"},
    {1028, "Verdana", "DejaVu Sans"},
    {1029, "DejaVu Sans", "DejaVu Sans"},
    {1030, "DejaVu Serif", "DejaVu Serif"},
    {1031, "DejaVu Sans Mono", "DejaVu Sans Mono"},
    {1032, "Liberation Sans", "Liberation Sans"},
    {1033, "Liberation Serif", "Liberation Serif"},
    {1034, "Liberation Mono", "Liberation Mono"},
}};

bool SameName(std::string_view a, std::string_view b) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [&](char x, char y) { return lower(x) == lower(y); });
}

} // namespace

std::string_view FamilyOf(int16_t number) {
    for (const auto &f : kFonts)
        if (f.number == number) return f.family;
    return kSystemFamily;
}

bool FindFontFile(std::string_view family, bool isBold, bool isItalic, std::string &file,
                  int &index) {
    FcPattern *pattern = FcPatternCreate();
    if (!pattern) return false;
    std::string name(family);
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8 *>(name.c_str()));
    FcPatternAddInteger(pattern, FC_WEIGHT, isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddInteger(pattern, FC_WIDTH, FC_WIDTH_NORMAL);
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result;
    FcPattern *match = FcFontMatch(nullptr, pattern, &result);
    FcPatternDestroy(pattern);
    if (!match) return false;
    FcChar8 *path = nullptr;
    bool found = FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch && path;
    if (found) file = reinterpret_cast<const char *>(path);
    if (FcPatternGetInteger(match, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
    FcPatternDestroy(match);
    return found;
}

namespace {

// FreeType memory that comes back zeroed: FreeType 2.12 weighs a new
// small-bitmap cache node before it has set every field, and stale bytes
// there make the cache flush itself on every lookup.
void *ZeroedAlloc(FT_Memory, long size) {
    return std::calloc(1, size_t(size));
}
void ZeroedFree(FT_Memory, void *block) {
    std::free(block);
}
void *ZeroedRealloc(FT_Memory, long, long size, void *block) {
    return std::realloc(block, size_t(size));
}
FT_MemoryRec_ zeroedMemory{nullptr, ZeroedAlloc, ZeroedFree, ZeroedRealloc};

// The FreeType library and the faces FaceFor opened so far, by family and style.
class FaceCache {
  public:
    FaceCache() {
        if (FT_New_Library(&zeroedMemory, &library_) != 0) {
            library_ = nullptr;
        } else {
            FT_Add_Default_Modules(library_);
            FT_Set_Default_Properties(library_);
        }
        FcInit();
    }
    ~FaceCache() {
        for (auto &entry : faces_)
            if (entry.second) FT_Done_Face(entry.second);
        if (library_) FT_Done_Library(library_);
    }
    FaceCache(const FaceCache &) = delete;
    FaceCache &operator=(const FaceCache &) = delete;

    FT_Library Library() const { return library_; }

    FT_Face Get(std::string_view family, bool isBold, bool isItalic) {
        std::string key = std::string(family) + (isBold ? "|b" : "|") + (isItalic ? "i" : "");
        auto it = faces_.find(key);
        if (it != faces_.end()) return it->second;
        FT_Face face = nullptr;
        std::string file;
        int index = 0;
        if (!library_ || !FindFontFile(family, isBold, isItalic, file, index) ||
            FT_New_Face(library_, file.c_str(), index, &face) != 0)
            face = nullptr;
        faces_.emplace(key, face);
        return face;
    }

  private:
    FT_Library library_ = nullptr;
    std::map<std::string, FT_Face> faces_;
};

FaceCache &Cache() {
    static FaceCache cache;
    return cache;
}

} // namespace

FT_Library FontLibrary() {
    return Cache().Library();
}

int16_t FontNumber(std::string_view name) {
    for (const auto &f : kFonts)
        if (SameName(f.name, name)) return f.number;
    return 0;
}

void GetFNum(ConstStr255Param name, int16_t *familyID) {
    if (!familyID) return;
    *familyID =
        name ? FontNumber(std::string_view(reinterpret_cast<const char *>(name + 1), name[0])) : 0;
}

int16_t PixelSize(int16_t size) {
    return size <= 0 ? kDefaultSize : std::min(size, kMaxSize);
}

FT_Face FaceFor(int16_t number, int16_t face, int16_t size) {
    FT_Face ft = nullptr;
    try {
        ft = Cache().Get(FamilyOf(number), face & bold, face & italic);
    } catch (...) {
        return nullptr;
    }
    if (!ft) return nullptr;
    if (FT_Set_Pixel_Sizes(ft, 0, FT_UInt(PixelSize(size))) != 0) return nullptr;
    return ft;
}

} // namespace platform
