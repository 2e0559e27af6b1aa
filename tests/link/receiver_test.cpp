#include "link/receiver.h"

#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using ReceiverTest = LinkTest;

TEST_F(ReceiverTest, WhatTellsNothingShowsNothing) {
  using E = CommEvent;
  port.Open();
  for (const CommEvent silent : {E::kCTS, E::kDSR, E::kCD, E::kRing, E::kEOF, E::kBreak, E{1234}})
    port.Raise(silent);
  time.DeliverPending();
  EXPECT_EQ(events.log, std::vector<std::string>{});
}

TEST_F(ReceiverTest, AnOverflowTakesTheBytesAtOnce) {
  port.Open();
  port.Raise(CommEvent::kRxOver);
  port.Deliver("V1");
  ASSERT_TRUE(time.RunUntil([this] { return !events.log.empty(); }, 0));
  std::string left;
  port.TakeReceived(left);
  EXPECT_EQ(left, "");
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
      for (const EventKind kind : {EventKind::kInput, EventKind::kTimer})
        time.Post(kind, 0, [&] { order += 'c'; });  // a click or a tick waits
      time.DeliverArrivals();
    }
    order += ".";
    --depth;
  };
  Feed(Line("S1") + Line("S2"));
  EXPECT_EQ(order, "1.2.3.4.5.cccccc");
  EXPECT_EQ(events.rx, 4);
}

TEST_F(ReceiverTest, APortThatGoesWhileALineIsShownIsLostBehindIt) {
  events.on_line = [this] {
    port.Lose();
    time.DeliverArrivals();
    EXPECT_FALSE(link.Flags().PortGone);
  };
  Feed(Line("S1"));
  EXPECT_TRUE(link.Flags().PortGone);
  EXPECT_FALSE(port.PortOpen()) << "it can be opened anew";
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

// Moved only when most of it is read, so that the bytes moved stay below those received; and it does not
// grow.
TEST(RxBuffer, GivesUpWhatWasRead) {
  constexpr std::size_t kLineBytes = 64;
  RxBuffer buffer;
  std::string first;
  buffer.Tail() = "short\n";
  EXPECT_TRUE(buffer.CutLine(first));
  EXPECT_EQ(buffer.Tail(), "") << "all of it is read";
  for (int i = 0; i < 4096; ++i)
    buffer.Tail() += std::string(kLineBytes - 1, 'x') + "\n";
  std::string line;
  std::size_t cut = 0;
  for (const auto& [lines, kept] : {std::pair<std::size_t, std::size_t>{1024, 262144},
                                    {2047, 262144},
                                    {2048, 131072},
                                    {3071, 131072},
                                    {3072, 65536},
                                    {4095, 65536},
                                    {4096, 0}}) {
    for (; cut < lines; ++cut)
      ASSERT_TRUE(buffer.CutLine(line));
    EXPECT_EQ(buffer.Tail().size(), kept) << lines;
    EXPECT_EQ(buffer.Size(), (4096 - lines) * kLineBytes) << lines;
  }
}

TEST(RxBuffer, AnEmptyLineBehindALongOneIsALine) {
  RxBuffer buffer;
  std::string line;
  buffer.Tail() = std::string(1 << 16, 'x') + "\n\n";
  ASSERT_TRUE(buffer.CutLine(line) && buffer.CutLine(line));
  EXPECT_EQ(line, "\n");
}

TEST(RxBuffer, HoursOfNoiseDoNotFillTheMemory) {
  RxBuffer buffer;
  std::string line;
  const std::string piece(1 << 16, 'x');
  buffer.Tail() = "R0\nx";
  ASSERT_TRUE(buffer.CutLine(line));
  for (int i = 0; i < 600; ++i) {
    const std::size_t before = buffer.Size();
    buffer.Tail() += piece;
    ASSERT_FALSE(buffer.CutLine(line));
    ASSERT_LE(buffer.Size(), RxBuffer::kLongestLine);
    if (buffer.Size() < before) {
      EXPECT_EQ(buffer.Size(), piece.size()) << "what is kept of it";
    }
  }
  buffer.Tail() += "the end\nR1\n";
  ASSERT_TRUE(buffer.CutLine(line));
  EXPECT_EQ(line.substr(line.size() - 10), "xxthe end\n");
  ASSERT_TRUE(buffer.CutLine(line));
  EXPECT_EQ(line, "R1\n");
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

}  // namespace
}  // namespace orvane
