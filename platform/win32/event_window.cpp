#include "platform/win32/event_window.h"

#include "base/runtime_error.h"

namespace orvane {
namespace {

constexpr wchar_t kClassName[] = L"OrvaneEvents";
constexpr UINT kPostMessage = WM_APP + 1;

}  // namespace

EventWindow::EventWindow() {
  WNDCLASSW definition{};
  definition.lpfnWndProc = &EventWindow::Procedure;
  definition.hInstance = ::GetModuleHandleW(nullptr);
  definition.lpszClassName = kClassName;
  ::RegisterClassW(&definition);
  hwnd_ = ::CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, definition.hInstance,
                            nullptr);
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

EventWindow::~EventWindow() {
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
  ::DestroyWindow(hwnd_);
}

UINT_PTR EventWindow::StartTimer(int ms, std::function<void()> handler) {
  const UINT_PTR id = ++last_id_;
  if (::SetTimer(hwnd_, id, static_cast<UINT>(ms), nullptr) == 0)
    throw RuntimeError(Fault::kOverflow, "Starting a timer: error " + std::to_string(::GetLastError()));
  timers_[id] = std::make_shared<std::function<void()>>(std::move(handler));
  return id;
}

void EventWindow::StopTimer(UINT_PTR id) {
  ::KillTimer(hwnd_, id);
  timers_.erase(id);
}

bool EventWindow::Post(HWND hwnd) {
  return ::PostMessageW(hwnd, kPostMessage, 0, 0) != 0;
}

// The handler may stop its own timer, and with it itself: a share of it is held until it returns.
void EventWindow::OnTimer(UINT_PTR id) {
  const auto found = timers_.find(id);
  if (found == timers_.end()) return;
  const Handler handler = found->second;
  Attempt([&] { (*handler)(); });
}

LRESULT CALLBACK EventWindow::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<EventWindow*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self != nullptr && message == WM_TIMER) {
    self->OnTimer(wparam);
    return 0;
  }
  if (self != nullptr && message == kPostMessage) {
    const PaintRequests::Gathering merged(self->paints_);
    if (self->post_handler_) Attempt([&] { self->post_handler_(); });
    return 0;
  }
  return ::DefWindowProcW(hwnd, message, wparam, lparam);
}

}  // namespace orvane
