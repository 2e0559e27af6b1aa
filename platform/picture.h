#pragma once

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

/// Pictures are shared and never change once made.
using Picture = std::shared_ptr<const PictureData>;

}  // namespace orvane
