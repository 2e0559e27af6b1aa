#include "tests/support/face.h"

#include <algorithm>

namespace orvane {
namespace {

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
  std::string Markers() const {
    std::string markers;
    for (const auto& marker : face.Meter().shpMode)
      markers += marker->FillStyle() == Shape::kSolid ? '*' : '.';
    return markers;
  }
  std::string Labels(const GraphControls& graph) const {
    return graph.lblScale[0]->Caption() + "|" + graph.lblScale[1]->Caption() + "|" +
           graph.lblScale[2]->Caption();
  }
  /// What a person sees of the things that come and go with dip mode: VSWR, reflected readout, range buttons,
  /// mode panel, reflected frame, caption of the VSWR bar.
  std::string Seen() const {
    const MeterControls& meter = face.Meter();
    std::string seen;
    const std::pair<char, const WindowedControl*> controls[] = {{'V', meter.dbxVSWR.get()},
                                                                {'P', meter.reflected.dbxPower.get()},
                                                                {'F', meter.forward.pbxRangeButtons.get()},
                                                                {'R', meter.reflected.pbxRangeButtons.get()},
                                                                {'M', meter.pbxModePanel.get()},
                                                                {'G', meter.reflected.pbxGraph.get()},
                                                                {'C', meter.lblDipCaption.get()}};
    for (const auto& [letter, control] : controls) {
      if (face.Seen(*control)) seen += letter;
    }
    return seen;
  }

 private:
  std::size_t told_ = 0;
};

constexpr const char* kFullPower = "VPFRMG";
constexpr const char* kFullDip = "VMGC";
constexpr const char* kShortPower = "V";

TEST_F(ModesTest, AButtonTellsTheMeterItsDigitAndM) {
  ASSERT_TRUE(Start());
  Sent();
  struct Row {
    std::size_t index;
    int button;
    std::vector<std::string> sent;
    const char* markers;
  };
  for (const Row& row : {Row{0, kLeftButton, {}, "*..."},
                         {2, kRightButton, {}, "*..."},
                         {2, kLeftButton, {"2M"}, "..*."},
                         {2, kLeftButton, {}, "..*."},
                         {1, kLeftButton, {"1M"}, ".*.."},
                         {3, kLeftButton, {"3M"}, "...*"},
                         {3, kLeftButton, {}, "...*"},
                         {0, kLeftButton, {"0M"}, "*..."}}) {
    face.ClickMode(row.index, row.button);
    EXPECT_EQ(Markers(), row.markers) << "at once, mode " << row.index;
    EXPECT_EQ(Sent(), row.sent) << row.index << ", button " << row.button;
    EXPECT_EQ(Markers(), row.markers);
  }
}

TEST_F(ModesTest, ASilentMeterDoesNotKeepTheModeFromChanging) {
  ASSERT_TRUE(Start());
  program.line.Meter.SetMute(true);
  face.ClickMode(3);
  EXPECT_EQ(Markers(), "...*");
  EXPECT_EQ(Seen(), kFullDip);
}

TEST_F(ModesTest, AModeChosenAtTheMeterIsFollowedWithoutAnAnswer) {
  ASSERT_TRUE(Start());
  Sent();
  MeterChoosesMode('3');
  EXPECT_EQ(Markers(), "...*");
  EXPECT_EQ(Seen(), kFullDip);
  EXPECT_EQ(Labels(face.Meter().reflected), "1.0|3.0|5.0");
  MeterChoosesMode('1');
  EXPECT_EQ(Markers(), ".*..");
  EXPECT_EQ(Seen(), kFullPower);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(ModesTest, DipModeAndBackInTheFullView) {
  ASSERT_TRUE(Start("F-PWR-INDEX=4\r\nR-PWR-INDEX=2\r\n"));
  EXPECT_EQ(Seen(), kFullPower);
  program.line.Meter.SetPower(500, 20);
  program.RunFor(2000);
  EXPECT_EQ(Labels(face.Meter().reflected), "0|25.0|50");
  face.ClickMode(3);
  EXPECT_EQ(Seen(), kFullDip);
  EXPECT_EQ(Labels(face.Meter().reflected), "1.0|3.0|5.0");
  EXPECT_EQ(program.Lit(face.Meter().forward), 0);
  EXPECT_EQ(program.Lit(face.Meter().reflected), 0);
  program.RunFor(1000);
  EXPECT_EQ(program.Lit(face.Meter().reflected), 6) << "VSWR 1.50";
  EXPECT_EQ(program.Ratio(), "1.50");
  face.ClickMode(1);
  EXPECT_EQ(Seen(), kFullPower);
  EXPECT_EQ(Labels(face.Meter().forward), "0|500.0|1000");
  EXPECT_EQ(Labels(face.Meter().reflected), "0|25.0|50");
  program.RunFor(2500);
  EXPECT_EQ(program.Lit(face.Meter().forward), 25);
  EXPECT_EQ(program.Lit(face.Meter().reflected), 21);
}

TEST_F(ModesTest, DipModeInTheShortViewShowsTheVSWRAndTheShortViewComesBack) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\nF-PWR-INDEX=4\r\nR-PWR-INDEX=2\r\n"));
  for (const bool by_meter : {false, true}) {
    EXPECT_EQ(Seen(), kShortPower);
    MeterChoosesMode('3');
    EXPECT_EQ(Seen(), kFullDip);
    EXPECT_TRUE(face.Full());
    EXPECT_EQ(&face.Meter().reflected.shpGraph[0]->Container(), face.Meter().reflected.pbxGraph.get());
    if (by_meter) {
      MeterChoosesMode('0');
    } else {
      face.ClickMode(0);
    }
    EXPECT_EQ(Seen(), kShortPower);
    EXPECT_FALSE(face.Full());
    EXPECT_EQ(&face.Meter().reflected.shpGraph[0]->Container(), face.Meter().forward.pbxGraph.get());
    EXPECT_EQ(Labels(face.Meter().forward), "0|500.0|1000");
    face.ToggleView();
    EXPECT_EQ(Seen(), kFullPower);
    face.ToggleView();
  }
}

TEST_F(ModesTest, DipModeDoesNotChangeTheKeptView) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\n"));
  MeterChoosesMode('3');
  ASSERT_TRUE(program.Close());
  EXPECT_NE(program.SettingsText().find("FORM-REGION=0\r\n"), std::string::npos);
}

TEST_F(ModesTest, DoubleClicksChangeNothingInDipMode) {
  ASSERT_TRUE(Start());
  face.ClickMode(3);
  for (HeadlessWindow* window : std::initializer_list<HeadlessWindow*>{
           &face.Main(), &face.Of(*face.Meter().pbxModePanel), &face.Of(*face.Meter().lblShowStatus)}) {
    window->DoubleClick();
    EXPECT_TRUE(face.Full());
    EXPECT_EQ(Seen(), kFullDip);
    EXPECT_EQ(program.orvane->Settings().FormRegion, 1);
  }
  face.ClickMode(0);
  face.ToggleView();
  EXPECT_FALSE(face.Full());
}

TEST_F(ModesTest, PowerModesAmongThemselvesChangeNoLayout) {
  for (const char* kept : {"FORM-REGION=1\r\n", "FORM-REGION=0\r\n"}) {
    RunningFace run;
    ASSERT_TRUE(run.Start(kept));
    std::vector<std::pair<Rect, bool>> before;
    for (const HeadlessWindow* window : run.face.All())
      before.push_back({window->Place(), window->Shown()});
    for (const char mode : {'1', '2', '0'}) {
      ASSERT_TRUE(run.program.line.Meter.ChangeAtMeter(std::string("M") + mode));
      run.program.line.Pump();
      run.program.RunFor(100);
      std::vector<std::pair<Rect, bool>> after;
      for (const HeadlessWindow* window : run.face.All())
        after.push_back({window->Place(), window->Shown()});
      EXPECT_EQ(after, before) << mode << " with " << kept;
    }
  }
}

// A window that is minimised takes no other look; the one that belongs to the mode waits for its return.
TEST_F(ModesTest, AModeThatComesWhileTheWindowIsMinimisedShowsWhenItIsBack) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\n"));
  HeadlessTopWindow& window = face.Main();
  const auto minimised = [&](char mode) {
    window.SetState(WindowState::kMinimized);
    MeterChoosesMode(mode);
    window.SetState(WindowState::kNormal);
    window.System().OnDisplayChanged();
  };
  minimised('3');
  EXPECT_EQ(Seen(), kFullDip);
  minimised('0');
  EXPECT_EQ(Seen(), kShortPower);
  EXPECT_FALSE(face.Full());
}

TEST_F(ModesTest, KeptRangesThatAreNoneLeaveDipModeWhole) {
  ASSERT_TRUE(Start("F-PWR-INDEX=12\r\nR-PWR-INDEX=2\r\n"));
  EXPECT_EQ(Labels(face.Meter().forward), "||");
  face.ClickMode(3);
  face.ClickMode(0);
  EXPECT_EQ(Seen(), kFullPower);
  EXPECT_EQ(Labels(face.Meter().reflected), "0|25.0|50") << "the other graph's range is restored";
}

TEST_F(ModesTest, ARangeButtonPressedWithAnyOtherButtonDoesNothing) {
  ASSERT_TRUE(Start("F-PWR-INDEX=4\r\nR-PWR-INDEX=2\r\n"));
  const GraphControls& graph = face.Meter().forward;
  HeadlessWindow& button = Face::In(face.Of(*graph.pbxRangeButtons), *graph.cmdRange[1]);
  button.Click(kRightButton);
  EXPECT_EQ(Labels(graph), "0|500.0|1000");
  button.Click();
  EXPECT_EQ(Labels(graph), "0|50.0|100");
  EXPECT_EQ(graph.shpRange[1]->FillStyle(), Shape::kSolid);
  EXPECT_EQ(graph.shpRange[4]->FillStyle(), Shape::kTransparent);
}

}  // namespace
}  // namespace orvane
