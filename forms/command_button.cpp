#include "forms/command_button.h"

#include "forms/colors.h"

namespace orvane {
namespace {

constexpr int kRadius = 45;       // twips
constexpr int kRim = 15;          // twips
constexpr int kTextHeight = 165;  // twips

}  // namespace

CommandButton::CommandButton(WindowSystem& windows, WindowedControl& container, const Rect& bounds,
                             std::string_view caption, std::string_view tool_tip)
    : WindowedControl(windows, container, bounds), caption_(caption) {
  SetWindowText(tool_tip.empty() ? caption : tool_tip);
  if (!tool_tip.empty()) SetToolTipText(tool_tip);
  SetTabStop(true);
}

void CommandButton::Press() {
  const Point middle{Width() / 2, Height() / 2};
  OnMouse({MouseAction::kDown, kLeftButton, middle, true});
  OnMouse({MouseAction::kUp, kLeftButton, middle, true});
}

// Space presses while it is held and acts when it is let go, as buttons do; Enter acts at once.
bool CommandButton::KeyPressed(const KeyEvent& event) {
  if (event.key == Key::kEnter && event.down) {
    Press();
    return true;
  }
  if (event.key != Key::kSpace) return false;
  const Point middle{Width() / 2, Height() / 2};
  if (event.down && !pressed_) OnMouse({MouseAction::kDown, kLeftButton, middle, true});
  if (!event.down && pressed_) OnMouse({MouseAction::kUp, kLeftButton, middle, true});
  return true;
}

Accessible CommandButton::OwnDescription() const {
  Accessible what;
  what.role = Role::kButton;
  what.name = WindowText();
  what.action = "Press";
  return what;
}

void CommandButton::OnMouse(const MouseEvent& event) {
  const bool let_go = event.action == MouseAction::kUp && event.button == kLeftButton;
  if (let_go && !(pressed_ && Contains(event.at))) {
    PointerChanged(event);
    return;
  }
  WindowedControl::OnMouse(event);
}

// The end of a Space that is held goes to whoever has the keyboard then.
void CommandButton::OnFocus(bool has_focus) {
  if (!has_focus && Assign(pressed_, false)) Invalidate();
  WindowedControl::OnFocus(has_focus);
}

void CommandButton::PointerChanged(const MouseEvent& event) {
  bool changed = false;
  switch (event.action) {
    case MouseAction::kDown:
    case MouseAction::kDoubleClick:
      if (!event.by_keys) SetFocus();  // what is clicked has the keyboard as well
      changed = Assign(pressed_, event.button == kLeftButton);
      break;
    case MouseAction::kUp:
      changed = Assign(pressed_, false);
      break;
    case MouseAction::kMove:
      changed = Assign(hot_, Contains(event.at));
      break;
    case MouseAction::kLeave:
      changed = Assign(hot_, false);
      break;
  }
  if (changed) Invalidate();
}

void CommandButton::Paint(Canvas& canvas) const {
  const Rect whole{0, 0, Width(), Height()};
  const int rim = Focused() ? 2 * kRim : kRim;
  const Rect inner{rim, rim, Width() - 2 * rim, Height() - 2 * rim};
  canvas.FillRounded(whole, kRadius, Focused() ? colors::kFocus : colors::kRim, 255);
  if (pressed_) {
    canvas.FillRounded(inner, kRadius - kRim, colors::kPressedButton, 255);
  } else {
    canvas.FillRounded(inner, kRadius - kRim, hot_ ? colors::kHotButtonTop : colors::kButtonTop, 255);
    canvas.FillRounded({inner.left, inner.top + kRim, inner.width, inner.height - kRim}, kRadius - kRim,
                       hot_ ? colors::kHotButton : colors::kButton, 255);
  }
  const Rect text = pressed_ ? whole.Shifted(0, kRim) : whole;
  canvas.DrawText(text, caption_, {"Arial", kTextHeight, false}, colors::kButtonText, Align::kCenter);
}

}  // namespace orvane
