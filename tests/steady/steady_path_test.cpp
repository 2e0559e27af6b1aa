// A reading must not cost memory: from the bytes in the port to the state, nothing is taken from the heap
// once the buffers have their size.
#include "link/receiver.h"
#include "tests/link/link_fixture.h"
#include "tests/steady/counted_new.h"

namespace orvane {
namespace {

struct PortOfBytes : SerialPort {
  std::string bytes;
  void TakeReceived(std::string& buffer) override {
    buffer += bytes;
    bytes.clear();
  }
  void SetListener(CommListener*) override {}
  void SetCommPort(int) override {}
  int CommPort() const override { return 1; }
  void SetSettings(std::string_view) override {}
  std::string Settings() const override { return {}; }
  void Open() override {}
  void Close() override {}
  bool PortOpen() const override { return true; }
  bool Works() override { return true; }
  void DiscardOutput() override {}
  void Write(std::string_view) override {}
};

TEST(SteadyPath, AReadingTakesNoMemory) {
  VirtualTime time;
  PortOfBytes port;
  TestSettings settings;
  RecordingEvents events(time);
  MeterState state;
  LinkFlags flags;
  MessageClassifier classifier(state, flags, events, settings);
  Receiver receiver({time, time, port, settings, events, state, flags}, classifier);
  const std::string packets = Line("D,1234,56,1.57,0;1") + Line("D,12.6,0.4,10.005,1;0");
  const auto arrive = [&](std::string_view part) {
    port.bytes += part;
    receiver.OnComm(CommEvent::kReceive);
  };
  arrive(packets);
  arrive(packets);

  StartCountingAllocations();
  for (int i = 0; i < 1000; ++i) {
    arrive(std::string_view(packets).substr(0, 30));
    arrive(std::string_view(packets).substr(30));
    time.DeliverArrivals();
    time.DeliverPending();
  }
  const int allocations = StopCountingAllocations();
  EXPECT_EQ(allocations, 0);
  EXPECT_EQ(events.lines, 2004);
  EXPECT_EQ(state.ForwardPower, 13);
  EXPECT_EQ(state.SWRAlarm, kTrue);
}

}  // namespace
}  // namespace orvane
