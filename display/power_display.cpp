#include "display/power_display.h"

#include "base/checked.h"
#include "base/number_format.h"
#include "base/runtime_error.h"

#include <cmath>

namespace orvane {

PowerDisplay::PowerDisplay(WindowSystem& windows, Clock& clock, EventPump& pump, MeterControls& controls,
                           const MeterState& meter, const AutoScales& auto_scales, const DisplayMode& mode,
                           ClientSink client)
    : clock_(clock),
      pump_(pump),
      controls_(controls),
      meter_(meter),
      mode_(mode),
      client_(std::move(client)),
      forward_bar_(controls.forward.shpGraph, pump),
      reflected_bar_(controls.reflected.shpGraph, pump),
      forward_range_(windows, controls.forward, forward_bar_, kForwardRanges, auto_scales),
      reflected_range_(windows, controls.reflected, reflected_bar_, kReflectedRanges, auto_scales),
      lamps_(controls, meter) {}

bool PowerDisplay::NoPower() const {
  return static_cast<std::int64_t>(meter_.ForwardPower) + meter_.ReflectedPower == 0;
}

void PowerDisplay::OnMeterLine() {
  if (!meter_.ReadingsLive) return;
  if (mode_.Dip()) {
    ShowVSWRDip(meter_.VSWR, CheckedSub(meter_.ForwardPower, meter_.ReflectedPower));
    reflected_in_ = NarrowToInt16(meter_.ReflectedPower);
    net_forward_ = NarrowToInt16(meter_.ForwardPower);
  } else {
    net_forward_ = NarrowToInt16(CheckedSub(meter_.ForwardPower, meter_.ReflectedPower));
    ShowFwdPower(net_forward_);
    reflected_in_ = NarrowToInt16(meter_.ReflectedPower);
    ShowRefPower(reflected_in_);
    CheckMeterRange();
    if (NoPower()) {
      ClearFwdGraph(-1);
      ClearRefGraph(-1);
    }
  }
  lamps_.ShowAlarmLamps();
}

void PowerDisplay::ShowFwdPower(std::int16_t watts) {
  forward_bar_.Show(watts);
  OVDigitBox& readout = *controls_.forward.dbxPower;
  const bool changed = forward_.Take(watts, clock_.GetTickCount());
  readout.Set_digitcolor(meter_.PwrAlarm != 0 ? OVDigitBox::kAlarmColor : OVDigitBox::kNormalColor);
  readout.Set_digitdisplay(kWattsFormat.Write(forward_.Shown()));
  if (changed) {
    forward_.Hold(clock_.GetTickCount(), mode_.HoldTime);
    pump_.DeliverArrivals();
  }
  ShowVSWR();
  client_(forward_.Shown());
}

// Not the twin of the forward side in everything: no alarm colour, no events, no VSWR, no client.
void PowerDisplay::ShowRefPower(std::int16_t watts) {
  reflected_bar_.Show(watts);
  const bool changed = reflected_.Take(watts, clock_.GetTickCount());
  controls_.reflected.dbxPower->Set_digitdisplay(kWattsFormat.Write(reflected_.Shown()));
  if (changed) reflected_.Hold(clock_.GetTickCount(), mode_.HoldTime);
}

void PowerDisplay::ShowVSWR() {
  constexpr float kHighVSWR = 3.0F;
  if (!std::isfinite(meter_.VSWR)) return;
  if (vswr_.Take(meter_.VSWR, clock_.GetTickCount())) vswr_.Hold(clock_.GetTickCount(), mode_.HoldTime);
  OVDigitBox& readout = *controls_.dbxVSWR;
  if (vswr_.Shown() <= 1.0F) {
    readout.Set_digitdisplay("");
    return;
  }
  const bool alarm = vswr_.Shown() > kHighVSWR || meter_.SWRAlarm != 0;
  readout.Set_digitcolor(alarm ? OVDigitBox::kAlarmColor : OVDigitBox::kNormalColor);
  readout.Set_digitdisplay(kVSWRFormat.Write(static_cast<double>(vswr_.Shown())));
}

std::int16_t PowerDisplay::VSWRToLevel(float vswr) {
  if (!(vswr > 0.0F)) return 0;
  return RoundToInt16(((static_cast<double>(vswr) - 1.0) * 20.0) * 0.6375 - 1.0);
}

// The readouts change once per hold time at most and show the latest values, not peaks: a hand that tunes
// wants to see where it is. Below level 1 nothing new is drawn.
void PowerDisplay::ShowVSWRDip(float vswr, std::int32_t watts) {
  const std::int16_t level = VSWRToLevel(vswr);
  OVDigitBox& power = *controls_.forward.dbxPower;
  OVDigitBox& ratio = *controls_.dbxVSWR;
  if (dip_hold_.Expired(clock_.GetTickCount()) && watts < 1) {
    ClearRefGraph(0);
    power.Set_digitdisplay(kWattsFormat.Write(0.0));
    ratio.Set_digitdisplay(kDipVSWRFormat.Write(0.0));
    return;
  }
  if (dip_hold_.Expired(clock_.GetTickCount())) {
    power.Set_digitdisplay(kWattsFormat.Write(watts));
    ratio.Set_digitdisplay(kDipVSWRFormat.Write(static_cast<double>(vswr)));
    dip_hold_.Start(clock_.GetTickCount(), mode_.HoldTime);
  }
  if (!Assign(dip_level_, level)) return;
  ClearRefGraph(level);
  if (level >= 1) reflected_bar_.Light(level);
}

// One change is acted on per line; a change of both indexes takes two lines.
void PowerDisplay::CheckMeterRange() {
  if (last_meter_range_ != meter_.MeterRange()) {
    RescaleAutoGraphs();
    last_meter_range_ = meter_.MeterRange();
    return;
  }
  if (last_meter_row_ == meter_.MeterRow()) return;
  RescaleAutoGraphs();
  last_meter_row_ = meter_.MeterRow();
  if (meter_.MeterRow() == 0 && CheckedAdd(meter_.ForwardPower, meter_.ReflectedPower) == 0) {
    ClearFwdGraphAll();
    ClearRefGraphAll();
  }
}

void PowerDisplay::RescaleAutoGraphs() {
  if (forward_range_.Auto()) forward_range_.SetGraphScale(meter_.MeterRange(), meter_.MeterRow());
  if (reflected_range_.Auto()) reflected_range_.SetGraphScale(meter_.MeterRange(), meter_.MeterRow());
}

// After a change to a fixed range the shown value gives way, so that the next line writes the readout afresh.
void PowerDisplay::ChooseForwardRange(int index) {
  if (index < kAutoRange) forward_.SetShown(-1);
  forward_range_.Choose(index, meter_.MeterRange(), meter_.MeterRow());
}

void PowerDisplay::ChooseReflectedRange(int index) {
  if (index < kAutoRange) reflected_.SetShown(-1);
  reflected_range_.Choose(index, meter_.MeterRange(), meter_.MeterRow());
}

void PowerDisplay::RestartBars() {
  forward_bar_.Restart();
  reflected_bar_.Restart();
  dip_level_ = 0;
}

void PowerDisplay::ShowNoReadings() {
  RestartBars();
  forward_.Restart();
  reflected_.Restart();
  vswr_.Restart();
  for (OVDigitBox* readout :
       {controls_.forward.dbxPower.get(), controls_.reflected.dbxPower.get(), controls_.dbxVSWR.get()}) {
    readout->Set_digitdisplay("");
  }
  lamps_.Reset();
}

void PowerDisplay::ResetPowerDisplay() {
  net_forward_ = 0;
  reflected_in_ = 0;
  forward_.SetShown(0);
  reflected_.SetShown(0);
  ClearRefGraphAll();
}

std::string PowerDisplay::CalcPerf(std::int32_t start, std::int32_t end) {
  constexpr std::int32_t kMinute = 60000;
  std::int32_t elapsed = CheckedSub(end, start);
  if (elapsed >= kMinute) elapsed %= kMinute;
  return kSecondsFormat.Write(elapsed / 1000.0);
}

}  // namespace orvane
