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
  using Switches = std::vector<std::pair<std::int64_t, bool>>;
  const std::tuple<const char*, Switches, Times> rows[] = {
      {"goes on until it is stopped", {{0, true}, {350, false}}, {100, 200, 300}},
      {"enabled again starts afresh", {{0, true}, {60, true}, {290, false}}, {160, 260}},
      {"each of many", {{0, true}, {60, true}, {150, true}, {249, true}, {440, false}}, {349}},
      {"stopped before its tick", {{0, true}, {99, false}}, {}},
      {"stopped and started within it", {{0, true}, {50, false}, {70, true}, {300, false}}, {170, 270}},
      {"started long after", {{0, true}, {50, false}, {333, true}, {500, false}}, {433}},
      {"started again after a tick", {{0, true}, {130, true}, {240, false}}, {100, 230}}};
  for (const auto& [what, switches, expected] : rows) {
    VirtualTime clock;
    HeadlessDesktop windows(clock);
    Timer timer(windows, clock, 100);
    Times ticks;
    timer.Tick = [&] { ticks.push_back(clock.Now()); };
    for (const auto& each : switches)
      clock.Post(EventKind::kInput, each.first, [&timer, each] { timer.SetEnabled(each.second); });
    clock.RunFor(1000);
    EXPECT_EQ(ticks, expected) << what;
    EXPECT_FALSE(timer.Enabled()) << what;
    EXPECT_EQ(clock.Waiting(), 0U) << what << ": a stopped timer leaves nothing running";
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

TEST_F(TimerTest, ATickMaySwitchItsTimerAndReplaceItsHandler) {
  Timer timer(desktop, time, 100);
  Times ticks;
  timer.Tick = [&] {
    ticks.push_back(time.Now());
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    timer.Tick = [&] {
      ticks.push_back(-time.Now());
      timer.SetEnabled(false);
    };
  };
  timer.SetEnabled(true);
  time.RunFor(1000);
  EXPECT_EQ(ticks, (Times{100, -200}));
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
