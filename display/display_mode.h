#pragma once

#include <array>
#include <cstdint>

namespace orvane {

// Display modes, numbered as the operation modes of the meter.
inline constexpr std::int16_t kFastMode = 0;
inline constexpr std::int16_t kMediumMode = 1;
inline constexpr std::int16_t kSlowMode = 2;
inline constexpr std::int16_t kDipMode = 3;  ///< the reflected bar shows VSWR

/// How long a readout holds its peak, milliseconds, by display mode. A number can be read when it stands for
/// about a second, and speech falls and rises within 200 ms: the fast mode (a reading each 200 ms) holds four
/// readings, so that the peaks of speech can be read and a carrier that drops is seen at once all the same.
/// The medium and slow modes (a reading each one and two seconds) hold one reading and a half: the higher of
/// two neighbours stands. In dip mode the hand at the tuner wants every reading as it comes, so the hold is
/// shorter than their distance.
inline constexpr std::array<std::int16_t, 4> HoldTimes{800, 1500, 3000, 150};
inline constexpr std::int16_t kLongestHold = 3000;

/// The mode chosen on the mode panel, and the hold time that belongs to it.
struct DisplayMode {
  std::int16_t mode = kFastMode;
  std::int16_t HoldTime = HoldTimes[0];

  void Choose(std::int16_t chosen) {
    mode = chosen;
    if (chosen >= 0 && chosen < static_cast<std::int16_t>(HoldTimes.size())) {
      HoldTime = HoldTimes[static_cast<std::size_t>(chosen)];
    }
  }
  bool Dip() const { return mode == kDipMode; }
};

}  // namespace orvane
