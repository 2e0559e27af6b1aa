#pragma once

#include "link/link_events.h"
#include "link/link_settings.h"
#include "link/meter_state.h"
#include "platform/clock.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"

#include <cstdint>
#include <string>

namespace orvane {

/// Where the link stands. Handlers change it inside waits.
struct LinkFlags {
  bool MeterFound = false;          ///< the meter answered and was asked for its readings
  bool ResyncPending = false;       ///< keeps a burst of framing errors from restarting the search again
  bool MeterSearchRunning = false;  ///< from the first attempt to the meter's answer
  bool SearchAbandoned = false;     ///< given up: the operator does not want to try again, or no port opens
  bool PortRefused = false;         ///< given up because the chosen port did not open
  bool PortGone = false;            ///< the port was lost in use and is waited for
  bool FlowStopped = false;         ///< the operator stopped the readings and did not start them again
  bool DataFlowWanted = false;      ///< the meter was found and the operator did not stop its readings
  std::uint32_t LastLineTick = 0;   ///< tick count of the last line that meant something
  std::uint32_t Replies = 0;        ///< lines taken in that were no readings, modulo 2^32
  std::uint32_t Readings = 0;       ///< packets that passed their check, modulo 2^32
  std::string GoodSpeed;            ///< at which the meter was found last; empty until then
  std::string LastCommand;          ///< text of the command given to the transmitter last
  /// What WaitForAck looks for. The meter's "A" is not stored here, so that its waits take their full time:
  /// they pace the meter, which acknowledges a setting before it has carried it out.
  std::string AckText;
};

/// What the parts of the link share; MeterLink owns the last two.
struct LinkContext {
  Clock& clock;
  EventPump& pump;
  SerialPort& port;
  LinkSettings& settings;
  LinkEvents& events;
  MeterState& state;
  LinkFlags& flags;
};

}  // namespace orvane
