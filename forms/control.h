#pragma once

#include "platform/window_system.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orvane {

/// Stores a value in a property. @return true when it really changed
template <typename Value>
bool Assign(Value& field, const std::type_identity_t<Value>& value) {
  if (field == value) return false;
  field = value;
  return true;
}

class Shape;
class WindowedControl;

/// What is said about the control that has the keyboard.
enum class FocusNews { kGained, kLost, kChanged };

/// Something with a place on the form. A place is twips from the corner of the container.
class Control {
 public:
  explicit Control(const Rect& bounds) : bounds_(bounds) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  int Left() const { return bounds_.left; }
  int Top() const { return bounds_.top; }
  int Width() const { return bounds_.width; }
  int Height() const { return bounds_.height; }
  const Rect& Bounds() const { return bounds_; }
  bool Visible() const { return visible_; }

  void SetBounds(const Rect& bounds);
  void MoveTo(int left, int top) { SetBounds({left, top, Width(), Height()}); }
  void SetTop(int top) { MoveTo(Left(), top); }
  void SetVisible(bool visible);

 protected:
  /// Tells the screen that the place, or whether anything is seen there, changed from `before`.
  virtual void PlaceChanged(const Rect& before) = 0;

 private:
  Rect bounds_;
  bool visible_ = true;
};

/// A control with a window of its own. It lies over its container: where it paints nothing itself the
/// container shows. It may hold shapes, which it paints, and further windowed controls.
class WindowedControl : public Control, private WidgetClient {
 public:
  using MouseHandler = std::function<void(const MouseEvent&)>;

  WindowedControl(WindowSystem& windows, WindowedControl& container, const Rect& bounds);
  ~WindowedControl() override;

  MouseHandler MouseDown;
  MouseHandler MouseUp;
  MouseHandler MouseMove;
  MouseHandler DblClick;
  /// A key was pressed while the keyboard was here, or in a control within that did not want it. @return
  /// true: taken
  std::function<bool(Key key)> KeyDown;
  /// Space, Enter or a screen reader pressed it. A control without one cannot be pressed.
  std::function<void()> Pressed;
  /// The keyboard came here, or left.
  std::function<void(bool has_focus)> FocusChanged;
  /// Adds what a screen reader is told about this control. Called only when one asks, or while the keyboard
  /// is here; what it reads may change as often as it likes.
  std::function<void(Accessible& what)> Describing;

  void SetToolTipText(std::string_view text);
  const std::string& ToolTipText() const { return tool_tip_; }
  /// The window's text: what the control shows, or what it is for.
  const std::string& WindowText() const { return text_; }
  /// Moves it into another container, in front of what is there; its place is then measured from there.
  void SetContainer(WindowedControl& container);
  /// For controls that are made inside this one.
  Widget& AsWidget() const { return *window_; }
  /// Lets the Tab key stop at the control.
  void SetTabStop(bool on) { window_->SetTabStop(on); }
  void SetFocus() { window_->SetFocus(); }
  bool Focused() const { return focused_; }
  /// Something about it changed that is not painted here, or not by itself.
  void StateChanged() {
    if (focused_) TellFocus(*this, FocusNews::kChanged);
  }
  Accessible Describe() const override;

 protected:
  /// For the form, which makes its own window.
  explicit WindowedControl(const Rect& bounds) : Control(bounds) {}
  void Adopt(Widget& window) { window_ = &window; }

  virtual void Paint(Canvas&) const {}
  /// True when the control shows by itself that it has the keyboard; otherwise its container draws a frame
  /// around it.
  virtual bool ShowsFocus() const { return false; }
  /// What kind of control it is, and what it says by itself.
  virtual Accessible OwnDescription() const { return {}; }
  /// Goes outwards to the form, which knows somebody who wants to hear it.
  virtual void TellFocus(WindowedControl& control, FocusNews news);
  /// What a key does to the control itself. @return true when it was for the control; otherwise KeyDown is
  /// asked
  virtual bool KeyPressed(const KeyEvent&) { return false; }
  /// What the pointer does to the control's own look; handlers run after it.
  virtual void PointerChanged(const MouseEvent&) {}
  void SetWindowText(std::string_view text);
  void Invalidate() { InvalidateArea({0, 0, Width(), Height()}); }
  void PaintWhole(Canvas& canvas) const;
  void OnPaint(Canvas& canvas) override { PaintWhole(canvas); }
  void OnMouse(const MouseEvent& event) override;
  bool OnKey(const KeyEvent& event) override;
  void OnFocus(bool has_focus) override;
  void OnAction() override {
    if (Pressed) Pressed();
  }
  void PlaceChanged(const Rect& before) override;
  WidgetClient& AsClient() { return *this; }

 private:
  friend class Shape;
  void InvalidateArea(const Rect& area);
  void PaintUnder(Canvas& canvas) const;
  bool PressedByKey(const KeyEvent& event);
  void ShowFocusAround(WindowedControl* control);
  void PaintFocusMark(Canvas& canvas) const;

  WindowedControl* container_ = nullptr;
  std::unique_ptr<Widget> owned_;
  Widget* window_ = nullptr;
  std::vector<Shape*> shapes_;  // in the order in which they are painted
  std::string text_;
  std::string tool_tip_;
  bool focused_ = false;
  bool key_held_ = false;              // Space or Enter went down here
  WindowedControl* marked_ = nullptr;  // has the keyboard, and a frame around it
};

}  // namespace orvane
