// Too much of everything: errors of the line, bytes without an end, clicks.
#include "tests/reliability/heap_in_use.h"
#include "tests/support/panels.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace orvane {
namespace {

class Storm : public testing::Test, public RunningFace {
 protected:
  void SetUp() override {
    program.line.Meter.SetPower(500, 20);
    ASSERT_TRUE(Start());
    program.RunFor(2000);
    ASSERT_EQ(program.Fwd(), "480");
  }
  bool Lives(std::int64_t within_ms) {
    return program.RunUntil(
        [this] { return program.Fwd() == "480" && program.orvane->Link().Flags().MeterFound; }, within_ms);
  }
};

TEST_F(Storm, AThousandFramingErrorsSearchOnce) {
  for (int i = 0; i < 1000; ++i) {
    program.port.Raise(CommEvent::kFrame);
    if (i % 10 == 9) program.RunFor(1);
  }
  EXPECT_EQ(program.Status(), "Re-Synching");
  program.RunFor(10000);
  EXPECT_EQ(program.Count("v?"), 2) << "that of the start, and one";
  EXPECT_EQ(program.Status(), "");
  EXPECT_TRUE(Lives(1000));
}

// As an open line reads: full speed, five minutes.
TEST_F(Storm, MinutesOfNothingButNuls) {
  program.line.Meter.SetMute(true);
  const std::string nuls(384, '\0');
  for (int i = 0; i < 3000; ++i) {
    program.port.Deliver(nuls);
    program.RunFor(100);
    if (i == 60) {
      EXPECT_EQ(program.Status(), "No Data");
      EXPECT_EQ(program.Fwd(), "");
    }
  }
  EXPECT_TRUE(program.desktop.boxes.empty());
  program.line.Meter.SetMute(false);
  EXPECT_TRUE(Lives(50000)) << "also at the speed that comes last";
}

TEST_F(Storm, AMegabyteWithoutAnEndCostsTheLineItRunsInto) {
  program.clients.messages.clear();
  const std::size_t before = HeapInUse();
  for (int i = 0; i < 3; ++i) {
    program.port.Deliver(std::string(1 << 20, 'x'));
    program.RunFor(1000);
    EXPECT_EQ(program.Fwd(), "480");
    EXPECT_EQ(program.clients.messages.size(), 5U) << "noise in front of a packet costs nothing";
    program.port.Deliver("\x02\x44," + std::string(1 << 20, '1'));
    program.RunFor(1000);
    EXPECT_EQ(program.Fwd(), "480");
    program.clients.messages.clear();
  }
  EXPECT_LT(HeapInUse(), before + (std::size_t{8} << 20));
}

// Whatever can be clicked, a hundred times in a second, in the middle of searches, loads and updates.
class ClickStorm : public Storm {
 protected:
  int Below(std::size_t n) { return static_cast<int>(random_() % n); }

  void ClickSomething() {
    constexpr std::array<Key, 4> kKeys{Key::kF2, Key::kF3, Key::kF4, Key::kMenu};
    const auto all = face.All();
    HeadlessWindow& window = *all[random_() % all.size()];
    if (&window == &face.Of(*face.Controls().cmdClose)) return;
    const int what = Below(10);
    program.desktop.choices.clear();
    if (what < 3) program.desktop.choices = {Chosen()};
    if (what == 0) {
      face.Main().Press(kKeys[random_() % kKeys.size()]);
    } else if (what == 1) {
      window.DoubleClick();
    } else if (Face::Seen(window)) {
      window.Click(what == 2 ? kRightButton : kLeftButton);
    }
  }
  // A line of some menu, also of another one than is open; not Close, and not the end of the readings.
  int Chosen() {
    constexpr std::array<int, 12> kLines{1001, 1004, 1002, 1003, 2000, 2003,
                                         3002, 3000, 4001, 4004, 6049, 7052};
    return kLines[random_() % kLines.size()];
  }

  std::mt19937 random_{11};
};

TEST_F(ClickStorm, LeavesAProgramThatStreams) {
  for (int round = 0; round < 60; ++round) {
    if (round % 3 == 1) program.port.Raise(CommEvent::kFrame);
    for (int i = 0; i < 100; ++i)
      program.time.Post(EventKind::kInput, Below(1000), [this] { ClickSomething(); });
    program.RunFor(20000);
    const auto& last = program.line.Meter.Log().Packets.back();
    EXPECT_GE(last.TimeMs, program.time.Now() - 2500) << "no stream after round " << round;
    EXPECT_EQ(program.Fwd(), std::to_string(last.ForwardPower - last.ReflectedPower)) << round;
    EXPECT_FALSE(program.desktop.hourglass) << round;
    EXPECT_TRUE(program.orvane->Link().Flags().MeterFound) << round;
    ASSERT_FALSE(program.Ended());
    if (HasFailure()) return;
  }
  EXPECT_TRUE(program.Close());
}

}  // namespace
}  // namespace orvane
