#include "tests/support/face.h"

#include <algorithm>

namespace orvane {
namespace {

/// The program at a meter whose alarms strike above VSWR 1.50 and below 100 W.
struct AlarmRun : RunningFace {
  AlarmRun() : RunningFace(Alarming()) {}

  static sim::MeterOptions Alarming() {
    sim::MeterOptions options = QuickMeter();
    options.Settings.VSWRAlarm = 1;
    options.Settings.LowPowerAlarm = 7;
    return options;
  }
  void SetPower(double forward, double reflected) {
    program.line.Meter.SetPower(forward, reflected);
    program.RunFor(500);
  }
  /// SWR, power and reset lamp: '*' lit, '.' dark.
  std::string Lamps() const {
    std::string lamps;
    for (const Shape* lamp :
         {face.Meter().shpSWRAlarm.get(), face.Meter().shpPowerAlarm.get(), face.Meter().shpResetAlarm.get()})
      lamps += lamp->FillStyle() == Shape::kSolid ? '*' : '.';
    return lamps;
  }
  std::ptrdiff_t Resets() const {
    const auto commands = program.Commands();
    return std::count(commands.begin(), commands.end(), "A");
  }
  HeadlessWindow& Swr() const { return face.Of(*face.Meter().lblSWRAlarm); }
  HeadlessWindow& Pwr() const { return face.Of(*face.Meter().lblPwrAlarm); }
  HeadlessWindow& Reset() const { return face.Of(*face.Meter().cmdResetAlarms); }
};

TEST(Alarms, TheLampsSayWhatTheMeterSays) {
  AlarmRun run;
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.Lamps(), "...");
  run.SetPower(500, 0);
  EXPECT_EQ(run.Lamps(), "...");
  run.SetPower(500, 100);
  EXPECT_EQ(run.Lamps(), "*.*");
  run.SetPower(50, 10);
  EXPECT_EQ(run.Lamps(), "***");
  run.SetPower(500, 0);
  EXPECT_EQ(run.Lamps(), "***") << "the meter keeps its alarms until they are reset";
}

TEST(Alarms, LowPowerAloneLightsItsLampAndTheForwardReadout) {
  AlarmRun run;
  ASSERT_TRUE(run.Start());
  run.SetPower(50, 0);
  EXPECT_EQ(run.Lamps(), ".**");
  EXPECT_EQ(run.face.Meter().forward.dbxPower->digitcolor(), OVDigitBox::kAlarmColor);
}

TEST(Alarms, ALeftClickResetsWhileTheLampIsLit) {
  using Target = HeadlessWindow& (AlarmRun::*)() const;
  struct Row {
    const char* what;
    double forward, reflected;
    std::ptrdiff_t by_swr, by_pwr, by_reset;  // commands sent
  };
  for (const Row& row : {Row{"no alarm", 500, 0, 0, 0, 0},
                         {"bad match", 500, 100, 1, 0, 1},
                         {"low power", 50, 0, 0, 1, 1},
                         {"both", 50, 10, 1, 1, 1}}) {
    const std::tuple<const char*, Target, std::ptrdiff_t> clicks[] = {
        {"lblSWRAlarm", &AlarmRun::Swr, row.by_swr},
        {"lblPwrAlarm", &AlarmRun::Pwr, row.by_pwr},
        {"cmdResetAlarms", &AlarmRun::Reset, row.by_reset}};
    for (const auto& [name, target, sent] : clicks) {
      AlarmRun run;
      ASSERT_TRUE(run.Start());
      run.SetPower(row.forward, row.reflected);
      (run.*target)().Click();
      run.program.RunFor(50);
      EXPECT_EQ(run.Resets(), sent) << name << " with " << row.what;
    }
  }
}

TEST(Alarms, OtherButtonsSendNothing) {
  AlarmRun run;
  ASSERT_TRUE(run.Start());
  run.SetPower(50, 10);
  for (HeadlessWindow* window : {&run.Swr(), &run.Pwr(), &run.Reset()}) {
    run.program.desktop.menus.clear();
    window->Click(kRightButton);
    EXPECT_EQ(run.program.desktop.menus.size(), window == &run.Reset() ? 0U : 1U) << window->Text();
  }
  EXPECT_EQ(run.Resets(), 0);
}

TEST(Alarms, TheLampsGoOutWhenTheMeterSaysSoAndStayWhileTheCausePersists) {
  AlarmRun run;
  ASSERT_TRUE(run.Start());
  run.SetPower(500, 100);
  run.Swr().Click();
  run.program.RunFor(500);
  EXPECT_EQ(run.Lamps(), "*.*") << "the antenna is still bad";
  run.SetPower(500, 0);
  run.Reset().Click();
  EXPECT_EQ(run.Lamps(), "*.*") << "not before the meter's next line";
  run.program.RunFor(500);
  EXPECT_EQ(run.Lamps(), "...");
  EXPECT_EQ(run.face.Meter().dbxVSWR->digitcolor(), OVDigitBox::kNormalColor);
}

TEST(Alarms, TheKeyboardResetsToo) {
  AlarmRun run;
  ASSERT_TRUE(run.Start());
  EXPECT_TRUE(run.Reset().TabStop());
  run.Reset().Press(Key::kSpace);
  EXPECT_EQ(run.Resets(), 0);
  run.SetPower(50, 0);
  run.Reset().Press(Key::kSpace);
  run.program.RunFor(50);
  EXPECT_EQ(run.Resets(), 1);
}

}  // namespace
}  // namespace orvane
