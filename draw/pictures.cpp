// Named pictures ("PICT" resources): drawing at natural size and measuring.
#include <cstring>

#include <vitrail/draw.h>

#include "draw/internal.h"
#include "platform/quickdraw/pictures.h"
#include "platform/quickdraw/shapes.h"
#include "platform/toolbox/textutils.h"

namespace {

enum class Lookup { TooLong, Missing, Found };

// Loads picture `name` into *picture when found. Names above 255 characters
// are not looked up; a null name is missing.
Lookup LoadPicture(const char *name, platform::PicHandle *picture) {
    if (!name) return Lookup::Missing;
    if (strnlen(name, 256) > 255) return Lookup::TooLong;
    Str255 pascal;
    platform::c2pstrcpy(pascal, name);
    *picture = platform::GetNamedResource("PICT", pascal);
    return *picture ? Lookup::Found : Lookup::Missing;
}

Rect FrameOf(platform::PicHandle picture) {
    platform::PictInfo info{};
    platform::GetPictInfo(picture, &info, 0, 0, 0, 0);
    return info.sourceRect;
}

} // namespace

extern "C" {

VITRAIL_API int32_t BMP_affic_desfond0(const char *pictureName, GrafPtr port, int16_t x,
                                       int16_t y) {
    platform::PicHandle picture = nullptr;
    Lookup found = LoadPicture(pictureName, &picture);
    if (found != Lookup::Found) return found == Lookup::TooLong ? 0 : 1;
    {
        draw::PortSwitch current(port);
        Rect frame = FrameOf(picture);
        platform::OffsetRect(&frame, int16_t(x - frame.left), int16_t(y - frame.top));
        platform::DrawPicture(picture, &frame);
    }
    platform::ReleaseResource(picture);
    return 0;
}

VITRAIL_API int32_t BMP_affic_dimfond0(const char *pictureName, int32_t *width, int32_t *height) {
    platform::PicHandle picture = nullptr;
    Lookup found = LoadPicture(pictureName, &picture);
    if (found != Lookup::Found) return found == Lookup::TooLong ? 0 : 1;
    Rect frame = FrameOf(picture);
    if (width) *width = uint16_t(frame.right - frame.left);
    if (height) *height = uint16_t(frame.bottom - frame.top);
    platform::ReleaseResource(picture);
    return 0;
}

} // extern "C"
