#include "display/dip_layout.h"

namespace orvane {

void DipLayout::ShowVSWRMode(bool dip) {
  if (dip == shown_) return;
  shown_ = dip;
  display_.RestartBars();
  if (shown_) {
    display_.ReflectedScale().ShowLabels("1.0", "3.0", "5.0");
  } else if (RestoreRanges) {
    RestoreRanges();
  }
  Apply(full_view_);
}

void DipLayout::Apply(bool full_view) {
  full_view_ = full_view;
  const bool power_controls = full_view && !shown_;
  controls_.forward.pbxRangeButtons->SetVisible(power_controls);
  controls_.reflected.pbxRangeButtons->SetVisible(power_controls);
  controls_.reflected.dbxPower->SetVisible(power_controls);
  controls_.lblDipCaption->SetVisible(full_view && shown_);
}

}  // namespace orvane
