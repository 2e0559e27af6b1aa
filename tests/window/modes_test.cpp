#include "tests/support/face.h"

namespace orvane {
namespace {

constexpr const char* kFullPower = "VPFRMG";
constexpr const char* kFullDip = "VMGC";
constexpr const char* kShortPower = "V";

class ModesTest : public testing::Test, public RunningFace {
 protected:
  void MeterChoosesMode(char mode) {
    ASSERT_TRUE(program.line.Meter.ChangeAtMeter(std::string("M") + mode));
    program.line.Pump();
    program.RunFor(100);
  }
  std::string Scales() const { return Labels(face.Meter().forward) + " " + Labels(face.Meter().reflected); }
  /// What a person sees of the things that come and go with dip mode: VSWR, reflected readout, range buttons,
  /// mode panel, reflected frame, caption of the VSWR bar.
  std::string Seen() const {
    const MeterControls& meter = face.Meter();
    const std::pair<char, const WindowedControl*> controls[] = {{'V', meter.dbxVSWR.get()},
                                                                {'P', meter.reflected.dbxPower.get()},
                                                                {'F', meter.forward.pbxRangeButtons.get()},
                                                                {'R', meter.reflected.pbxRangeButtons.get()},
                                                                {'M', meter.pbxModePanel.get()},
                                                                {'G', meter.reflected.pbxGraph.get()},
                                                                {'C', meter.lblDipCaption.get()}};
    std::string seen;
    for (const auto& [letter, control] : controls) {
      if (face.Seen(*control)) seen += letter;
    }
    // The view and the home of the reflected bar go with it.
    EXPECT_EQ(face.Full(), seen != kShortPower);
    EXPECT_EQ(&meter.reflected.shpGraph[0]->Container(),
              (face.Full() ? meter.reflected : meter.forward).pbxGraph.get());
    return seen;
  }
};

TEST_F(ModesTest, DipModeInTheShortViewShowsTheVSWRAndTheShortViewComesBack) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\nF-PWR-INDEX=4\r\nR-PWR-INDEX=2\r\n"));
  for (const bool by_meter : {false, true}) {
    EXPECT_EQ(Seen(), kShortPower);
    MeterChoosesMode('3');
    EXPECT_EQ(Seen(), kFullDip);
    if (by_meter) {
      MeterChoosesMode('0');
    } else {
      face.ClickMode(0);
    }
    EXPECT_EQ(Seen(), kShortPower);
    EXPECT_EQ(Labels(face.Meter().forward), "0|500.0|1000");
    face.ToggleView();
    EXPECT_EQ(Seen(), kFullPower);
    face.ToggleView();
  }
  MeterChoosesMode('3');
  ASSERT_TRUE(program.Close());
  EXPECT_TRUE(program.Keeps("FORM-REGION=0\r\n")) << "dip mode does not change the kept view";
}

TEST_F(ModesTest, DoubleClicksChangeNothingInDipMode) {
  ASSERT_TRUE(Start());
  face.ClickMode(3);
  for (HeadlessWindow* window : std::initializer_list<HeadlessWindow*>{
           &face.Main(), &face.Of(*face.Meter().pbxModePanel), &face.Of(*face.Meter().lblShowStatus)}) {
    window->DoubleClick();
    EXPECT_EQ(Seen(), kFullDip);
    EXPECT_EQ(program.orvane->Settings().FormRegion, 1);
  }
  face.ClickMode(0);
  face.ToggleView();
  EXPECT_FALSE(face.Full());
}

// A window that is minimised takes no other look; the one that belongs to the mode waits for its return.
TEST_F(ModesTest, AModeThatComesWhileTheWindowIsMinimisedShowsWhenItIsBack) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\n"));
  for (const auto& [mode, seen] : {std::pair{'3', kFullDip}, {'0', kShortPower}}) {
    face.Main().SetState(WindowState::kMinimized);
    MeterChoosesMode(mode);
    face.Main().SetState(WindowState::kNormal);
    face.Main().System().OnDisplayChanged();
    EXPECT_EQ(Seen(), seen);
  }
}

TEST_F(ModesTest, RangesAreChosenByTheLeftButtonAndOneThatIsNoneLeavesDipModeWhole) {
  ASSERT_TRUE(Start("F-PWR-INDEX=12\r\nR-PWR-INDEX=2\r\n"));
  EXPECT_EQ(Scales(), "|| 0|25.0|50");
  face.ClickMode(3, kRightButton);
  EXPECT_EQ(Seen(), kFullPower);
  face.ClickMode(3);
  EXPECT_EQ(Seen(), kFullDip);
  face.ClickMode(0);
  EXPECT_EQ(Seen(), kFullPower);
  EXPECT_EQ(Scales(), "|| 0|25.0|50") << "the other graph's range is restored";
  const GraphControls& graph = face.Meter().forward;
  HeadlessWindow& button = Face::In(face.Of(*graph.pbxRangeButtons), *graph.cmdRange[1]);
  button.Click(kRightButton);
  EXPECT_EQ(Labels(graph), "||");
  button.Click();
  EXPECT_EQ(Labels(graph), "0|50.0|100");
  EXPECT_EQ(graph.shpRange[1]->FillStyle(), Shape::kSolid);
}

}  // namespace
}  // namespace orvane
