#include "base/runtime_error.h"
#include "platform/win32/widget.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>
#include <windowsx.h>

namespace orvane {
namespace {

// A window without a frame of the system's, that still has an entry in the taskbar and answers Alt+Space.
constexpr DWORD kFaceStyle = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;

}  // namespace

Win32TopWindow::Win32TopWindow(WindowContext& context, TopWindowClient& client, std::string_view caption,
                               Size size, WindowLook look)
    : Win32Window(context, client),
      client_(client),
      look_(look),
      shell_restarted_(::RegisterWindowMessageW(L"TaskbarCreated")),
      events_(client) {
  const Rect pixels = PixelsOf({0, 0, size.width, size.height});
  if (look == WindowLook::kFace) {
    Create({kControlClass, kFaceStyle, WS_EX_APPWINDOW | WS_EX_CONTROLPARENT, FrameAround(pixels), nullptr},
           caption);
    events_.Attach(hwnd());
    return;
  }
  // Not owned by the face: that may be minimised, and would take the dialog with it.
  owner_.reset(::CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr));
  const RECT frame = FrameAround(pixels);
  Create({kPanelClass,
          kDialogStyle,
          WS_EX_CONTROLPARENT,
          {0, 0, frame.right - frame.left, frame.bottom - frame.top},
          owner_.get()},
         caption);
}

Win32TopWindow::~Win32TopWindow() {
  context().drag = {};
  Destroy();  // before its owner, which would take it along
}

// The window's edges around a client area.
RECT Win32TopWindow::FrameAround(const Rect& pixels) const {
  RECT frame{pixels.left, pixels.top, pixels.right(), pixels.bottom()};
  if (look_ == WindowLook::kDialog) ::AdjustWindowRectEx(&frame, kDialogStyle, FALSE, WS_EX_CONTROLPARENT);
  return frame;
}

Size Win32TopWindow::BorderPixels() const {
  const RECT frame = FrameAround({});
  return {static_cast<int>(-frame.left), static_cast<int>(-frame.top)};
}

void Win32TopWindow::SetBounds(const Rect& bounds) {
  const RECT frame = FrameAround(PixelsOf(bounds));
  ::SetWindowPos(hwnd(), nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

void Win32TopWindow::SetVisible(bool visible) {
  ::ShowWindow(hwnd(), visible ? SW_SHOWNA : SW_HIDE);
}

// Shown by ShowWindow alone, each of the face's windows would be told to erase itself and then to paint
// itself. That call still follows: the first one does what a shortcut says, as starting minimised.
void Win32TopWindow::ShowFirst() {
  ::SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0,
                 SWP_SHOWWINDOW | SWP_NOREDRAW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
  const HDC screen = ::GetDCEx(hwnd(), nullptr, DCX_CACHE);  // children are not left out
  PaintTree(screen);
  ::ReleaseDC(hwnd(), screen);
  ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_VALIDATE | RDW_ALLCHILDREN);
}

void Win32TopWindow::Show() {
  if (look_ == WindowLook::kFace && !std::exchange(shown_, true)) ShowFirst();
  ::ShowWindow(hwnd(), SW_SHOWNORMAL);
}

// While the window is minimised the system parks it far off the screen; what counts is where it will come
// back.
RECT Win32TopWindow::PlaceInPixels() const {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof(placement);
  if (::IsIconic(hwnd()) != 0 && ::GetWindowPlacement(hwnd(), &placement) != 0) {
    return placement.rcNormalPosition;
  }
  RECT place{};
  ::GetWindowRect(hwnd(), &place);
  return place;
}

Rect Win32TopWindow::Bounds() {
  const RECT place = PlaceInPixels();
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
  if (state == WindowState::kMinimized) {
    KeepFocusWhile([this] { ::ShowWindow(hwnd(), SW_MINIMIZE); });
  } else {
    ::ShowWindow(hwnd(), SW_RESTORE);
  }
}

bool Win32TopWindow::OnScreen() {
  return ::MonitorFromWindow(hwnd(), MONITOR_DEFAULTTONULL) != nullptr;
}

void Win32TopWindow::CenterOnScreenOf(TopWindow& other) {
  const RECT place = dynamic_cast<Win32TopWindow&>(other).PlaceInPixels();
  MONITORINFO screen{};
  screen.cbSize = sizeof(screen);
  ::GetMonitorInfoW(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &screen);
  const RECT& room = screen.rcWork;
  const RECT own = PlaceInPixels();
  const LONG left = room.left + (room.right - room.left - (own.right - own.left)) / 2;
  const LONG top = room.top + (room.bottom - room.top - (own.bottom - own.top)) / 2;
  ::SetWindowPos(hwnd(), nullptr, std::max(left, room.left), std::max(top, room.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
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

// The press alone does nothing yet: the window that has the pointer starts the drag when it really moves.
void Win32TopWindow::BeginDrag() {
  const DWORD at = ::GetMessagePos();
  const RECT place = PlaceInPixels();
  context().drag = {hwnd(), {GET_X_LPARAM(at), GET_Y_LPARAM(at)}, {place.left, place.top}, false};
}

void Win32TopWindow::SetFocus() {
  focused_ = nullptr;
  ::SetFocus(hwnd());
}

// While a window is minimised the keyboard wanders through it in ways that differ from system to system.
void Win32TopWindow::KeepFocusWhile(const std::function<void()>& minimise) {
  const HWND focus = ::GetFocus();
  const HWND control = ::IsChild(hwnd(), focus) != 0 ? focus : nullptr;
  minimise();
  focused_ = control;
}

// The system gives the keyboard to the window itself when it becomes the active one again; it belongs to the
// control that had it before.
bool Win32TopWindow::OnFocusMessage(UINT message, WPARAM wparam) {
  if (::IsIconic(hwnd()) != 0) return false;
  if (message == WM_ACTIVATE && LOWORD(wparam) == WA_INACTIVE) {
    const HWND focus = ::GetFocus();
    focused_ = ::IsChild(hwnd(), focus) != 0 ? focus : nullptr;
  }
  return message == WM_SETFOCUS && GiveFocusBack();
}

// Each time: while a window comes back the system may give it the keyboard twice.
bool Win32TopWindow::GiveFocusBack() {
  const HWND before = focused_;
  if (before == nullptr || ::IsChild(hwnd(), before) == 0 || ::IsWindowVisible(before) == 0) return false;
  ::SetFocus(before);
  return true;
}

LRESULT Win32TopWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_CLOSE) {
    Attempt([this] { client_.OnClose(); });
    return 0;
  }
  if (OnFocusMessage(message, wparam)) return 0;
  if (message == WM_SYSCOMMAND && (wparam & 0xFFF0) == SC_MINIMIZE) {
    KeepFocusWhile([&] { ::DefWindowProcW(hwnd(), message, wparam, lparam); });
    return 0;
  }
  // What the system makes of Escape and Enter in a dialog.
  if (look_ == WindowLook::kDialog && message == WM_COMMAND && lparam == 0) {
    const WORD id = LOWORD(wparam);
    if (id == IDCANCEL || id == IDOK) OnMessage(WM_KEYDOWN, id == IDCANCEL ? VK_ESCAPE : VK_RETURN, 0);
    return 0;
  }
  if (look_ == WindowLook::kFace) {
    if (message == shell_restarted_) {
      Attempt([this] { client_.OnShellRestarted(); });
      return 0;
    }
    if (const auto answer = events_.Handle(message, wparam, lparam)) return *answer;
  }
  const bool restored = message == WM_SIZE && wparam == SIZE_RESTORED;
  if (restored && ::GetFocus() == hwnd()) GiveFocusBack();
  if (message == WM_DISPLAYCHANGE || restored) Attempt([this] { client_.OnDisplayChanged(); });
  return Win32Window::OnMessage(message, wparam, lparam);
}

}  // namespace orvane
