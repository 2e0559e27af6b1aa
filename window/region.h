#pragma once

#include "platform/window_system.h"
#include "window/dib_section.h"

#include <vector>

namespace orvane {

/// The shape of a window, taken from the outline of its face: every pixel of the face that has the
/// transparent colour is cut away. Built once, applied as often as the view changes.
class Region {
 public:
  /// Argument of ScanPicture: take the colour of the picture's bottom-left pixel. As a colour it can never be
  /// asked for.
  static constexpr Color kBottomLeft = 1;

  /// Builds the region from a picture, as runs one pixel high. A run ends before the first transparent pixel
  /// after it, or, at the end of a row, before the row's last pixel: the rightmost column never belongs to
  /// the shape. Colours are compared exactly. Without a picture the region is empty.
  /// @param transparent in: colour or kBottomLeft; out: the colour used
  void ScanPicture(const PictureData* picture, Color& transparent);
  /// Moves the region from picture to window coordinates: past the left border and past top border and
  /// caption. A window without a border changes nothing.
  void OffsetHeader(const TopWindow& window);
  /// Gives the window a copy.
  void ApplyRgn(TopWindow& window) const;

  /// Pixels; right and bottom are outside.
  const std::vector<Rect>& Runs() const { return runs_; }

 private:
  void ScanRow(const std::uint8_t* row, int y, Color transparent);

  std::vector<Rect> runs_;
  cDIBSection dib_;
};

}  // namespace orvane
