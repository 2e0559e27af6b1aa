#include "platform/surface_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane {
namespace {

int FloorDivide(int a, int b) {
  return a >= 0 ? a / b : -((-a + b - 1) / b);
}

}  // namespace

int ToPixels(int twips, int pixels_per_inch) {
  return FloorDivide(twips * pixels_per_inch * 2 + kTwipsPerInch, kTwipsPerInch * 2);
}

int ToTwips(int pixels, int pixels_per_inch) {
  return FloorDivide(pixels * kTwipsPerInch * 2 + pixels_per_inch, pixels_per_inch * 2);
}

SurfaceCanvas::SurfaceCanvas(const Surface& surface, Rasterizer& rasterizer, Point origin, const Rect& part,
                             Size pixels_per_inch)
    : surface_(surface),
      rasterizer_(rasterizer),
      pixels_per_inch_(pixels_per_inch),
      origin_(origin),
      base_pixels_{ToPixels(origin.x, pixels_per_inch.width) + part.left,
                   ToPixels(origin.y, pixels_per_inch.height) + part.top} {}

Rect SurfaceCanvas::PixelsOf(const Rect& area) const {
  const int left = ToPixels(origin_.x + area.left, pixels_per_inch_.width);
  const int top = ToPixels(origin_.y + area.top, pixels_per_inch_.height);
  const int right = ToPixels(origin_.x + area.right(), pixels_per_inch_.width);
  const int bottom = ToPixels(origin_.y + area.bottom(), pixels_per_inch_.height);
  return {left - base_pixels_.x, top - base_pixels_.y, right - left, bottom - top};
}

PixelPoint SurfaceCanvas::PixelOf(PointF at) const {
  return {(origin_.x + at.x) * pixels_per_inch_.width / kTwipsPerInch - base_pixels_.x,
          (origin_.y + at.y) * pixels_per_inch_.height / kTwipsPerInch - base_pixels_.y};
}

void SurfaceCanvas::FillRect(const Rect& area, Color color) {
  Rasterizer::FillRect(surface_, PixelsOf(area), color);
}

void SurfaceCanvas::FillPolygon(std::span<const PointF> corners, Color color, int alpha) {
  outline_.clear();
  for (const PointF& corner : corners)
    outline_.push_back(PixelOf(corner));
  rasterizer_.FillPolygon(surface_, outline_, color, alpha);
}

// A quarter turn of an ellipse, clockwise, starting at the angle `from` (0 points right, y runs down).
void SurfaceCanvas::AddArc(double cx, double cy, double rx, double ry, double from) {
  constexpr int kSteps = 12;
  for (int i = 0; i <= kSteps; ++i) {
    const double angle = from + std::numbers::pi / 2.0 * i / kSteps;
    outline_.push_back({cx + rx * std::cos(angle), cy + ry * std::sin(angle)});
  }
}

// Round shapes take their box on whole pixels first, so that equal lamps look equal wherever they stand.
void SurfaceCanvas::FillEllipse(const Rect& area, Color color, int alpha) {
  const Rect box = PixelsOf(area);
  outline_.clear();
  for (int quarter = 0; quarter < 4; ++quarter) {
    AddArc(box.left + box.width / 2.0, box.top + box.height / 2.0, box.width / 2.0, box.height / 2.0,
           quarter * std::numbers::pi / 2.0);
  }
  rasterizer_.FillPolygon(surface_, outline_, color, alpha);
}

void SurfaceCanvas::FillRounded(const Rect& area, int radius, Color color, int alpha) {
  const Rect box = PixelsOf(area);
  const double r = std::min({radius * static_cast<double>(pixels_per_inch_.width) / kTwipsPerInch,
                             box.width / 2.0, box.height / 2.0});
  outline_.clear();
  AddArc(box.right() - r, box.bottom() - r, r, r, 0.0);
  AddArc(box.left + r, box.bottom() - r, r, r, std::numbers::pi / 2.0);
  AddArc(box.left + r, box.top + r, r, r, std::numbers::pi);
  AddArc(box.right() - r, box.top + r, r, r, std::numbers::pi * 1.5);
  rasterizer_.FillPolygon(surface_, outline_, color, alpha);
}

void SurfaceCanvas::DrawText(const Rect& area, std::string_view text, const Font& font, Color color,
                             Align align) {
  if (text.empty()) return;
  const Rect box = PixelsOf(area);
  if (Intersection(box, {0, 0, surface_.width, surface_.height}).Empty()) return;
  DrawTextPixels(box, text, font, ToPixels(font.height, pixels_per_inch_.height), color, align);
}

void SurfaceCanvas::DrawPicture(Point at, const PictureData& picture) {
  const Rect box = PixelsOf({at.x, at.y, 0, 0});
  Rasterizer::DrawPicture(surface_, box.left, box.top, picture);
}

void SurfaceCanvas::MoveOrigin(int dx, int dy) {
  origin_.x += dx;
  origin_.y += dy;
}

Rect SurfaceCanvas::Dirty() const {
  const int left = ToTwips(base_pixels_.x, pixels_per_inch_.width) - origin_.x;
  const int top = ToTwips(base_pixels_.y, pixels_per_inch_.height) - origin_.y;
  const int right = ToTwips(base_pixels_.x + surface_.width, pixels_per_inch_.width) - origin_.x;
  const int bottom = ToTwips(base_pixels_.y + surface_.height, pixels_per_inch_.height) - origin_.y;
  return {left, top, right - left, bottom - top};
}

}  // namespace orvane
