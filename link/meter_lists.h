#pragma once

#include "link/auto_scales.h"
#include "link/parameter_record.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Thresholds of the VSWR alarm settings 1..4; setting 0 is off.
inline constexpr std::array<float, 4> kVSWRThresholds{1.5F, 2.0F, 2.5F, 3.0F};

/// What panels and menus offer, made from the meter's replies after each parameter load. docs/protocol.md,
/// "Replies", has what becomes of lists that are too short or no numbers.
struct MeterLists {
  struct Item {
    std::string Text;
    std::int16_t Value = 0;
    bool operator==(const Item&) const = default;
  };

  AutoScales Auto;
  std::vector<Item> RangeItems;  ///< the three full scales of each range setting, "50/250/1250"
  std::vector<std::string>
      LowPowerWatts;         ///< thresholds as the meter writes them, by setting; the first is off
  std::int16_t TrimLow = 0;  ///< limits as the meter reported them, percent
  std::int16_t TrimHigh = 0;
  /// How far the menus' trim lists go to both sides, 0..20: never further than the nearer of the two limits,
  /// so that no item is one that the meter refuses, nor further than the menus have numbers for.
  std::int16_t TrimMenuLimit = 0;
  ParameterRecord Selected;  ///< what the lists start from

  /// Makes everything anew from the replies. A part that cannot be made does not keep the others from it.
  void Build(const MeterState& state);

 private:
  void FillFullScales(const MeterState& state);
  void ListRanges(const MeterState& state);
  void ListLowPower(const MeterState& state);
  void TakeTrimLimits(const MeterState& state);
};

}  // namespace orvane
