#include "base/runtime_error.h"
#include "platform/win32/widget.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace orvane {
namespace {

// A window without a frame of the system's, that still has an entry in the taskbar and answers Alt+Space.
constexpr DWORD kStyle = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;

}  // namespace

Win32TopWindow::Win32TopWindow(WindowContext& context, TopWindowClient& client, std::string_view caption,
                               Size size)
    : Win32Window(context, client),
      client_(client),
      shell_restarted_(::RegisterWindowMessageW(L"TaskbarCreated")) {
  const Rect pixels = PixelsOf({0, 0, size.width, size.height});
  Create({kStyle, WS_EX_APPWINDOW | WS_EX_CONTROLPARENT, {0, 0, pixels.width, pixels.height}, nullptr},
         caption);
}

void Win32TopWindow::SetBounds(const Rect& bounds) {
  const Rect pixels = PixelsOf(bounds);
  ::SetWindowPos(hwnd(), nullptr, 0, 0, pixels.width, pixels.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

void Win32TopWindow::SetVisible(bool visible) {
  ::ShowWindow(hwnd(), visible ? SW_SHOWNA : SW_HIDE);
}

void Win32TopWindow::Show() {
  ::ShowWindow(hwnd(), SW_SHOWNORMAL);
}

Rect Win32TopWindow::Bounds() {
  // While the window is minimised the system parks it far off the screen; what counts is where it will come
  // back.
  WINDOWPLACEMENT placement{};
  placement.length = sizeof(placement);
  RECT place{};
  if (::IsIconic(hwnd()) != 0 && ::GetWindowPlacement(hwnd(), &placement) != 0) {
    place = placement.rcNormalPosition;
  } else {
    ::GetWindowRect(hwnd(), &place);
  }
  const Size ppi = context().pixels_per_inch;
  return {ToTwips(place.left, ppi.width), ToTwips(place.top, ppi.height),
          ToTwips(place.right - place.left, ppi.width), ToTwips(place.bottom - place.top, ppi.height)};
}

void Win32TopWindow::MoveTo(Point corner) {
  const Size ppi = context().pixels_per_inch;
  ::SetWindowPos(hwnd(), nullptr, ToPixels(corner.x, ppi.width), ToPixels(corner.y, ppi.height), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

WindowState Win32TopWindow::State() {
  return ::IsIconic(hwnd()) != 0 ? WindowState::kMinimized : WindowState::kNormal;
}

void Win32TopWindow::SetState(WindowState state) {
  ::ShowWindow(hwnd(), state == WindowState::kMinimized ? SW_MINIMIZE : SW_RESTORE);
}

bool Win32TopWindow::OnScreen() {
  return ::MonitorFromWindow(hwnd(), MONITOR_DEFAULTTONULL) != nullptr;
}

void Win32TopWindow::SetTopMost(bool on) {
  ::SetWindowPos(hwnd(), on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

// One region from all rectangles at once: adding them one by one takes a call for each run of the face.
void Win32TopWindow::SetShape(const std::vector<Rect>& runs) {
  std::vector<std::byte> bytes(sizeof(RGNDATAHEADER) + runs.size() * sizeof(RECT));
  RGNDATAHEADER header{};
  header.dwSize = sizeof(header);
  header.iType = RDH_RECTANGLES;
  header.nCount = static_cast<DWORD>(runs.size());
  header.nRgnSize = static_cast<DWORD>(runs.size() * sizeof(RECT));
  std::byte* out = bytes.data() + sizeof(header);
  for (const Rect& run : runs) {
    const RECT rect{run.left, run.top, run.right(), run.bottom()};
    std::memcpy(out, &rect, sizeof(rect));
    out += sizeof(rect);
    header.rcBound.left = std::min(header.rcBound.left, rect.left);
    header.rcBound.right = std::max(header.rcBound.right, rect.right);
    header.rcBound.top = std::min(header.rcBound.top, rect.top);
    header.rcBound.bottom = std::max(header.rcBound.bottom, rect.bottom);
  }
  std::memcpy(bytes.data(), &header, sizeof(header));
  UniqueRegion region(::ExtCreateRegion(nullptr, static_cast<DWORD>(bytes.size()),
                                        reinterpret_cast<const RGNDATA*>(bytes.data())));
  // From here on the system owns the region, if it took it.
  if (region && ::SetWindowRgn(hwnd(), region.get(), TRUE) != 0) static_cast<void>(region.release());
}

// As if the press had been on a caption: the system moves the window until the button is released, in a loop
// of its own that goes on delivering our events.
void Win32TopWindow::BeginDrag() {
  // A tap may be over before its press is handled. A window manager that is asked to drag then would let the
  // window stick to the pointer until the next click.
  const int button = ::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
  if (::GetAsyncKeyState(button) >= 0) return;
  ::ReleaseCapture();
  ::SendMessageW(hwnd(), WM_NCLBUTTONDOWN, HTCAPTION, 0);
}

LRESULT Win32TopWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_CLOSE) {
    Attempt([this] { client_.OnClose(); });
    return 0;
  }
  if (message == shell_restarted_) {
    Attempt([this] { client_.OnShellRestarted(); });
    return 0;
  }
  const bool restored = message == WM_SIZE && wparam == SIZE_RESTORED;
  if (message == WM_DISPLAYCHANGE || restored) Attempt([this] { client_.OnDisplayChanged(); });
  return Win32Window::OnMessage(message, wparam, lparam);
}

}  // namespace orvane
