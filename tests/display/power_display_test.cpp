#include "base/runtime_error.h"
#include "tests/display/display_fixture.h"

#include <limits>

namespace orvane {
namespace {

TEST_F(DisplayTest, BarsFollowTheChosenRange) {
  struct Row {
    int range;
    std::int32_t watts;
    int lit;
  };
  const Row rows[] = {{0, 10, 51},  {0, 9, 47}, {0, 1, 6},     {0, 0, 0},    {0, 5000, 51},
                      {1, 100, 51}, {1, 1, 2},  {5, 1500, 51}, {5, 750, 27}, {7, 3000, 51},
                      {7, 10, 1},   {7, -5, 0}, {7, 40, 2},    {2, 98, 26}};
  for (const Row& row : rows) {
    display.ChooseForwardRange(row.range);
    Line(row.watts, 0);
    EXPECT_EQ(FwdLit(), row.lit) << "range " << row.range << ", " << row.watts << " W";
  }
}

TEST_F(DisplayTest, BarHasNoGapsWhateverTheWayOfTheReadings) {
  display.ChooseForwardRange(1);
  display.ChooseReflectedRange(1);
  const std::int32_t ways[][2] = {{100, 25}, {50, 1},  {51, 0}, {0, 0}, {0, 0},
                                  {3, 3},    {80, 20}, {0, 0},  {1, 0}, {99, 24}};
  for (const auto& way : ways) {
    Line(way[0], way[1]);
    EXPECT_EQ(Bar(controls.forward).find('.'), std::string::npos) << way[0];
    EXPECT_EQ(Bar(controls.reflected).find('.'), std::string::npos) << way[1];
  }
}

TEST_F(DisplayTest, NoSegmentLightsBeforeARangeIsChosen) {
  Line(1000, 0);
  Line(2000, 100);
  EXPECT_EQ(FwdLit(), 0);
  EXPECT_EQ(RefLit(), 0);
}

TEST_F(DisplayTest, SmallPowerShowsOneSegmentAndNetBelowZeroNone) {
  display.ChooseForwardRange(7);
  Line(500, 0);
  Line(10, 0);
  EXPECT_EQ(FwdLit(), 1);
  Line(10, 12);
  EXPECT_EQ(FwdLit(), 0);
}

TEST_F(DisplayTest, ShowsNetForwardPower) {
  display.ChooseForwardRange(1);
  Line(100, 10);
  EXPECT_EQ(Fwd(), "90");
  EXPECT_EQ(Ref(), "10");
  EXPECT_EQ(FwdLit(), 47);
}

TEST_F(DisplayTest, PeakHoldRisesAtOnceAndFallsAfterTheHold) {
  Line(10, 0);
  Line(100, 0);
  EXPECT_EQ(Fwd(), "100");
  time.Block(mode.HoldTime / 2);
  Line(70, 0);
  Line(30, 0);
  EXPECT_EQ(Fwd(), "100");
  time.Block(mode.HoldTime / 2);
  Line(20, 0);
  EXPECT_EQ(Fwd(), "100") << "the deadline itself still holds";
  time.Block(1);
  Line(20, 0);
  EXPECT_EQ(Fwd(), "70") << "the highest value seen during the hold";
}

TEST_F(DisplayTest, NoPowerShowsZeroWhenTheHoldExpires) {
  Line(50, 0);
  time.Block(mode.HoldTime + 1);
  Line(0, 0);  // the peak of the hold is over, nothing was seen since
  EXPECT_EQ(Fwd(), "0");
  EXPECT_EQ(FwdLit(), 0);
  Line(-20, 0);
  EXPECT_EQ(Fwd(), "0");
}

TEST_F(DisplayTest, VSWRReadout) {
  struct Row {
    float vswr;
    Bool16 alarm;
    const char* text;
    int color;
  };
  const Row rows[] = {{1.5F, kFalse, "1.50", 0},
                      {3.0F, kFalse, "3.00", 0},
                      {3.01F, kFalse, "3.01", 2},
                      {1.2F, kTrue, "1.20", 2},
                      {99.99F, kFalse, "99.99", 2}};
  for (const Row& row : rows) {
    time.Block(kLongestHold + 1);
    meter.SWRAlarm = row.alarm;
    Line(100, 1, row.vswr);
    EXPECT_EQ(Ratio(), row.text);
    EXPECT_EQ(controls.dbxVSWR->digitcolor(), row.color) << row.text;
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

TEST_F(DisplayTest, PowerAlarmColoursTheForwardReadout) {
  meter.PwrAlarm = kTrue;
  Line(5, 0);
  EXPECT_EQ(controls.forward.dbxPower->digitcolor(), 2);
  EXPECT_EQ(controls.reflected.dbxPower->digitcolor(), 0);
  meter.PwrAlarm = kFalse;
  Line(5, 0);
  EXPECT_EQ(controls.forward.dbxPower->digitcolor(), 0);
}

TEST_F(DisplayTest, ClientGetsTheShownForwardPowerOfEveryLine) {
  Line(100, 0);
  Line(40, 0);
  time.Block(mode.HoldTime + 1);
  Line(30, 0);
  EXPECT_EQ(sent, (std::vector<std::int32_t>{100, 100, 40}));
}

TEST_F(DisplayTest, LineBeyondItsRangeIsGivenUpAndTheNextOneShows) {
  Line(100, 0);
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
}

TEST_F(DisplayTest, AlarmLampsFollowEveryLineInEveryMode) {
  for (const std::int16_t each : {kFastMode, kDipMode}) {
    mode.Choose(each);
    for (const auto& [swr, power] :
         {std::pair{kTrue, kFalse}, {kFalse, kTrue}, {kTrue, kTrue}, {kFalse, kFalse}}) {
      meter.SWRAlarm = swr;
      meter.PwrAlarm = power;
      Line(1, 0, 1.5F);
      EXPECT_EQ(controls.shpSWRAlarm->FillStyle(), swr != 0 ? 0 : 1);
      EXPECT_EQ(controls.shpPowerAlarm->FillStyle(), power != 0 ? 0 : 1);
      EXPECT_EQ(controls.shpResetAlarm->FillStyle(), swr != 0 || power != 0 ? 0 : 1);
    }
  }
}

TEST_F(DisplayTest, CalcPerfGivesTheSecondsLeftOver) {
  EXPECT_EQ(PowerDisplay::CalcPerf(0, 1500), "01.500");
  EXPECT_EQ(PowerDisplay::CalcPerf(1000, 1000 + 3600000 + 61001), "01.001");
  EXPECT_THROW(PowerDisplay::CalcPerf(std::numeric_limits<std::int32_t>::min(), 1), RuntimeError);
}

// Readings each 200 ms across both ends of the tick count: no value may stand longer than its hold time and
// one reading, but for the moment before the wrap, in which a new hold cannot be set.
class TickEndsTest : public DisplayTest, public testing::WithParamInterface<std::int32_t> {
 protected:
  TickEndsTest() : DisplayTest(GetParam()) {}
};

TEST_P(TickEndsTest, NoHoldSticks) {
  int lost_lines = 0;
  for (int i = 0; i < 60; ++i) {
    const int watts = i % 20 == 0 ? 900 : 100 + i;
    if (!Attempt([&] { Line(watts, 0, 1.5F); })) ++lost_lines;
    if (i % 20 == 8) {
      EXPECT_NE(Fwd(), "900") << "line " << i << ", tick " << time.GetTickCount();
    }
    time.Block(200);
  }
  EXPECT_LE(lost_lines, mode.HoldTime / 200 + 1);
}

INSTANTIATE_TEST_SUITE_P(Ticks, TickEndsTest,
                         testing::Values(0, 1000000, std::numeric_limits<std::int32_t>::max() - 100,
                                         std::numeric_limits<std::int32_t>::max() - 1000,
                                         std::numeric_limits<std::int32_t>::max() - 4000,
                                         std::numeric_limits<std::int32_t>::min(), -5000, -300));

}  // namespace
}  // namespace orvane
