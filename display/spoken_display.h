#pragma once

#include "display/display_mode.h"
#include "display/indicators.h"
#include "display/meter_controls.h"
#include "display/power_display.h"
#include "link/meter_state.h"

#include <string>

namespace orvane {

/// What a screen reader is told of the meter's controls: readouts with their unit, bars with their full
/// scale, lamps as on or off. Texts are made when somebody asks, never with a reading.
class SpokenDisplay {
 public:
  /// Connects the controls, and lets the Tab key stop at all that can be read. All references must outlive
  /// it.
  SpokenDisplay(MeterControls& controls, const PowerDisplay& display, const MeterState& meter,
                const DisplayMode& mode, const ActivityLights& lights);
  SpokenDisplay(const SpokenDisplay&) = delete;
  SpokenDisplay& operator=(const SpokenDisplay&) = delete;

  /// A readout's text with its unit. @param no_reading said in place of an empty text
  static std::string Watts(std::string_view digits, std::string_view no_reading);

 private:
  void ConnectReadouts();
  void ConnectBars();
  void ConnectAlarms(const ActivityLights& lights);
  bool HasReading() const;
  std::string WattsText(const OVDigitBox& readout) const;
  std::string VSWRText() const;
  std::string ForwardBarText() const;
  std::string ReflectedBarText() const;
  std::string DipBarText() const;
  bool ReflectedInForwardFrame() const;

  MeterControls& controls_;
  const PowerDisplay& display_;
  const MeterState& meter_;
  const DisplayMode& mode_;
};

}  // namespace orvane
