#pragma once

#include "display/display_mode.h"
#include "display/hold.h"
#include "display/indicators.h"
#include "display/meter_controls.h"
#include "display/power_bar.h"
#include "display/range_scales.h"
#include "link/meter_state.h"
#include "platform/clock.h"

#include <cstdint>
#include <functional>
#include <string>

namespace orvane {

/// From the meter's last reading to what is seen: net power, held peaks, bars, alarm colours.
///
/// Everything here runs from the receive path, which does not enter itself; clicks and timers wait until a
/// line is shown.
class PowerDisplay {
 public:
  /// Where the shown forward power goes after every forward update.
  using ClientSink = std::function<void(std::int32_t watts)>;

  PowerDisplay(WindowSystem& windows, Clock& clock, EventPump& pump, MeterControls& controls,
               const MeterState& meter, const AutoScales& auto_scales, const DisplayMode& mode,
               ClientSink client);

  /// Brings the display up to date with the meter's state; called after every line, of whatever kind.
  /// @throws RuntimeError kOverflow when a reading leaves its 16 bits; the line is given up then
  void OnMeterLine();

  /// Left click on a range button, 0..8. @throws RuntimeError as GraphRange::Choose
  void ChooseForwardRange(int index);
  void ChooseReflectedRange(int index);
  const GraphRange& ForwardRange() const { return forward_range_; }
  const GraphRange& ReflectedRange() const { return reflected_range_; }
  GraphRange& ReflectedScale() { return reflected_range_; }

  void ClearFwdGraph(std::int16_t level) { forward_bar_.Clear(level); }
  void ClearRefGraph(std::int16_t level) { reflected_bar_.Clear(level); }
  /// Puts out segments 0..50, letting bytes in after each.
  void ClearFwdGraphAll() { forward_bar_.ClearAll(true); }
  void ClearRefGraphAll() { reflected_bar_.ClearAll(false); }
  /// Puts out both bars and forgets their levels, so that the next line draws them whole: for a change of
  /// what they show.
  void RestartBars();
  /// No readings come any more: bars out, readouts blank, holds over. The next line shows what it brings.
  void ShowNoReadings();
  /// Forgets the shown values and clears the reflected bar.
  void ResetPowerDisplay();
  AlarmLamps& Lamps() { return lamps_; }
  /// What the last line brought, watts: the power that goes out, and the reflected one.
  std::int16_t NetForward() const { return net_forward_; }
  std::int16_t Reflected() const { return reflected_in_; }

  /// Bar level of a VSWR in dip mode: 12.75 segments a unit, 1.0 lights nothing (-1), 5.0 fills the bar (50);
  /// a reading of 0 or less is level 0. @throws RuntimeError kOverflow
  static std::int16_t VSWRToLevel(float vswr);
  /// Seconds of an elapsed time as "00.000", what is left after whole hours and minutes. @throws RuntimeError
  /// kOverflow
  static std::string CalcPerf(std::int32_t start, std::int32_t end);

 private:
  void ShowFwdPower(std::int16_t watts);
  void ShowRefPower(std::int16_t watts);
  void ShowVSWR();
  void ShowVSWRDip(float vswr, std::int32_t watts);
  void CheckMeterRange();
  void RescaleAutoGraphs();
  bool NoPower() const;

  Clock& clock_;
  EventPump& pump_;
  MeterControls& controls_;
  const MeterState& meter_;
  const DisplayMode& mode_;
  ClientSink client_;

  PowerBar forward_bar_;
  PowerBar reflected_bar_;
  GraphRange forward_range_;
  GraphRange reflected_range_;
  AlarmLamps lamps_;
  PeakHold<std::int16_t> forward_;
  PeakHold<std::int16_t> reflected_;
  PeakHold<float> vswr_;
  HoldClock dip_hold_;
  std::int16_t net_forward_ = 0;   // watts of the current line
  std::int16_t reflected_in_ = 0;  // watts of the current line
  std::int16_t dip_level_ = 0;     // last drawn in dip mode
  std::int16_t last_meter_range_ = 0;
  std::int16_t last_meter_row_ = 0;
};

}  // namespace orvane
