#include "platform/win32/widget.h"

namespace orvane {

Win32Child::Win32Child(WindowContext& context, WidgetClient& client, Win32Window& container,
                       const Rect& bounds)
    : Win32Child(context, client, container, bounds, LaterTag{}) {
  const Rect place = Place();
  // WS_EX_CONTROLPARENT: the Tab key walks through what lies inside.
  Create({kControlClass,
          WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
          WS_EX_CONTROLPARENT,
          {place.left, place.top, place.right(), place.bottom()},
          container.hwnd()},
         {});
}

Point Win32Child::Origin() const {
  const Point outer = container_->Origin();
  return {outer.x + bounds_.left, outer.y + bounds_.top};
}

void Win32Child::SetBounds(const Rect& bounds) {
  bounds_ = bounds;
  const Rect place = Place();
  ::SetWindowPos(hwnd(), nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  ::InvalidateRect(hwnd(), nullptr, FALSE);  // what lies behind is another part of the face
}

void Win32Child::PutBits(int word, LONG_PTR bits, bool on) {
  const LONG_PTR before = ::GetWindowLongPtrW(hwnd(), word);
  const LONG_PTR after = on ? before | bits : before & ~bits;
  if (after != before) ::SetWindowLongPtrW(hwnd(), word, after);
}

void Win32Child::SetTabStop(bool on) {
  constexpr LONG_PTR kStop = WS_TABSTOP;
  // What the key stops at is no frame that it walks through, nor is what holds nothing.
  constexpr LONG_PTR kWalk = WS_EX_CONTROLPARENT;
  const bool walk = !on && ::GetWindow(hwnd(), GW_CHILD) != nullptr;
  PutBits(GWL_STYLE, kStop, on);
  PutBits(GWL_EXSTYLE, kWalk, walk);
}

void Win32Child::SetVisible(bool visible) {
  if (visible) {
    ::ShowWindow(hwnd(), SW_SHOWNA);
  } else {
    HideWithFocus();
  }
}

// The keyboard must not stay in a window that nobody sees: it goes on to the next stop.
void Win32Child::HideWithFocus() {
  const HWND focus = ::GetFocus();
  const bool inside = focus != nullptr && (focus == hwnd() || ::IsChild(hwnd(), focus) != 0);
  ::ShowWindow(hwnd(), SW_HIDE);
  if (!inside) return;
  const HWND top = ::GetAncestor(hwnd(), GA_ROOT);
  const HWND next = ::GetNextDlgTabItem(top, hwnd(), FALSE);
  ::SetFocus(next != nullptr && ::IsWindowVisible(next) != 0 ? next : top);
}

void Win32Child::SetContainer(Widget& container) {
  container_ = &dynamic_cast<Win32Window&>(container);
  ::SetParent(hwnd(), container_->hwnd());
  ::SetWindowPos(hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace orvane
