#pragma once

#include "platform/picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane {

/// A 24-bit bitmap as the system lays it out: rows from the bottom up, pixels of three bytes in the order
/// blue, green, red, each row filled up to a multiple of four bytes. Whoever reads it walks over the bytes
/// themselves.
class cDIBSection {
 public:
  /// Makes a black bitmap; what there was before is given up. @return false, and empty, for a size that no
  /// picture has
  bool Create(int width, int height);
  /// Copies a picture. @return false, and empty, when there is none, or not all of it
  bool CreateFromPicture(const PictureData* picture);
  /// Copies `picture` from (x, y) on to this bitmap's corner; a negative width or height means this bitmap's.
  void LoadPictureBlt(const PictureData& picture, int x, int y, int width = -1, int height = -1);
  void ClearUp();

  int Width() const { return width_; }
  int Height() const { return height_; }
  int BytesPerScanLine() const { return BytesPerScanLine(width_); }
  static constexpr int BytesPerScanLine(int width) { return (width * 3 + 3) & ~3; }
  /// First byte of the bottom row; null when empty.
  const std::uint8_t* DIBSectionBitsPtr() const { return bits_.empty() ? nullptr : bits_.data(); }

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> bits_;
};

}  // namespace orvane
