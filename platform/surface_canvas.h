#pragma once

#include "platform/canvas.h"
#include "platform/raster.h"

#include <vector>

namespace orvane {

/// A canvas over picture memory. Twips become pixels by their distance from the corner of the top window,
/// never from the widget's own corner: rounding then falls alike for a control and for the face behind it,
/// and the two never part by a pixel. Text is left to the system below.
class SurfaceCanvas : public Canvas {
 public:
  /// @param surface        memory of the part being painted
  /// @param rasterizer     lent; keeps its scratch memory between paintings
  /// @param origin         the painted widget's corner, twips from the top window's corner
  /// @param part           the part being painted, pixels from the widget's corner
  /// @param pixels_per_inch of the screen
  SurfaceCanvas(const Surface& surface, Rasterizer& rasterizer, Point origin, const Rect& part,
                Size pixels_per_inch);

  void FillRect(const Rect& area, Color color) override;
  void FillPolygon(std::span<const PointF> corners, Color color, int alpha) override;
  void FillEllipse(const Rect& area, Color color, int alpha) override;
  void FillRounded(const Rect& area, int radius, Color color, int alpha) override;
  void DrawText(const Rect& area, std::string_view text, const Font& font, Color color, Align align) override;
  void DrawPicture(Point at, const PictureData& picture) override;
  void MoveOrigin(int dx, int dy) override;
  Rect Dirty() const override;

 protected:
  /// One line of text in `area` (pixels of the surface), clipped to it; `height` of the letters in pixels.
  virtual void DrawTextPixels(const Rect& area, std::string_view text, const Font& font, int height,
                              Color color, Align align) = 0;
  const Surface& surface() const { return surface_; }

 private:
  Rect PixelsOf(const Rect& area) const;
  PixelPoint PixelOf(PointF at) const;
  void AddArc(double cx, double cy, double rx, double ry, double from);

  Surface surface_;
  Rasterizer& rasterizer_;
  Size pixels_per_inch_;
  Point origin_;       // twips from the top window's corner
  Point base_pixels_;  // pixel of the top window that is the surface's first
  std::vector<PixelPoint> outline_;
};

/// Twips to pixels, to the nearest, halves up.
int ToPixels(int twips, int pixels_per_inch);
/// Pixels to twips, to the nearest.
int ToTwips(int pixels, int pixels_per_inch);

}  // namespace orvane
