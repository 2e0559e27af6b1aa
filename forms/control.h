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
  void SetLeft(int left) { MoveTo(left, Top()); }
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

  void SetToolTipText(std::string_view text);
  const std::string& ToolTipText() const { return tool_tip_; }
  /// The window's text: what the control shows, or what it is for.
  const std::string& WindowText() const { return text_; }
  /// Moves it into another container, in front of what is there; its place is then measured from there.
  void SetContainer(WindowedControl& container);
  /// For controls that are made inside this one.
  Widget& AsWidget() const { return *window_; }

 protected:
  /// For the form, which makes its own window.
  explicit WindowedControl(const Rect& bounds) : Control(bounds) {}
  void Adopt(Widget& window) { window_ = &window; }

  virtual void Paint(Canvas&) const {}
  /// Lets the Tab key stop at the control.
  void SetTabStop(bool on) { window_->SetTabStop(on); }
  bool Focused() const { return focused_; }
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
  void PlaceChanged(const Rect& before) override;
  WidgetClient& AsClient() { return *this; }

 private:
  friend class Shape;
  void InvalidateArea(const Rect& area);
  void PaintUnder(Canvas& canvas) const;

  WindowedControl* container_ = nullptr;
  std::unique_ptr<Widget> owned_;
  Widget* window_ = nullptr;
  std::vector<Shape*> shapes_;  // in the order in which they are painted
  std::string text_;
  std::string tool_tip_;
  bool focused_ = false;
};

}  // namespace orvane
