#include "forms/timer.h"

namespace orvane {

namespace {

// The system's timers are no more exact than this; to wait for it would take two more timers.
constexpr std::uint32_t kSlackMs = 2;

}  // namespace

// A light that is switched on for each burst of bytes restarts its timer hundreds of times a second. The
// system's timer is left running then; its tick looks how much of the interval is still to come and sleeps on
// for that much.
void Timer::SetEnabled(bool enabled) {
  enabled_ = enabled;
  if (!enabled) {
    handle_.reset();
    return;
  }
  started_ = static_cast<std::uint32_t>(clock_.GetTickCount());
  if (!handle_) Arm(interval_);
}

void Timer::Arm(int milliseconds) {
  if (handle_ && milliseconds == armed_for_) return;
  armed_for_ = milliseconds;
  handle_ = windows_.StartTimer(milliseconds, [this] { OnSystemTick(); });
}

void Timer::OnSystemTick() {
  const std::uint32_t passed = static_cast<std::uint32_t>(clock_.GetTickCount()) - started_;
  if (passed + kSlackMs < static_cast<std::uint32_t>(interval_)) {
    Arm(interval_ - static_cast<int>(passed));
    return;
  }
  started_ += passed;
  Arm(interval_);
  const auto tick = Tick;  // may replace itself, or end its timer
  if (tick) tick();
}

}  // namespace orvane
