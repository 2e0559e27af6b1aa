#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orvane {

/// A picture in memory: rows from the top, each pixel 0xAARRGGBB with straight (not premultiplied) colours.
struct PictureData {
  int width = 0;   ///< pixels
  int height = 0;  ///< pixels
  std::vector<std::uint32_t> pixels;
};

/// No screen is wider or higher, pixels: what claims more is damaged, or worse.
inline constexpr int kMostPixelsAcross = 8192;

/// A size that a picture may have, pixels; to be asked before memory is taken for it.
constexpr bool IsPictureSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kMostPixelsAcross && height <= kMostPixelsAcross;
}

/// True when the picture has such a size and all its pixels.
inline bool IsWhole(const PictureData& picture) {
  return IsPictureSize(picture.width, picture.height) &&
         picture.pixels.size() ==
             static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
}

/// Pictures are shared and never change once made.
using Picture = std::shared_ptr<const PictureData>;

}  // namespace orvane
