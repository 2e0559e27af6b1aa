#include "platform/win32/widget.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

#include <cstdlib>
#include <optional>
#include <utility>
#include <windowsx.h>

namespace orvane {
namespace {

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
    case VK_F4:
      return Key::kF4;
    case VK_APPS:
      return Key::kMenu;
    case VK_F10:
      return shift ? std::optional<Key>(Key::kMenu) : std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

WindowContext::WindowContext(int resolution, PaintRequests& paint_requests)
    : pixels_per_inch{resolution, resolution}, paints(paint_requests) {
  WNDCLASSW definition{};
  definition.style = CS_DBLCLKS;
  definition.lpfnWndProc = &Win32Window::Procedure;
  definition.hInstance = ::GetModuleHandleW(nullptr);
  definition.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  definition.hIcon = ::LoadIconW(definition.hInstance, MAKEINTRESOURCEW(1));
  for (const wchar_t* name : {kPanelClass, kControlClass}) {
    definition.lpszClassName = name;
    ::RegisterClassW(&definition);  // fails harmlessly when it is known
  }
}

HFONT WindowContext::PanelFont() {
  constexpr int kPoints = 9;
  if (!panel_font_) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    LOGFONTW& font = metrics.lfMessageFont;
    font.lfHeight = -::MulDiv(kPoints, pixels_per_inch.height, 72);
    font.lfWidth = 0;
    panel_font_.reset(::CreateFontIndirectW(&font));
  }
  return panel_font_.get();
}

void Win32Window::Destroy() {
  if (hwnd_ == nullptr) return;
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
  context_.paints.Forget(*this);
  context_.tips.Forget(hwnd_);
  ::DestroyWindow(std::exchange(hwnd_, nullptr));
}

void Win32Window::Create(const Creation& how, std::string_view text) {
  hwnd_ =
      ::CreateWindowExW(how.extended_style, how.class_name, ToWide(text).c_str(), how.style, how.place.left,
                        how.place.top, how.place.right - how.place.left, how.place.bottom - how.place.top,
                        how.parent, nullptr, ::GetModuleHandleW(nullptr), nullptr);
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

void Win32Window::AskForPainting(const Rect& area) {
  const Rect pixels = PixelsOf(area);
  context_.paints.Ask(*this, {pixels.left, pixels.top, pixels.right(), pixels.bottom()});
}

void Win32Window::Paint() {
  PAINTSTRUCT job;
  const HDC screen = ::BeginPaint(hwnd_, &job);
  PaintPart(screen, job.rcPaint);
  ::EndPaint(hwnd_, &job);
}

void Win32Window::PaintNow(const RECT& area) {
  const HDC screen = ::GetDC(hwnd_);
  RECT part;
  // Nothing where the window is hidden or covered.
  if (::GetClipBox(screen, &part) > NULLREGION && ::IntersectRect(&part, &part, &area) != 0)
    PaintPart(screen, part);
  ::ReleaseDC(hwnd_, screen);
}

void Win32Window::PaintPart(HDC screen, const RECT& area) {
  const Rect part{area.left, area.top, area.right - area.left, area.bottom - area.top};
  if (part.Empty()) return;
  const Surface surface = context_.buffer.Take(part.width, part.height);
  if (surface.pixels == nullptr) return;
  if (Ground() != kNoGround) {
    const RECT all{0, 0, part.width, part.height};
    ::FillRect(context_.buffer.dc(), &all, ::GetSysColorBrush(Ground()));
    ::GdiFlush();  // what follows writes the pixels itself
  }
  GdiCanvas canvas(context_.buffer.dc(), context_.fonts, surface, context_.rasterizer, Origin(), part,
                   context_.pixels_per_inch);
  Attempt([&] { client_.OnPaint(canvas); });
  ::BitBlt(screen, part.left, part.top, part.width, part.height, context_.buffer.dc(), 0, 0, SRCCOPY);
}

void Win32Window::PaintTree(HDC screen) {
  RECT area{};
  ::GetClientRect(hwnd_, &area);
  PaintPart(screen, area);
  POINT origin{};
  ::GetViewportOrgEx(screen, &origin);
  // The last one is the lowest.
  for (HWND child = ::GetWindow(::GetWindow(hwnd_, GW_CHILD), GW_HWNDLAST); child != nullptr;
       child = ::GetWindow(child, GW_HWNDPREV)) {
    auto* window = reinterpret_cast<Win32Window*>(::GetWindowLongPtrW(child, GWLP_USERDATA));
    if ((::GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) == 0 || window == nullptr) continue;
    RECT place{};
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT*>(&place), 2);
    ::SetViewportOrgEx(screen, origin.x + place.left, origin.y + place.top, nullptr);
    window->PaintTree(screen);
  }
  ::SetViewportOrgEx(screen, origin.x, origin.y, nullptr);
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
      ::SetCapture(hwnd_);
      pressed_ = true;
      TellMouse(MouseAction::kDown, message == WM_LBUTTONDOWN ? kLeftButton : kRightButton, position);
      break;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      // The capture goes first: the handler may open a menu, which takes the pointer for itself.
      pressed_ = false;
      context_.drag = {};
      if (::GetCapture() == hwnd_) ::ReleaseCapture();
      TellMouse(MouseAction::kUp, message == WM_LBUTTONUP ? kLeftButton : kRightButton, position);
      break;
    default:
      ::SetCapture(hwnd_);
      pressed_ = true;
      TellMouse(MouseAction::kDoubleClick, message == WM_LBUTTONDBLCLK ? kLeftButton : kRightButton,
                position);
      break;
  }
}

// The window is moved by us and not by a press of its caption: that would hold everything for half a second,
// to see whether it is one, then run a loop of the system's, and under some window managers leave the window
// sticking to the pointer when the button is up before they hear of it.
bool Win32Window::Drags(WPARAM buttons) {
  WindowContext::Drag& drag = context_.drag;
  if (drag.window == nullptr) return false;
  if ((buttons & MK_LBUTTON) == 0) {
    drag = {};
    return false;
  }
  const DWORD now = ::GetMessagePos();
  const LONG dx = GET_X_LPARAM(now) - drag.from.x;
  const LONG dy = GET_Y_LPARAM(now) - drag.from.y;
  // A press that shakes a little is still a click, or the first one of two.
  const bool moved =
      std::abs(dx) >= ::GetSystemMetrics(SM_CXDRAG) || std::abs(dy) >= ::GetSystemMetrics(SM_CYDRAG);
  drag.moving = drag.moving || moved;
  if (drag.moving) {
    ::SetWindowPos(drag.window, nullptr, drag.corner.x + dx, drag.corner.y + dy, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  return drag.moving;
}

LRESULT Win32Window::OnPointerMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_MOUSEMOVE:
      if (Drags(wparam)) return 0;
      if (!tracking_leave_) {
        TRACKMOUSEEVENT request{sizeof(request), TME_LEAVE, hwnd_, 0};
        tracking_leave_ = ::TrackMouseEvent(&request) != 0;
      }
      TellMouse(MouseAction::kMove, 0, lparam);
      return 0;
    case WM_MOUSELEAVE:
      tracking_leave_ = false;
      TellMouse(MouseAction::kLeave, 0, 0);
      return 0;
    case WM_CAPTURECHANGED:
      // Something else took the pointer while a button is down: its release will never come here.
      if (reinterpret_cast<HWND>(lparam) == hwnd_ || !std::exchange(pressed_, false)) return 0;
      context_.drag = {};
      TellMouse(MouseAction::kLeave, 0, 0);
      return 0;
    default:
      OnButton(message, lparam);
      return 0;
  }
}

// Keys go to the window that has the keyboard, and from there outwards until one takes them. With Alt they
// are the system's: Alt+Space opens its menu, Alt+F4 closes. F10 alone is one of those too.
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
  if ((message == WM_SYSKEYDOWN || message == WM_SYSKEYUP) && wparam != VK_F10) return false;
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
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
    case WM_CAPTURECHANGED:
      return OnPointerMessage(message, wparam, lparam);
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return OnKeyMessage(message, wparam) ? 0 : PassOn(message, wparam, lparam);
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;  // in a dialog too the keys are the client's
    case WM_GETOBJECT:
      if (const auto answer = accessible_.Answer(hwnd_, wparam, lparam)) return *answer;
      return ::DefWindowProcW(hwnd_, message, wparam, lparam);
    case kActionMessage:
      Attempt([this] { client_.OnAction(); });
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Attempt([&] { client_.OnFocus(message == WM_SETFOCUS); });
      return 0;
    case WM_SETCURSOR:
      if (!context_.hourglass) return ::DefWindowProcW(hwnd_, message, wparam, lparam);
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_COMMAND:
    case WM_VSCROLL:
      if (lparam != 0) {
        const WORD notice = message == WM_COMMAND ? HIWORD(wparam) : LOWORD(wparam);
        ::SendMessageW(reinterpret_cast<HWND>(lparam), kNoticeMessage, notice, 0);
      }
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
  if (self == nullptr) return ::DefWindowProcW(hwnd, message, wparam, lparam);
  self->context_.tips.OnMessage(hwnd, message, wparam, lparam);
  return self->OnMessage(message, wparam, lparam);
}

}  // namespace orvane
