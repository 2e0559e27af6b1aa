#pragma once

#include "forms/control.h"
#include "forms/timer.h"

#include <cstdint>

namespace orvane {

/// Tells screen readers what becomes of the control that has the keyboard, and of no other: a reading that
/// comes two hundred times a second can neither be spoken nor heard. A change after a pause of half a second
/// is told at once, another one when half a second is over; so the value at which it comes to rest is always
/// told.
class FocusSpeech {
 public:
  static constexpr int kTellMs = 500;  ///< between two tellings, at least
  static constexpr int kLookMs = 50;   ///< for all that a reading changes to be there

  FocusSpeech(WindowSystem& windows, Clock& clock);
  void OnFocus(WindowedControl& control, FocusNews news);
  /// What has the keyboard; null when it is none of the form's controls.
  WindowedControl* Focused() const { return focused_; }

 private:
  void Look();
  std::uint32_t Now() const { return static_cast<std::uint32_t>(clock_.GetTickCount()); }

  Clock& clock_;
  WindowedControl* focused_ = nullptr;
  Accessible told_;
  std::uint32_t told_at_ = 0;
  Timer soon_;
  Timer always_;  // for what changes without being painted, too, such as a light's value
};

}  // namespace orvane
