#include "tests/support/panels.h"

#include <functional>

namespace orvane {
namespace {

/// Closes the window, or ends the session, at once.
using End = std::function<void()>;

struct State {
  const char* name;
  /// Brings a program that is started, or not yet, into the state, and has `end` called there.
  void (*enter)(RunningFace& run, const End& end);
};

void Later(RunningFace& run, std::int64_t ms, const End& end) {
  run.program.time.Post(EventKind::kInput, ms, end);
}

/// Waits until a box or a menu is open, and ends then.
void EndInBox(RunningFace& run, const End& end) {
  run.program.desktop.box_ms = run.program.desktop.menu_ms = 60000;
  run.program.desktop.on_box = [&run, end](const ShownBox&) { Later(run, 500, end); };
}

void StartUp(RunningFace& run) {
  ASSERT_TRUE(run.Start());
}

const State kStates[] = {
    {"before the search",
     [](RunningFace& run, const End& end) {
       ASSERT_TRUE(run.program.Start());
       run.program.RunFor(500);
       end();
     }},
    {"searching",
     [](RunningFace& run, const End& end) {
       run.program.line.Meter.SetMute(true);
       ASSERT_TRUE(run.program.Start());
       Later(run, 7300, end);
       run.program.RunFor(10000);
     }},
    {"asked whether to search on",
     [](RunningFace& run, const End& end) {
       run.program.line.Meter.SetMute(true);
       EndInBox(run, end);
       ASSERT_TRUE(run.program.Start());
       run.program.RunFor(60000);
     }},
    {"told that no port opens",
     [](RunningFace& run, const End& end) {
       run.program.port.SetPresent(false);
       EndInBox(run, end);
       ASSERT_TRUE(run.program.Start());
       run.program.RunFor(5000);
     }},
    {"loading parameters",
     [](RunningFace& run, const End& end) {
       ASSERT_TRUE(run.program.Start());
       run.program.RunUntil([&] { return run.program.Status() == "Loading Meter Paramaters"; }, 10000);
       Later(run, 200, end);
       run.program.RunFor(5000);
     }},
    {"streaming",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       end();
     }},
    {"no data",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.program.line.Meter.SetMute(true);
       run.program.RunFor(7000);
       EXPECT_EQ(run.program.Status(), "No Data");
       end();
     }},
    {"port lost",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.program.port.Lose();
       run.program.RunFor(3000);
       EXPECT_EQ(run.program.Status(), "Port Lost");
       end();
     }},
    {"meter panel open",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().Press(Key::kF2);
       EXPECT_TRUE(run.program.orvane->Panels().MeterSetup()->Visible());
       end();
     }},
    {"program panel open",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().Press(Key::kF3);
       EXPECT_TRUE(run.program.orvane->Panels().ProgramSettings()->Visible());
       end();
     }},
    {"update running",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().Press(Key::kF2);
       const MeterSetupWindows panel(run);
       panel.RangeScale().Choose(2);
       panel.OpMode().Choose(1);
       Later(run, 200, end);
       panel.Apply();
     }},
    {"told that the message is too long",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().Press(Key::kF2);
       EndInBox(run, end);
       MeterSetupWindows(run).CallMsg().Paste("12345678901234567890");
     }},
    {"menu open",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       EndInBox(run, end);
       Later(run, 500, end);
       run.face.Main().Find("Help")->Click();
     }},
    {"short view",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.ToggleView();
       EXPECT_FALSE(run.face.Full());
       end();
     }},
    {"dip mode",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.ClickMode(3);
       run.program.RunFor(1000);
       end();
     }},
    {"minimised",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().SetState(WindowState::kMinimized);
       run.program.RunFor(1000);
       end();
     }},
    {"about box open",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.program.desktop.choices = {1002};
       run.face.Main().Find("Help")->Click();
       EXPECT_TRUE(run.program.desktop.Dialog()->Shown());
       end();
     }},
    {"firmware updater being started",
     [](RunningFace& run, const End& end) {
       StartUp(run);
       run.face.Main().Press(Key::kF2);
       run.program.shell.on_launch = end;
       const MeterSetupWindows panel(run);
       panel.Button(panel.Panel().cmdFUpdate).Push();
     }},
};

// Wherever it is met: the meter is told to stop, the settings are kept, and nobody waits.
TEST(Closing, EndsFromEveryStateWithinTwoSeconds) {
  for (const bool session : {false, true}) {
    for (const State& state : kStates) {
      SCOPED_TRACE(std::string(state.name) + (session ? ", the session ends" : ", closed"));
      RunningFace run;
      Program& program = run.program;
      std::int64_t at = 0;
      bool up = false;
      const End end = [&] {
        at = program.time.Now();
        up = program.port.PortOpen();
        program.desktop.Main()->MoveTo({3000, 1500});
        TopWindowClient& window = program.desktop.Main()->System();
        Later(run, 20, [&window] { window.OnClose(); });  // once more, impatiently
        session ? window.OnSessionEnd() : window.OnClose();
      };
      EXPECT_FALSE(program.StillRuns([&] { state.enter(run, end); }));
      ASSERT_TRUE(program.Ended());
      EXPECT_NE(at, 0);
      EXPECT_LE(program.time.Now() - at, 2000);
      EXPECT_TRUE(program.Keeps("FORM-TOP=1500\r\nFORM-LEFT=3000\r\n")) << program.SettingsText();
      EXPECT_FALSE(program.port.PortOpen());
      EXPECT_FALSE(program.desktop.Tray().Shown());
      if (!up) continue;
      ASSERT_FALSE(program.port.Writes().empty());
      EXPECT_TRUE(
          program.port.Writes().back().bytes.starts_with("\x02"
                                                         "D0\x03"));
      EXPECT_FALSE(program.line.Meter.Streaming());
    }
  }
}

}  // namespace
}  // namespace orvane
