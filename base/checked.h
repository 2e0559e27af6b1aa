#pragma once

#include <cstdint>

namespace orvane {

/// 16-bit switch as the meter's record and the settings keep it: -1 is true, 0 is false.
using Bool16 = std::int16_t;
inline constexpr Bool16 kTrue = -1;
inline constexpr Bool16 kFalse = 0;
constexpr Bool16 ToBool16(bool value) {
  return value ? kTrue : kFalse;
}

/// Rounds to the nearest whole number, ties to even. @throws RuntimeError kOverflow outside -32768..32767 or
/// not a number
std::int16_t RoundToInt16(double value);
/// Rounds to the nearest whole number, ties to even. @throws RuntimeError kOverflow outside 32 bits or not a
/// number
std::int32_t RoundToInt32(double value);

/// @throws RuntimeError kOverflow when `value` does not fit 16 bits
std::int16_t NarrowToInt16(std::int64_t value);
/// @throws RuntimeError kOverflow when `value` does not fit 32 bits
std::int32_t NarrowToInt32(std::int64_t value);

/// 32-bit sum and difference. @throws RuntimeError kOverflow
inline std::int32_t CheckedAdd(std::int32_t a, std::int32_t b) {
  return NarrowToInt32(static_cast<std::int64_t>(a) + b);
}
inline std::int32_t CheckedSub(std::int32_t a, std::int32_t b) {
  return NarrowToInt32(static_cast<std::int64_t>(a) - b);
}

}  // namespace orvane
