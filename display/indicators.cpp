#include "display/indicators.h"

#include "base/checked.h"

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

}  // namespace

void AlarmLamps::ShowAlarmLamps() {
  const bool swr = meter_.SWRAlarm == kTrue;
  const bool power = meter_.PwrAlarm == kTrue;
  controls_.shpSWRAlarm->SetFillStyle(FillOf(swr));
  controls_.shpPowerAlarm->SetFillStyle(FillOf(power));
  controls_.shpResetAlarm->SetFillStyle(FillOf(swr || power));
}

void AlarmLamps::Reset() {
  for (Shape* lamp :
       {controls_.shpSWRAlarm.get(), controls_.shpPowerAlarm.get(), controls_.shpResetAlarm.get()}) {
    lamp->SetFillStyle(Shape::kTransparent);
  }
}

ActivityLights::ActivityLights(WindowSystem& windows, Clock& clock, MeterControls& controls)
    : controls_(controls), rx_(windows, clock, kLightMs), tx_(windows, clock, kLightMs) {
  rx_.Tick = [this] {
    controls_.imgRx->SetPicture(controls_.imgLed[kLightOff]);
    rx_.SetEnabled(false);
  };
  tx_.Tick = [this] {
    controls_.imgTx->SetPicture(controls_.imgLed[kLightOff]);
    tx_.SetEnabled(false);
  };
}

void ActivityLights::ShowRx() {
  controls_.imgRx->SetPicture(controls_.imgLed[kLightOn]);
  rx_.SetEnabled(true);
}

void ActivityLights::ShowTx() {
  controls_.imgTx->SetPicture(controls_.imgLed[kLightOn]);
  tx_.SetEnabled(true);
}

void ActivityLights::Reset() {
  controls_.imgRx->SetPicture(controls_.imgLed[kLightAtStart]);
  controls_.imgTx->SetPicture(controls_.imgLed[kLightAtStart]);
}

StatusLine::StatusLine(WindowSystem& windows, Clock& clock, Label& label)
    : label_(label), clear_(windows, clock, kStatusMs) {
  clear_.Tick = [this] {
    clear_.SetEnabled(false);
    label_.SetColors(kStatusColor, kStatusGround);
    Put("");
  };
}

void StatusLine::Show(std::string_view text) {
  if (text.empty()) label_.SetColors(kStatusColor, kStatusGround);
  Put(text);
}

// A text that is longer than the line can be read whole in its tip.
void StatusLine::Put(std::string_view text) {
  label_.SetCaption(text);
  label_.SetToolTipText(text);
}

void StatusLine::ShowAlert(std::string_view text) {
  label_.SetColors(kAlertColor, kAlertGround);
  Put(text);
  clear_.SetEnabled(true);
}

}  // namespace orvane
