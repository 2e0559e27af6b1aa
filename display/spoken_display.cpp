#include "display/spoken_display.h"

#include "base/number_format.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr std::string_view kNoReading = "no reading";
constexpr std::string_view kNoPower = "no power";

/// A text of its own for a control that is read like a line: its name, and what it shows.
template <typename Value>
void Speak(WindowedControl& control, Role role, std::string_view name, Value value) {
  control.Describing = [role, name, value = std::move(value)](Accessible& what) {
    what.role = role;
    what.name = name;
    what.value = value();
  };
  control.SetTabStop(true);
}

std::string OnOff(bool on) {
  return on ? "on" : "off";
}

/// A power against the number at the right end of its scale. A bar that is full hides how much it is.
std::string OfScale(int watts, const std::string& full_scale) {
  if (full_scale.empty()) return SpokenDisplay::Watts(std::to_string(watts), {});
  const bool over = watts > std::atoi(full_scale.c_str());
  return (over ? "more than " + full_scale : std::to_string(watts) + " of " + full_scale) + " watts";
}

}  // namespace

std::string SpokenDisplay::Watts(std::string_view digits, std::string_view no_reading) {
  if (digits.empty()) return std::string(no_reading);
  return std::string(digits) + (digits == "1" ? " watt" : " watts");
}

SpokenDisplay::SpokenDisplay(MeterControls& controls, const PowerDisplay& display, const MeterState& meter,
                             const DisplayMode& mode, const ActivityLights& lights)
    : controls_(controls), display_(display), meter_(meter), mode_(mode) {
  ConnectReadouts();
  ConnectBars();
  ConnectAlarms(lights);
  controls_.lblPort->SetTabStop(true);
  Speak(*controls_.lblPort, Role::kText, "Port", [this] {
    const std::string& port = controls_.lblPort->Caption();
    return port.empty() || port == "0" ? std::string("none") : "COM" + port;
  });
  Speak(*controls_.lblShowStatus, Role::kText, "Status", [this] {
    return controls_.lblShowStatus->Caption().empty() ? std::string("no message")
                                                      : controls_.lblShowStatus->Caption();
  });
}

// The colour of a readout that is red is said as well.
void SpokenDisplay::ConnectReadouts() {
  const auto alarm = [](const OVDigitBox& readout, std::string_view words) {
    return readout.digitcolor() == OVDigitBox::kAlarmColor && !readout.digitdisplay().empty()
               ? std::string(words)
               : std::string();
  };
  OVDigitBox& forward = *controls_.forward.dbxPower;
  Speak(forward, Role::kText, "Forward power",
        [this, &forward, alarm] { return WattsText(forward) + alarm(forward, ", alarm"); });
  OVDigitBox& reflected = *controls_.reflected.dbxPower;
  Speak(reflected, Role::kText, "Reflected power", [this, &reflected] { return WattsText(reflected); });
  OVDigitBox& ratio = *controls_.dbxVSWR;
  Speak(ratio, Role::kText, "VSWR", [this, &ratio, alarm] { return VSWRText() + alarm(ratio, ", high"); });
}

// The zeros that stand before the first packet are none.
bool SpokenDisplay::HasReading() const {
  return meter_.ReadingsLive && meter_.ReadingsSeen;
}

std::string SpokenDisplay::WattsText(const OVDigitBox& readout) const {
  return Watts(HasReading() ? readout.digitdisplay() : std::string(), kNoReading);
}

// An empty readout has three reasons, and a listener cannot see which by the others.
std::string SpokenDisplay::VSWRText() const {
  const std::string& digits = controls_.dbxVSWR->digitdisplay();
  if (!HasReading()) return std::string(kNoReading);
  if (digits.find_first_of("123456789") != std::string::npos) return digits;
  return meter_.ForwardPower > 0 ? std::string("1.00") : std::string(kNoPower);
}

void SpokenDisplay::ConnectBars() {
  controls_.forward.pbxGraph->SetTabStop(true);
  controls_.forward.pbxGraph->Describing = [this](Accessible& what) {
    what.role = Role::kBar;
    what.name = ReflectedInForwardFrame() ? "Power bars" : "Forward bar";
    what.value = ForwardBarText();
    if (ReflectedInForwardFrame()) what.value = "forward " + what.value + ", reflected " + ReflectedBarText();
  };
  controls_.reflected.pbxGraph->SetTabStop(true);
  controls_.reflected.pbxGraph->Describing = [this](Accessible& what) {
    what.role = Role::kBar;
    what.name = mode_.Dip() ? "VSWR bar" : "Reflected bar";
    what.value = mode_.Dip() ? DipBarText() : ReflectedBarText();
  };
  for (const auto& [box, name] : {std::pair{controls_.forward.pbxRangeButtons.get(), "Forward range"},
                                  std::pair{controls_.reflected.pbxRangeButtons.get(), "Reflected range"},
                                  std::pair{controls_.pbxModePanel.get(), "Display mode"}}) {
    box->Describing = [name = name](Accessible& what) {
      what.role = Role::kGroup;
      what.name = name;
    };
  }
}

bool SpokenDisplay::ReflectedInForwardFrame() const {
  return &controls_.reflected.shpGraph[0]->Container() == controls_.forward.pbxGraph.get();
}

std::string SpokenDisplay::ForwardBarText() const {
  if (mode_.Dip()) return "off in dip mode";
  if (!HasReading()) return std::string(kNoReading);
  return OfScale(std::max<int>(display_.NetForward(), 0), controls_.forward.lblScale[2]->Caption());
}

std::string SpokenDisplay::ReflectedBarText() const {
  if (!HasReading()) return std::string(kNoReading);
  return OfScale(std::max<int>(display_.Reflected(), 0), controls_.reflected.lblScale[2]->Caption());
}

std::string SpokenDisplay::DipBarText() const {
  if (!HasReading()) return std::string(kNoReading);
  if (meter_.ForwardPower <= meter_.ReflectedPower) return std::string(kNoPower);
  const std::string& full_scale = controls_.reflected.lblScale[2]->Caption();
  return kVSWRFormat.Write(static_cast<double>(meter_.VSWR)) + " of " + full_scale;
}

void SpokenDisplay::ConnectAlarms(const ActivityLights& lights) {
  const auto lamp = [](Label& label, Shape& shape, std::string_view name) {
    label.Describing = [&shape, name](Accessible& what) {
      const bool on = shape.FillStyle() == Shape::kSolid;
      what.role = Role::kText;
      what.name = name;
      what.value = OnOff(on);
      if (on) what.action = "Reset";
    };
    label.SetTabStop(true);
  };
  lamp(*controls_.lblSWRAlarm, *controls_.shpSWRAlarm, "SWR alarm");
  lamp(*controls_.lblPwrAlarm, *controls_.shpPowerAlarm, "Power alarm");
  controls_.cmdResetAlarms->Describing = [this](Accessible& what) {
    if (controls_.shpResetAlarm->FillStyle() == Shape::kSolid) what.description = "An alarm is on";
  };
  Speak(*controls_.imgRx, Role::kText, "Rx data activity", [&lights] { return OnOff(lights.RxBusy()); });
  Speak(*controls_.imgTx, Role::kText, "Tx data activity", [&lights] { return OnOff(lights.TxBusy()); });
}

}  // namespace orvane
