#include "display/range_scales.h"

#include "base/number_format.h"
#include "base/runtime_error.h"

namespace orvane {
namespace {

std::size_t AutoElement(int range, int row) {
  if (range < 0 || range > 3 || row < 0 || row > 2) {
    throw RuntimeError(Fault::kSubscriptOutOfRange, "Looking up the meter's range");
  }
  return static_cast<std::size_t>(range + row * 4);
}

}  // namespace

const std::array<FixedRange, 8> kForwardRanges{{{"10 Watts Full Scale Fixed", 10, 5.1F},
                                                {"100 Watts Full Scale Fixed", 100, 0.51F},
                                                {"200 Watts Full Scale Fixed", 200, 0.255F},
                                                {"500 Watts Full Scale Fixed", 500, 0.102F},
                                                {"1000 Watts Full Scale Fixed", 1000, 0.051F},
                                                {"1500 Watts Full Scale Fixed", 1500, 0.034F},
                                                {"2000 Watts Full Scale Fixed", 2000, 0.0255F},
                                                {"3000 Watts Full Scale Fixed", 3000, 0.017F}}};
const std::array<FixedRange, 8> kReflectedRanges{{{"10 Watts Full Scale Fixed", 10, 5.1F},
                                                  {"25 Watts Full Scale Fixed", 25, 2.04F},
                                                  {"50 Watts Full Scale Fixed", 50, 1.02F},
                                                  {"125 Watts Full Scale Fixed", 125, 0.408F},
                                                  {"250 Watts Full Scale Fixed", 250, 0.204F},
                                                  {"375 Watts Full Scale Fixed", 375, 0.136F},
                                                  {"500 Watts Full Scale Fixed", 500, 0.102F},
                                                  {"750 Watts Full Scale Fixed", 750, 0.068F}}};

GraphRange::GraphRange(WindowSystem& windows, GraphControls& controls, PowerBar& bar,
                       const std::array<FixedRange, 8>& fixed_ranges, const AutoScales& auto_scales)
    : windows_(windows),
      controls_(controls),
      bar_(bar),
      fixed_ranges_(fixed_ranges),
      auto_scales_(auto_scales) {}

void GraphRange::Choose(int index, int meter_range, int meter_row) {
  if (index < 0 || index > kAutoRange) throw RuntimeError(Fault::kSubscriptOutOfRange, "Choosing a range");
  index_ = static_cast<std::int16_t>(index);
  controls_.ranges->Choose(index);
  auto_ = index == kAutoRange;
  if (auto_) {
    SetGraphScale(meter_range, meter_row);
    return;
  }
  bar_.SetScale(Factor(index));
  ShowFixedScale(index);
}

float GraphRange::Factor(int index) const {
  return index >= 0 && index < kAutoRange ? fixed_ranges_[static_cast<std::size_t>(index)].factor : 0.0F;
}

void GraphRange::ShowFixedScale(int index) {
  if (index < 0 || index >= kAutoRange) return;
  const double full_scale = fixed_ranges_[static_cast<std::size_t>(index)].full_scale;
  ShowLabels("0", kHalfWattsFormat.Write(full_scale / 2.0), kWattsFormat.Write(full_scale));
}

void GraphRange::ShowAutoScale(int meter_range, int meter_row) {
  if (meter_range < 0 || meter_range > 3) return;
  const double full_scale = auto_scales_.AutoFullScale[AutoElement(meter_range, meter_row)];
  ShowLabels("0", kAutoHalfFormat.Write(full_scale / 2.0), kWattsFormat.Write(full_scale));
}

void GraphRange::SetGraphScale(int meter_range, int meter_row) {
  ShowAutoScale(meter_range, meter_row);
  bar_.SetScale(auto_scales_.AutoScale[AutoElement(meter_range, meter_row)]);
}

void GraphRange::ShowLabels(std::string_view left, std::string_view middle, std::string_view right) {
  controls_.lblScale[0]->SetCaption(left);
  Label& center = *controls_.lblScale[1];
  center.SetCaption(middle);
  const Size text = windows_.MeasureText(middle, center.look().font);
  const PictureBox& strip = *controls_.pbxScale;
  center.SetBounds(
      {strip.Left() + strip.Width() / 2 - text.width / 2, center.Top(), text.width, center.Height()});
  controls_.lblScale[2]->SetCaption(right);
}

}  // namespace orvane
