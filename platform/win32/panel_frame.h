#pragma once

#include "platform/panel_controls.h"
#include "platform/win32/widget.h"

#include <string_view>

namespace orvane {

/// A panel or a group in one: a window of ours in the system's ground colour. Its first child is the system's
/// group box with the caption: it draws the line around, and gives screen readers a name for what follows it.
class PanelFrame : public Win32Child {
 public:
  PanelFrame(WindowContext& context, WidgetClient& client, Win32Window& container, const Rect& bounds,
             std::string_view caption, FrameKind kind);

  void SetText(std::string_view text) override;
  void SetBounds(const Rect& bounds) override;
  void SetVisible(bool visible) override;
  int Ground() const override { return COLOR_3DFACE; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  FrameKind kind_;
  HWND box_ = nullptr;             // goes with its parent
  HWND focused_before_ = nullptr;  // had the keyboard when the panel came up
};

/// Lets a keyboard message do in a panel what it does in a dialog: Tab, mnemonics, Enter, Escape. @return
/// true when it was used up
bool HandleAsPanelKey(const MSG& message);

}  // namespace orvane
