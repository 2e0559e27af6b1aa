#pragma once

#include "base/checked.h"
#include "platform/clock.h"
#include "platform/event_pump.h"

#include <cstdint>
#include <limits>

namespace orvane {

/// One round of a wait: lets events through three times, so that what the first delivery made due is handled
/// too.
inline void DeliverThreeTimes(EventPump& pump) {
  pump.DeliverPending();
  pump.DeliverPending();
  pump.DeliverPending();
}

/// Lets `ms` milliseconds pass while events go on, and sleeps between them; `done()` is asked in every round,
/// true ends the wait early. Any handler may run inside: the caller has to expect a changed world. The wait
/// is over when the tick count is past the deadline, or has wrapped.
/// @throws RuntimeError kOverflow, without any wait, when the deadline lies past the end of the tick count
template <typename Done>
void WaitTicksUnless(Clock& clock, EventPump& pump, std::int32_t ms, Done done) {
  constexpr auto kLastTick = std::numeric_limits<std::int32_t>::max();
  const std::int32_t start = clock.GetTickCount();
  const std::int32_t deadline = CheckedAdd(start, ms);
  for (;;) {
    DeliverThreeTimes(pump);
    const std::int32_t now = clock.GetTickCount();
    if (now > deadline || now < start || now == kLastTick || done()) return;
    pump.SleepUntil(deadline == kLastTick ? kLastTick : deadline + 1);
  }
}

/// WaitTicksUnless without an early end.
inline void WaitTicks(Clock& clock, EventPump& pump, std::int32_t ms) {
  WaitTicksUnless(clock, pump, ms, [] { return false; });
}

/// Lets `ms` milliseconds pass without any event: the thread stands still. For the end of the program.
/// @throws RuntimeError kOverflow as above
inline void BlockTicks(Clock& clock, std::int32_t ms) {
  CheckedAdd(clock.GetTickCount(), ms);
  clock.Block(ms);
}

}  // namespace orvane
