#include "display/indicators.h"

#include "base/checked.h"

#include <utility>

namespace orvane {
namespace {

constexpr int kLightMs = 100;
constexpr int kStatusMs = 5000;
constexpr std::size_t kLightOn = 3;
constexpr std::size_t kLightOff = 2;
constexpr std::size_t kLightAtStart = 1;

int FillOf(bool lit) {
  return lit ? Shape::kSolid : Shape::kTransparent;
}

// Who does not see the lamp's colour reads it beside the lamp.
void ShowLamp(Shape& lamp, Label& label, std::string_view dark, std::string_view lit, bool on) {
  lamp.SetFillStyle(FillOf(on));
  label.SetCaption(on ? lit : dark);
  label.SetToolTipText(on ? "Alarm on: press to reset" : "Alarm off");
}

}  // namespace

void AlarmLamps::ShowAlarmLamps() {
  const bool swr = meter_.SWRAlarm == kTrue;
  const bool power = meter_.PwrAlarm == kTrue;
  Show(swr, power);
}

void AlarmLamps::Reset() {
  Show(false, false);
}

void AlarmLamps::Show(bool swr, bool power) {
  ShowLamp(*controls_.shpSWRAlarm, *controls_.lblSWRAlarm, "SWR Alarm", "SWR Alarm!", swr);
  ShowLamp(*controls_.shpPowerAlarm, *controls_.lblPwrAlarm, "Pwr Alarm", "Pwr Alarm!", power);
  controls_.shpResetAlarm->SetFillStyle(FillOf(swr || power));
}

ActivityLights::ActivityLights(WindowSystem& windows, Clock& clock, MeterControls& controls)
    : controls_(controls), clock_(clock), rx_(windows, clock, kLightMs), tx_(windows, clock, kLightMs) {
  rx_.Tick = [this] {
    controls_.imgRx->SetPicture(controls_.imgLed[kLightOff]);
    rx_.SetEnabled(false);
  };
  tx_.Tick = [this] {
    controls_.imgTx->SetPicture(controls_.imgLed[kLightOff]);
    tx_.SetEnabled(false);
  };
}

bool ActivityLights::Busy(const Tick& last) const {
  constexpr std::uint32_t kBusyMs = 1000;
  return last && Now() - *last < kBusyMs;
}

void ActivityLights::ShowRx() {
  last_rx_ = Now();
  controls_.imgRx->SetPicture(controls_.imgLed[kLightOn]);
  rx_.SetEnabled(true);
}

void ActivityLights::ShowTx() {
  last_tx_ = Now();
  controls_.imgTx->SetPicture(controls_.imgLed[kLightOn]);
  tx_.SetEnabled(true);
}

void ActivityLights::Reset() {
  controls_.imgRx->SetPicture(controls_.imgLed[kLightAtStart]);
  controls_.imgTx->SetPicture(controls_.imgLed[kLightAtStart]);
}

StatusLine::StatusLine(WindowSystem& windows, Clock& clock, Label& label)
    : label_(label), clear_(windows, clock, kStatusMs) {
  clear_.Tick = [this] { Clear(); };
}

void StatusLine::Clear() {
  clear_.SetEnabled(std::exchange(clear_next_, false));
  lasting_ = false;
  label_.SetColors(kStatusColor, kStatusGround);
  Put(std::exchange(next_, {}));
}

void StatusLine::Show(std::string_view text) {
  if (lasting_) {
    next_ = text;
    return;
  }
  if (text.empty()) label_.SetColors(kStatusColor, kStatusGround);
  Put(text);
}

void StatusLine::StartClearTimer() {
  if (lasting_) {
    clear_next_ = true;
  } else {
    clear_.SetEnabled(true);
  }
}

// A text that is longer than the line can be read whole in its tip.
void StatusLine::Put(std::string_view text) {
  label_.SetCaption(text);
  label_.SetToolTipText(text);
}

void StatusLine::ShowAlert(std::string_view text) {
  lasting_ = clear_next_ = false;
  next_.clear();
  label_.SetColors(kAlertColor, kAlertGround);
  Put(text);
  clear_.SetEnabled(true);
}

void StatusLine::ShowLastingAlert(std::string_view text) {
  ShowAlert(text);
  lasting_ = true;
}

}  // namespace orvane
