#pragma once

#include "platform/client_windows.h"
#include "platform/win32/window_system.h"

#include <string>

namespace orvane {

class Win32ClientWindows : public ClientWindows {
 public:
  /// @param windows gives the sender: the main window
  explicit Win32ClientWindows(Win32WindowSystem& windows) : windows_(windows) {}
  Handle Find(std::string_view caption) override;
  Answer SendCopyData(Handle window, std::uint32_t tag, std::span<const char> data, int timeout_ms) override;

 private:
  Win32WindowSystem& windows_;
  // The caption as the system takes it, converted when it changes and not for every reading.
  std::string caption_;
  std::wstring wide_caption_;
  // What the last look found, and when: see Find.
  HWND found_ = nullptr;
  DWORD found_at_ = 0;
};

}  // namespace orvane
