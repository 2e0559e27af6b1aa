#include "tests/support/face.h"

namespace orvane {
namespace {

constexpr int kPixel = 15;  // twips, at 96 pixels per inch

class TrayTest : public FaceTest {
 protected:
  HeadlessTray& Tray() { return program.desktop.Tray(); }
};

TEST_F(TrayTest, TheIconIsThereFromStartToEndWithItsTip) {
  program.RunFor(30000);
  EXPECT_TRUE(Tray().Shown());
  EXPECT_EQ(Tray().adds, 1);
  EXPECT_EQ(Tray().Tip(), "Orvane Lite For Quorran");
  ASSERT_TRUE(program.Close());
  EXPECT_FALSE(Tray().Shown());
}

TEST(Tray, ARefusedIconIsTriedAgainEachFiveSeconds) {
  Program program(MeterAt(38400));
  HeadlessTray& tray = program.desktop.Tray();
  tray.refuse_next = 3;
  ASSERT_TRUE(program.Start());
  for (int adds = 2; adds <= 4; ++adds) {
    EXPECT_FALSE(tray.Shown());
    program.RunFor(4999);
    EXPECT_EQ(tray.adds, adds - 1);
    program.RunFor(1);
    EXPECT_EQ(tray.adds, adds);
  }
  EXPECT_TRUE(tray.Shown());
  program.RunFor(20000);
  EXPECT_EQ(tray.adds, 4);
}

// The port is closed with pauses in which events go on.
TEST(Tray, AnIconThatWasRefusedDoesNotComeWhileTheProgramEnds) {
  for (int before = 0; before <= 60; before += 10) {
    Program program(MeterAt(38400));
    program.desktop.Tray().refuse_next = 1;
    ASSERT_TRUE(program.Start() && program.RunFor(5000 - before));
    EXPECT_EQ(program.desktop.Tray().Shown(), before == 0);
    ASSERT_TRUE(program.Close());
    EXPECT_FALSE(program.desktop.Tray().Shown()) << before << " ms before the next try";
  }
}

TEST(Tray, ARestartedShellGetsTheIconAndTheWindowsRankAgain) {
  for (const bool on_top : {true, false}) {
    RunningFace run;
    ASSERT_TRUE(run.Start(on_top ? "FORM-ON-TOP=True\r\n" : "FORM-ON-TOP=False\r\n"));
    HeadlessTopWindow& window = run.face.Main();
    HeadlessTray& tray = run.program.desktop.Tray();
    EXPECT_EQ(window.TopMost(), on_top);
    for (const bool busy : {false, true}) {
      tray.Remove();
      tray.refuse_next = busy ? 1 : 0;
      window.SetTopMost(false);
      window.System().OnShellRestarted();
      EXPECT_EQ(tray.Shown(), !busy);
      EXPECT_EQ(window.TopMost(), on_top);
    }
    run.program.RunFor(5000);
    EXPECT_TRUE(tray.Shown());
    EXPECT_EQ(tray.Tip(), "Orvane Lite For Quorran");
  }
}

TEST(Tray, AChangedDisplayBringsBackAWindowThatNobodySees) {
  const std::tuple<const char*, bool, bool, Point> rows[] = {{"seen", true, false, {30000, 600}},
                                                             {"on no screen", false, false, {100, 100}},
                                                             {"minimised", false, true, {30000, 600}}};
  for (const auto& [what, on_screen, minimised, place] : rows) {
    RunningFace run;
    ASSERT_TRUE(run.Start("FORM-ON-TOP=True\r\n"));
    HeadlessTopWindow& window = run.face.Main();
    window.MoveTo({30000, 600});
    window.on_screen = on_screen;
    window.SetTopMost(false);
    if (minimised) window.SetState(WindowState::kMinimized);
    window.System().OnDisplayChanged();
    EXPECT_EQ((Point{window.Place().left, window.Place().top}), place) << what;
    EXPECT_EQ(window.TopMost(), !minimised) << what;
    EXPECT_TRUE(run.face.Full()) << what;
  }
}

// The icon sends a release of the right button whose place in pixels is the message.
TEST(Tray, ADoubleClickOnTheIconMinimisesAndRestoresAtEveryResolution) {
  for (const int pixels_per_inch : {96, 120, 144, 0}) {
    RunningFace run;
    run.program.desktop.pixels_per_inch = {pixels_per_inch, pixels_per_inch};
    ASSERT_TRUE(run.program.Start());
    const int x = 515 * kTwipsPerInch / (pixels_per_inch == 0 ? 96 : pixels_per_inch);
    for (const WindowState state : {WindowState::kMinimized, WindowState::kNormal, WindowState::kMinimized}) {
      run.face.Main().System().OnMouse({MouseAction::kUp, kRightButton, {x, 0}});
      EXPECT_EQ(run.face.Main().State(), state) << pixels_per_inch;
    }
    EXPECT_TRUE(run.program.desktop.menus.empty());
  }
}

TEST_F(TrayTest, OtherMessagesAndClicksOnTheFaceLeaveTheWindow) {
  constexpr auto kUp = MouseAction::kUp;
  const std::tuple<const char*, MouseEvent, std::size_t> rows[] = {
      {"move", {kUp, kRightButton, {512 * kPixel, 0}}, 0},
      {"left down", {kUp, kRightButton, {513 * kPixel, 0}}, 0},
      {"left up", {kUp, kRightButton, {514 * kPixel, 0}}, 0},
      {"right down", {kUp, kRightButton, {516 * kPixel, 0}}, 0},
      {"right up", {kUp, kRightButton, {517 * kPixel, 0}}, 1},
      {"face, left button", {kUp, kLeftButton, {515 * kPixel, 0}}, 0},
      {"face, lower", {kUp, kRightButton, {515 * kPixel, kPixel}}, 1},
      {"face, where the icon's moves come", {kUp, kRightButton, {512 * kPixel, 600}}, 1},
      {"face, double click", {MouseAction::kDoubleClick, kLeftButton, {515 * kPixel, 0}}, 0}};
  for (const auto& [what, event, menus] : rows) {
    program.desktop.menus.clear();
    face.Main().System().OnMouse(event);
    EXPECT_EQ(face.Main().State(), WindowState::kNormal) << what;
    EXPECT_EQ(program.desktop.menus.size(), menus) << what;
  }
}

}  // namespace
}  // namespace orvane
