#pragma once

#include "forms/picture_box.h"
#include "platform/geometry.h"
#include "platform/picture.h"

namespace orvane {

/// Pixels per inch against the 96 of the design; a screen that tells none counts as 96.
float ScreenScale(int pixels_per_inch);

/// A size after stretching, each side rounded to the nearest, halves to even. @throws RuntimeError kOverflow
Size StretchedSize(Size size, float scale_x, float scale_y);

/// The picture in another size, each new pixel the mean of the part of the old picture that it covers. An
/// empty picture when a side would vanish or be longer than any picture's, and for one without all its
/// pixels.
Picture StretchPicture(const PictureData& picture, Size size);

/// For a box whose picture was drawn for 96 pixels per inch: gives the box the size of its picture on this
/// screen, then enlarges box and picture by the screen's scale, so that both stand as they were designed. A
/// box without a picture shows the face behind it, which there is for each resolution, and is left alone.
void StretchPictureBox(PictureBox& box, Size pixels_per_inch);

}  // namespace orvane
