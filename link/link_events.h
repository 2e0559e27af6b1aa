#pragma once

#include <cstdint>
#include <string_view>

namespace orvane {

/// How a text of the status line looks.
enum class StatusTone {
  kNormal,  ///< dark blue
  kUrgent,  ///< in red, colour value 255
};

/// What the link tells upwards. The main window implements it; everything is called on the program's thread.
struct LinkEvents {
  virtual ~LinkEvents() = default;

  /// A line was taken in; the meter's state is up to date. While it is shown, more bytes may be let in by
  /// EventPump::DeliverArrivals, nothing else. A RuntimeError costs the showing of this line, no more.
  virtual void LineHandled() = 0;
  /// Bytes came in; bytes went out.
  virtual void RxActivity() = 0;
  virtual void TxActivity() = 0;
  /// The meter reported its operation mode (MeterState::MeterMode).
  virtual void SetModeCommand() = 0;
  /// Shows a text on the status line and starts the timer that clears it.
  virtual void ShowStatus(std::string_view text, StatusTone tone) = 0;
  /// Starts that timer, whatever the line shows.
  virtual void StartClearMessageTimer() = 0;
  /// Shows a text in both message labels.
  virtual void ShowMessageText(std::string_view text) = 0;
  virtual void Beep() = 0;
  /// Hourglass pointer while settings are sent.
  virtual void SetHourglass(bool on) = 0;

  /// Switches `TimerFindMeter`, 1000 ms, whose ticks go to MeterLink::FindMeter.
  virtual void EnableFindMeter(bool on) = 0;
  /// A left click on the range button `index`, 0..8.
  virtual void ClickFwdPwrRange(std::int16_t index) = 0;
  virtual void ClickRefPwrRange(std::int16_t index) = 0;
  /// False while a menu or a box is open: a search that began now would take its keys away.
  virtual bool MayWait() const = 0;
  /// The display shows VSWR dips: its scales are not to be touched.
  virtual bool InDipMode() const = 0;
  /// A message box with OK and Cancel; true for OK. Events go on while it is open.
  virtual bool AskOkCancel(std::string_view text, std::string_view title) = 0;
  /// A message box with OK only.
  virtual void ShowBox(std::string_view text, std::string_view title) = 0;
  /// No readings come any more: what is shown is not live.
  virtual void ReadingsStopped() = 0;
};

}  // namespace orvane
