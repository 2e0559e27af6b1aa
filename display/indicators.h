#pragma once

#include "display/display_mode.h"
#include "display/meter_controls.h"
#include "forms/timer.h"
#include "link/meter_state.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The two alarm lamps and the combined one on the reset button.
class AlarmLamps {
 public:
  AlarmLamps(MeterControls& controls, const MeterState& meter) : controls_(controls), meter_(meter) {}
  /// A lamp is lit by a flag of exactly -1; the readouts' colours go by any nonzero value. The flags are only
  /// ever written as -1 and 0.
  void ShowAlarmLamps();
  /// All dark, whatever the meter said.
  void Reset();

 private:
  void Show(bool swr, bool power);

  MeterControls& controls_;
  const MeterState& meter_;
};

/// The lights beside the port's name: on with a burst, off 100 ms after the last one began.
class ActivityLights {
 public:
  ActivityLights(WindowSystem& windows, Clock& clock, MeterControls& controls);
  void ShowRx();
  void ShowTx();
  void Reset();
  /// Something came, or went, within the last second: steadier than the light.
  bool RxBusy() const { return Busy(last_rx_); }
  bool TxBusy() const { return Busy(last_tx_); }

 private:
  using Tick = std::optional<std::uint32_t>;
  bool Busy(const Tick& last) const;
  std::uint32_t Now() const { return static_cast<std::uint32_t>(clock_.GetTickCount()); }

  MeterControls& controls_;
  Clock& clock_;
  Tick last_rx_;
  Tick last_tx_;
  Timer rx_;  // `tmrRxLed`
  Timer tx_;  // `tmrTxLed`
};

/// The status line. A text stays five seconds after the timer was last started, then the line is blank again.
class StatusLine {
 public:
  StatusLine(WindowSystem& windows, Clock& clock, Label& label);
  /// Shows a text in the colour that stands; does not start the timer. An empty line has its own colour.
  void Show(std::string_view text);
  /// Shows a text in red and starts the timer.
  void ShowAlert(std::string_view text);
  /// An alert that stands its whole time: a plain text that comes meanwhile is shown after it.
  void ShowLastingAlert(std::string_view text);
  void StartClearTimer();

 private:
  void Put(std::string_view text);

  void Clear();

  Label& label_;
  Timer clear_;           // `TimerClearMessage`
  bool lasting_ = false;  // the alert that stands gives no way
  std::string next_;      // what is shown after it
  bool clear_next_ = false;
};

// The status line is a small display: dark blue on pale, and turned to red on black for an alert. Neither
// colour can be read on the other's ground, nor both on one.
inline constexpr Color kStatusColor = MakeColor(0, 0, 128);
inline constexpr Color kStatusGround = MakeColor(0xDB, 0xE4, 0xDF);
inline constexpr Color kAlertColor = MakeColor(255, 0, 0);
inline constexpr Color kAlertGround = MakeColor(0, 0, 0);

}  // namespace orvane
