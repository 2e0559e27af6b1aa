#include "tests/support/face.h"

namespace orvane {
namespace {

class TrayTest : public testing::Test, public RunningFace {
 protected:
  /// What the icon sends: a release of the right button whose place in pixels is the message.
  void FromTray(int message, int pixels_per_inch = 96) {
    const int x = message * kTwipsPerInch / pixels_per_inch;
    face.Main().System().OnMouse({MouseAction::kUp, kRightButton, {x, 0}});
  }
  HeadlessTray& Tray() { return program.desktop.Tray(); }
};

TEST_F(TrayTest, TheIconIsThereFromStartToEndWithItsTip) {
  ASSERT_TRUE(Start());
  EXPECT_TRUE(Tray().Shown());
  EXPECT_EQ(Tray().adds, 1);
  EXPECT_EQ(Tray().Tip(), "Orvane Lite For Quorran");
  program.RunFor(30000);
  EXPECT_EQ(Tray().adds, 1);
  ASSERT_TRUE(program.Close());
  EXPECT_FALSE(Tray().Shown());
}

TEST_F(TrayTest, ARefusedIconIsTriedAgainEachFiveSeconds) {
  Tray().refuse_next = 3;
  ASSERT_TRUE(program.Start());
  EXPECT_FALSE(Tray().Shown());
  for (int adds = 2; adds <= 4; ++adds) {
    program.RunFor(4999);
    EXPECT_EQ(Tray().adds, adds - 1);
    program.RunFor(1);
    EXPECT_EQ(Tray().adds, adds);
  }
  EXPECT_TRUE(Tray().Shown());
  program.RunFor(20000);
  EXPECT_EQ(Tray().adds, 4);
}

// The port is closed with pauses in which events go on.
TEST_F(TrayTest, AnIconThatWasRefusedDoesNotComeWhileTheProgramEnds) {
  for (int before = 0; before <= 60; before += 10) {
    RunningFace run;
    run.program.desktop.Tray().refuse_next = 1;
    ASSERT_TRUE(run.program.Start());
    ASSERT_TRUE(run.program.RunFor(5000 - before));
    const bool shown = run.program.desktop.Tray().Shown();
    EXPECT_EQ(shown, before == 0);
    ASSERT_TRUE(run.program.Close());
    EXPECT_FALSE(run.program.desktop.Tray().Shown()) << before << " ms before the next try";
  }
}

TEST_F(TrayTest, ARestartedShellGetsTheIconAndTheWindowsRankAgain) {
  for (const bool on_top : {true, false}) {
    RunningFace run;
    ASSERT_TRUE(run.Start(on_top ? "FORM-ON-TOP=True\r\n" : "FORM-ON-TOP=False\r\n"));
    HeadlessTopWindow& window = run.face.Main();
    EXPECT_EQ(window.TopMost(), on_top);
    run.program.desktop.Tray().Remove();
    window.SetTopMost(false);
    window.System().OnShellRestarted();
    EXPECT_TRUE(run.program.desktop.Tray().Shown());
    EXPECT_EQ(run.program.desktop.Tray().Tip(), "Orvane Lite For Quorran");
    EXPECT_EQ(window.TopMost(), on_top);
  }
}

TEST_F(TrayTest, AShellThatRestartsBusyIsTriedAgain) {
  ASSERT_TRUE(Start());
  Tray().Remove();
  Tray().refuse_next = 1;
  face.Main().System().OnShellRestarted();
  EXPECT_FALSE(Tray().Shown());
  program.RunFor(5000);
  EXPECT_TRUE(Tray().Shown());
}

TEST_F(TrayTest, AChangedDisplayBringsBackAWindowThatNobodySees) {
  struct Row {
    const char* what;
    bool on_screen;
    bool minimised;
    Point place;
  };
  for (const Row& row : {Row{"seen", true, false, {30000, 600}},
                         {"on no screen", false, false, {100, 100}},
                         {"minimised", false, true, {30000, 600}}}) {
    RunningFace run;
    ASSERT_TRUE(run.Start("FORM-ON-TOP=True\r\n"));
    HeadlessTopWindow& window = run.face.Main();
    window.MoveTo({30000, 600});
    window.on_screen = row.on_screen;
    window.SetTopMost(false);
    if (row.minimised) window.SetState(WindowState::kMinimized);
    window.System().OnDisplayChanged();
    EXPECT_EQ((Point{window.Place().left, window.Place().top}), row.place) << row.what;
    EXPECT_EQ(window.TopMost(), !row.minimised) << row.what;
    EXPECT_EQ(run.face.Full(), true) << row.what;
  }
}

TEST_F(TrayTest, ADoubleClickOnTheIconMinimisesAndRestores) {
  ASSERT_TRUE(Start());
  for (const WindowState state : {WindowState::kMinimized, WindowState::kNormal, WindowState::kMinimized}) {
    FromTray(515);
    EXPECT_EQ(face.Main().State(), state);
  }
  EXPECT_TRUE(program.desktop.menus.empty());
}

TEST_F(TrayTest, TheMessageIsReadAtEveryResolution) {
  for (const int pixels_per_inch : {96, 120, 144, 0}) {
    RunningFace run;
    run.program.desktop.pixels_per_inch = {pixels_per_inch, pixels_per_inch};
    ASSERT_TRUE(run.program.Start());
    const int x = 515 * kTwipsPerInch / (pixels_per_inch == 0 ? 96 : pixels_per_inch);
    run.face.Main().System().OnMouse({MouseAction::kUp, kRightButton, {x, 0}});
    EXPECT_EQ(run.face.Main().State(), WindowState::kMinimized) << pixels_per_inch;
  }
}

TEST_F(TrayTest, OtherMessagesOfTheIcon) {
  struct Row {
    int message;
    std::size_t menus;
  };
  ASSERT_TRUE(Start());
  for (const Row& row : {Row{512, 0}, {513, 0}, {514, 0}, {516, 0}, {517, 1}}) {
    program.desktop.menus.clear();
    FromTray(row.message);
    EXPECT_EQ(program.desktop.menus.size(), row.menus) << row.message;
    EXPECT_EQ(face.Main().State(), WindowState::kNormal) << row.message;
  }
}

TEST_F(TrayTest, AClickOnTheFaceIsNoMessage) {
  ASSERT_TRUE(Start());
  const int x = 515 * 15;
  struct Row {
    const char* what;
    MouseEvent event;
    std::size_t menus;
  };
  for (const Row& row :
       {Row{"left button", {MouseAction::kUp, kLeftButton, {x, 0}}, 0},
        {"lower", {MouseAction::kUp, kRightButton, {x, 15}}, 1},
        {"where the icon's moves come", {MouseAction::kUp, kRightButton, {512 * 15, 600}}, 1},
        {"double click", {MouseAction::kDoubleClick, kLeftButton, {x, 0}}, 0}}) {
    program.desktop.menus.clear();
    face.Main().System().OnMouse(row.event);
    EXPECT_EQ(face.Main().State(), WindowState::kNormal) << row.what;
    EXPECT_EQ(program.desktop.menus.size(), row.menus) << row.what;
  }
}

}  // namespace
}  // namespace orvane
