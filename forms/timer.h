#pragma once

#include "platform/clock.h"
#include "platform/window_system.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace orvane {

/// Ticks every `Interval` while it is enabled. Enabling it, also when it is enabled already, starts the
/// interval afresh.
class Timer {
 public:
  Timer(WindowSystem& windows, Clock& clock, int interval_ms)
      : windows_(windows), clock_(clock), interval_(interval_ms) {}

  /// May switch its timer, replace itself, and end the timer.
  std::function<void()> Tick;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

 private:
  void OnSystemTick();
  void Arm(int milliseconds);

  WindowSystem& windows_;
  Clock& clock_;
  int interval_;
  bool enabled_ = false;
  std::uint32_t started_ =
      0;               // tick at which the running interval began; unsigned, so differences outlive the wrap
  int armed_for_ = 0;  // milliseconds the system's timer was set to; 0 when it does not run
  std::unique_ptr<TimerHandle> handle_;
};

}  // namespace orvane
