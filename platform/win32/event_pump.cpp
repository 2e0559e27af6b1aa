#include "platform/win32/event_pump.h"

#include "platform/win32/panel_frame.h"
#include "platform/win32/serial_port.h"

namespace orvane {

void Win32EventPump::Dispatch(const MSG& message) {
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  if (key && HandleAsPanelKey(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

// A handler that posts to its own window for ever must not keep the caller here: a caller that waits comes
// again soon.
void Win32EventPump::DeliverPending() {
  constexpr int kMostMessages = 256;
  MSG message;
  for (int count = 0; count < kMostMessages && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;
       ++count) {
    if (message.message != WM_QUIT) Dispatch(message);
  }
}

void Win32EventPump::DeliverArrivals() {
  port_.DeliverEvents();
}

void Win32EventPump::SleepUntil(std::int32_t tick) {
  // Modulo 2^32, as the tick count itself: when it has wrapped since the caller looked, the tick is behind it
  // and not 49 days ahead.
  const auto left = static_cast<std::int32_t>(static_cast<std::uint32_t>(tick) -
                                              static_cast<std::uint32_t>(clock_.GetTickCount()));
  if (left <= 0) return;
  ::MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(left), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void Win32EventPump::EndProcess() {
  ::ExitProcess(0);
}

void Win32EventPump::Run() {
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0)
    Dispatch(message);
}

}  // namespace orvane
