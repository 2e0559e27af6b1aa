#include "base/text.h"
#include "tests/contract/line_fixture.h"

namespace orvane {
namespace {

using SerialPortContract = LineContract;

/// With its port open.
struct OpenPortContract : LineContract {
  OpenPortContract() { port.Open(); }
};

TEST_F(SerialPortContract, APortThatIsNotThereDoesNotOpen) {
  const auto refused = [&] {
    EXPECT_EQ(FaultOf([&] { port.Open(); }), Fault::kInvalidPort) << port.CommPort();
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(FaultOf([&] { port.Write("x"); }), Fault::kPortNotOpen);
  };
  for (const int number : {0, -1}) {
    port.SetCommPort(number);
    EXPECT_EQ(port.CommPort(), number);
    refused();
  }
  port.SetCommPort(LineUnderTest::PortNumber());
  port.Open();
  EXPECT_TRUE(port.PortOpen()) << "after failures it opens as ever";
  port.Close();
  line.MakePortMissing();
  for (int i = 0; i < 3; ++i)
    refused();
}

TEST_F(SerialPortContract, TextsThatAreNoLineSettingAreRefused) {
  constexpr std::string_view kRefused =
      "|,,,|38400|38400,N,8|38400,N,8,1,|38400,N,8,1,1|0,N,8,1|-9600,N,8,1|fast,N,8,1|9600.5,N,8,1|"
      "99999999999,N,8,1|38400,X,8,1|38400,,8,1|38400,NO,8,1|38400,N,,1|38400,N,eight,1|38400,N,9,1|"
      "38400,N,3,1|38400,N,88,1|38400,N,8,|38400,N,8,3|38400,N,8,0|38400,N,8,one|38400;N;8;1";
  for (const std::string_view text : Split(kRefused, '|')) {
    EXPECT_EQ(FaultOf([&] { port.SetSettings(text); }), Fault::kInvalidPort) << text;
    EXPECT_EQ(port.Settings(), "38400,N,8,1") << text;
  }
  for (const char* text : {"115200,n,8,1", "1200,e,7,2", "9600,O,7,1", "300,M,5,1.5", "19200,S,8,2"}) {
    port.SetSettings(text);
    EXPECT_EQ(port.Settings(), text);
  }
}

TEST_F(OpenPortContract, RefusedSettingsLeaveAnOpenPortAsItWas) {
  EXPECT_EQ(FaultOf([&] { port.SetSettings("38400,N,8,9"); }), Fault::kInvalidPort);
  EXPECT_EQ(port.Settings(), "38400,N,8,1");
  peer.Send("abc");
  EXPECT_TRUE(Arrives(3));
  port.SetSettings("9600,N,8,1");
  WriteOut("def");
  EXPECT_EQ(peer.Receive(3), "def");
}

TEST_F(OpenPortContract, OpeningAnOpenPortIsOneOpening) {
  peer.Send("kept");
  peer.Settle();
  port.SetCommPort(77);
  port.Open();
  EXPECT_TRUE(Arrives(4)) << "the second opening dropped what the first had received";
  EXPECT_EQ(received, "kept");
  port.Close();
  EXPECT_FALSE(port.PortOpen());
  port.Close();
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialPortContract, AnOpenPortWorksAndTheQuestionDisturbsNothing) {
  EXPECT_FALSE(port.Works());
  port.Open();
  const std::string text = Pattern(500);
  port.Write(text);
  peer.Send(text);
  for (int i = 0; i < 20; ++i) {
    EXPECT_TRUE(port.Works());
    clock.Block(2);
  }
  EXPECT_TRUE(events.empty());
  EXPECT_TRUE(Arrives(500));
  EXPECT_EQ(received, text);
  EXPECT_EQ(peer.Receive(500), text);
  port.Close();
  EXPECT_FALSE(port.Works());
}

TEST_F(SerialPortContract, AClosedPortTakesAndGivesNothing) {
  for (const bool opened_before : {false, true}) {
    if (opened_before) {
      port.Open();
      port.Write("w");
      peer.Send("forgotten");
      peer.Settle();
      port.Close();
    }
    EXPECT_EQ(FaultOf([&] { port.Write("x"); }), Fault::kPortNotOpen);
    EXPECT_EQ(FaultOf([&] { port.DiscardOutput(); }), Fault::kPortNotOpen);
    std::string buffer = "as it was";
    port.TakeReceived(buffer);
    EXPECT_EQ(buffer, "as it was");
    Wait(100);
    EXPECT_TRUE(events.empty());
  }
}

TEST_F(OpenPortContract, WhatIsWrittenArrivesWholeAndInOrder) {
  const std::string text = Pattern(2000);
  for (const std::size_t piece : {1U, 20U, 500U, 2000U}) {
    const std::size_t total = piece < 500 ? piece * 5 : 2000;
    for (std::size_t at = 0; at < total; at += piece) {
      port.DiscardOutput();  // touches nothing that went out
      WriteOut(std::string_view(text).substr(at, piece));
    }
    EXPECT_EQ(peer.Receive(total), text.substr(0, total)) << piece;
  }
  EXPECT_EQ(Count(CommEvent::kReceive), 0);
  EXPECT_EQ(Count(CommEvent::kTxFull), 0);
}

TEST_F(SerialPortContract, ArrivalsAreToldByBothDeliveriesOnly) {
  using Delivery = void (ObservedPump::*)();
  port.Open();
  for (const Delivery delivery : {&ObservedPump::DeliverPending, &ObservedPump::DeliverArrivals}) {
    events.clear();
    received.clear();
    peer.Send("abc");
    peer.Settle();
    port.Write("w");
    port.DiscardOutput();
    port.SetSettings("38400,N,8,1");
    clock.Block(50);
    pump.SleepUntil(clock.GetTickCount() + 20);
    EXPECT_TRUE(events.empty());
    (pump.*delivery)();
    EXPECT_GE(Count(CommEvent::kReceive), 1);
    EXPECT_EQ(received, "abc");
  }
}

TEST_F(OpenPortContract, NothingOfABurstIsLostAndSingleBytesComeInOrder) {
  const std::string text = Pattern(5000);  // every byte value
  for (const std::size_t piece : {1U, 5000U, 5000U}) {
    const std::size_t total = piece == 1 ? 100 : 5000;
    received.clear();
    for (std::size_t at = 0; at < total; at += piece) {
      peer.Send(text.substr(at, piece));
      if (piece == 1) pump.DeliverPending();
    }
    EXPECT_TRUE(Arrives(total)) << received.size();
    EXPECT_EQ(received, text.substr(0, total));
  }
}

TEST_F(OpenPortContract, TakingGivesEachByteOnceAlsoWithoutAListener) {
  for (const bool listener : {true, false}) {
    if (!listener) port.SetListener(nullptr);
    peer.Send("abc");
    peer.Settle();
    if (!listener) Wait(20);
    std::string buffer = "before ";
    for (int i = 0; i < 2; ++i) {
      port.TakeReceived(buffer);
      EXPECT_EQ(buffer, "before abc");
    }
    EXPECT_TRUE(events.empty());
  }
}

TEST_F(OpenPortContract, WhatArrivesDuringTheHandlerComesWithALaterEvent) {
  on_event = [&](CommEvent event) {
    if (event != CommEvent::kReceive) return;
    port.TakeReceived(received);
    if (Count(CommEvent::kReceive) > 3) return;
    const auto told = events.size();
    peer.Send("+");
    peer.Settle();
    EXPECT_EQ(events.size(), told);
  };
  peer.Send("a");
  EXPECT_TRUE(Arrives(4));
  EXPECT_EQ(received, "a+++");
  EXPECT_GE(Count(CommEvent::kReceive), 4);
}

TEST_F(OpenPortContract, AHandlerThatWaitsIsToldOfWhatArrivesMeanwhile) {
  on_event = [&](CommEvent event) {
    if (event != CommEvent::kReceive) return;
    port.TakeReceived(received);
    if (received != "a") return;
    peer.Send("b");
    EXPECT_TRUE(Arrives(2)) << "inside the handler";
  };
  peer.Send("a");
  EXPECT_TRUE(Arrives(2));
  EXPECT_EQ(received, "ab");
}

TEST_F(OpenPortContract, ClosingInTheHandlerEndsTheEventsAlsoWhenItOpensAgain) {
  for (const bool reopens : {true, false}) {
    events.clear();
    on_event = [&](CommEvent) {
      if (!reopens) peer.Send("b");
      port.Close();
      if (reopens) port.Open();
    };
    port.Write("w");
    peer.Send("a");
    peer.Settle();
    Wait(150);
    EXPECT_EQ(events.size(), 1U) << "bytes out and bytes in both waited to be told";
    EXPECT_EQ(port.PortOpen(), reopens);
    if (!reopens) continue;
    on_event = nullptr;
    peer.Send("new");
    EXPECT_TRUE(Arrives(3));
    EXPECT_EQ(received, "new");
  }
}

TEST_F(SerialPortContract, ReopeningLosesNoFirstByte) {
  for (int i = 0; i < 20; ++i) {
    const std::string byte(1, static_cast<char>('A' + i));
    port.Open();
    peer.Send(byte);
    received.clear();
    ASSERT_TRUE(Arrives(1)) << i;
    EXPECT_EQ(received, byte) << i;
    WriteOut(byte);
    EXPECT_EQ(peer.Receive(1), byte) << i;
    port.Close();
  }
}

}  // namespace
}  // namespace orvane
