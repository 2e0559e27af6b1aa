#include "tests/contract/line_fixture.h"

#include <limits>
#include <utility>

namespace orvane {
namespace {

// A wait may end late on a busy machine, never early.
constexpr std::int32_t kLatest = 100;

class ClockAndEventsContract : public LineContract {
 protected:
  ClockAndEventsContract() { port.Open(); }
  std::int32_t Elapsed(const std::function<void()>& step) {
    const std::int32_t start = clock.GetTickCount();
    step();
    return clock.GetTickCount() - start;
  }
  /// How long `step` takes at best of three times, each of which takes `least` or more.
  std::int32_t BestOfThree(std::int32_t least, const std::function<void()>& step) {
    std::int32_t best = std::numeric_limits<std::int32_t>::max();
    for (int i = 0; i < 3; ++i) {
      const std::int32_t elapsed = Elapsed(step);
      EXPECT_GE(elapsed, least);
      best = std::min(best, elapsed);
    }
    return best;
  }
  std::unique_ptr<TimerHandle> CountingTimer(int ms, int& ticks) {
    return line.Windows().StartTimer(ms, [this, &ticks] {
      EXPECT_TRUE(pump.Delivering());
      ++ticks;
    });
  }
};

TEST_F(ClockAndEventsContract, WaitsTakeAtLeastTheirTime) {
  for (const std::int32_t ms : {0, 1, 20, 50, 200}) {
    EXPECT_LE(BestOfThree(ms, [&] { Wait(ms); }), ms + kLatest) << ms;
    const double start = line.FineNow();
    BlockTicks(clock, ms);
    EXPECT_GE(line.FineNow() - start, ms - 1);
    EXPECT_LE(BestOfThree(0, [&] { BlockTicks(clock, ms); }), ms + kLatest) << ms;
  }
}

TEST_F(ClockAndEventsContract, SleepingEndsAtItsTickOrBefore) {
  EXPECT_LE(BestOfThree(100, [&] { pump.SleepUntil(clock.GetTickCount() + 100); }), 100 + kLatest);
  for (const std::int32_t past : {0, -1, -1000}) {
    EXPECT_LE(BestOfThree(0, [&] { pump.SleepUntil(clock.GetTickCount() + past); }), 20) << past;
  }
}

TEST_F(ClockAndEventsContract, SleepingEndsForAnArrivalOrATimerAndDeliversNothing) {
  peer.SendAfter(100, "a");
  EXPECT_LT(Elapsed([&] { pump.SleepUntil(clock.GetTickCount() + 3000); }), 2000);
  EXPECT_TRUE(events.empty());
  EXPECT_TRUE(Arrives(1));
  int ticks = 0;
  const auto timer = CountingTimer(100, ticks);
  const std::int32_t elapsed = Elapsed([&] { pump.SleepUntil(clock.GetTickCount() + 3000); });
  EXPECT_GE(elapsed, 80);
  EXPECT_LT(elapsed, 2000);
  EXPECT_EQ(ticks, 0);
  pump.DeliverPending();
  EXPECT_EQ(ticks, 1);
}

TEST_F(ClockAndEventsContract, AWaitDeliversArrivalsAndTicksMeanwhileAndEndsSoonAfterWhatItWaitsFor) {
  int ticks = 0;
  const auto timer = CountingTimer(50, ticks);
  peer.SendAfter(50, "abc");
  Wait(400);
  EXPECT_EQ(received, "abc");
  EXPECT_GE(ticks, 4);
  peer.SendAfter(100, "d");
  EXPECT_LT(Elapsed([&] { Within3s([&] { return received == "abcd"; }); }), 2000);
  EXPECT_EQ(received, "abcd");
}

TEST_F(ClockAndEventsContract, ABlockedThreadGetsNoEvents) {
  int ticks = 0;
  const auto timer = CountingTimer(20, ticks);
  port.Write("w");
  peer.Send("a");
  BlockTicks(clock, 200);
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(ticks, 0);
  pump.DeliverPending();
  EXPECT_EQ(received, "a");
  EXPECT_GE(ticks, 1);
  EXPECT_LE(ticks, 2) << "missed ticks are not made up for";
}

TEST_F(ClockAndEventsContract, DeliveringArrivalsDeliversNoTimer) {
  int ticks = 0;
  const auto timer = CountingTimer(20, ticks);
  peer.Send("a");
  clock.Block(200);
  pump.DeliverArrivals();
  EXPECT_EQ(received, "a");
  EXPECT_EQ(ticks, 0);
  pump.DeliverArrivals();
  EXPECT_EQ(Count(CommEvent::kReceive), 1);
  EXPECT_EQ(ticks, 0);
  pump.DeliverPending();
  EXPECT_GE(ticks, 1);
}

TEST_F(ClockAndEventsContract, DeliveringArrivalsForLongLosesNoLaterEvent) {
  for (int i = 1; i <= 200; ++i) {
    peer.Send("a");
    for (int round = 0; round < 1000 && std::cmp_less(received.size(), i); ++round) {
      clock.Block(1);
      pump.DeliverArrivals();
    }
    ASSERT_TRUE(std::cmp_equal(received.size(), i)) << i;
  }
  peer.Send("b");
  EXPECT_TRUE(Arrives(201));
}

TEST_F(ClockAndEventsContract, TimersTickAboutAsOftenAsAsked) {
  int often = 0;
  int seldom = 0;
  const auto fast = CountingTimer(50, often);
  const auto slow = CountingTimer(500, seldom);
  Wait(1100);
  // The system's timers have a grain of 16 ms.
  EXPECT_GE(often, 15);
  EXPECT_LE(often, 23);
  EXPECT_EQ(seldom, 2);
}

TEST_F(ClockAndEventsContract, TimersMayBeDestroyedWhenTheirTickIsDueAndInIt) {
  int ticks = 0;
  auto timer = CountingTimer(20, ticks);
  clock.Block(100);
  timer.reset();
  Wait(100);
  EXPECT_EQ(ticks, 0) << "a tick was due when it was destroyed";
  timer = line.Windows().StartTimer(20, [&, text = std::string("what the tick holds lives on")] {
    timer.reset();
    ++ticks;
    EXPECT_EQ(text, "what the tick holds lives on");
  });
  Wait(150);
  EXPECT_EQ(ticks, 1);
  std::unique_ptr<TimerHandle> other;
  timer = line.Windows().StartTimer(20, [&] { ++ticks, other.reset(), timer.reset(); });
  other = line.Windows().StartTimer(20, [&] { ++ticks, timer.reset(), other.reset(); });
  clock.Block(100);
  Wait(100);
  EXPECT_EQ(ticks, 2);
}

TEST_F(ClockAndEventsContract, ATickThatWaitsLetsTheOthersGoOn) {
  int ticks = 0;
  int waits = 0;
  const auto timer = CountingTimer(20, ticks);
  std::unique_ptr<TimerHandle> waiting;
  waiting = line.Windows().StartTimer(20, [&] {
    waiting.reset();
    peer.SendAfter(20, "abc");
    const int before = ticks;
    Wait(300);
    EXPECT_GE(ticks - before, 5);
    EXPECT_EQ(received, "abc");
    ++waits;
  });
  EXPECT_TRUE(Within3s([&] { return waits == 1; }));
}

}  // namespace
}  // namespace orvane
