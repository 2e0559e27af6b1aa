#include "display/dip_layout.h"

#include "base/runtime_error.h"
#include "display/mode_panel.h"
#include "tests/display/display_fixture.h"

namespace orvane {
namespace {

/// Display, mode panel and dip layout as the main window puts them together.
class DipLayoutTest : public DisplayTest {
 protected:
  DipLayoutTest() {
    panel.ShowVSWRMode = [this](bool on) { dip.ShowVSWRMode(on); };
    dip.RestoreRanges = [this] {
      display.ChooseForwardRange(forward_range);
      display.ChooseReflectedRange(reflected_range);
    };
    display.ChooseForwardRange(forward_range);
    display.ChooseReflectedRange(reflected_range);
  }
  int forward_range = 4;
  int reflected_range = 2;
  DipLayout dip{controls, display};
  ModePanel panel{controls, mode};
};

TEST_F(DipLayoutTest, BarsGoOutAtTheSwitchAndTheNextLineDrawsThemWhole) {
  const auto whole = [](int level) { return std::string(static_cast<std::size_t>(level + 1), '#'); };
  Line(900, 50, 3.0F);
  EXPECT_EQ(RefLit(), 51);
  panel.Choose(kDipMode);
  EXPECT_EQ(FwdLit(), 0);
  EXPECT_EQ(RefLit(), 0);
  Line(900, 50, 3.0F);
  EXPECT_EQ(Bar(controls.reflected), whole(24));
  EXPECT_EQ(FwdLit(), 0) << "dip mode has no forward bar";
  panel.Choose(kFastMode);
  EXPECT_EQ(RefLit(), 0);
  Line(910, 10, 3.0F);
  EXPECT_EQ(Bar(controls.forward), whole(46));
  EXPECT_EQ(Bar(controls.reflected), whole(10));
}

TEST_F(DipLayoutTest, TheSameReadingIsDrawnAgainAfterTheDetour) {
  const std::tuple<int, int, int, int> rows[] = {
      {910, 10, 47, 11}, {9, 0, 1, 0}, {1000, 50, 49, 51}, {4, 3, 1, 4}};
  for (const auto& [forward, reflected, forward_lit, reflected_lit] : rows) {
    for (const std::int16_t power_mode : {kFastMode, kSlowMode}) {
      panel.Choose(kDipMode);
      Line(forward, reflected, 2.0F);
      EXPECT_EQ(RefLit(), 13);
      panel.Choose(power_mode);
      Line(forward, reflected, 1.5F);
      EXPECT_EQ(std::pair(FwdLit(), RefLit()), std::pair(forward_lit, reflected_lit)) << forward;
    }
  }
}

TEST_F(DipLayoutTest, InTheShortViewNothingComesThatIsNotThere) {
  for (const std::int16_t each : {kDipMode, kFastMode}) {
    dip.Apply(false);
    panel.Choose(each);
    for (const bool full : {false, true}) {
      dip.Apply(full);
      EXPECT_EQ(controls.lblDipCaption->Visible(), full && each == kDipMode);
      EXPECT_EQ(controls.reflected.dbxPower->Visible(), full && each != kDipMode);
      EXPECT_EQ(controls.forward.pbxRangeButtons->Visible(), full && each != kDipMode);
    }
  }
}

// The meter's indexes may be out of bounds just then, and a kept index may be any number.
TEST_F(DipLayoutTest, ARangeThatCannotBeRestoredDoesNotKeepTheLayout) {
  forward_range = kAutoRange;
  panel.Choose(kDipMode);
  meter.ParamR = 3;
  Attempt([&] { panel.Choose(kFastMode); });
  EXPECT_TRUE(controls.reflected.dbxPower->Visible());
  EXPECT_FALSE(controls.lblDipCaption->Visible());
  EXPECT_EQ(mode.mode, kFastMode);
  EXPECT_FALSE(dip.Shown());
  EXPECT_EQ(Labels(controls.reflected), "||") << "not those of the VSWR scale";
}

}  // namespace
}  // namespace orvane
