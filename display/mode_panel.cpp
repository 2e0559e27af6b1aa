#include "display/mode_panel.h"

#include <string>

namespace orvane {

void ModePanel::ShowMarker(std::int16_t index) {
  for (auto& marker : controls_.shpMode)
    marker->SetFillStyle(Shape::kTransparent);
  if (index < 0 || static_cast<std::size_t>(index) >= kModes) return;
  controls_.shpMode[static_cast<std::size_t>(index)]->SetFillStyle(Shape::kSolid);
}

void ModePanel::Apply(std::int16_t index) {
  mode_.Choose(index);
  if (ShowVSWRMode) ShowVSWRMode(mode_.Dip());
}

void ModePanel::Choose(std::int16_t index) {
  if (index == mode_.mode) return;
  ShowMarker(index);
  if (SendCommand) SendCommand(std::to_string(index) + "M");
  Apply(index);
}

void ModePanel::Follow(std::int16_t reported) {
  ShowMarker(reported);
  if (reported != mode_.mode) Apply(reported);
}

}  // namespace orvane
