#include "forms/timer.h"

#include "platform/headless/desktop.h"

#include <gtest/gtest.h>
#include <limits>

namespace orvane {
namespace {

using Times = std::vector<std::int64_t>;

class TimerTest : public testing::Test {
 protected:
  VirtualTime time;
  HeadlessDesktop desktop{time};
};

TEST_F(TimerTest, TicksAnIntervalAfterItWasLastEnabled) {
  struct Switch {
    std::int64_t at;
    bool on;
  };
  struct Row {
    const char* what;
    std::vector<Switch> switches;
    Times ticks;
  };
  const Row rows[] = {
      {"never enabled", {}, {}},
      {"goes on until it is stopped", {{0, true}, {350, false}}, {100, 200, 300}},
      {"enabled again starts afresh", {{0, true}, {60, true}, {290, false}}, {160, 260}},
      {"each of many", {{0, true}, {60, true}, {150, true}, {249, true}, {440, false}}, {349}},
      {"stopped before its tick", {{0, true}, {99, false}}, {}},
      {"stopped and started within the interval",
       {{0, true}, {50, false}, {70, true}, {300, false}},
       {170, 270}},
      {"started long after", {{0, true}, {50, false}, {333, true}, {500, false}}, {433}},
      {"started again after a tick", {{0, true}, {130, true}, {240, false}}, {100, 230}}};
  for (const Row& row : rows) {
    VirtualTime clock;
    HeadlessDesktop windows(clock);
    Timer timer(windows, clock, 100);
    Times ticks;
    timer.Tick = [&] { ticks.push_back(clock.Now()); };
    for (const Switch& each : row.switches)
      clock.Post(EventKind::kInput, each.at, [&timer, each] { timer.SetEnabled(each.on); });
    clock.RunFor(1000);
    EXPECT_EQ(ticks, row.ticks) << row.what;
    EXPECT_FALSE(timer.Enabled()) << row.what;
    EXPECT_EQ(clock.Waiting(), 0U) << row.what << ": a stopped timer leaves nothing running";
  }
}

TEST_F(TimerTest, AThousandRestartsCostOneSystemTimer) {
  Timer timer(desktop, time, 100);
  for (int i = 0; i < 1000; ++i) {
    timer.SetEnabled(true);
    EXPECT_EQ(time.Waiting(), 1U);
    time.RunFor(1);
  }
}

TEST_F(TimerTest, ATickMaySwitchItsTimer) {
  Timer timer(desktop, time, 100);
  Times ticks;
  timer.Tick = [&] {
    ticks.push_back(time.Now());
    timer.SetEnabled(false);
    if (ticks.size() == 1) timer.SetEnabled(true);
  };
  timer.SetEnabled(true);
  time.RunFor(1000);
  EXPECT_EQ(ticks, (Times{100, 200}));
  timer.SetEnabled(true);
  time.RunFor(150);
  EXPECT_EQ(ticks, (Times{100, 200, 1100}));
}

TEST_F(TimerTest, ATickMayEndItsTimer) {
  auto timer = std::make_unique<Timer>(desktop, time, 100);
  const std::string kept = "longer than a short text that lies in the object itself";
  std::string seen;
  timer->Tick = [&timer, &seen, kept] {
    timer.reset();
    seen = kept;
  };
  timer->SetEnabled(true);
  time.RunFor(500);
  EXPECT_EQ(seen, kept);
  EXPECT_EQ(time.Waiting(), 0U);
}

TEST_F(TimerTest, ATickMayReplaceItsHandler) {
  Timer timer(desktop, time, 100);
  std::string heard;
  timer.Tick = [&] {
    timer.Tick = [&heard] { heard += "second "; };
    heard += "first ";
  };
  timer.SetEnabled(true);
  time.RunFor(200);
  EXPECT_EQ(heard, "first second ");
}

TEST_F(TimerTest, NoTickComesAfterItsTimerIsGone) {
  int ticks = 0;
  {
    Timer timer(desktop, time, 100);
    timer.Tick = [&ticks] { ++ticks; };
    timer.SetEnabled(true);
    time.RunFor(150);
  }
  time.RunFor(500);
  EXPECT_EQ(ticks, 1);
}

TEST(TimerOverTheWrap, KeepsItsIntervals) {
  constexpr std::int32_t kStart = std::numeric_limits<std::int32_t>::max() - 120;
  VirtualTime time(kStart);
  HeadlessDesktop desktop(time);
  Timer timer(desktop, time, 100);
  Times ticks;
  timer.Tick = [&] { ticks.push_back(time.Now() - kStart); };
  timer.SetEnabled(true);
  time.RunFor(60);
  timer.SetEnabled(true);
  time.RunFor(300);
  EXPECT_EQ(ticks, (Times{160, 260, 360}));
}

}  // namespace
}  // namespace orvane
