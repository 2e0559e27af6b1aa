#include "forms/command_button.h"

namespace orvane {
namespace {

constexpr int kRadius = 45;       // twips
constexpr int kRim = 15;          // twips
constexpr int kTextHeight = 165;  // twips

constexpr Color kRimColor = MakeColor(14, 17, 20);
constexpr Color kNormalTop = MakeColor(70, 78, 86);
constexpr Color kNormalFace = MakeColor(54, 61, 68);
constexpr Color kHotTop = MakeColor(92, 103, 113);
constexpr Color kHotFace = MakeColor(72, 82, 91);
constexpr Color kPressedFace = MakeColor(36, 41, 46);
constexpr Color kFocusColor = MakeColor(0xFF, 0xB0, 0x2E);
constexpr Color kTextColor = MakeColor(232, 238, 242);

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
  OnMouse({MouseAction::kDown, kLeftButton, middle});
  OnMouse({MouseAction::kUp, kLeftButton, middle});
}

// Space presses while it is held and acts when it is let go, as buttons do; Enter acts at once.
bool CommandButton::KeyPressed(const KeyEvent& event) {
  if (event.key == Key::kEnter && event.down) {
    Press();
    return true;
  }
  if (event.key != Key::kSpace) return false;
  const Point middle{Width() / 2, Height() / 2};
  if (event.down && !pressed_) OnMouse({MouseAction::kDown, kLeftButton, middle});
  if (!event.down && pressed_) OnMouse({MouseAction::kUp, kLeftButton, middle});
  return true;
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
  canvas.FillRounded(whole, kRadius, Focused() ? kFocusColor : kRimColor, 255);
  if (pressed_) {
    canvas.FillRounded(inner, kRadius - kRim, kPressedFace, 255);
  } else {
    canvas.FillRounded(inner, kRadius - kRim, hot_ ? kHotTop : kNormalTop, 255);
    canvas.FillRounded({inner.left, inner.top + kRim, inner.width, inner.height - kRim}, kRadius - kRim,
                       hot_ ? kHotFace : kNormalFace, 255);
  }
  const Rect text = pressed_ ? whole.Shifted(0, kRim) : whole;
  canvas.DrawText(text, caption_, {"Arial", kTextHeight, false}, kTextColor, Align::kCenter);
}

}  // namespace orvane
