#include "window/bitmap_functions.h"

#include "base/checked.h"
#include "platform/surface_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>

namespace orvane {
namespace {

/// The part of the old picture, along one side, that a new pixel covers.
struct Cover {
  double from;
  double to;
};
Cover CoverOf(int at, int new_length, int old_length) {
  const double step = static_cast<double>(old_length) / new_length;
  return {at * step, (at + 1) * step};
}
double Share(int pixel, const Cover& cover) {
  return std::max(0.0, std::min<double>(pixel + 1, cover.to) - std::max<double>(pixel, cover.from));
}

std::uint32_t MeanOf(const PictureData& picture, const Cover& across, const Cover& down) {
  std::array<double, 4> sums{};
  double area = 0.0;
  for (int y = static_cast<int>(down.from); y < std::min<double>(picture.height, std::ceil(down.to)); ++y) {
    for (int x = static_cast<int>(across.from); x < std::min<double>(picture.width, std::ceil(across.to));
         ++x) {
      const double share = Share(x, across) * Share(y, down);
      const std::uint32_t pixel =
          picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                         static_cast<std::size_t>(x)];
      for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += share * (pixel >> (8 * i) & 0xFF);
      area += share;
    }
  }
  std::uint32_t mean = 0;
  for (std::size_t i = 0; i < sums.size(); ++i) {
    mean |= static_cast<std::uint32_t>(std::lround(sums[i] / area)) << (8 * i);
  }
  return mean;
}

}  // namespace

float ScreenScale(int pixels_per_inch) {
  return pixels_per_inch == 0 ? 1.0F : static_cast<float>(pixels_per_inch) / 96.0F;
}

Size StretchedSize(Size size, float scale_x, float scale_y) {
  return {RoundToInt32(static_cast<double>(size.width) * static_cast<double>(scale_x)),
          RoundToInt32(static_cast<double>(size.height) * static_cast<double>(scale_y))};
}

Picture StretchPicture(const PictureData& picture, Size size) {
  if (!IsPictureSize(size.width, size.height) || !IsWhole(picture)) return nullptr;
  auto stretched = std::make_shared<PictureData>();
  stretched->width = size.width;
  stretched->height = size.height;
  stretched->pixels.reserve(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height));
  for (int y = 0; y < size.height; ++y) {
    const Cover down = CoverOf(y, size.height, picture.height);
    for (int x = 0; x < size.width; ++x) {
      stretched->pixels.push_back(MeanOf(picture, CoverOf(x, size.width, picture.width), down));
    }
  }
  return stretched;
}

void StretchPictureBox(PictureBox& box, Size pixels_per_inch) {
  const Picture picture = box.CurrentPicture();
  if (!picture) return;
  const float scale_x = ScreenScale(pixels_per_inch.width);
  const float scale_y = ScreenScale(pixels_per_inch.height);
  const Size shown{ToTwips(picture->width, pixels_per_inch.width),
                   ToTwips(picture->height, pixels_per_inch.height)};
  const Size outer = StretchedSize(shown, scale_x, scale_y);
  box.SetBounds({box.Left(), box.Top(), outer.width, outer.height});
  box.SetPicture(
      StretchPicture(*picture, StretchedSize({picture->width, picture->height}, scale_x, scale_y)));
}

}  // namespace orvane
