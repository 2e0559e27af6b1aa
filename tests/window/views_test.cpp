#include "tests/support/face.h"
#include "tests/support/paint.h"

namespace orvane {
namespace {

using ViewsTest = FaceTest;

TEST(Views, TheKeptStyleIsShownAtStartAndEachToggleKeepsTheNext) {
  const std::tuple<std::string, bool, const char*, const char*> rows[] = {
      {"7", true, "0", "1"}, {"1", true, "0", "1"}, {"0", false, "1", "0"}, {"255", true, "0", "1"}};
  for (const auto& [kept, full, after_one, after_two] : rows) {
    for (const int toggles : {0, 1, 2}) {
      RunningFace run;
      ASSERT_TRUE(run.Start("FORM-REGION=" + kept + "\r\n"));
      for (int i = 0; i < toggles; ++i)
        run.face.ToggleView();
      EXPECT_EQ(run.face.Full(), (toggles == 1) != full) << kept << ", " << toggles << " toggles";
      run.program.RunFor(20000);
      EXPECT_TRUE(run.program.Keeps("FORM-REGION=" + kept + "\r\n")) << "written at the end only";
      ASSERT_TRUE(run.program.Close());
      const std::string expected = toggles == 0 ? kept : toggles == 1 ? after_one : after_two;
      EXPECT_TRUE(run.program.Keeps("FORM-REGION=" + expected + "\r\n")) << run.program.SettingsText();
    }
  }
}

TEST(Views, FaceAndShapeChangeWithTheViewAndThePlaceStays) {
  struct Look {
    const char* name;
    Size size;
    std::uint32_t mark;
  };
  const Look looks[] = {{"/OVFace.ovl", {640, 260}, 0x112233}, {"/OVFaceSm.ovl", {640, 124}, 0x445566}};
  RunningFace run;
  for (const Look& look : looks) {
    auto marked = std::make_shared<PictureData>(*Program::FacePicture(look.size));
    marked->pixels[640 * 2 + 3] = 0xFF000000 | look.mark;
    run.program.desktop.pictures[look.name] = marked;
  }
  ASSERT_TRUE(run.Start());
  HeadlessTopWindow& window = run.face.Main();
  window.MoveTo({4200, 2700});
  for (const Look* look : {&looks[0], &looks[1], &looks[0]}) {
    EXPECT_EQ(run.face.ShapeHeight(), look->size.height);
    EXPECT_EQ(window.Place(), (Rect{4200, 2700, 9600, look->size.height * 15}));
    EXPECT_EQ(Paint(window.System(), {0, 0}, {0, 0, 20, 20}, 96).pixels[20 * 2 + 3], look->mark);
    run.face.ToggleView();
  }
  ASSERT_TRUE(run.program.Close());
  EXPECT_TRUE(run.program.Keeps("FORM-TOP=2700\r\nFORM-LEFT=4200"));
}

TEST_F(ViewsTest, TheShortViewShowsBothBarsInTheForwardFrame) {
  const MeterControls& meter = face.Meter();
  program.line.Meter.SetPower(40, 9);
  program.RunFor(2000);
  const int lit = program.Lit(meter.reflected);
  ASSERT_GT(lit, 0);
  for (const bool full : {true, false, true}) {
    const PictureBox& home = full ? *meter.reflected.pbxGraph : *meter.forward.pbxGraph;
    const Rect inside{0, 0, home.Width(), home.Height()};
    for (std::size_t i = 0; i < kBarShapes; ++i) {
      const Shape& reflected = *meter.reflected.shpGraph[i];
      EXPECT_EQ(&reflected.Container(), &home) << i << ", full " << full;
      EXPECT_EQ(reflected.Left() - meter.reflected.shpGraph[0]->Left(), 120 * static_cast<int>(i));
      EXPECT_EQ(&meter.forward.shpGraph[i]->Container(), meter.forward.pbxGraph.get());
      if (i > static_cast<std::size_t>(kLastSegment)) continue;
      EXPECT_EQ(Intersection(reflected.Bounds(), inside), reflected.Bounds()) << i;
      if (!full) {
        EXPECT_TRUE(Intersection(reflected.Bounds(), meter.forward.shpGraph[i]->Bounds()).Empty()) << i;
      }
    }
    EXPECT_EQ(program.Lit(meter.reflected), lit) << "what is lit stays lit";
    face.ToggleView();
  }
}

// Every control that has this meaning, by its window and in both views where it is seen.
TEST_F(ViewsTest, ADoubleClickChangesTheViewNearlyEverywhere) {
  const MeterControls& meter = face.Meter();
  const auto& messages = face.Controls().lblMessage;
  // Controls with what holds them, null for the form.
  std::vector<std::pair<const WindowedControl*, const WindowedControl*>> targets;
  for (const WindowedControl* control : std::initializer_list<const WindowedControl*>{
           messages[0].get(), messages[1].get(), meter.pbxModePanel.get(), meter.lblPwrAlarm.get(),
           meter.lblSWRAlarm.get(), meter.lblShowStatus.get()})
    targets.push_back({control, nullptr});
  for (const GraphControls* graph : {&meter.forward, &meter.reflected}) {
    targets.push_back({graph->pbxGraph.get(), nullptr});
    targets.push_back({graph->pbxRangeButtons.get(), nullptr});
    targets.push_back({graph->pbxScale.get(), graph->pbxGraph.get()});
    for (const auto& label : graph->lblScale)
      targets.push_back({label.get(), graph->pbxGraph.get()});
  }
  const auto commands = program.Commands();
  int toggled = 0;
  for (const bool full : {true, false}) {
    for (const auto& [control, holder] : targets) {
      ASSERT_EQ(face.Full(), full);
      HeadlessWindow& window = holder == nullptr ? face.Of(*control) : Face::In(face.Of(*holder), *control);
      if (!Face::Seen(window)) continue;
      window.DoubleClick();
      EXPECT_NE(face.Full(), full) << window.Text();
      EXPECT_EQ(face.Main().State(), WindowState::kNormal) << window.Text();
      if (face.Full() == full) continue;
      face.ToggleView();
      ++toggled;
    }
    face.ToggleView();
  }
  EXPECT_GE(toggled, 15 + 8);
  face.In(face.Of(*meter.forward.pbxRangeButtons), *meter.forward.cmdRange[2]).DoubleClick();
  face.Of(*meter.cmdResetAlarms).DoubleClick();
  EXPECT_TRUE(face.Full()) << "buttons keep their double clicks for themselves";
  EXPECT_EQ(program.Commands(), commands) << "nothing is sent for it";
}

TEST_F(ViewsTest, TheWindowIsDraggedByTheLeftButtonOnly) {
  const MeterControls& meter = face.Meter();
  HeadlessTopWindow& window = face.Main();
  const std::pair<HeadlessWindow*, int> rows[] = {{&window, 1},
                                                  {&face.Of(*face.Controls().lblMessage[0]), 1},
                                                  {&face.Of(*meter.pbxModePanel), 1},
                                                  {&face.Of(*meter.forward.pbxRangeButtons), 1},
                                                  {&face.Of(*meter.reflected.pbxRangeButtons), 1},
                                                  {&face.Of(*meter.forward.pbxGraph), 0},
                                                  {&face.Of(*meter.lblSWRAlarm), 0},
                                                  {&face.Of(*face.Controls().cmdClose), 0},
                                                  {&face.Of(*face.Controls().imgLogo), 0}};
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    window.drags = 0;
    rows[i].first->Mouse(MouseAction::kDown, kLeftButton);
    EXPECT_EQ(window.drags, rows[i].second) << "row " << i;
    rows[i].first->Mouse(MouseAction::kDown, kRightButton);
    rows[i].first->Mouse(MouseAction::kMove, 0);
    EXPECT_EQ(window.drags, rows[i].second) << "row " << i << ", right button";
  }
  face.ToggleView();
  window.drags = 0;
  face.Of(*face.Controls().lblMessage[1]).Mouse(MouseAction::kDown, kLeftButton);
  EXPECT_EQ(window.drags, 1) << "the short view has its own message label";
}

TEST_F(ViewsTest, AMinimisedWindowKeepsItsLook) {
  const std::vector<Rect> shape = face.Main().Shape();
  face.Main().SetState(WindowState::kMinimized);
  face.ToggleView();
  EXPECT_TRUE(face.Full());
  EXPECT_EQ(face.Main().Shape(), shape);
  EXPECT_TRUE(face.Meter().pbxModePanel->Visible());
  EXPECT_EQ(face.Meter().dbxVSWR->Top(), 3000);
}

TEST_F(ViewsTest, WindowButtonsMinimiseAndClose) {
  HeadlessWindow& minimize = face.Of(*face.Controls().cmdMinimize);
  minimize.Click(kRightButton);
  EXPECT_EQ(face.Main().State(), WindowState::kNormal);
  minimize.Click();
  EXPECT_EQ(face.Main().State(), WindowState::kMinimized);
  face.Main().SetState(WindowState::kNormal);
  face.Of(*face.Controls().cmdClose).Click(kRightButton);
  EXPECT_FALSE(program.Ended());
  EXPECT_THROW(face.Of(*face.Controls().cmdClose).Click(), ProcessEnded);
  EXPECT_EQ(program.Commands().back(), "D0");
}

}  // namespace
}  // namespace orvane
