#pragma once

#include "platform/geometry.h"
#include "platform/picture.h"

#include <span>
#include <string>
#include <string_view>

namespace orvane {

/// How a text is set.
struct Font {
  std::string_view face = "Arial";
  int height = 180;  ///< twips, letter height with its descent
  bool bold = false;
  bool operator==(const Font&) const = default;
};

enum class Align { kLeft, kCenter, kRight };

/// A corner of a shape, twips, with fractions: shapes are drawn smoothly.
struct PointF {
  double x = 0;
  double y = 0;
};

/// Where a control paints itself. All coordinates are twips from the canvas' origin; what lies outside the
/// part that is being painted costs nothing.
class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void FillRect(const Rect& area, Color color) = 0;
  /// Smooth edges; `alpha` 255 covers wholly.
  virtual void FillPolygon(std::span<const PointF> corners, Color color, int alpha = 255) = 0;
  virtual void FillEllipse(const Rect& area, Color color, int alpha = 255) = 0;
  virtual void FillRounded(const Rect& area, int radius, Color color, int alpha = 255) = 0;
  /// One line of text, centred vertically in `area` and clipped to it.
  virtual void DrawText(const Rect& area, std::string_view text, const Font& font, Color color,
                        Align align) = 0;
  /// The picture's pixels one for one, its top-left corner at `at`.
  virtual void DrawPicture(Point at, const PictureData& picture) = 0;
  /// Moves the origin by (dx, dy), so that a child can be painted in its own coordinates. Undone by the
  /// opposite move.
  virtual void MoveOrigin(int dx, int dy) = 0;
  /// The part being painted, in current coordinates.
  virtual Rect Dirty() const = 0;
};

}  // namespace orvane
