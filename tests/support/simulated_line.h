#pragma once

#include "base/numeric_text.h"
#include "base/text.h"
#include "platform/headless/serial_port.h"
#include "platform/headless/virtual_time.h"
#include "simulator/meter_model.h"

#include <algorithm>

namespace orvane {

/// Puts the simulated meter at the other end of the headless line, in virtual time.
class SimulatedLine {
 public:
  SimulatedLine(VirtualTime& time, HeadlessSerialPort& port, sim::MeterOptions options = {})
      : Meter(std::move(options)), time_(time), port_(port) {
    port_.SetPeer({[this](std::string_view bytes, std::int64_t) {
                     Meter.Receive(bytes, Now());
                     Pump();
                   },
                   [this](bool open, std::string_view settings) {
                     Meter.SetPeerBaud(open ? static_cast<int>(Int32Of(Split(settings, ',')[0])) : 0);
                   }});
    Meter.Run(Now());
  }
  ~SimulatedLine() {
    time_.Cancel(next_);
    port_.SetPeer({});
  }
  SimulatedLine(const SimulatedLine&) = delete;
  SimulatedLine& operator=(const SimulatedLine&) = delete;

  /// To be called when the meter was told something by the test rather than by the line.
  void Pump() {
    time_.Cancel(next_);
    port_.Deliver(Meter.Run(Now()));
    if (const auto due = Meter.NextDue()) {
      next_ = time_.Post(EventKind::kArrival, std::max<std::int64_t>(*due - Now(), 0), [this] { Pump(); });
    }
  }

  sim::MeterModel Meter;

 private:
  // The meter was switched on with the program, whatever the tick count reads then.
  std::int64_t Now() const { return time_.Now() - start_; }

  VirtualTime& time_;
  HeadlessSerialPort& port_;
  std::int64_t start_ = time_.Now();
  VirtualTime::EventId next_;
};

}  // namespace orvane
