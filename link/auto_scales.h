#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orvane {

/// Full scales of the automatic range by the meter's range setting (0..3) and scale row (0..2): element =
/// range + row x 4. The meter's own list goes by range: docs/protocol.md, reply "B".
struct AutoScales {
  static constexpr std::size_t kRanges = 4;
  static constexpr std::size_t kRows = 3;
  static constexpr double kSegments = 51.0;  ///< the bar's segments, all lit at full scale
  /// For what the meter does not tell. The last row ends with 3000 twice: no model goes higher.
  static constexpr std::array<std::int16_t, kRanges * kRows> kDefaults{50,   100,  200,  400,  250,  500,
                                                                       1000, 2000, 1250, 2500, 3000, 3000};

  std::array<std::int16_t, kRanges* kRows> AutoFullScale = kDefaults;  ///< watts
  std::array<float, kRanges* kRows> AutoScale = FactorsOf(kDefaults);  ///< segments per watt

  static constexpr std::array<float, kRanges * kRows> FactorsOf(
      const std::array<std::int16_t, kRanges * kRows>& full_scales) {
    std::array<float, kRanges * kRows> factors{};
    for (std::size_t i = 0; i < factors.size(); ++i)
      factors[i] = static_cast<float>(kSegments / full_scales[i]);
    return factors;
  }
};

}  // namespace orvane
