#pragma once

#include <cstdint>

namespace orvane {

/// The program's one event loop. All handlers run on the program's thread, from inside one of these calls or
/// from a modal loop of the system (an open menu, a message box, a window being dragged).
struct EventPump {
  virtual ~EventPump() = default;
  /// Delivers every event that is due (input, timers, line arrivals, painting), then returns. Handlers may
  /// wait, open menus and boxes, and come back much later; the world has changed then.
  virtual void DeliverPending() = 0;
  /// Takes in what arrived on the line, and nothing else: no input, no timer, no painting. For places that
  /// must let bytes in and must not start anything that could wait or open a box. Costs nothing when nothing
  /// arrived.
  virtual void DeliverArrivals() = 0;
  /// Sleeps until an event is due or the clock reads `tick`. Delivers nothing.
  virtual void SleepUntil(std::int32_t tick) = 0;
  /// Ends the process at once; no trap of ours catches it.
  [[noreturn]] virtual void EndProcess() = 0;
};

}  // namespace orvane
