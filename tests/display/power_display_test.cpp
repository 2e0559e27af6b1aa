#include "base/runtime_error.h"
#include "tests/display/display_fixture.h"

#include <cstdlib>
#include <functional>
#include <limits>
#include <tuple>

namespace orvane {
namespace {

TEST_F(DisplayTest, BarsFollowTheChosenRange) {
  const std::tuple<int, int, int, int> rows[] = {
      {0, 10, 0, 51}, {0, 9, 0, 47},    {0, 1, 0, 6},    {0, 0, 0, 0},     {0, 5000, 0, 51}, {1, 100, 0, 51},
      {1, 1, 0, 2},   {5, 1500, 0, 51}, {5, 750, 0, 27}, {7, 3000, 0, 51}, {7, 10, 0, 1},    {7, 10, 12, 0},
      {7, -5, 0, 0},  {7, 40, 0, 2},    {2, 98, 0, 26},  {1, 100, 10, 47}};
  for (const auto& [range, forward, reflected, lit] : rows) {
    display.ChooseForwardRange(range);
    Line(forward, reflected);
    EXPECT_EQ(FwdLit(), lit) << "range " << range << ", " << forward << " W";
  }
}

TEST_F(DisplayTest, FixedScalesAreLabelled) {
  const char* forward[] = {"0|5.0|10",     "0|50.0|100",   "0|100.0|200",   "0|250.0|500",
                           "0|500.0|1000", "0|750.0|1500", "0|1000.0|2000", "0|1500.0|3000"};
  const char* reflected[] = {"0|5.0|10",    "0|12.5|25",   "0|25.0|50",   "0|62.5|125",
                             "0|125.0|250", "0|187.5|375", "0|250.0|500", "0|375.0|750"};
  for (int i = 0; i < 8; ++i) {
    display.ChooseForwardRange(i);
    display.ChooseReflectedRange(i);
    EXPECT_EQ(Labels(controls.forward), forward[i]);
    EXPECT_EQ(Labels(controls.reflected), reflected[i]);
    for (const GraphControls* graph : {&controls.forward, &controls.reflected}) {
      for (std::size_t k = 0; k < 9; ++k)
        EXPECT_EQ(graph->shpRange[k]->FillStyle(), static_cast<int>(k) == i ? 0 : 1);
    }
  }
}

TEST_F(DisplayTest, AMeterRangeThatIsNoneIsAFaultAfterTheMarkerMoved) {
  meter.ParamR = 3;
  EXPECT_THROW(display.ChooseForwardRange(kAutoRange), RuntimeError);
  EXPECT_EQ(controls.forward.shpRange[8]->FillStyle(), 0);
}

TEST_F(DisplayTest, BarHasNoGapsWhateverTheWayOfTheReadings) {
  Line(1000, 0);
  Line(2000, 100);
  EXPECT_EQ(FwdLit() + RefLit(), 0) << "no range is chosen yet";
  display.ChooseForwardRange(1);
  display.ChooseReflectedRange(1);
  const std::pair<int, int> ways[] = {{100, 25}, {50, 1},  {51, 0}, {0, 0}, {0, 0},
                                      {3, 3},    {80, 20}, {0, 0},  {1, 0}, {99, 24}};
  Line(25, 25);
  EXPECT_EQ(RefLit(), 51) << "all that goes out comes back";
  Line(-25, 25);
  EXPECT_EQ(RefLit(), 0) << "no power in all";
  for (const auto& [forward, reflected] : ways) {
    Line(forward, reflected);
    EXPECT_EQ(Bar(controls.forward).find('.'), std::string::npos) << forward;
    EXPECT_EQ(Bar(controls.reflected).find('.'), std::string::npos) << reflected;
  }
}

TEST_F(DisplayTest, AValueSeenAgainDoesNotProlongTheHoldButIsItsHighest) {
  for (const int watts : {100, 100}) {
    Line(watts, 0);
    time.Block(mode.HoldTime / 2);
  }
  time.Block(2);
  Line(20, 0);
  time.Block(mode.HoldTime / 2);
  Line(20, 0);
  EXPECT_EQ(Fwd(), "100");
}

TEST_F(DisplayTest, EveryModeHoldsFromItsFirstMomentOn) {
  for (std::int16_t index = 0; index < kDipMode; ++index) {
    mode.Choose(index);
    time.Block(kLongestHold + 1);
    Line(1, 0);
    time.Block(kLongestHold + 1);
    Line(1, 0);
    Line(0, 0);
    EXPECT_EQ(Fwd(), "1") << index;
  }
}

TEST_F(DisplayTest, ReflectedPowerAndVSWRAreHeldAsWell) {
  Line(100, 20, 2.0F);
  Line(100, 10, 1.5F);
  EXPECT_EQ(Ref() + " " + Ratio(), "20 2.00");
  display.ChooseReflectedRange(kAutoRange);
  Line(100, 10, 1.5F);
  EXPECT_EQ(Ref(), "20");
  display.ChooseReflectedRange(2);
  Line(100, 5, 1.5F);
  EXPECT_EQ(Ref(), "10") << "a fixed range writes the readout afresh";
  time.Block(mode.HoldTime + 1);
  Line(100, 5, 1.5F);
  EXPECT_EQ(Ref() + " " + Ratio(), "5 1.50");
}

TEST_F(DisplayTest, BytesAreLetInWhereTheForwardReadoutChanges) {
  int arrived = 0;
  const auto line = [&](int watts) {
    time.Post(EventKind::kArrival, 0, [&] { ++arrived; });
    Line(watts, 0);
    return arrived;
  };
  EXPECT_EQ(line(100), 1);
  EXPECT_EQ(line(90), 1) << "held";
  EXPECT_EQ(line(110), 3);
}

TEST_F(DisplayTest, AfterAResetTheFirstReadingShows) {
  display.ChooseReflectedRange(1);
  const auto after = [this](auto reset) {
    Line(200, 80, 3.5F);
    reset();
    Line(100, 30, 2.5F);
    return Fwd() + " " + Ref() + " " + Ratio();
  };
  EXPECT_EQ(after([&] { display.ShowNoReadings(); }), "70 30 2.50");
  time.Block(mode.HoldTime + 1);
  Line(0, 0);
  EXPECT_EQ(display.NetForward() + display.Reflected(), 0);
  EXPECT_EQ(after([&] {
              EXPECT_EQ(display.NetForward(), 120);
              EXPECT_EQ(display.Reflected(), 80);
              EXPECT_EQ(RefLit(), 51);
              display.ResetPowerDisplay();
              EXPECT_EQ(RefLit(), 0);
              EXPECT_EQ(display.NetForward(), 0);
              EXPECT_EQ(display.Reflected(), 0);
            }),
            "70 30 3.50");
  display.ResetPowerDisplay();
  time.Block(1);
  Line(0, 0);
  EXPECT_EQ(Fwd(), "0") << "also no power at all";
}

// Counts how often arrivals are let in.
struct CountingPump : EventPump {
  int times = 0;
  void DeliverPending() override {}
  void DeliverArrivals() override { ++times; }
  void SleepUntil(std::int32_t) override {}
  void EndProcess() override { std::abort(); }
};

TEST_F(DisplayTest, BytesAreLetInWhileABarIsPutOut) {
  CountingPump pump;
  PowerBar bar(controls.forward.shpGraph, pump);
  bar.SetScale(1.0F);
  const std::tuple<const char*, std::function<void()>, int> rows[] = {
      {"up", [&] { bar.Show(40); }, 11},
      {"down", [&] { bar.Show(10); }, 41},
      {"as it was", [&] { bar.Show(10); }, 0},
      {"all", [&] { bar.ClearAll(true); }, 51},
      {"quietly", [&] { bar.ClearAll(false); }, 0},
      {"anew", [&] { bar.Restart(); }, 0}};
  for (const auto& [what, step, times] : rows) {
    pump.times = 0;
    step();
    EXPECT_EQ(pump.times, times) << what;
  }
}

TEST_F(DisplayTest, NoPowerShowsZeroWhenTheHoldExpires) {
  Line(0, 0);
  EXPECT_EQ(Fwd() + " " + Ref(), "0 0");
  Line(50, 0);
  time.Block(mode.HoldTime + 1);
  Line(0, 0);  // the peak of the hold is over, nothing was seen since
  EXPECT_EQ(Fwd(), "0");
  EXPECT_EQ(FwdLit(), 0);
  Line(-20, 0);
  EXPECT_EQ(Fwd(), "0");
}

TEST_F(DisplayTest, VSWRReadout) {
  const std::tuple<float, Bool16, const char*, int> rows[] = {{1.5F, kFalse, "1.50", 0},
                                                              {3.0F, kFalse, "3.00", 0},
                                                              {3.01F, kFalse, "3.01", 2},
                                                              {1.2F, kTrue, "1.20", 2},
                                                              {99.99F, kFalse, "99.99", 2}};
  for (const auto& [vswr, alarm, text, color] : rows) {
    time.Block(kLongestHold + 1);
    meter.SWRAlarm = alarm;
    meter.PwrAlarm = alarm;
    Line(100, 1, vswr);
    EXPECT_EQ(Ratio(), text);
    EXPECT_EQ(controls.dbxVSWR->digitcolor(), color) << text;
    EXPECT_EQ(controls.forward.dbxPower->digitcolor(), alarm == kTrue ? 2 : 0) << text;
    EXPECT_EQ(controls.reflected.dbxPower->digitcolor(), 0) << text;
  }
  for (const float blank : {1.0F, 0.5F, 0.0F}) {
    time.Block(kLongestHold + 1);
    Line(100, 1, blank);
    time.Block(kLongestHold + 1);
    Line(100, 1, blank);
    EXPECT_EQ(Ratio(), "") << blank;
    EXPECT_EQ(controls.dbxVSWR->digitcolor(), 2) << "a blank readout keeps its colour";
  }
  Line(100, 1, 2.0F);
  Line(100, 1, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(Ratio(), "2.00");
}

TEST_F(DisplayTest, LineBeyondItsRangeIsGivenUpAndTheNextOneShows) {
  Line(110, 10);
  EXPECT_EQ(Ref(), "10");
  EXPECT_THROW(Line(40000, 0), RuntimeError);
  EXPECT_THROW(Line(std::numeric_limits<std::int32_t>::min(), 1), RuntimeError);
  EXPECT_EQ(Fwd(), "100");
  Line(200, 0);
  EXPECT_EQ(Fwd(), "200");
}

TEST_F(DisplayTest, VSWRToLevelMatchesTheDipScale) {
  const std::pair<float, int> rows[] = {
      {0.0F, 0}, {-1.0F, 0}, {1.0F, -1}, {1.05F, 0},
      {1.5F, 5}, {3.0F, 24}, {5.0F, 50}, {std::numeric_limits<float>::quiet_NaN(), 0}};
  for (const auto& [vswr, level] : rows)
    EXPECT_EQ(PowerDisplay::VSWRToLevel(vswr), level) << vswr;
  EXPECT_THROW(PowerDisplay::VSWRToLevel(1e9F), RuntimeError);
}

TEST_F(DisplayTest, DipModeDrawsVSWROnTheReflectedBar) {
  mode.Choose(kDipMode);
  Line(100, 44, 5.0F);
  EXPECT_EQ(RefLit(), 51);
  EXPECT_EQ(Fwd(), "56");
  EXPECT_EQ(Ratio(), "5.00");
  time.Block(mode.HoldTime);
  Line(100, 11, 2.0F);
  EXPECT_EQ(RefLit(), 13) << "the bar follows at once";
  EXPECT_EQ(Ratio(), "5.00") << "the readouts wait for the hold";
  time.Block(1);
  Line(100, 11, 2.0F);
  EXPECT_EQ(Ratio(), "2.00");
  Line(100, 0, 1.05F);
  EXPECT_EQ(RefLit(), 0);
  time.Block(mode.HoldTime + 1);
  Line(0, 0, 0.0F);
  EXPECT_EQ(Fwd(), "0");
  EXPECT_EQ(Ratio(), ".00");
  EXPECT_EQ(sent.size(), 0U);
  Line(100, 0, 1.16F);
  EXPECT_EQ(RefLit(), 2) << "the first level that is drawn";
  display.RestartBars();
  Line(100, 0, 1.16F);
  EXPECT_EQ(RefLit(), 2) << "the same level anew";
  EXPECT_EQ(display.NetForward(), 100);
  Line(100, 7, 5.0F);
  EXPECT_EQ(display.Reflected(), 7);
  time.Block(mode.HoldTime + 1);
  Line(0, 0, 5.0F);
  EXPECT_EQ(RefLit(), 0) << "no power";
  Line(1, 0, 5.0F);
  EXPECT_EQ(Fwd(), "1") << "the least power";
  EXPECT_THROW(Line(40000, 0), RuntimeError);
  EXPECT_THROW(Line(1, -40000), RuntimeError);
}

TEST_F(DisplayTest, CalcPerfGivesTheSecondsLeftOver) {
  EXPECT_EQ(PowerDisplay::CalcPerf(0, 1500), "01.500");
  EXPECT_EQ(PowerDisplay::CalcPerf(1000, 1000 + 3600000 + 61001), "01.001");
  EXPECT_THROW(PowerDisplay::CalcPerf(std::numeric_limits<std::int32_t>::min(), 1), RuntimeError);
}

}  // namespace
}  // namespace orvane
