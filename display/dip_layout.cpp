#include "display/dip_layout.h"

namespace orvane {

void DipLayout::ShowVSWRMode(bool dip) {
  if (dip == shown_) return;
  shown_ = dip;
  display_.RestartBars();
  Apply(full_view_);
  if (shown_) {
    display_.ReflectedScale().ShowLabels("1.0", "3.0", "5.0");
    return;
  }
  // A range that cannot be chosen again leaves no number rather than those of another scale.
  display_.ReflectedScale().ShowLabels("", "", "");
  if (RestoreRanges) RestoreRanges();
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
