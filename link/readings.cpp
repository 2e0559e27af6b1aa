#include "link/readings.h"

namespace orvane {

void DropReadings(const LinkContext& link) {
  link.state.ForwardPower = 0;
  link.state.ReflectedPower = 0;
  link.state.VSWR = 0.0F;
  link.state.SWRAlarm = kFalse;
  link.state.PwrAlarm = kFalse;
  link.state.ReadingsLive = false;
  link.events.ReadingsStopped();
}

void LosePort(const LinkContext& link) {
  link.port.Close();
  link.flags.MeterFound = false;
  link.flags.PortGone = true;
  DropReadings(link);
  link.events.ShowStatus("Port Lost", StatusTone::kUrgent);
}

}  // namespace orvane
