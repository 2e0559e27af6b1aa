#include "platform/win32/widget.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

#include <optional>
#include <windowsx.h>

namespace orvane {
namespace {

constexpr wchar_t kClassName[] = L"OrvaneControl";

std::optional<Key> KeyOf(WPARAM code, bool shift) {
  switch (code) {
    case VK_SPACE:
      return Key::kSpace;
    case VK_RETURN:
      return Key::kEnter;
    case VK_ESCAPE:
      return Key::kEscape;
    case VK_LEFT:
      return Key::kLeft;
    case VK_RIGHT:
      return Key::kRight;
    case VK_UP:
      return Key::kUp;
    case VK_DOWN:
      return Key::kDown;
    case VK_F1:
      return Key::kF1;
    case VK_F2:
      return Key::kF2;
    case VK_F3:
      return Key::kF3;
    case VK_APPS:
      return Key::kMenu;
    case VK_F10:
      return shift ? std::optional<Key>(Key::kMenu) : std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

void WindowContext::SetToolTip(HWND widget, std::string_view text) {
  if (tips_ == nullptr) {
    tips_ = ::CreateWindowExW(
        WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  std::wstring wide = ToWide(text);
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;  // the size that the oldest common controls take too
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = ::GetParent(widget);
  tool.uId = reinterpret_cast<UINT_PTR>(widget);
  tool.lpszText = wide.data();
  ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  if (!text.empty()) ::SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

Win32Window::~Win32Window() {
  if (hwnd_ == nullptr) return;
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
  ::DestroyWindow(hwnd_);
}

void Win32Window::Create(const Creation& how, std::string_view text) {
  WNDCLASSW definition{};
  definition.style = CS_DBLCLKS;
  definition.lpfnWndProc = &Win32Window::Procedure;
  definition.hInstance = ::GetModuleHandleW(nullptr);
  definition.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  definition.hIcon = ::LoadIconW(definition.hInstance, MAKEINTRESOURCEW(1));
  definition.lpszClassName = kClassName;
  ::RegisterClassW(&definition);  // fails harmlessly from the second time on
  hwnd_ = ::CreateWindowExW(how.extended_style, kClassName, ToWide(text).c_str(), how.style, how.place.left,
                            how.place.top, how.place.right - how.place.left, how.place.bottom - how.place.top,
                            how.parent, nullptr, definition.hInstance, nullptr);
  if (hwnd_ == nullptr)
    throw RuntimeError(Fault::kOverflow, "Making a window: error " + std::to_string(::GetLastError()));
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void Win32Window::PutText(std::string_view text) {
  ::SetWindowTextW(hwnd_, ToWide(text).c_str());
}

Rect Win32Window::PixelsOf(const Rect& area) const {
  const Point origin = Origin();
  const Size ppi = context_.pixels_per_inch;
  const int x0 = ToPixels(origin.x, ppi.width);
  const int y0 = ToPixels(origin.y, ppi.height);
  const int left = ToPixels(origin.x + area.left, ppi.width) - x0;
  const int top = ToPixels(origin.y + area.top, ppi.height) - y0;
  return {left, top, ToPixels(origin.x + area.right(), ppi.width) - x0 - left,
          ToPixels(origin.y + area.bottom(), ppi.height) - y0 - top};
}

void Win32Window::InvalidatePixels(const Rect& area, UINT flags) {
  const Rect pixels = PixelsOf(area);
  const RECT changed{pixels.left, pixels.top, pixels.right(), pixels.bottom()};
  ::RedrawWindow(hwnd_, &changed, nullptr, flags);
}

void Win32Window::Paint() {
  PAINTSTRUCT job;
  const HDC screen = ::BeginPaint(hwnd_, &job);
  const Rect part{job.rcPaint.left, job.rcPaint.top, job.rcPaint.right - job.rcPaint.left,
                  job.rcPaint.bottom - job.rcPaint.top};
  if (!part.Empty()) {
    const Surface surface = context_.buffer.Take(part.width, part.height);
    if (surface.pixels != nullptr) {
      GdiCanvas canvas(context_.buffer.dc(), context_.fonts, surface, context_.rasterizer, Origin(), part,
                       context_.pixels_per_inch);
      Attempt([&] { client_.OnPaint(canvas); });
      ::BitBlt(screen, part.left, part.top, part.width, part.height, context_.buffer.dc(), 0, 0, SRCCOPY);
    }
  }
  ::EndPaint(hwnd_, &job);
}

void Win32Window::TellMouse(MouseAction action, int button, LPARAM position) {
  const Size ppi = context_.pixels_per_inch;
  const Point at{ToTwips(GET_X_LPARAM(position), ppi.width), ToTwips(GET_Y_LPARAM(position), ppi.height)};
  Attempt([&] { client_.OnMouse({action, button, at}); });
}

void Win32Window::OnButton(UINT message, LPARAM position) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
      // Where the Tab key stops the pointer brings the keyboard as well.
      if ((::GetWindowLongPtrW(hwnd_, GWL_STYLE) & WS_TABSTOP) != 0) ::SetFocus(hwnd_);
      ::SetCapture(hwnd_);
      TellMouse(MouseAction::kDown, message == WM_LBUTTONDOWN ? kLeftButton : kRightButton, position);
      break;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      // The capture goes first: the handler may open a menu, which takes the pointer for itself.
      if (::GetCapture() == hwnd_) ::ReleaseCapture();
      TellMouse(MouseAction::kUp, message == WM_LBUTTONUP ? kLeftButton : kRightButton, position);
      break;
    default:
      ::SetCapture(hwnd_);
      TellMouse(MouseAction::kDoubleClick, message == WM_LBUTTONDBLCLK ? kLeftButton : kRightButton,
                position);
      break;
  }
}

void Win32Window::OnPointerMove(LPARAM position) {
  if (!tracking_leave_) {
    TRACKMOUSEEVENT request{sizeof(request), TME_LEAVE, hwnd_, 0};
    tracking_leave_ = ::TrackMouseEvent(&request) != 0;
  }
  TellMouse(MouseAction::kMove, 0, position);
}

// Keys go to the window that has the keyboard, and from there outwards until one takes them.
bool Win32Window::OnKeyMessage(UINT message, WPARAM wparam) {
  const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
  if (wparam == VK_TAB) {
    if (!down) return true;
    const HWND top = ::GetAncestor(hwnd_, GA_ROOT);
    const HWND from = hwnd_ == top ? nullptr : hwnd_;
    const HWND next = ::GetNextDlgTabItem(top, from, ::GetKeyState(VK_SHIFT) < 0 ? TRUE : FALSE);
    if (next != nullptr) ::SetFocus(next);
    return true;
  }
  const auto key = KeyOf(wparam, ::GetKeyState(VK_SHIFT) < 0);
  if (!key) return false;
  bool taken = false;
  Attempt([&] { taken = client_.OnKey({*key, down}); });
  return taken;
}

LRESULT Win32Window::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // painting covers everything
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
      OnButton(message, lparam);
      return 0;
    case WM_MOUSEMOVE:
      OnPointerMove(lparam);
      return 0;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return OnKeyMessage(message, wparam) ? 0 : PassOn(message, wparam, lparam);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Attempt([&] { client_.OnFocus(message == WM_SETFOCUS); });
      return 0;
    case WM_SETCURSOR:
      if (!context_.hourglass) return ::DefWindowProcW(hwnd_, message, wparam, lparam);
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_MOUSELEAVE:
      tracking_leave_ = false;
      TellMouse(MouseAction::kLeave, 0, 0);
      return 0;
    default:
      return ::DefWindowProcW(hwnd_, message, wparam, lparam);
  }
}

LRESULT Win32Window::PassOn(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND outer = ::GetAncestor(hwnd_, GA_PARENT);
  if (hwnd_ == ::GetAncestor(hwnd_, GA_ROOT) || outer == nullptr) {
    return ::DefWindowProcW(hwnd_, message, wparam, lparam);
  }
  return ::SendMessageW(outer, message, wparam, lparam);
}

LRESULT CALLBACK Win32Window::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<Win32Window*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  return self != nullptr ? self->OnMessage(message, wparam, lparam)
                         : ::DefWindowProcW(hwnd, message, wparam, lparam);
}

Win32Child::Win32Child(WindowContext& context, WidgetClient& client, Win32Window& container,
                       const Rect& bounds)
    : Win32Window(context, client), container_(&container), bounds_(bounds) {
  const Rect place = Place();
  // WS_EX_CONTROLPARENT: the Tab key walks through what lies inside.
  Create({WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
          WS_EX_CONTROLPARENT,
          {place.left, place.top, place.right(), place.bottom()},
          container.hwnd()},
         {});
}

Point Win32Child::Origin() const {
  const Point outer = container_->Origin();
  return {outer.x + bounds_.left, outer.y + bounds_.top};
}

Rect Win32Child::Place() const {
  const Point outer = container_->Origin();
  const Size ppi = context().pixels_per_inch;
  const int left = ToPixels(outer.x + bounds_.left, ppi.width) - ToPixels(outer.x, ppi.width);
  const int top = ToPixels(outer.y + bounds_.top, ppi.height) - ToPixels(outer.y, ppi.height);
  const int right = ToPixels(outer.x + bounds_.right(), ppi.width) - ToPixels(outer.x, ppi.width);
  const int bottom = ToPixels(outer.y + bounds_.bottom(), ppi.height) - ToPixels(outer.y, ppi.height);
  return {left, top, right - left, bottom - top};
}

void Win32Child::SetBounds(const Rect& bounds) {
  bounds_ = bounds;
  const Rect place = Place();
  ::SetWindowPos(hwnd(), nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  ::InvalidateRect(hwnd(), nullptr, FALSE);  // what lies behind is another part of the face
}

void Win32Child::SetTabStop(bool on) {
  constexpr LONG_PTR kStop = WS_TABSTOP;
  constexpr LONG_PTR kWalk = WS_EX_CONTROLPARENT;  // what the key stops at is no frame that it walks through
  const LONG_PTR style = ::GetWindowLongPtrW(hwnd(), GWL_STYLE);
  ::SetWindowLongPtrW(hwnd(), GWL_STYLE, on ? style | kStop : style & ~kStop);
  const LONG_PTR extended = ::GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  ::SetWindowLongPtrW(hwnd(), GWL_EXSTYLE, on ? extended & ~kWalk : extended | kWalk);
}

void Win32Child::SetVisible(bool visible) {
  ::ShowWindow(hwnd(), visible ? SW_SHOWNA : SW_HIDE);
}

void Win32Child::SetContainer(Widget& container) {
  container_ = &dynamic_cast<Win32Window&>(container);
  ::SetParent(hwnd(), container_->hwnd());
  ::SetWindowPos(hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace orvane
