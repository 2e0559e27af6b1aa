#include "window/bitmap_functions.h"

#include "forms/form.h"
#include "platform/headless/desktop.h"

#include <gtest/gtest.h>
#include <memory>

namespace orvane {
namespace {

Picture Striped(int width, int height) {
  auto picture = std::make_shared<PictureData>(PictureData{width, height, {}});
  for (int i = 0; i < width * height; ++i)
    picture->pixels.push_back(i % width % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
  return picture;
}

TEST(BitmapFunctions, SizesRoundHalvesToEven) {
  const std::tuple<Size, float, Size> rows[] = {{{2, 6}, 1.25F, {2, 8}},
                                                {{10, 30}, 1.25F, {12, 38}},
                                                {{1, 3}, 1.5F, {2, 4}},
                                                {{690, 2430}, 1.0F, {690, 2430}}};
  for (const auto& [size, scale, stretched] : rows)
    EXPECT_EQ(StretchedSize(size, scale, scale), stretched);
}

TEST(BitmapFunctions, StretchingKeepsTheMeanAndMakesNoNewExtremes) {
  const Picture picture = Striped(8, 4);
  for (const Size size : {Size{10, 5}, Size{12, 6}, Size{5, 3}, Size{8, 4}, Size{1, 1}}) {
    const Picture stretched = StretchPicture(*picture, size);
    ASSERT_EQ(stretched->pixels.size(), static_cast<std::size_t>(size.width * size.height));
    double sum = 0;
    for (const std::uint32_t pixel : stretched->pixels) {
      EXPECT_EQ(pixel >> 24, 0xFFU);
      sum += pixel & 0xFF;
    }
    EXPECT_NEAR(sum / static_cast<double>(stretched->pixels.size()), 127.5, 1.0) << size.width;
  }
  EXPECT_EQ(StretchPicture(*picture, {8, 4})->pixels, picture->pixels);
  EXPECT_EQ(StretchPicture(*picture, {0, 4}), nullptr);
}

TEST(BitmapFunctions, ABoxIsAsLargeOnEveryScreenAsItWasDesigned) {
  for (const int pixels_per_inch : {96, 120, 144}) {
    VirtualTime time;
    HeadlessDesktop desktop(time);
    Form form(desktop, "form", {9600, 3900});
    PictureBox box(desktop, form, {300, 600, 900, 450});
    StretchPictureBox(box, {pixels_per_inch, pixels_per_inch});
    EXPECT_EQ(box.Bounds(), (Rect{300, 600, 900, 450})) << "without a picture it is left alone";
    box.SetPicture(Striped(40, 20));
    StretchPictureBox(box, {pixels_per_inch, pixels_per_inch});
    EXPECT_EQ(box.Bounds(), (Rect{300, 600, 600, 300})) << pixels_per_inch;
    EXPECT_EQ(box.CurrentPicture()->width, 40 * pixels_per_inch / 96);
    EXPECT_EQ(box.CurrentPicture()->height, 20 * pixels_per_inch / 96);
  }
}

}  // namespace
}  // namespace orvane
