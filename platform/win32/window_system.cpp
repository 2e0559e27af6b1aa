#include "platform/win32/window_system.h"

#include "platform/modal_count.h"
#include "platform/win32/text.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

class Win32Timer : public TimerHandle {
 public:
  Win32Timer(EventWindow& events, int ms, std::function<void()> tick)
      : events_(events), id_(events.StartTimer(ms, std::move(tick))) {}
  ~Win32Timer() override { events_.StopTimer(id_); }
  Win32Timer(const Win32Timer&) = delete;
  Win32Timer& operator=(const Win32Timer&) = delete;

 private:
  EventWindow& events_;
  UINT_PTR id_;
};

UINT StyleBits(BoxStyle style) {
  switch (style) {
    case BoxStyle::kOkCancel:
      return MB_OKCANCEL;
    case BoxStyle::kInformation:
      return MB_OK | MB_ICONINFORMATION;
    case BoxStyle::kCritical:
      return MB_OK | MB_ICONERROR;
    case BoxStyle::kPlain:
      break;
  }
  return MB_OK;
}

}  // namespace

std::unique_ptr<TopWindow> Win32WindowSystem::CreateTopWindow(TopWindowClient& client,
                                                              std::string_view caption, Size size,
                                                              WindowLook look) {
  auto window = std::make_unique<Win32TopWindow>(context_, client, caption, size, look);
  if (look == WindowLook::kFace && ::IsWindow(main_) == 0) main_ = window->hwnd();
  return window;
}

std::unique_ptr<Widget> Win32WindowSystem::CreateChild(Widget& container, WidgetClient& client,
                                                       const Rect& bounds) {
  return std::make_unique<Win32Child>(context_, client, dynamic_cast<Win32Window&>(container), bounds);
}

std::unique_ptr<TimerHandle> Win32WindowSystem::StartTimer(int milliseconds, std::function<void()> tick) {
  return std::make_unique<Win32Timer>(events_, milliseconds, std::move(tick));
}

BoxAnswer Win32WindowSystem::ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) {
  const ModalCount open(modal_loops_);
  const HWND owner = ::IsWindowVisible(main_) != 0 ? main_ : nullptr;
  const int answer = ::MessageBoxW(owner, ToWide(text).c_str(), ToWide(title).c_str(), StyleBits(style));
  return answer == IDOK ? BoxAnswer::kOk : BoxAnswer::kCancel;
}

// The system's own menu, and a move or a change of size by it, are loops too.
bool Win32WindowSystem::InModalLoop() {
  if (modal_loops_ > 0) return true;
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  constexpr DWORD kLoops = GUI_INMENUMODE | GUI_INMOVESIZE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE;
  return ::GetGUIThreadInfo(::GetCurrentThreadId(), &info) != 0 && (info.flags & kLoops) != 0;
}

Size Win32WindowSystem::ScreenSize() {
  return {ToTwips(::GetSystemMetrics(SM_CXSCREEN), context_.pixels_per_inch.width),
          ToTwips(::GetSystemMetrics(SM_CYSCREEN), context_.pixels_per_inch.height)};
}

Size Win32WindowSystem::MeasureText(std::string_view text, const Font& font) {
  const HDC dc = context_.buffer.dc();
  const std::wstring wide = ToWide(text);
  const HGDIOBJ before =
      ::SelectObject(dc, context_.fonts.Find(font, ToPixels(font.height, context_.pixels_per_inch.height)));
  SIZE size{};
  ::GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
  ::SelectObject(dc, before);
  return {ToTwips(size.cx, context_.pixels_per_inch.width),
          ToTwips(size.cy, context_.pixels_per_inch.height)};
}

void Win32WindowSystem::Beep() {
  ::MessageBeep(MB_OK);
}

void Win32WindowSystem::SetHourglass(bool on) {
  context_.hourglass = on;
  ::SetCursor(::LoadCursorW(nullptr, on ? IDC_WAIT : IDC_ARROW));
}

// The callback message is a mouse message on purpose: the icon's events then come in by the window's own
// mouse handler.
bool Win32TrayIcon::Add(TopWindow& window, std::string_view tip) {
  constexpr std::size_t kTipLength = 64;  // what the first version of the record holds, with its NUL
  const HWND hwnd = dynamic_cast<Win32Window&>(window).hwnd();
  record_ = {};
  record_.cbSize = NOTIFYICONDATAA_V1_SIZE;
  record_.hWnd = hwnd;
  record_.uID = 0;
  record_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  record_.uCallbackMessage = WM_RBUTTONUP;
  record_.hIcon = reinterpret_cast<HICON>(::GetClassLongPtrW(hwnd, GCLP_HICON));
  if (record_.hIcon == nullptr) record_.hIcon = ::LoadIconW(nullptr, IDI_APPLICATION);
  tip.substr(0, kTipLength - 1).copy(record_.szTip, kTipLength - 1);
  // After a restart of the shell an icon that survived it cannot be added again, only changed.
  return ::Shell_NotifyIconA(NIM_ADD, &record_) != 0 || ::Shell_NotifyIconA(NIM_MODIFY, &record_) != 0;
}

void Win32TrayIcon::Remove() {
  if (record_.hWnd != nullptr) ::Shell_NotifyIconA(NIM_DELETE, &record_);
}

bool Win32SingleInstance::Claim() {
  std::array<wchar_t, 257> user{};
  auto length = static_cast<DWORD>(user.size());
  ::GetUserNameW(user.data(), &length);
  std::wstring name = L"Local\\OrvaneLite." + std::wstring(user.data());
  std::replace(name.begin() + 6, name.end(), L'\\', L'.');
  mutex_.reset(::CreateMutexW(nullptr, FALSE, name.c_str()));
  // A name that something else holds is as good a reason to stay away as a copy of ours.
  return mutex_ && ::GetLastError() != ERROR_ALREADY_EXISTS;
}

}  // namespace orvane
