#include "platform/headless/serial_port.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class HeadlessPort : public ::testing::Test, public CommListener {
 protected:
  HeadlessPort() {
    port.SetListener(this);
    port.SetSettings("38400,N,8,1");
    port.Open();
  }
  void OnComm(CommEvent event) override {
    seen.push_back(event);
    if (event == CommEvent::kReceive) port.TakeReceived(received);
  }
  static Fault FaultOf(const std::function<void()>& step) {
    try {
      step();
    } catch (const RuntimeError& error) {
      return error.fault();
    }
    return Fault{0};
  }

  VirtualTime time;
  HeadlessSerialPort port{time};
  std::vector<CommEvent> seen;
  std::string received;
};

using Events = std::vector<CommEvent>;

TEST_F(HeadlessPort, ArrivalsAreToldOnceUntilTheyAreTaken) {
  port.Deliver("ab");
  port.Deliver("cd");
  port.Schedule(10, "ef");
  EXPECT_TRUE(seen.empty()) << "never from inside a call";
  time.DeliverArrivals();
  EXPECT_EQ(seen, (Events{CommEvent::kReceive}));
  EXPECT_EQ(received, "abcd");
  time.RunFor(10);
  EXPECT_EQ(received, "abcdef");
  EXPECT_EQ(seen.size(), 2U);
}

TEST_F(HeadlessPort, ClosingForgetsWhatWasUnderWay) {
  port.Deliver("old");
  port.Raise(CommEvent::kFrame);
  port.Close();
  port.Deliver("lost");
  port.Open();
  port.Deliver("new");
  time.DeliverPending();
  EXPECT_EQ(seen, (Events{CommEvent::kReceive}));
  EXPECT_EQ(received, "new");
}

TEST_F(HeadlessPort, LostInUse) {
  port.Deliver("never seen");
  port.Lose();
  time.DeliverPending();
  EXPECT_EQ(seen.back(), CommEvent::kLost);
  EXPECT_EQ(received, "");
  EXPECT_EQ(FaultOf([&] { port.Write("x"); }), Fault::kPortLost);
  EXPECT_EQ(FaultOf([&] { port.SetSettings("9600,N,8,1"); }), Fault::kPortLost);
  port.Close();
  EXPECT_EQ(FaultOf([&] { port.Open(); }), Fault::kInvalidPort);
  port.SetPresent(true);
  port.Open();
  port.Write("x");
}

TEST_F(HeadlessPort, ALineThatTakesNothing) {
  port.SetStuck(true);
  port.Write("one");
  EXPECT_EQ(FaultOf([&] { port.Write("two"); }), Fault::kLineBusy);
  time.RunFor(HeadlessSerialPort::kTakeLimitMs);
  EXPECT_EQ(seen, (Events{CommEvent::kTxFull}));
  port.Write("two");
  port.DiscardOutput();
  port.Write("three");
  port.SetStuck(false);
  time.RunFor(5000);
  EXPECT_EQ(seen, (Events{CommEvent::kTxFull, CommEvent::kSend}));
  ASSERT_EQ(port.Writes().size(), 1U);
  EXPECT_EQ(port.Writes()[0].bytes, "three");
}

}  // namespace
}  // namespace orvane
