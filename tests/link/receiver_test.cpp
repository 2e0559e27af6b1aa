#include "link/receiver.h"

#include "tests/link/link_fixture.h"

#include <chrono>

namespace orvane {
namespace {

using namespace std::string_literals;

class ReceiverTest : public LinkTest {
 protected:
  void FeedEvent(CommEvent event) {
    if (!port.PortOpen()) port.Open();
    port.Raise(event);
    time.DeliverPending();
  }
};

TEST_F(ReceiverTest, EventsOfTheLine) {
  struct Row {
    CommEvent event;
    std::vector<std::string> log;
  };
  const Row rows[] = {
      {CommEvent::kCTS, {}},
      {CommEvent::kDSR, {}},
      {CommEvent::kCD, {}},
      {CommEvent::kRing, {}},
      {CommEvent::kEOF, {}},
      {CommEvent::kBreak, {}},
      {CommEvent::kReceive, {}},
      {CommEvent::kFrame, {"status !Re-Synching"}},
      {CommEvent::kOverrun, {"status !Overrun"}},
      {CommEvent::kRxOver, {"status !Overflow"}},
      {CommEvent::kRxParity, {"status !Parity"}},
      {CommEvent::kTxFull, {"status !Tx Full"}},
      {CommEvent::kDCB, {"status !DCB Error"}},
      {static_cast<CommEvent>(1234), {}},
  };
  for (const Row& row : rows) {
    events.log.clear();
    FeedEvent(row.event);
    EXPECT_EQ(events.log, row.log) << static_cast<int>(row.event);
  }
  EXPECT_FALSE(events.FindMeterEnabled());
}

TEST_F(ReceiverTest, OverflowSavesTheBytesForTheNextArrival) {
  port.Open();
  port.Raise(CommEvent::kRxOver);
  port.Deliver(Line("V1") + "\x02V");
  port.Raise(CommEvent::kReceive);
  events.on_line = [this] { events.log.push_back("line " + std::to_string(link.State().ParamV)); };
  ASSERT_TRUE(time.RunUntil([this] { return !events.log.empty(); }, 0));
  EXPECT_EQ(events.lines, 0);
  EXPECT_EQ(events.rx, 0);
  std::string left;
  port.TakeReceived(left);
  EXPECT_EQ(left, "");
  time.DeliverPending();
  EXPECT_EQ(events.log, (std::vector<std::string>{"status !Overflow", "line 1"}));
  Feed("2\n");
  EXPECT_EQ(events.log.back(), "line 2");
}

TEST_F(ReceiverTest, LostPortIsClosedAndToldOnce) {
  port.Open();
  port.Lose();
  time.DeliverPending();
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(events.log, (std::vector<std::string>{"status !Port Lost", "lost"}));
}

// Bytes that arrive while a line is shown are taken by the loop that is running, after that line.
TEST_F(ReceiverTest, DoesNotEnterItself) {
  std::string order;
  int depth = 0;
  events.on_line = [&] {
    ++depth;
    EXPECT_EQ(depth, 1);
    order += std::to_string(link.State().ParamS);
    if (link.State().ParamS < 4) {
      port.Deliver(Line("S" + std::to_string(link.State().ParamS + 2)));
      time.DeliverArrivals();
    }
    order += ".";
    --depth;
  };
  Feed(Line("S1") + Line("S2"));
  EXPECT_EQ(order, "1.2.3.4.5.");
  EXPECT_EQ(events.rx, 4);
}

TEST_F(ReceiverTest, NoClickOrTimerRunsWhileALineIsShown) {
  bool clicked = false;
  events.on_line = [&] {
    time.Post(EventKind::kInput, 0, [&] { clicked = true; });
    time.Post(EventKind::kTimer, 0, [&] { clicked = true; });
    time.DeliverArrivals();
    EXPECT_FALSE(clicked);
  };
  Feed(Line("V1"));
  EXPECT_TRUE(clicked);
}

TEST_F(ReceiverTest, FaultsStopAndTheEndOfTheProcessPasses) {
  events.on_line = [this] {
    if (events.lines == 1) throw RuntimeError(Fault::kOverflow, "showing a reading");  // costs one line
    if (events.lines == 2) time.EndProcess();
    if (events.lines == 3) throw std::bad_alloc();
  };
  EXPECT_THROW(Feed(Line("V0") + Line("V1") + Line("V2") + Line("V3")), ProcessEnded);
  EXPECT_THROW(Feed("\x02"), std::bad_alloc);
  Feed("V4\n");
  EXPECT_EQ(link.State().ParamV, 4);
  EXPECT_EQ(events.lines, 5);
}

class Resync : public ReceiverTest {
 protected:
  Resync() { replies["v?"] = "vVersion 1"; }
  void SetUp() override {
    link.FindMeter();
    ASSERT_TRUE(link.Flags().MeterFound);
    port.ClearWrites();
  }
};

TEST_F(Resync, ABurstOfFramingErrorsSearchesOnce) {
  for (int i = 0; i < 20; ++i)
    FeedEvent(CommEvent::kFrame);
  EXPECT_EQ(events.Count("status !Re-Synching"), 20);
  EXPECT_TRUE(link.Flags().ResyncPending);
  EXPECT_EQ(link.State().FirmwareVersion, "");
  EXPECT_TRUE(events.FindMeterEnabled());
  time.RunFor(5000);
  const auto commands = Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "v?"), 1);
  EXPECT_EQ(commands.back(), "D1");
  EXPECT_FALSE(link.Flags().ResyncPending);
  EXPECT_EQ(link.State().FirmwareVersion, "Version 1");
  FeedEvent(CommEvent::kFrame);
  EXPECT_TRUE(link.Flags().ResyncPending);
}

TEST_F(Resync, ErrorsDuringTheNewSearchDoNotStartAnother) {
  FeedEvent(CommEvent::kFrame);
  for (int at = 100; at < 2400; at += 100)  // the parameters are loaded by then
    time.Post(EventKind::kArrival, at, [this] { port.Raise(CommEvent::kFrame); });
  time.RunFor(20000);
  const auto commands = Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "v?"), 1);
  EXPECT_EQ(commands.back(), "D1");
}

TEST_F(Resync, AParameterLoadEndsThePendingState) {
  FeedEvent(CommEvent::kFrame);
  link.LoadMeterParameters(5);
  EXPECT_FALSE(link.Flags().ResyncPending);
  EXPECT_EQ(port.Writes()[2].at - port.Writes()[1].at, 56);
}

TEST(RxBuffer, CutsLinesInOrder) {
  RxBuffer buffer;
  std::string line = "untouched";
  EXPECT_FALSE(buffer.CutLine(line));
  EXPECT_EQ(line, "untouched");
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += std::to_string(i) + "\n";
  // Odd portions, and reading in between, so that the buffer drops what was read at many places.
  int next = 0;
  std::size_t given = 0;
  for (std::size_t portion = 1; given < text.size(); portion = portion * 7 % 9973) {
    buffer.Tail() += text.substr(given, portion);
    given += portion;
    for (int i = 0; i < 50 && buffer.CutLine(line); ++i)
      ASSERT_EQ(line, std::to_string(next++) + "\n");
  }
  while (buffer.CutLine(line))
    ASSERT_EQ(line, std::to_string(next++) + "\n");
  EXPECT_EQ(next, 20000);
  EXPECT_EQ(buffer.Size(), 0U);
}

// Four times the bytes may cost about four times as much, never sixteen times.
double QuickestOfThree(const std::function<void()>& work) {
  double best = 1e9;
  for (int i = 0; i < 3; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

constexpr std::size_t kMegabyte = 1 << 20;

TEST(RxBuffer, BytesWithoutLFCostLinearTime) {
  const auto feed = [](std::size_t size) {
    RxBuffer buffer;
    std::string line;
    for (std::size_t i = 0; i < size / 16; ++i) {
      buffer.Tail() += "0123456789abcdef";
      EXPECT_FALSE(buffer.CutLine(line));
    }
    buffer.Tail() += '\n';
    EXPECT_TRUE(buffer.CutLine(line));
    EXPECT_EQ(line.size(), size + 1);
  };
  const double one = QuickestOfThree([&] { feed(kMegabyte); });
  EXPECT_LT(QuickestOfThree([&] { feed(4 * kMegabyte); }), 10 * one + 0.02);
}

TEST(RxBuffer, ManyLinesCostLinearTime) {
  const auto feed = [](std::size_t size) {
    RxBuffer buffer;
    std::string line;
    for (std::size_t i = 0; i < size / 16; ++i)
      buffer.Tail() += "0123456789abcde\n";
    std::size_t lines = 0;
    while (buffer.CutLine(line))
      ++lines;
    EXPECT_EQ(lines, size / 16);
  };
  const double one = QuickestOfThree([&] { feed(kMegabyte); });
  EXPECT_LT(QuickestOfThree([&] { feed(4 * kMegabyte); }), 10 * one + 0.02);
}

}  // namespace
}  // namespace orvane
