#pragma once

#include "platform/wait.h"
#include "tests/contract/platform_under_test.h"
#include "tests/support/fault_of.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {

/// Passes everything on and knows whether it is delivering at the moment.
class ObservedPump final : public EventPump {
 public:
  explicit ObservedPump(EventPump& pump) : pump_(pump) {}
  bool Delivering() const { return depth_ > 0; }
  void DeliverPending() override { Deliver(&EventPump::DeliverPending); }
  void DeliverArrivals() override { Deliver(&EventPump::DeliverArrivals); }
  void SleepUntil(std::int32_t tick) override { pump_.SleepUntil(tick); }
  [[noreturn]] void EndProcess() override {
    pump_.EndProcess();
    std::abort();
  }

 private:
  void Deliver(void (EventPump::*events)()) {
    ++depth_;
    try {
      (pump_.*events)();
    } catch (...) {
      --depth_;
      throw;
    }
    --depth_;
  }
  EventPump& pump_;
  int depth_ = 0;
};

/// `count` bytes of which no two neighbours and no two distant stretches are alike.
inline std::string Pattern(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i)
    bytes += static_cast<char>((i * 7 + i / 251) % 256);
  return bytes;
}

/// A line with a listener that takes what arrives, and that fails the test when it is called at a time at
/// which nothing may be delivered.
class LineContract : public testing::Test, public CommListener {
 protected:
  LineContract() {
    port.SetListener(this);
    port.SetCommPort(LineUnderTest::PortNumber());
    port.SetSettings("38400,N,8,1");
  }
  ~LineContract() override { port.Close(); }

  void OnComm(CommEvent event) override {
    EXPECT_TRUE(pump.Delivering()) << "event " << static_cast<int>(event) << " from inside another call";
    events.push_back(event);
    if (on_event) return on_event(event);
    if (event == CommEvent::kReceive) port.TakeReceived(received);
  }
  /// Lets events through until `done`, 3 seconds at most.
  bool Within3s(const std::function<bool()>& done) {
    WaitTicksUnless(clock, pump, 3000, done);
    return done();
  }
  bool Arrives(std::size_t count) {
    return Within3s([&] { return received.size() >= count; });
  }
  std::ptrdiff_t Count(CommEvent event) const { return std::count(events.begin(), events.end(), event); }
  bool IsTold(CommEvent event, std::ptrdiff_t times = 1) {
    return Within3s([&] { return Count(event) >= times; });
  }
  /// Writes and waits until the bytes went out.
  void WriteOut(std::string_view bytes) {
    const auto before = Count(CommEvent::kSend);
    port.Write(bytes);
    EXPECT_TRUE(IsTold(CommEvent::kSend, before + 1)) << bytes.size() << " bytes";
  }
  void Wait(std::int32_t ms) { WaitTicks(clock, pump, ms); }

  LineUnderTest line;
  Clock& clock = line.TheClock();
  SerialPort& port = line.Port();
  LinePeer& peer = line.Peer();
  ObservedPump pump{line.Pump()};
  std::vector<CommEvent> events;
  std::string received;
  /// Instead of taking what arrives.
  std::function<void(CommEvent)> on_event;
};

}  // namespace orvane
