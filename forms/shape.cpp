#include "forms/shape.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr int kBorderWidth = 15;   // twips, one pixel at 96 per inch
constexpr int kCornerRadius = 45;  // twips

void FillForm(Canvas& canvas, Shape::Form form, const Rect& area, Color color) {
  switch (form) {
    case Shape::Form::kRectangle:
      canvas.FillRect(area, color);
      break;
    case Shape::Form::kRounded:
      canvas.FillRounded(area, kCornerRadius, color, 255);
      break;
    case Shape::Form::kEllipse:
      canvas.FillEllipse(area, color, 255);
      break;
  }
}

}  // namespace

Shape::Shape(WindowedControl& container, const Rect& bounds, const Look& look)
    : Control(bounds), container_(&container), look_(look) {
  container.shapes_.push_back(this);
}

Shape::~Shape() {
  std::erase(container_->shapes_, this);
}

void Shape::SetContainer(WindowedControl& container) {
  if (&container == container_) return;
  Invalidate();
  std::erase(container_->shapes_, this);
  container_ = &container;
  container_->shapes_.push_back(this);
  Invalidate();
}

void Shape::BringToFront() {
  auto& shapes = container_->shapes_;
  if (shapes.back() == this) return;
  std::erase(shapes, this);
  shapes.push_back(this);
  Invalidate();
}

void Shape::Invalidate() {
  if (Visible()) container_->InvalidateArea(Bounds());
}

void Shape::PlaceChanged(const Rect& before) {
  container_->InvalidateArea(before);
  Invalidate();
}

void Shape::Paint(Canvas& canvas) const {
  Rect area = Bounds();
  if (look_.border) {
    FillForm(canvas, look_.form, area, *look_.border);
    area = {area.left + kBorderWidth, area.top + kBorderWidth, area.width - 2 * kBorderWidth,
            area.height - 2 * kBorderWidth};
  }
  if (fill_style_ == kSolid) {
    FillForm(canvas, look_.form, area, look_.fill);
  } else if (back_style_ == kOpaque) {
    FillForm(canvas, look_.form, area, look_.back);
  } else if (look_.dark) {
    FillForm(canvas, look_.form, area, *look_.dark);
  }
}

}  // namespace orvane
