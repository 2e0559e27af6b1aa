#include "platform/win32/client_windows.h"

#include "platform/win32/text.h"

namespace orvane {
namespace {

constexpr DWORD kLookMs = 100;

}  // namespace

// The system goes through all windows of the desktop and asks each for its text, which in Wine costs more
// than anything else that a reading does. Readings come each 200 ms at most, and each looks anew; only those
// of a burst, or of a meter that is driven faster, share one look.
ClientWindows::Handle Win32ClientWindows::Find(std::string_view caption) {
  const DWORD now = ::GetTickCount();
  if (caption == caption_ && now - found_at_ < kLookMs) return reinterpret_cast<Handle>(found_);
  if (caption != caption_) {
    caption_ = caption;
    wide_caption_ = ToWide(caption);
  }
  found_ = ::FindWindowW(nullptr, wide_caption_.c_str());
  found_at_ = now;
  return reinterpret_cast<Handle>(found_);
}

// The message must be sent, not posted: the data lives only as long as the call.
ClientWindows::Answer Win32ClientWindows::SendCopyData(Handle window, std::uint32_t tag,
                                                       std::span<const char> data, int timeout_ms) {
  COPYDATASTRUCT message{};
  message.dwData = tag;
  message.cbData = static_cast<DWORD>(data.size());
  // The structure has no const, but the receiver gets a copy.
  message.lpData = const_cast<char*>(data.data());
  DWORD_PTR result = 0;
  ::SetLastError(ERROR_SUCCESS);
  const LRESULT sent = ::SendMessageTimeoutW(
      reinterpret_cast<HWND>(window), WM_COPYDATA, reinterpret_cast<WPARAM>(windows_.Main()),
      reinterpret_cast<LPARAM>(&message), SMTO_ABORTIFHUNG, static_cast<UINT>(timeout_ms), &result);
  if (sent != 0) return {Outcome::kAnswered, static_cast<std::int32_t>(result)};
  // A window that went away meanwhile is no hang; it is looked up afresh with the next reading.
  found_at_ -= kLookMs;
  const DWORD error = ::GetLastError();
  const bool gone = error == ERROR_INVALID_WINDOW_HANDLE;
  if (gone) return {Outcome::kAnswered, 0};
  return {error == ERROR_ACCESS_DENIED ? Outcome::kUnreachable : Outcome::kTimedOut, 0};
}

}  // namespace orvane
