#include "window/region.h"

namespace orvane {
namespace {

Color ColorAt(const std::uint8_t* pixel) {
  return MakeColor(pixel[2], pixel[1], pixel[0]);
}

}  // namespace

void Region::ScanPicture(const PictureData* picture, Color& transparent) {
  runs_.clear();
  if (!dib_.CreateFromPicture(picture)) return;
  const std::uint8_t* row = dib_.DIBSectionBitsPtr();
  if (transparent == kBottomLeft) transparent = ColorAt(row);
  for (int r = 0; r < dib_.Height(); ++r, row += dib_.BytesPerScanLine()) {
    ScanRow(row, dib_.Height() - 1 - r, transparent);
  }
}

void Region::ScanRow(const std::uint8_t* row, int y, Color transparent) {
  const int last = dib_.Width() - 1;
  const auto is_transparent = [&](int x) {
    return ColorAt(row + static_cast<std::ptrdiff_t>(x) * 3) == transparent;
  };
  for (int x = 0; x < last; ++x) {
    while (x < last && is_transparent(x))
      ++x;
    const int start = x;
    while (x < last && !is_transparent(x))
      ++x;
    if (start < x) runs_.push_back({start, y, x - start, 1});
  }
}

void Region::OffsetHeader(const TopWindow& window) {
  const Size border = window.BorderPixels();
  if (border == Size{}) return;
  for (Rect& run : runs_)
    run = run.Shifted(border.width, border.height);
}

void Region::ApplyRgn(TopWindow& window) const {
  window.SetShape(runs_);
}

}  // namespace orvane
