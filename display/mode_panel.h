#pragma once

#include "display/display_mode.h"
#include "display/meter_controls.h"

#include <cstdint>
#include <functional>

namespace orvane {

/// The four mode buttons: the display mode of the program, and what shows it.
class ModePanel {
 public:
  /// Called with true when the VSWR dip mode was chosen, with false for the others.
  std::function<void(bool dip)> ShowVSWRMode;
  /// Sends a command to the meter.
  std::function<void(std::string_view command)> SendCommand;

  ModePanel(MeterControls& controls, DisplayMode& mode) : controls_(controls), mode_(mode) {}

  /// Left click on a mode button: tells the meter, and changes the display at once without waiting for its
  /// answer. The mode already in force does nothing.
  void Choose(std::int16_t index);
  /// The meter reported a mode, 0..3: the panel follows, nothing is sent.
  void Follow(std::int16_t reported);

 private:
  void Apply(std::int16_t index);

  MeterControls& controls_;
  DisplayMode& mode_;
};

}  // namespace orvane
