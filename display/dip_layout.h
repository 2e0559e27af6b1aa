#pragma once

#include "display/meter_controls.h"
#include "display/power_display.h"

#include <functional>

namespace orvane {

/// The layout of the VSWR dip mode: the reflected bar is a VSWR bar from 1.0 to 5.0, and what has no meaning
/// then is hidden: the reflected readout, the range buttons.
class DipLayout {
 public:
  /// Chooses the saved ranges of both graphs again.
  std::function<void()> RestoreRanges;

  DipLayout(MeterControls& controls, PowerDisplay& display) : controls_(controls), display_(display) {}

  /// Does nothing when the layout is the one asked for.
  void ShowVSWRMode(bool dip);
  bool Shown() const { return shown_; }
  /// Shows and hides what dip mode leaves to the view: called also when the view changes.
  void Apply(bool full_view);

 private:
  MeterControls& controls_;
  PowerDisplay& display_;
  bool shown_ = false;
  bool full_view_ = true;
};

}  // namespace orvane
