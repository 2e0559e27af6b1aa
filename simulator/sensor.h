// The measuring side of the meter: trims, VSWR, alarms and the scale row.
#pragma once

#include "simulator/scenarios.h"
#include "simulator/settings.h"

#include <cstdint>
#include <string>

namespace orvane::sim {

// One measurement as it goes into a packet.
struct Reading {
  int ForwardPower = 0;    // whole watts
  int ReflectedPower = 0;  // whole watts
  int VSWRHundredths = 0;  // 150 is 1.50; 0 without power, at most 9999
  bool SWRAlarm = false;
  bool PwrAlarm = false;
};

// Packet text of a reading, "D,100,4,1.50,0;0".
std::string PacketText(const Reading& reading);

// Turns power into readings and remembers what has to be remembered between them: latched alarms and the
// scale row.
class Sensor {
 public:
  // One measurement at `now_ms`. An alarm latches until ResetAlarms, or until its threshold is switched off.
  Reading Measure(const Power& power, const SettingsBank& bank, std::int64_t now_ms);

  // Scale row 0..2 of the last measurement: the first row whose full scale holds the forward power. It goes
  // up at once, and down only after a second in which the lower row would have done, so that speech does
  // not make the scale jump at every syllable. A changed range setting counts at once.
  int Row() const { return row_; }

  bool SWRAlarm() const { return swr_alarm_; }
  bool PwrAlarm() const { return pwr_alarm_; }
  void ResetAlarms();

 private:
  void UpdateAlarms(const Reading& reading, const SettingsBank& bank);
  void UpdateRow(int forward_watts, const SettingsBank& bank, std::int64_t now_ms);

  bool swr_alarm_ = false;
  bool pwr_alarm_ = false;
  int row_ = 0;
  int row_range_ = -1;  // range setting the row was chosen for; -1 before the first measurement
  std::int64_t row_needed_until_ = 0;  // when the present row may be given up for a lower one
};

}  // namespace orvane::sim
