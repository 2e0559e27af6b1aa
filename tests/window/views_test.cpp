#include "tests/support/face.h"
#include "tests/support/paint.h"

#include <functional>

namespace orvane {
namespace {

class ViewsTest : public testing::Test, public RunningFace {};

TEST_F(ViewsTest, TheKeptStyleIsShownAtStartAndEachToggleKeepsTheNext) {
  struct Row {
    const char* kept;
    bool full;
    const char* after_one;
    const char* after_two;
  };
  for (const Row& row :
       {Row{"7", true, "0", "1"}, {"1", true, "0", "1"}, {"0", false, "1", "0"}, {"255", true, "0", "1"}}) {
    for (const int toggles : {0, 1, 2}) {
      RunningFace run;
      ASSERT_TRUE(run.Start(std::string("FORM-REGION=") + row.kept + "\r\n"));
      for (int i = 0; i < toggles; ++i)
        run.face.ToggleView();
      EXPECT_EQ(run.face.Full(), (toggles == 1) != row.full) << row.kept << ", " << toggles << " toggles";
      ASSERT_TRUE(run.program.Close());
      const std::string expected = toggles == 0 ? row.kept : toggles == 1 ? row.after_one : row.after_two;
      EXPECT_NE(run.program.SettingsText().find("FORM-REGION=" + expected + "\r\n"), std::string::npos)
          << run.program.SettingsText();
    }
  }
}

TEST_F(ViewsTest, TheSettingsFileIsWrittenAtTheEndOnly) {
  ASSERT_TRUE(Start("FORM-REGION=1\r\n"));
  face.ToggleView();
  program.RunFor(20000);
  EXPECT_NE(program.SettingsText().find("FORM-REGION=1"), std::string::npos);
}

TEST_F(ViewsTest, FaceAndShapeChangeWithTheView) {
  constexpr std::uint32_t kOnLarge = 0x112233;
  constexpr std::uint32_t kOnSmall = 0x445566;
  for (const auto& [name, size, mark] :
       {std::tuple{"/OVFace.ovl", Size{640, 260}, kOnLarge}, {"/OVFaceSm.ovl", Size{640, 124}, kOnSmall}}) {
    auto marked = std::make_shared<PictureData>(*Program::FacePicture(size));
    marked->pixels[640 * 2 + 3] = 0xFF000000 | mark;
    program.desktop.pictures[name] = marked;
  }
  ASSERT_TRUE(Start());
  const auto mark = [&] {
    return Paint(face.Main().System(), {0, 0}, {0, 0, 20, 20}, 96).pixels[20 * 2 + 3];
  };
  const auto height_of_shape = [&] {
    int bottom = 0;
    for (const Rect& run : face.Main().Shape())
      bottom = std::max(bottom, run.bottom());
    return bottom;
  };
  EXPECT_EQ(height_of_shape(), 260);
  EXPECT_EQ(face.Main().Place().height, 3900);
  EXPECT_EQ(mark(), kOnLarge);
  face.ToggleView();
  EXPECT_EQ(height_of_shape(), 124);
  EXPECT_EQ(face.Main().Place().height, 1860);
  EXPECT_EQ(mark(), kOnSmall);
  face.ToggleView();
  EXPECT_EQ(height_of_shape(), 260);
  EXPECT_EQ(mark(), kOnLarge);
}

TEST_F(ViewsTest, TheWindowStaysWhereTheUserPutIt) {
  ASSERT_TRUE(Start());
  face.Main().MoveTo({4200, 2700});
  for (int i = 0; i < 3; ++i) {
    face.ToggleView();
    EXPECT_EQ(face.Main().Place().left, 4200);
    EXPECT_EQ(face.Main().Place().top, 2700);
  }
  ASSERT_TRUE(program.Close());
  EXPECT_NE(program.SettingsText().find("FORM-TOP=2700\r\nFORM-LEFT=4200"), std::string::npos);
}

TEST_F(ViewsTest, ControlsStandWhereEachViewHasThem) {
  ASSERT_TRUE(Start());
  const MeterControls& meter = face.Meter();
  const int below_bar = meter.forward.pbxGraph->Top() + meter.forward.pbxGraph->Height() + 25;
  struct Row {
    const char* name;
    const Control& control;
    Point in_short;
    Point in_full;
  };
  const auto keep_left = [](const Control& control, int in_short, int in_full) {
    return std::pair{Point{control.Left(), in_short}, Point{control.Left(), in_full}};
  };
  const auto row = [](const char* name, const Control& control, std::pair<Point, Point> places) {
    return Row{name, control, places.first, places.second};
  };
  const Row rows[] = {
      {"dbxVSWR", *meter.dbxVSWR, {7890, 960}, {6615, 3000}},
      row("lblShowStatus", *meter.lblShowStatus, keep_left(*meter.lblShowStatus, below_bar, 3480)),
      row("lblPort", *meter.lblPort, keep_left(*meter.lblPort, 1400, 3510)),
      row("imgTx", *meter.imgTx, keep_left(*meter.imgTx, 1400, 3510)),
      row("imgRx", *meter.imgRx, keep_left(*meter.imgRx, 1400, 3510)),
      row("lblSWRAlarm", *meter.lblSWRAlarm, keep_left(*meter.lblSWRAlarm, 1410, 3495)),
      row("lblPwrAlarm", *meter.lblPwrAlarm, keep_left(*meter.lblPwrAlarm, 1410, 3495)),
      row("shpSWRAlarm", *meter.shpSWRAlarm, keep_left(*meter.shpSWRAlarm, 1440, 3525)),
      row("shpPowerAlarm", *meter.shpPowerAlarm, keep_left(*meter.shpPowerAlarm, 1440, 3525))};
  for (const bool full : {true, false, true, false}) {
    for (const Row& each : rows) {
      const Point expected = full ? each.in_full : each.in_short;
      EXPECT_EQ((Point{each.control.Left(), each.control.Top()}), expected) << each.name << ", full " << full;
      EXPECT_TRUE(each.control.Visible()) << each.name;
    }
    face.ToggleView();
  }
  EXPECT_EQ(face.Of(*meter.dbxVSWR).Place(), meter.dbxVSWR->Bounds());
}

TEST_F(ViewsTest, OnlyTheFullViewHasTheseControls) {
  ASSERT_TRUE(Start());
  const MeterControls& meter = face.Meter();
  const std::pair<const char*, const WindowedControl*> full_only[] = {
      {"imgLogo", face.Controls().imgLogo.get()},
      {"pbxModePanel", meter.pbxModePanel.get()},
      {"pbxRefPwrGraph", meter.reflected.pbxGraph.get()},
      {"pbxFwdPwrRangeButtons", meter.forward.pbxRangeButtons.get()},
      {"pbxRefPwrRangeButtons", meter.reflected.pbxRangeButtons.get()},
      {"dbxRPower", meter.reflected.dbxPower.get()}};
  const std::pair<const char*, const WindowedControl*> in_both[] = {
      {"dbxFPower", meter.forward.dbxPower.get()},        {"dbxVSWR", meter.dbxVSWR.get()},
      {"pbxPwrGraph", meter.forward.pbxGraph.get()},      {"lblShowStatus", meter.lblShowStatus.get()},
      {"cmdMinimize", face.Controls().cmdMinimize.get()}, {"cmdClose", face.Controls().cmdClose.get()}};
  for (const bool full : {true, false, true}) {
    for (const auto& [name, control] : full_only)
      EXPECT_EQ(face.Seen(*control), full) << name;
    for (const auto& [name, control] : in_both)
      EXPECT_TRUE(face.Seen(*control)) << name;
    face.ToggleView();
  }
}

TEST_F(ViewsTest, TheShortViewShowsBothBarsInTheForwardFrame) {
  ASSERT_TRUE(Start());
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

TEST_F(ViewsTest, ReadingsGoOnInTheShortView) {
  ASSERT_TRUE(Start("FORM-REGION=0\r\nF-PWR-INDEX=1\r\nR-PWR-INDEX=1\r\n"));
  program.line.Meter.SetPower(60, 10);
  program.RunFor(3000);
  EXPECT_EQ(program.Fwd(), "50");
  EXPECT_EQ(program.Lit(face.Meter().forward), 27);
  EXPECT_EQ(program.Lit(face.Meter().reflected), 21);
  EXPECT_NE(program.Ratio(), "");
}

// Every control that has this meaning, by its window and in both views where it is seen.
TEST_F(ViewsTest, ADoubleClickChangesTheViewNearlyEverywhere) {
  ASSERT_TRUE(Start());
  const MeterControls& meter = face.Meter();
  std::vector<std::pair<std::string, std::function<HeadlessWindow&()>>> targets{
      {"face", [&]() -> HeadlessWindow& { return face.Main(); }}};
  const auto on_form = [&](const char* name, const WindowedControl& control) {
    targets.push_back({name, [this, &control]() -> HeadlessWindow& { return face.Of(control); }});
  };
  const auto inside = [&](const std::string& name, const WindowedControl& box,
                          const WindowedControl& control) {
    targets.push_back({name, [&]() -> HeadlessWindow& { return Face::In(face.Of(box), control); }});
  };
  on_form("lblMessage 0", *face.Controls().lblMessage[0]);
  on_form("lblMessage 1", *face.Controls().lblMessage[1]);
  on_form("pbxModePanel", *meter.pbxModePanel);
  on_form("lblPwrAlarm", *meter.lblPwrAlarm);
  on_form("lblSWRAlarm", *meter.lblSWRAlarm);
  on_form("lblShowStatus", *meter.lblShowStatus);
  for (const GraphControls* graph : {&meter.forward, &meter.reflected}) {
    on_form("pbxGraph", *graph->pbxGraph);
    on_form("pbxRangeButtons", *graph->pbxRangeButtons);
    inside("pbxScale", *graph->pbxGraph, *graph->pbxScale);
    for (const auto& label : graph->lblScale)
      inside("lblScale", *graph->pbxGraph, *label);
  }
  const auto commands = program.Commands();
  int toggled = 0;
  for (const bool full : {true, false}) {
    for (const auto& [name, find] : targets) {
      ASSERT_EQ(face.Full(), full);
      if (!Face::Seen(find())) continue;
      find().DoubleClick();
      EXPECT_NE(face.Full(), full) << name;
      EXPECT_EQ(face.Main().State(), WindowState::kNormal) << name;
      if (face.Full() == full) continue;
      face.ToggleView();
      ++toggled;
    }
    face.ToggleView();
  }
  EXPECT_GE(toggled, 16 + 9);
  EXPECT_EQ(program.Commands(), commands) << "nothing is sent for it";
}

TEST_F(ViewsTest, ButtonsAndLogoKeepTheirDoubleClicksForThemselves) {
  ASSERT_TRUE(Start());
  face.In(face.Of(*face.Meter().forward.pbxRangeButtons), *face.Meter().forward.cmdRange[2]).DoubleClick();
  face.Of(*face.Meter().cmdResetAlarms).DoubleClick();
  face.ClickMode(1);
  EXPECT_TRUE(face.Full());
}

TEST_F(ViewsTest, TheWindowIsDraggedByTheLeftButtonOnly) {
  ASSERT_TRUE(Start());
  const MeterControls& meter = face.Meter();
  HeadlessTopWindow& window = face.Main();
  struct Row {
    const char* name;
    HeadlessWindow& target;
    bool drags;
  };
  const Row rows[] = {{"face", window, true},
                      {"lblMessage", face.Of(*face.Controls().lblMessage[0]), true},
                      {"pbxModePanel", face.Of(*meter.pbxModePanel), true},
                      {"forward range buttons", face.Of(*meter.forward.pbxRangeButtons), true},
                      {"reflected range buttons", face.Of(*meter.reflected.pbxRangeButtons), true},
                      {"pbxPwrGraph", face.Of(*meter.forward.pbxGraph), false},
                      {"lblSWRAlarm", face.Of(*meter.lblSWRAlarm), false},
                      {"cmdClose", face.Of(*face.Controls().cmdClose), false},
                      {"imgLogo", face.Of(*face.Controls().imgLogo), false}};
  for (const Row& row : rows) {
    window.drags = 0;
    row.target.Mouse(MouseAction::kDown, kLeftButton);
    EXPECT_EQ(window.drags, row.drags ? 1 : 0) << row.name;
    row.target.Mouse(MouseAction::kDown, kRightButton);
    row.target.Mouse(MouseAction::kMove, 0);
    EXPECT_EQ(window.drags, row.drags ? 1 : 0) << row.name << ", right button";
  }
  face.ToggleView();
  window.drags = 0;
  face.Of(*face.Controls().lblMessage[1]).Mouse(MouseAction::kDown, kLeftButton);
  EXPECT_EQ(window.drags, 1) << "the short view has its own message label";
}

TEST_F(ViewsTest, AMinimisedWindowKeepsItsLook) {
  ASSERT_TRUE(Start());
  const std::vector<Rect> shape = face.Main().Shape();
  face.Main().SetState(WindowState::kMinimized);
  face.ToggleView();
  EXPECT_TRUE(face.Full());
  EXPECT_EQ(face.Main().Shape(), shape);
  EXPECT_TRUE(face.Meter().pbxModePanel->Visible());
  EXPECT_EQ(face.Meter().dbxVSWR->Top(), 3000);
}

TEST_F(ViewsTest, TheMessageIsTheSameInBothViews) {
  ASSERT_TRUE(Start());
  for (const bool full : {true, false}) {
    const auto& labels = face.Controls().lblMessage;
    EXPECT_EQ(labels[0]->Visible(), full);
    EXPECT_EQ(labels[1]->Visible(), !full);
    EXPECT_EQ(labels[0]->Caption(), "ORVANE");
    EXPECT_EQ(labels[1]->Caption(), "ORVANE");
    face.ToggleView();
  }
}

TEST_F(ViewsTest, WindowButtonsMinimiseAndClose) {
  ASSERT_TRUE(Start());
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
