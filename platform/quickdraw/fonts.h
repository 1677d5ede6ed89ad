// Fonts: the table of font numbers and names, and the FreeType faces that
// fontconfig finds for them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <vitrail/types.h>

namespace platform {

// Face bits of TextFace.
enum : int16_t { bold = 1, italic = 2, underline = 4, condense = 32, extend = 64 };

// The font number of `name` (compared without case), 0 when the table has
// no such name.
int16_t FontNumber(std::string_view name);

// GetFNum: the number of the font named by the length-prefixed `name`, or 0.
void GetFNum(ConstStr255Param name, int16_t *familyID);

// The family that draws font `number` (the system font's for 0 and
// numbers outside the table).
std::string_view FamilyOf(int16_t number);

// The font file and face index fontconfig chooses for `family` in a weight
// and slant; false when there is none.
bool FindFontFile(std::string_view family, bool isBold, bool isItalic, std::string &file,
                  int &index);

// The FreeType library every face is opened in; null when FreeType could
// not start.
FT_Library FontLibrary();

// The pixel size text of point size `size` is drawn at: 12 for 0 or less,
// at most 1000.
int16_t PixelSize(int16_t size);

// The face of font `number` (0 and unknown numbers: the system font) in the
// bold and italic of `face`, sized to `size` pixels (0 or less: 12; at most
// 1000). Null when no font file can be loaded. Owned by the font cache.
FT_Face FaceFor(int16_t number, int16_t face, int16_t size);

} // namespace platform
