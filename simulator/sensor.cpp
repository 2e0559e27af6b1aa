#include "simulator/sensor.h"

#include <algorithm>
#include <cmath>

namespace orvane::sim {
namespace {

constexpr int kRows = 3;
constexpr int kVSWRCap = 9999;
constexpr std::int64_t kRowHoldMs = 1000;
constexpr double kTopWatts = 99999;

double Trimmed(double watts, int percent) {
  return std::clamp(watts * (100 + percent) / 100, 0.0, kTopWatts);
}

// Without measurable power there is nothing to compare and the meter says 0.00, "none", and not 1.00, which
// would claim a perfect match.
int VSWROf(double forward, double reflected) {
  if (forward < 0.5) return 0;
  const double gamma = std::sqrt(reflected / forward);
  if (gamma >= 1) return kVSWRCap;
  const double vswr = (1 + gamma) / (1 - gamma);
  return vswr >= 99.99 ? kVSWRCap : static_cast<int>(std::lround(vswr * 100));
}

}  // namespace

std::string PacketText(const Reading& reading) {
  const int cents = reading.VSWRHundredths % 100;
  std::string text =
      "D," + std::to_string(reading.ForwardPower) + "," + std::to_string(reading.ReflectedPower);
  text += "," + std::to_string(reading.VSWRHundredths / 100) + (cents < 10 ? ".0" : ".");
  text += std::to_string(cents);
  text += reading.SWRAlarm ? ",1;" : ",0;";
  text += reading.PwrAlarm ? "1" : "0";
  return text;
}

Reading Sensor::Measure(const Power& power, const SettingsBank& bank, std::int64_t now_ms) {
  const double forward = Trimmed(power.Forward, bank.Values().ForwardTrim);
  const double reflected = Trimmed(power.Reflected, bank.Values().ReflectedTrim);
  Reading reading;
  reading.ForwardPower = static_cast<int>(std::lround(forward));
  reading.ReflectedPower = static_cast<int>(std::lround(reflected));
  reading.VSWRHundredths = VSWROf(forward, reflected);
  UpdateAlarms(reading, bank);
  UpdateRow(reading.ForwardPower, bank, now_ms);
  reading.SWRAlarm = swr_alarm_;
  reading.PwrAlarm = pwr_alarm_;
  return reading;
}

void Sensor::ResetAlarms() {
  swr_alarm_ = false;
  pwr_alarm_ = false;
}

void Sensor::UpdateAlarms(const Reading& reading, const SettingsBank& bank) {
  const int vswr_limit = VSWRThreshold(bank.Values().VSWRAlarm);
  swr_alarm_ = vswr_limit > 0 && (swr_alarm_ || reading.VSWRHundredths > vswr_limit);

  const auto setting = static_cast<std::size_t>(bank.Values().LowPowerAlarm);
  const auto& watts = bank.Facts().LowPowerWatts;
  const int watt_limit = setting > 0 && setting < watts.size() ? watts[setting] : 0;
  const bool transmitting = reading.ForwardPower > 0;
  pwr_alarm_ = watt_limit > 0 && (pwr_alarm_ || (transmitting && reading.ForwardPower < watt_limit));
}

void Sensor::UpdateRow(int forward_watts, const SettingsBank& bank, std::int64_t now_ms) {
  const int range = bank.Values().RangeScale;
  const auto& ranges = bank.Facts().Ranges;
  int fitting = 0;
  while (fitting < kRows - 1) {
    const auto element = static_cast<std::size_t>(kRows * range + fitting);
    if (element >= ranges.size() || forward_watts <= ranges[element]) break;
    ++fitting;
  }
  if (fitting >= row_ || range != row_range_) {
    row_ = fitting;
    row_range_ = range;
    row_needed_until_ = now_ms + kRowHoldMs;
  } else if (now_ms >= row_needed_until_) {
    row_ = fitting;
    row_needed_until_ = now_ms + kRowHoldMs;
  }
}

}  // namespace orvane::sim
