#pragma once

#include <cstdint>

namespace orvane {

/// The program's clock.
struct Clock {
  virtual ~Clock() = default;
  /// Milliseconds since the program started, signed 32 bits: after 24.8 days it wraps to its most negative
  /// value and goes on from there.
  virtual std::int32_t GetTickCount() = 0;
  /// Holds the thread for `ms` without delivering any event.
  virtual void Block(std::int32_t ms) = 0;
};

}  // namespace orvane
