#pragma once

#include "forms/control.h"

namespace orvane {

/// A button in the style of the face. The keyboard stops at it; Space and Enter press it. Its window text is
/// its tooltip, or its caption when it has none. MouseUp comes for a left button that was pressed here and is
/// let go here: whoever pulls the pointer away before thinks better of it.
class CommandButton : public WindowedControl {
 public:
  CommandButton(WindowSystem& windows, WindowedControl& container, const Rect& bounds,
                std::string_view caption, std::string_view tool_tip);

  const std::string& Caption() const { return caption_; }
  /// As if clicked: handlers of MouseUp get a left button released in the middle.
  void Press();

 protected:
  bool ShowsFocus() const override { return true; }
  Accessible OwnDescription() const override;
  void OnAction() override { Press(); }
  void Paint(Canvas& canvas) const override;
  void OnMouse(const MouseEvent& event) override;
  void OnFocus(bool has_focus) override;
  void PointerChanged(const MouseEvent& event) override;
  bool KeyPressed(const KeyEvent& event) override;

 private:
  bool Contains(Point at) const { return Rect{0, 0, Width(), Height()}.Contains(at); }

  std::string caption_;
  bool hot_ = false;
  bool pressed_ = false;
};

}  // namespace orvane
