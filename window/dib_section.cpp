#include "window/dib_section.h"

#include <algorithm>

namespace orvane {

bool cDIBSection::Create(int width, int height) {
  ClearUp();
  if (!IsPictureSize(width, height)) return false;
  width_ = width;
  height_ = height;
  bits_.assign(static_cast<std::size_t>(BytesPerScanLine()) * static_cast<std::size_t>(height), 0);
  return true;
}

bool cDIBSection::CreateFromPicture(const PictureData* picture) {
  ClearUp();
  if (picture == nullptr || !IsWhole(*picture)) return false;
  Create(picture->width, picture->height);
  LoadPictureBlt(*picture, 0, 0);
  return true;
}

void cDIBSection::LoadPictureBlt(const PictureData& picture, int x, int y, int width, int height) {
  if (x < 0 || y < 0 || !IsWhole(picture)) return;
  const int columns = std::min({width < 0 ? width_ : width, width_, picture.width - x});
  const int rows = std::min({height < 0 ? height_ : height, height_, picture.height - y});
  for (int row = 0; row < rows; ++row) {
    const std::uint32_t* in =
        picture.pixels.data() + static_cast<std::ptrdiff_t>(y + row) * picture.width + x;
    std::uint8_t* out = bits_.data() + static_cast<std::ptrdiff_t>(height_ - 1 - row) * BytesPerScanLine();
    for (int column = 0; column < columns; ++column) {
      *out++ = static_cast<std::uint8_t>(in[column]);
      *out++ = static_cast<std::uint8_t>(in[column] >> 8);
      *out++ = static_cast<std::uint8_t>(in[column] >> 16);
    }
  }
}

void cDIBSection::ClearUp() {
  width_ = 0;
  height_ = 0;
  bits_.clear();
}

}  // namespace orvane
