#include "base/checked.h"

#include "base/runtime_error.h"

#include <cmath>
#include <limits>

namespace orvane {
namespace {

// Ties to even whatever rounding mode a driver or a plug-in left in the floating-point unit.
double RoundTiesToEven(double value) {
  const double below = std::floor(value);
  const double part = value - below;
  if (part < 0.5) return below;
  if (part > 0.5) return below + 1.0;
  return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

template <typename Int>
Int RoundTo(double value) {
  const double rounded = RoundTiesToEven(value);
  // Written so that a value that is not a number fails the test too.
  const bool fits = rounded >= static_cast<double>(std::numeric_limits<Int>::min()) &&
                    rounded <= static_cast<double>(std::numeric_limits<Int>::max());
  if (!fits) throw RuntimeError(Fault::kOverflow, "rounding a number to its field");
  return static_cast<Int>(rounded);
}

template <typename Int>
Int NarrowTo(std::int64_t value) {
  if (value < std::numeric_limits<Int>::min() || value > std::numeric_limits<Int>::max()) {
    throw RuntimeError(Fault::kOverflow, "storing a number in its field");
  }
  return static_cast<Int>(value);
}

}  // namespace

std::int16_t RoundToInt16(double value) {
  return RoundTo<std::int16_t>(value);
}
std::int32_t RoundToInt32(double value) {
  return RoundTo<std::int32_t>(value);
}
std::int16_t NarrowToInt16(std::int64_t value) {
  return NarrowTo<std::int16_t>(value);
}
std::int32_t NarrowToInt32(std::int64_t value) {
  return NarrowTo<std::int32_t>(value);
}

}  // namespace orvane
