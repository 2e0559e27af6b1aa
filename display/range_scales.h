#pragma once

#include "display/meter_controls.h"
#include "display/power_bar.h"
#include "link/auto_scales.h"
#include "platform/window_system.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace orvane {

inline constexpr int kAutoRange = 8;  ///< index of the button that follows the meter's own range

/// One fixed range: its button's tooltip, its full scale in watts, and 51 segments divided by it.
struct FixedRange {
  std::string_view tool_tip;
  std::int16_t full_scale;
  float factor;
};
extern const std::array<FixedRange, 8> kForwardRanges;
extern const std::array<FixedRange, 8> kReflectedRanges;
inline constexpr std::string_view kAutoToolTip = "Auto Range Scale";

/// The range of one graph: marker, factor, scale numbers.
class GraphRange {
 public:
  GraphRange(WindowSystem& windows, GraphControls& controls, PowerBar& bar,
             const std::array<FixedRange, 8>& fixed_ranges, const AutoScales& auto_scales);

  /// Chooses a button's range. @throws RuntimeError kSubscriptOutOfRange when the automatic range is chosen
  /// and the meter's indexes are out of bounds; the marker has moved then
  void Choose(int index, int meter_range, int meter_row);
  /// The button chosen last, 0..8.
  std::int16_t Index() const { return index_; }
  bool Auto() const { return auto_; }
  /// Segments per watt of a fixed range; 0.0 for an index outside 0..7.
  float Factor(int index) const;
  /// Numbers of a fixed range; an index outside 0..7 changes nothing.
  void ShowFixedScale(int index);
  /// Numbers of the automatic range; a meter range outside 0..3 changes nothing.
  void ShowAutoScale(int meter_range, int meter_row);
  /// Numbers and factor of the automatic range.
  void SetGraphScale(int meter_range, int meter_row);
  /// Any three texts under the bar.
  void ShowLabels(std::string_view left, std::string_view middle, std::string_view right);

 private:
  WindowSystem& windows_;
  GraphControls& controls_;
  PowerBar& bar_;
  const std::array<FixedRange, 8>& fixed_ranges_;
  const AutoScales& auto_scales_;
  std::int16_t index_ = 0;
  bool auto_ = false;
};

}  // namespace orvane
