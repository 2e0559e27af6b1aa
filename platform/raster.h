#pragma once

#include "platform/geometry.h"
#include "platform/picture.h"

#include <cstdint>
#include <span>
#include <vector>

namespace orvane {

/// A piece of picture memory to draw into: 0x00RRGGBB pixels, rows from the top, `stride` pixels from row to
/// row.
struct Surface {
  std::uint32_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;
  std::uint32_t* Row(int y) const { return pixels + static_cast<std::ptrdiff_t>(y) * stride; }
};

/// A corner in pixels, with fractions.
struct PixelPoint {
  double x = 0;
  double y = 0;
};

/// Draws smooth shapes by the exact area that they cover of each pixel. Keeps its scratch memory from shape
/// to shape.
class Rasterizer {
 public:
  /// `area` in pixels, cut to the surface.
  static void FillRect(const Surface& surface, Rect area, Color color);
  /// Fills what the closed outline winds around; alpha 0..255 scales the coverage.
  void FillPolygon(const Surface& surface, std::span<const PixelPoint> corners, Color color, int alpha);
  /// Copies the picture with its transparency, its corner at (x, y), cut to the surface.
  static void DrawPicture(const Surface& surface, int x, int y, const PictureData& picture);

 private:
  void AddEdge(PixelPoint from, PixelPoint to);
  void AddCutSpan(float* row, double x0, double x1, double height);
  void AddSpan(float* row, double x0, double x1, double height);
  void Blend(const Surface& surface, Color color, int alpha) const;

  Rect box_;  // pixels of the surface that the shape may touch
  std::vector<float>
      coverage_;  // per pixel of the box: change of the covered area against the pixel to its left
};

}  // namespace orvane
