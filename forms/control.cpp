#include "forms/control.h"

#include "forms/colors.h"
#include "forms/shape.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr int kMarkWidth = 30;  // twips, the bright line
constexpr int kMarkReach = 45;  // twips from a control to the outer edge of its mark

constexpr Rect Around(const Rect& area, int distance) {
  return {area.left - distance, area.top - distance, area.width + 2 * distance, area.height + 2 * distance};
}

void PaintRing(Canvas& canvas, const Rect& area, int width, Color color) {
  canvas.FillRect({area.left, area.top, area.width, width}, color);
  canvas.FillRect({area.left, area.bottom() - width, area.width, width}, color);
  canvas.FillRect({area.left, area.top, width, area.height}, color);
  canvas.FillRect({area.right() - width, area.top, width, area.height}, color);
}

}  // namespace

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

WindowedControl::~WindowedControl() {
  if (container_ != nullptr && container_->marked_ == this) container_->marked_ = nullptr;
}

void WindowedControl::SetToolTipText(std::string_view text) {
  if (text == tool_tip_) return;  // no memory for a text that stands
  tool_tip_ = text;
  window_->SetToolTip(tool_tip_);
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
  StateChanged();
}

void WindowedControl::PlaceChanged(const Rect& before) {
  if (before != Bounds()) window_->SetBounds(Bounds());
  if (container_ != nullptr && container_->marked_ == this) {
    for (const Rect& place : {before, Bounds()})
      container_->InvalidateArea(Around(place, kMarkReach));
  }
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
  if (KeyPressed(event) || PressedByKey(event)) return true;
  return event.down && KeyDown && KeyDown(event.key);
}

// At the release: a key that is held would press again and again. One that was pressed elsewhere, in a menu
// or a box, is none of this control's.
bool WindowedControl::PressedByKey(const KeyEvent& event) {
  if (!Pressed || (event.key != Key::kSpace && event.key != Key::kEnter)) return false;
  const bool was_held = std::exchange(key_held_, event.down);
  if (was_held && !event.down) Pressed();
  return true;
}

void WindowedControl::OnFocus(bool has_focus) {
  if (!Assign(focused_, has_focus)) return;
  key_held_ = false;
  if (ShowsFocus()) {
    Invalidate();
  } else if (container_ != nullptr) {
    container_->ShowFocusAround(has_focus ? this : nullptr);
  }
  if (FocusChanged) FocusChanged(has_focus);
  TellFocus(*this, has_focus ? FocusNews::kGained : FocusNews::kLost);
}

void WindowedControl::TellFocus(WindowedControl& control, FocusNews news) {
  if (container_ != nullptr) container_->TellFocus(control, news);
}

Accessible WindowedControl::Describe() const {
  Accessible what = OwnDescription();
  if (Describing) Describing(what);
  return what;
}

void WindowedControl::ShowFocusAround(WindowedControl* control) {
  for (const WindowedControl* each : {marked_, control}) {
    if (each != nullptr) InvalidateArea(Around(each->Bounds(), kMarkReach));
  }
  marked_ = control;
}

// A bright line with a dark one inside it: one of the two stands out from whatever is on either side.
void WindowedControl::PaintFocusMark(Canvas& canvas) const {
  if (marked_ == nullptr) return;
  const Rect whole = Around(marked_->Bounds(), kMarkReach);
  PaintRing(canvas, whole, kMarkWidth, colors::kFocus);
  PaintRing(canvas, Around(whole, -kMarkWidth), kMarkReach - kMarkWidth, colors::kFocusGround);
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
  PaintFocusMark(canvas);
  const Rect dirty = canvas.Dirty();
  for (const Shape* shape : shapes_) {
    if (shape->Visible() && !Intersection(shape->Bounds(), dirty).Empty()) shape->Paint(canvas);
  }
}

}  // namespace orvane
