#include "display/mode_panel.h"

#include <string>

namespace orvane {

void ModePanel::Apply(std::int16_t index) {
  mode_.Choose(index);
  if (ShowVSWRMode) ShowVSWRMode(mode_.Dip());
}

void ModePanel::Choose(std::int16_t index) {
  if (index == mode_.mode) return;
  controls_.modes->Choose(index);
  if (SendCommand) SendCommand(std::to_string(index) + "M");
  Apply(index);
}

void ModePanel::Follow(std::int16_t reported) {
  controls_.modes->Choose(reported);
  if (reported != mode_.mode) Apply(reported);
}

}  // namespace orvane
