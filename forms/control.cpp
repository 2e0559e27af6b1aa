#include "forms/control.h"

#include "forms/shape.h"

#include <algorithm>

namespace orvane {

void Control::SetBounds(const Rect& bounds) {
  const Rect before = bounds_;
  if (Assign(bounds_, bounds)) PlaceChanged(before);
}

void Control::SetVisible(bool visible) {
  if (Assign(visible_, visible)) PlaceChanged(bounds_);
}

WindowedControl::WindowedControl(WindowSystem& windows, WindowedControl& container, const Rect& bounds)
    : Control(bounds),
      container_(&container),
      owned_(windows.CreateChild(*container.window_, *this, bounds)),
      window_(owned_.get()) {}

WindowedControl::~WindowedControl() = default;

void WindowedControl::SetToolTipText(std::string_view text) {
  if (Assign(tool_tip_, std::string(text))) window_->SetToolTip(text);
}

void WindowedControl::SetContainer(WindowedControl& container) {
  if (!Assign(container_, &container)) return;
  window_->SetContainer(*container.window_);
  window_->SetBounds(Bounds());
}

void WindowedControl::SetWindowText(std::string_view text) {
  if (text == text_) return;
  text_ = text;
  window_->SetText(text_);
}

void WindowedControl::InvalidateArea(const Rect& area) {
  window_->Invalidate(area);
}

void WindowedControl::PlaceChanged(const Rect& before) {
  if (before != Bounds()) window_->SetBounds(Bounds());
  window_->SetVisible(Visible());
}

void WindowedControl::OnMouse(const MouseEvent& event) {
  PointerChanged(event);
  const MouseHandler* handler = nullptr;
  switch (event.action) {
    case MouseAction::kDown:
      handler = &MouseDown;
      break;
    case MouseAction::kUp:
      handler = &MouseUp;
      break;
    case MouseAction::kMove:
      handler = &MouseMove;
      break;
    case MouseAction::kDoubleClick:
      handler = &DblClick;
      break;
    case MouseAction::kLeave:
      break;
  }
  if (handler != nullptr && *handler) (*handler)(event);
}

bool WindowedControl::OnKey(const KeyEvent& event) {
  if (KeyPressed(event)) return true;
  return event.down && KeyDown && KeyDown(event.key);
}

void WindowedControl::OnFocus(bool has_focus) {
  if (Assign(focused_, has_focus)) Invalidate();
}

void WindowedControl::PaintUnder(Canvas& canvas) const {
  if (container_ == nullptr) return;
  canvas.MoveOrigin(-Left(), -Top());
  container_->PaintWhole(canvas);
  canvas.MoveOrigin(Left(), Top());
}

void WindowedControl::PaintWhole(Canvas& canvas) const {
  PaintUnder(canvas);
  Paint(canvas);
  const Rect dirty = canvas.Dirty();
  for (const Shape* shape : shapes_) {
    if (shape->Visible() && !Intersection(shape->Bounds(), dirty).Empty()) shape->Paint(canvas);
  }
}

}  // namespace orvane
