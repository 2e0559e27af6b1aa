#pragma once

#include "forms/control.h"

#include <optional>

namespace orvane {

/// Drawn by its container: a bar segment, a lamp, a marker. No window of its own.
class Shape : public Control {
 public:
  enum class Form { kRectangle, kRounded, kEllipse };

  /// What a shape looks like. Colours that are absent are not drawn.
  struct Look {
    Form form = Form::kRectangle;
    Color back = 0;               ///< shown while BackStyle is opaque
    Color fill = 0;               ///< shown while FillStyle is solid
    std::optional<Color> dark;    ///< shown while neither is
    std::optional<Color> border;  ///< a ring around it, a pixel or so wide
    bool operator==(const Look&) const = default;
  };

  static constexpr int kSolid = 0;        ///< FillStyle: filled with the fill colour
  static constexpr int kTransparent = 1;  ///< FillStyle: not filled
  static constexpr int kOpaque = 1;       ///< BackStyle: shows the back colour; 0 shows what lies behind

  Shape(WindowedControl& container, const Rect& bounds, const Look& look);
  ~Shape() override;

  int FillStyle() const { return fill_style_; }
  void SetFillStyle(int style) {
    if (Assign(fill_style_, style)) Invalidate();
  }
  int BackStyle() const { return back_style_; }
  void SetBackStyle(int style) {
    if (Assign(back_style_, style)) Invalidate();
  }
  const Look& look() const { return look_; }
  WindowedControl& Container() const { return *container_; }
  /// Moves it into another container, in front of the shapes that are there.
  void SetContainer(WindowedControl& container);
  /// In front of all shapes of its container.
  void BringToFront();

  void Paint(Canvas& canvas) const;

 protected:
  void PlaceChanged(const Rect& before) override;

 private:
  void Invalidate();

  WindowedControl* container_;
  Look look_;
  int fill_style_ = kTransparent;
  int back_style_ = 0;
};

}  // namespace orvane
