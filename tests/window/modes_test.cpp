#include "tests/support/face.h"

namespace orvane {
namespace {

constexpr const char* kFullPower = "VPFRMG";
constexpr const char* kFullDip = "VMGC";
constexpr const char* kShortPower = "V";

class ModesTest : public testing::Test, public RunningFace {
 protected:
  /// Commands sent since the last call.
  std::vector<std::string> Sent() {
    program.RunFor(50);
    auto commands = program.Commands();
    commands.erase(commands.begin(), commands.begin() + static_cast<std::ptrdiff_t>(told_));
    told_ += commands.size();
    return commands;
  }
  void MeterChoosesMode(char mode) {
    ASSERT_TRUE(program.line.Meter.ChangeAtMeter(std::string("M") + mode));
    program.line.Pump();
    program.RunFor(100);
  }
  std::string Modes() const { return Markers(face.Meter()); }
  std::string Scales() const { return Labels(face.Meter().forward) + " " + Labels(face.Meter().reflected); }
  /// Lit segments of both bars.
  std::pair<int, int> Lit() const {
    return {program.Lit(face.Meter().forward), program.Lit(face.Meter().reflected)};
  }
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

 private:
  std::size_t told_ = 0;
};

TEST_F(ModesTest, AButtonTellsTheMeterItsDigitAndM) {
  ASSERT_TRUE(Start());
  Sent();
  const std::tuple<std::size_t, int, std::vector<std::string>, const char*> rows[] = {
      {0, kLeftButton, {}, "*..."},     {2, kRightButton, {}, "*..."},    {2, kLeftButton, {"2M"}, "..*."},
      {2, kLeftButton, {}, "..*."},     {1, kLeftButton, {"1M"}, ".*.."}, {3, kLeftButton, {"3M"}, "...*"},
      {0, kLeftButton, {"0M"}, "*..."}, {0, kLeftButton, {}, "*..."}};
  for (const auto& [index, button, sent, markers] : rows) {
    face.ClickMode(index, button);
    EXPECT_EQ(Modes(), markers) << "at once, mode " << index;
    EXPECT_EQ(Sent(), sent) << index << ", button " << button;
    EXPECT_EQ(Modes(), markers);
  }
  program.line.Meter.SetMute(true);
  face.ClickMode(3);
  EXPECT_EQ(Modes() + Seen(), std::string("...*") + kFullDip) << "a silent meter is no hindrance";
}

TEST_F(ModesTest, AModeChosenAtTheMeterIsFollowedWithoutAnAnswer) {
  ASSERT_TRUE(Start());
  Sent();
  MeterChoosesMode('3');
  EXPECT_EQ(Modes() + Seen(), std::string("...*") + kFullDip);
  MeterChoosesMode('1');
  EXPECT_EQ(Modes() + Seen(), std::string(".*..") + kFullPower);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(ModesTest, DipModeAndBackInTheFullView) {
  ASSERT_TRUE(Start("F-PWR-INDEX=4\r\nR-PWR-INDEX=2\r\n"));
  EXPECT_EQ(Seen(), kFullPower);
  program.line.Meter.SetPower(500, 20);
  program.RunFor(2000);
  EXPECT_EQ(Scales(), "0|500.0|1000 0|25.0|50");
  face.ClickMode(3);
  EXPECT_EQ(Seen(), kFullDip);
  EXPECT_EQ(Scales(), "0|500.0|1000 1.0|3.0|5.0");
  EXPECT_EQ(Lit(), std::pair(0, 0));
  program.RunFor(1000);
  EXPECT_EQ(Lit(), std::pair(0, 6)) << "VSWR 1.50";
  EXPECT_EQ(program.Ratio(), "1.50");
  face.ClickMode(1);
  EXPECT_EQ(Seen(), kFullPower);
  EXPECT_EQ(Scales(), "0|500.0|1000 0|25.0|50");
  program.RunFor(2500);
  EXPECT_EQ(Lit(), std::pair(25, 21));
}

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

TEST(Modes, PowerModesAmongThemselvesChangeNoLayout) {
  for (const char* kept : {"FORM-REGION=1\r\n", "FORM-REGION=0\r\n"}) {
    RunningFace run;
    ASSERT_TRUE(run.Start(kept));
    const auto layout = [&] {
      std::vector<std::pair<Rect, bool>> windows;
      for (const HeadlessWindow* window : run.face.All())
        windows.push_back({window->Place(), window->Shown()});
      return windows;
    };
    const auto before = layout();
    for (const char* mode : {"M1", "M2", "M0"}) {
      ASSERT_TRUE(run.program.line.Meter.ChangeAtMeter(mode));
      run.program.line.Pump();
      run.program.RunFor(100);
      EXPECT_EQ(layout(), before) << mode << " with " << kept;
    }
  }
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
  face.ClickMode(3);
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
