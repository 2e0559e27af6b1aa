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

}  // namespace orvane
