#include "link/meter_lists.h"

#include "base/checked.h"
#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <cstddef>

namespace orvane {
namespace {

constexpr int kMostTrimItems = 20;

// An element that is missing, no number, below 1 or too large leaves the default.
void TakeFullScale(std::string_view element, std::int16_t& full_scale) {
  Attempt([&] {
    const auto watts = NumberOf(element);
    if (watts && *watts >= 1.0) full_scale = RoundToInt16(*watts);
  });
}

}  // namespace

void MeterLists::Build(const MeterState& state) {
  Attempt([&] { FillFullScales(state); });
  Attempt([&] { Auto.AutoScale = AutoScales::FactorsOf(Auto.AutoFullScale); });
  Attempt([&] { ListRanges(state); });
  Attempt([&] { ListLowPower(state); });
  Attempt([&] { TakeTrimLimits(state); });
  Attempt([&] { Selected = CurrentParameters(state); });
}

// The meter lists its full scales range by range, the table holds them row by row.
void MeterLists::FillFullScales(const MeterState& state) {
  Auto.AutoFullScale = AutoScales::kDefaults;
  const auto elements = Split(state.ParamBText, ',');
  for (std::size_t i = 0; i < std::min(elements.size(), Auto.AutoFullScale.size()); ++i) {
    const std::size_t range = i / AutoScales::kRows;
    const std::size_t row = i % AutoScales::kRows;
    TakeFullScale(elements[i], Auto.AutoFullScale[range + row * AutoScales::kRanges]);
  }
}

void MeterLists::ListRanges(const MeterState& state) {
  RangeItems.clear();
  const auto elements = Split(state.ParamBText, ',');
  for (std::size_t range = 0; range < AutoScales::kRanges; ++range) {
    const std::size_t first = range * AutoScales::kRows;
    if (first + AutoScales::kRows > elements.size()) return;
    Item item{std::string(elements[first]), static_cast<std::int16_t>(range)};
    item.Text.append(1, '/').append(elements[first + 1]).append(1, '/').append(elements[first + 2]);
    RangeItems.push_back(std::move(item));
  }
}

void MeterLists::ListLowPower(const MeterState& state) {
  const auto elements = Split(state.ParamLText, ',');
  LowPowerWatts.assign(elements.begin(), elements.end());
}

void MeterLists::TakeTrimLimits(const MeterState& state) {
  TrimLow = NarrowToInt16(-state.RangeMinNeg);
  TrimHigh = NarrowToInt16(-state.RangeMaxNeg);
  const int nearer = std::min<int>(TrimHigh, -TrimLow);
  TrimMenuLimit = static_cast<std::int16_t>(std::clamp(nearer, 0, kMostTrimItems));
}

}  // namespace orvane
