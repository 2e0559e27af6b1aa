#pragma once

#include "forms/control.h"

#include <optional>

namespace orvane {

/// One line of text on the face. Its window text is its caption.
class Label : public WindowedControl {
 public:
  struct Look {
    Font font;
    Color color = MakeColor(255, 255, 255);
    Align align = Align::kLeft;
    std::optional<Color> back = std::nullopt;  ///< painted behind the text; without it the face shows
  };

  Label(WindowSystem& windows, WindowedControl& container, const Rect& bounds, const Look& look,
        std::string_view caption = {})
      : WindowedControl(windows, container, bounds), look_(look) {
    SetWindowText(caption);
  }

  const std::string& Caption() const { return WindowText(); }
  void SetCaption(std::string_view caption) {
    if (caption == WindowText()) return;
    SetWindowText(caption);
    Invalidate();
  }
  Color ForeColor() const { return look_.color; }
  void SetForeColor(Color color) {
    if (Assign(look_.color, color)) Invalidate();
  }
  /// Text colour and ground together: one is chosen for the other.
  void SetColors(Color fore, Color back) {
    const bool text = Assign(look_.color, fore);
    if (Assign(look_.back, back) || text) Invalidate();
  }
  const Look& look() const { return look_; }

 protected:
  Accessible OwnDescription() const override {
    Accessible what;
    what.role = Role::kLabel;
    what.name = Caption();
    return what;
  }
  void Paint(Canvas& canvas) const override {
    if (look_.back) canvas.FillRect({0, 0, Width(), Height()}, *look_.back);
    canvas.DrawText({0, 0, Width(), Height()}, Caption(), look_.font, look_.color, look_.align);
  }

 private:
  Look look_;
};

}  // namespace orvane
