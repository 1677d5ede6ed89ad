// Pictures: "PICT" resources holding a PNG image; its frame is its size,
// moved by the image's oFFs offset.
#pragma once

#include <vitrail/types.h>

#include "platform/toolbox/resources.h"

namespace platform {

using PicHandle = Handle;

struct PictInfo {
    int16_t version;
    Rect sourceRect;
};

constexpr OSErr kPictInfoIDErr = -11000; // not a picture

// Fills info->sourceRect with the picture's frame; the other arguments are
// accepted and ignored. kPictInfoIDErr when the resource is not a PNG. An
// offset beyond 16 bits wraps the edges: right - left, taken as 16-bit,
// is still the width.
OSErr GetPictInfo(PicHandle picture, PictInfo *info, int16_t verb, int16_t colorsRequested,
                  int16_t colorPickMethod, int16_t version);

// Draws the picture into the current port, scaled to `dst` (nearest pixel)
// and blended by its alpha. Pictures that do not decode draw nothing.
void DrawPicture(PicHandle picture, const Rect *dst);

} // namespace platform
