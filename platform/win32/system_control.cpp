#include "platform/win32/system_control.h"

#include "base/runtime_error.h"
#include "platform/win32/text.h"

#include <utility>

namespace orvane {
namespace {

constexpr UINT_PTR kSubclassId = 1;

}  // namespace

void HideAndPassFocus(HWND window, HWND heir) {
  const HWND focus = ::GetFocus();
  if (focus != nullptr && (focus == window || ::IsChild(window, focus) != 0)) {
    const bool fit = heir != nullptr && heir != window && ::IsChild(window, heir) == 0 &&
                     ::IsWindowVisible(heir) != 0 && ::IsWindowEnabled(heir) != 0;
    ::SetFocus(fit ? heir : ::GetAncestor(window, GA_ROOT));
  }
  ::ShowWindow(window, SW_HIDE);
}

SystemControl::~SystemControl() {
  if (hwnd_ == nullptr) return;
  ::RemoveWindowSubclass(hwnd_, &SystemControl::Procedure, kSubclassId);
  context_.tips.Forget(hwnd_);
  ::DestroyWindow(hwnd_);
}

void SystemControl::Create(const wchar_t* class_name, DWORD style, DWORD extended_style,
                           std::string_view text) {
  // WS_GROUP: each is a group of its own, in which the arrow keys stay. No WS_CLIPSIBLINGS: a group box lies
  // over all that is in it.
  hwnd_ = ::CreateWindowExW(extended_style, class_name, ToWide(text).c_str(),
                            WS_CHILD | WS_VISIBLE | WS_GROUP | style, 0, 0, 0, 0, container_->hwnd(), nullptr,
                            ::GetModuleHandleW(nullptr), nullptr);
  if (hwnd_ == nullptr)
    throw RuntimeError(Fault::kOverflow, "Making a control: error " + std::to_string(::GetLastError()));
  ::SetWindowSubclass(hwnd_, &SystemControl::Procedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(context_.PanelFont()));
  ApplyPlace();
}

LRESULT CALLBACK SystemControl::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                          DWORD_PTR self) {
  auto& control = *reinterpret_cast<SystemControl*>(self);
  control.context_.tips.OnMessage(hwnd, message, wparam, lparam);
  if (message != WM_NCDESTROY) return control.OnMessage(message, wparam, lparam);
  ::RemoveWindowSubclass(hwnd, &SystemControl::Procedure, kSubclassId);
  control.context_.tips.Forget(hwnd);
  control.hwnd_ = nullptr;  // its container took it along
  return ::DefSubclassProc(hwnd, message, wparam, lparam);
}

LRESULT SystemControl::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SETCURSOR:
      if (!context_.hourglass) break;
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_KEYDOWN:
    case WM_KEYUP: {
      const bool outwards = (wparam >= VK_F1 && wparam <= VK_F3) || (wparam == VK_ESCAPE && !WantsEscape());
      if (outwards) return ::SendMessageW(::GetParent(hwnd_), message, wparam, lparam);
      break;
    }
    case WM_GETOBJECT:
      if (const auto answer = accessible_.Answer(hwnd_, wparam, lparam)) return *answer;
      break;
    case kNoticeMessage:
      OnNotice(LOWORD(wparam));
      return 0;
    default:
      break;
  }
  return ::DefSubclassProc(hwnd_, message, wparam, lparam);
}

void SystemControl::ApplyPlace() {
  const Rect place = Place();
  ::SetWindowPos(hwnd_, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void SystemControl::PutText(std::string_view text) {
  ::SetWindowTextW(hwnd_, ToWide(text).c_str());
}

void SystemControl::PutBounds(const Rect& bounds) {
  bounds_ = bounds;
  ApplyPlace();
}

void SystemControl::PutVisible(bool visible) {
  if (visible) {
    ::ShowWindow(hwnd_, SW_SHOWNA);
  } else {
    HideAndPassFocus(hwnd_, nullptr);
  }
}

void SystemControl::PutContainer(Widget& container) {
  container_ = &dynamic_cast<Win32Window&>(container);
  ::SetParent(hwnd_, container_->hwnd());
  ::SetWindowPos(hwnd_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void SystemControl::PutTabStop(bool on) {
  constexpr LONG_PTR kStop = WS_TABSTOP;
  const LONG_PTR style = ::GetWindowLongPtrW(hwnd_, GWL_STYLE);
  ::SetWindowLongPtrW(hwnd_, GWL_STYLE, on ? style | kStop : style & ~kStop);
}

void SystemControl::TellChange() {
  if (client_ != nullptr) Attempt([this] { client_->OnChange(); });
}

}  // namespace orvane
