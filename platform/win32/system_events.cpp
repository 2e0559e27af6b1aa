#include "platform/win32/system_events.h"

#include "base/runtime_error.h"
#include "platform/win32/system_library.h"

#include <cwchar>
#include <dbt.h>

namespace orvane {
namespace {

constexpr UINT_PTR kDevicesTimer = 1;
constexpr UINT kPortRemoved = WM_APP + 0x110;
constexpr UINT kResumed = WM_APP + 0x111;

// One cable pulled or plugged in makes a burst of messages, one for each of its devices.
constexpr UINT kBurstMs = 250;
// A wake-up is told twice when the user is there: once as automatic, once as his.
constexpr ULONGLONG kSameWakingMs = 10'000;

// 5 for "COM5"; 0 for what is no such port.
int NumberOfRemovedPort(LPARAM data) {
  const auto* header = reinterpret_cast<const DEV_BROADCAST_HDR*>(data);
  if (header == nullptr || header->dbch_devicetype != DBT_DEVTYP_PORT) return 0;
  const auto* port = reinterpret_cast<const DEV_BROADCAST_PORT_W*>(header);
  if (::_wcsnicmp(port->dbcp_name, L"COM", 3) != 0) return 0;
  return static_cast<int>(std::wcstol(port->dbcp_name + 3, nullptr, 10));
}

}  // namespace

SystemEvents::~SystemEvents() {
  if (power_notification_ == nullptr) return;
  const auto unregister = FindLateCall<BOOL(WINAPI*)(HANDLE)>("UnregisterSuspendResumeNotification");
  if (unregister != nullptr) unregister(power_notification_);
}

// Machines that never quite sleep tell only those that ask (Windows 8 on); others tell every window.
void SystemEvents::Attach(HWND window) {
  window_ = window;
  const auto ask = FindLateCall<HANDLE(WINAPI*)(HANDLE, DWORD)>("RegisterSuspendResumeNotification");
  if (ask != nullptr) power_notification_ = ask(window, DEVICE_NOTIFY_WINDOW_HANDLE);
}

std::optional<LRESULT> SystemEvents::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_DEVICECHANGE:
      return OnDeviceChange(wparam, lparam);
    case WM_POWERBROADCAST:
      return OnPower(wparam);
    case WM_TIMER:
      if (wparam != kDevicesTimer) return std::nullopt;
      ::KillTimer(window_, kDevicesTimer);
      devices_pending_ = false;
      Attempt([this] { client_.OnDevicesChanged(); });
      return 0;
    case kPortRemoved:
      Attempt([&] { client_.OnPortRemoved(static_cast<int>(wparam)); });
      return 0;
    case kResumed:
      Attempt([this] { client_.OnResumed(); });
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (wparam != FALSE) Attempt([this] { client_.OnSessionEnd(); });
      return 0;
    default:
      return std::nullopt;
  }
}

LRESULT SystemEvents::OnDeviceChange(WPARAM event, LPARAM data) {
  const bool removed = event == DBT_DEVICEREMOVECOMPLETE;
  if (!removed && event != DBT_DEVICEARRIVAL && event != DBT_DEVNODES_CHANGED) return TRUE;
  const int number = removed ? NumberOfRemovedPort(data) : 0;
  if (number > 0) ::PostMessageW(window_, kPortRemoved, static_cast<WPARAM>(number), 0);
  // The first of a burst starts the timer: one that each of them started anew might never end.
  if (!devices_pending_) devices_pending_ = ::SetTimer(window_, kDevicesTimer, kBurstMs, nullptr) != 0;
  return TRUE;
}

LRESULT SystemEvents::OnPower(WPARAM event) {
  if (event == PBT_APMSUSPEND) awake_told_ = false;
  if (event != PBT_APMRESUMEAUTOMATIC && event != PBT_APMRESUMESUSPEND) return TRUE;
  const ULONGLONG now = ::GetTickCount64();
  if (awake_told_ && now - awake_since_ < kSameWakingMs) return TRUE;
  awake_told_ = true;
  awake_since_ = now;
  ::PostMessageW(window_, kResumed, 0, 0);
  return TRUE;
}

}  // namespace orvane
