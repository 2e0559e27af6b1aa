#include "platform/win32/panel_frame.h"

#include "platform/win32/system_control.h"
#include "platform/win32/text.h"

#include <array>
#include <string_view>

namespace orvane {
namespace {

bool IsPanel(HWND window) {
  std::array<wchar_t, 32> name{};
  const int length = ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return std::wstring_view(name.data(), static_cast<std::size_t>(length)) == kPanelClass;
}

// The blank keeps the last letter whole where the theme's measure of the text is a little short (Wine).
std::wstring BoxText(std::string_view caption) {
  return ToWide(caption) + L' ';
}

}  // namespace

bool HandleAsPanelKey(const MSG& message) {
  const HWND root = ::GetAncestor(message.hwnd, GA_ROOT);
  HWND outermost = nullptr;
  for (HWND window = message.hwnd; window != nullptr; window = ::GetAncestor(window, GA_PARENT)) {
    if (IsPanel(window)) outermost = window;
    if (window == root) break;
  }
  MSG copy = message;
  return outermost != nullptr && ::IsDialogMessageW(outermost, &copy) != 0;
}

// The group box lies over the controls and draws no more than its line and caption: so its inside is the
// frame's to fill (no WS_CLIPCHILDREN), and is not cut out of what lies below (no WS_CLIPSIBLINGS there).
PanelFrame::PanelFrame(WindowContext& context, WidgetClient& client, Win32Window& container,
                       const Rect& bounds, std::string_view caption, FrameKind kind)
    : Win32Child(context, client, container, bounds, LaterTag{}), kind_(kind) {
  const bool panel = kind == FrameKind::kPanel;
  const Rect place = Place();
  Create({panel ? kPanelClass : kControlClass,
          WS_CHILD | WS_GROUP | (panel ? DWORD{WS_CLIPSIBLINGS} : DWORD{WS_VISIBLE}),
          WS_EX_CONTROLPARENT,
          {place.left, place.top, place.right(), place.bottom()},
          container.hwnd()},
         caption);
  if (panel && caption.empty()) return;
  box_ = ::CreateWindowExW(0, L"BUTTON", BoxText(caption).c_str(),
                           WS_CHILD | WS_VISIBLE | WS_GROUP | BS_GROUPBOX, 0, 0, place.width, place.height,
                           hwnd(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SendMessageW(box_, WM_SETFONT, reinterpret_cast<WPARAM>(context.PanelFont()), FALSE);
}

void PanelFrame::SetText(std::string_view text) {
  PutText(text);
  if (box_ != nullptr) ::SetWindowTextW(box_, BoxText(text).c_str());
}

void PanelFrame::SetBounds(const Rect& bounds) {
  Win32Child::SetBounds(bounds);
  const Rect place = Place();
  if (box_ != nullptr)
    ::SetWindowPos(box_, nullptr, 0, 0, place.width, place.height, SWP_NOZORDER | SWP_NOACTIVATE);
  ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PanelFrame::SetVisible(bool visible) {
  const bool before = (::GetWindowLongPtrW(hwnd(), GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible == before) return;
  if (!visible) {
    HideAndPassFocus(hwnd(), focused_before_);
    return;
  }
  focused_before_ = ::GetFocus();
  // A panel lies over everything else in its window.
  const UINT order = kind_ == FrameKind::kPanel ? 0U : SWP_NOZORDER;
  ::SetWindowPos(hwnd(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW | order);
}

LRESULT PanelFrame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_ERASEBKGND: {
      RECT all{};
      ::GetClientRect(hwnd(), &all);
      ::FillRect(reinterpret_cast<HDC>(wparam), &all, ::GetSysColorBrush(Ground()));
      return 1;
    }
    case WM_SETFOCUS: {
      const HWND first = ::GetNextDlgTabItem(hwnd(), nullptr, FALSE);
      if (first != nullptr) ::SetFocus(first);
      return 0;
    }
    case WM_COMMAND:
      if (lparam != 0) return Win32Window::OnMessage(message, wparam, lparam);
      // What the system makes of Escape in a panel. Its idea of Enter means nothing: there is no button for
      // it.
      return LOWORD(wparam) == IDCANCEL ? OnMessage(WM_KEYDOWN, VK_ESCAPE, 0) : 0;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SETCURSOR:
    case WM_VSCROLL:
    case WM_GETOBJECT:
      return Win32Window::OnMessage(message, wparam, lparam);
    default:
      return ::DefWindowProcW(hwnd(), message, wparam, lparam);
  }
}

}  // namespace orvane
