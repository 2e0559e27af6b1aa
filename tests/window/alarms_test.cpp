#include "tests/support/face.h"

namespace orvane {
namespace {

sim::MeterOptions Alarming() {
  sim::MeterOptions options = MeterAt(38400);
  options.Settings.VSWRAlarm = 1;
  options.Settings.LowPowerAlarm = 7;
  return options;
}

/// The program at a meter whose alarms strike above VSWR 1.50 and below 100 W.
struct AlarmRun : RunningFace {
  AlarmRun() : RunningFace(Alarming()) { EXPECT_TRUE(Start()); }
  std::string LampsAt(double forward, double reflected) {
    program.line.Meter.SetPower(forward, reflected);
    program.RunFor(500);
    return Lamps(face.Meter());
  }
  HeadlessWindow& Swr() const { return face.Of(*face.Meter().lblSWRAlarm); }
  HeadlessWindow& Pwr() const { return face.Of(*face.Meter().lblPwrAlarm); }
  HeadlessWindow& Reset() const { return face.Of(*face.Meter().cmdResetAlarms); }
};

TEST(Alarms, ALeftClickOrTheKeyboardResetsWhileTheLampIsLit) {
  struct Row {
    double forward, reflected;
    const char* lamps;
  };
  for (const Row& row : {Row{500, 0, "..."}, {500, 100, "*.*"}, {50, 0, ".**"}, {50, 10, "***"}}) {
    for (std::size_t target = 0; target < 4; ++target) {
      AlarmRun run;
      EXPECT_EQ(run.LampsAt(row.forward, row.reflected), row.lamps);
      HeadlessWindow& window = *std::array{&run.Swr(), &run.Pwr(), &run.Reset(), &run.Reset()}[target];
      window.Click(kRightButton);
      EXPECT_EQ(run.program.desktop.menus.size(), target < 2 ? 1U : 0U) << window.Text();
      EXPECT_EQ(run.program.Count("A"), 0) << window.Text();
      if (target == 3) {
        EXPECT_TRUE(window.TabStop());
        window.Press(Key::kSpace);
      } else {
        window.Click();
      }
      run.program.RunFor(50);
      EXPECT_EQ(run.program.Count("A"), row.lamps[std::min<std::size_t>(target, 2)] == '*' ? 1 : 0)
          << "target " << target << " with " << row.lamps;
    }
  }
}

}  // namespace
}  // namespace orvane
