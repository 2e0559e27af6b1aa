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
      ++restored;
      display.ChooseForwardRange(forward_range);
      display.ChooseReflectedRange(reflected_range);
    };
    display.ChooseForwardRange(forward_range);
    display.ChooseReflectedRange(reflected_range);
  }
  /// Controls that come and go: F and R range buttons, P reflected readout, C caption of the VSWR bar.
  std::string Seen() const {
    std::string seen;
    if (controls.forward.pbxRangeButtons->Visible()) seen += 'F';
    if (controls.reflected.pbxRangeButtons->Visible()) seen += 'R';
    if (controls.reflected.dbxPower->Visible()) seen += 'P';
    if (controls.lblDipCaption->Visible()) seen += 'C';
    return seen;
  }
  int forward_range = 4;
  int reflected_range = 2;
  int restored = 0;
  DipLayout dip{controls, display};
  ModePanel panel{controls, mode};
};

TEST_F(DipLayoutTest, ShowsAVSWRScaleAndHidesWhatHasNoMeaning) {
  panel.Choose(kDipMode);
  EXPECT_EQ(Seen(), "C");
  EXPECT_EQ(Labels(controls.reflected), "1.0|3.0|5.0");
  EXPECT_EQ(Labels(controls.forward), "0|500.0|1000") << "the forward scale stays";
  const Label& middle = *controls.reflected.lblScale[1];
  const PictureBox& strip = *controls.reflected.pbxScale;
  EXPECT_NEAR(middle.Left() + middle.Width() / 2.0, strip.Left() + strip.Width() / 2.0, 1.0);
  EXPECT_TRUE(controls.dbxVSWR->Visible());
  EXPECT_TRUE(controls.forward.dbxPower->Visible());
  EXPECT_TRUE(controls.reflected.pbxGraph->Visible());
}

TEST_F(DipLayoutTest, TheKeptRangesComeBackWithThePowerModes) {
  for (const std::int16_t back : {kFastMode, kMediumMode, kSlowMode}) {
    panel.Choose(kDipMode);
    EXPECT_EQ(restored, back);
    panel.Choose(back);
    EXPECT_EQ(Seen(), "FRP");
    EXPECT_EQ(Labels(controls.forward), "0|500.0|1000");
    EXPECT_EQ(Labels(controls.reflected), "0|25.0|50");
    EXPECT_EQ(restored, back + 1);
  }
}

TEST_F(DipLayoutTest, ARangeChosenForDipModeDoesNotOutliveIt) {
  panel.Choose(kDipMode);
  forward_range = 1;
  panel.Choose(kFastMode);
  EXPECT_EQ(Labels(controls.forward), "0|50.0|100");
  EXPECT_EQ(controls.forward.shpRange[1]->FillStyle(), Shape::kSolid);
  Line(100, 0);
  EXPECT_EQ(FwdLit(), 51);
}

TEST_F(DipLayoutTest, PowerModesAmongThemselvesChangeNoLayoutAndNoBar) {
  Line(500, 20, 1.5F);
  const std::string bars = Bar(controls.forward) + "|" + Bar(controls.reflected);
  for (const std::int16_t each : {kSlowMode, kFastMode, kMediumMode}) {
    panel.Choose(each);
    EXPECT_EQ(Seen(), "FRP");
    EXPECT_EQ(Bar(controls.forward) + "|" + Bar(controls.reflected), bars);
  }
  EXPECT_EQ(restored, 0);
}

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
  struct Row {
    std::int32_t forward, reflected;
    int forward_lit, reflected_lit;
  };
  for (const Row& row : {Row{910, 10, 47, 11}, {9, 0, 1, 0}, {1000, 50, 49, 51}, {4, 3, 1, 4}}) {
    panel.Choose(kDipMode);
    panel.Choose(kFastMode);
    Line(row.forward, row.reflected, 1.5F);
    EXPECT_EQ(FwdLit(), row.forward_lit) << row.forward;
    EXPECT_EQ(RefLit(), row.reflected_lit) << row.reflected;
    panel.Choose(kDipMode);
    Line(row.forward, row.reflected, 2.0F);
    EXPECT_EQ(RefLit(), 13);
    panel.Choose(kSlowMode);
    Line(row.forward, row.reflected, 1.5F);
    EXPECT_EQ(FwdLit(), row.forward_lit) << row.forward << " again";
    EXPECT_EQ(RefLit(), row.reflected_lit) << row.reflected << " again";
  }
}

TEST_F(DipLayoutTest, InTheShortViewNothingComesThatIsNotThere) {
  dip.Apply(false);
  EXPECT_EQ(Seen(), "");
  panel.Choose(kDipMode);
  EXPECT_EQ(Seen(), "");
  dip.Apply(true);
  EXPECT_EQ(Seen(), "C");
  dip.Apply(false);
  panel.Choose(kFastMode);
  EXPECT_EQ(Seen(), "");
  dip.Apply(true);
  EXPECT_EQ(Seen(), "FRP");
}

// The meter's indexes may be out of bounds just then, and a kept index may be any number.
TEST_F(DipLayoutTest, ARangeThatCannotBeRestoredDoesNotKeepTheLayout) {
  forward_range = kAutoRange;
  panel.Choose(kDipMode);
  meter.ParamR = 3;
  Attempt([&] { panel.Choose(kFastMode); });
  EXPECT_EQ(Seen(), "FRP");
  EXPECT_EQ(mode.mode, kFastMode);
  EXPECT_FALSE(dip.Shown());
  EXPECT_EQ(Labels(controls.reflected), "||") << "not those of the VSWR scale";
}

}  // namespace
}  // namespace orvane
