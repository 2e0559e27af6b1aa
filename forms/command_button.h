#pragma once

#include "forms/control.h"

namespace orvane {

/// A button in the style of the face. The keyboard stops at it; Space and Enter press it. Its window text is
/// its tooltip, or its caption when it has none.
class CommandButton : public WindowedControl {
 public:
  CommandButton(WindowSystem& windows, WindowedControl& container, const Rect& bounds,
                std::string_view caption, std::string_view tool_tip);

  const std::string& Caption() const { return caption_; }
  /// As if clicked: handlers of MouseUp get a left button released in the middle.
  void Press();

 protected:
  void Paint(Canvas& canvas) const override;
  void PointerChanged(const MouseEvent& event) override;
  bool KeyPressed(const KeyEvent& event) override;

 private:
  std::string caption_;
  bool hot_ = false;
  bool pressed_ = false;
};

}  // namespace orvane
