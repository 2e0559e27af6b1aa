#pragma once

#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/win32/windows_api.h"

namespace orvane {

class Win32SerialPort;

class Win32Clock : public Clock {
 public:
  Win32Clock() : start_(::GetTickCount()) {}
  std::int32_t GetTickCount() override { return static_cast<std::int32_t>(::GetTickCount() - start_); }
  void Block(std::int32_t ms) override { ::Sleep(static_cast<DWORD>(ms)); }

 private:
  DWORD start_;
};

class Win32EventPump : public EventPump {
 public:
  Win32EventPump(Clock& clock, Win32SerialPort& port) : clock_(clock), port_(port) {}
  void DeliverPending() override;
  void DeliverArrivals() override;
  void SleepUntil(std::int32_t tick) override;
  [[noreturn]] void EndProcess() override;
  /// The program's message loop; comes back only when the system ends the queue.
  void Run();

 private:
  static void Dispatch(const MSG& message);

  Clock& clock_;
  Win32SerialPort& port_;
};

}  // namespace orvane
