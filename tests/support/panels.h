#pragma once

#include "platform/headless/panel_controls.h"
#include "tests/support/face.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace orvane {

/// The window in memory of a panel's control, to act on it as a user does. `Window` says which kind.
template <typename Window>
Window& PanelWindow(HeadlessWindow& frame, const Control& control) {
  for (HeadlessWindow* child : frame.Children()) {
    if (child->Place() != control.Bounds()) continue;
    if (auto* found = dynamic_cast<Window*>(child)) return *found;
  }
  throw std::logic_error("no such control in " + frame.Text());
}

/// The meter's panel of a running program.
class MeterSetupWindows {
 public:
  explicit MeterSetupWindows(RunningFace& running) : running_(running) {}
  const MeterSetupPanel& Panel() const { return *running_.program.orvane->Panels().MeterSetup(); }
  HeadlessWindow& Frame() const { return running_.face.Of(Panel().FrameMeterSetup); }
  HeadlessWindow& In(const WindowedControl& group) const { return Face::In(Frame(), group); }

  HeadlessList& RelayPolarity() const { return List(Panel().FrameRelay, Panel().cboRelayPolarity); }
  HeadlessList& RangeScale() const { return List(Panel().FrameRangeScale, Panel().cboRangeScale); }
  HeadlessList& DispInt() const { return List(Panel().FrameDispInt, Panel().cboDispInt); }
  HeadlessList& OpMode() const { return List(Panel().FrameMode, Panel().cboOpMode); }
  HeadlessList& LoPwrAlarm() const { return List(Panel().FrameLPAlarm, Panel().cboLoPwrAlarm); }
  HeadlessList& VSWRAlarm() const { return List(Panel().FrameVSWRAlarm, Panel().cboVSWRAlarm); }
  HeadlessScrollBar& FPTrim() const {
    return PanelWindow<HeadlessScrollBar>(In(Panel().FrameFwdTrim), Panel().vsFPTrim);
  }
  HeadlessScrollBar& RPTrim() const {
    return PanelWindow<HeadlessScrollBar>(In(Panel().FrameRefTrim), Panel().vsRPTrim);
  }
  HeadlessTextBox& CallMsg() const {
    return PanelWindow<HeadlessTextBox>(In(Panel().FrameCall), Panel().txtCallMsg);
  }
  HeadlessCheckBox& DispMessage() const {
    return PanelWindow<HeadlessCheckBox>(Frame(), Panel().chkDispMessage);
  }
  HeadlessButton& Button(const PanelButton& button) const {
    return PanelWindow<HeadlessButton>(Frame(), button);
  }
  void Apply() const { Button(Panel().cmdApplySettings).Push(); }

 private:
  HeadlessList& List(const WindowedControl& group, const Control& list) const {
    return PanelWindow<HeadlessList>(In(group), list);
  }
  RunningFace& running_;
};

}  // namespace orvane
