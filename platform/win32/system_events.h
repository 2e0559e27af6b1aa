#pragma once

#include "platform/win32/windows_api.h"
#include "platform/window_system.h"

#include <optional>

namespace orvane {

/// What the system broadcasts to the main window about devices, sleep and the end of the session.
///
/// The broadcaster waits for our answer, with the rest of the desktop: what may take long is told by a
/// message that the window posts to itself. Only the end of the session is told at once, there is no later.
class SystemEvents {
 public:
  explicit SystemEvents(TopWindowClient& client) : client_(client) {}
  ~SystemEvents();
  SystemEvents(const SystemEvents&) = delete;
  SystemEvents& operator=(const SystemEvents&) = delete;

  /// The window that gets the messages.
  void Attach(HWND window);
  /// @return the answer to the message; none when it was nothing for us
  std::optional<LRESULT> Handle(UINT message, WPARAM wparam, LPARAM lparam);

 private:
  LRESULT OnDeviceChange(WPARAM event, LPARAM data);
  LRESULT OnPower(WPARAM event);

  TopWindowClient& client_;
  HWND window_ = nullptr;
  HANDLE power_notification_ = nullptr;
  bool devices_pending_ = false;
  bool awake_told_ = false;
  ULONGLONG awake_since_ = 0;  // tick in ms
};

}  // namespace orvane
