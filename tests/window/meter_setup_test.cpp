#include "tests/support/panels.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

class MeterSetup : public ::testing::Test {
 protected:
  void Open(const std::string& user_settings = {}) {
    ASSERT_TRUE(running.Start(user_settings));
    program.line.Meter.ClearLog();
    program.desktop.choices = {menus_meter_settings};
    Face::In(face.Main(), *face.Controls().cmdMenu[1]).Click();
    ASSERT_TRUE(panel.Panel().Visible());
    program.RunFor(1000);
    opened = program.Commands();
    program.line.Meter.ClearLog();
  }
  /// Commands since the panel was opened, with the milliseconds between them.
  Texts Sent(std::vector<std::int64_t>* distances = nullptr) {
    std::int64_t before = 0;
    for (const auto& record : program.line.Meter.Log().Commands) {
      if (distances != nullptr && before != 0) distances->push_back(record.TimeMs - before);
      before = record.TimeMs;
    }
    return program.Commands();
  }
  void Reopen() {
    face.Main().Press(Key::kF2);
    program.RunFor(500);
    program.line.Meter.ClearLog();
  }

  static constexpr int menus_meter_settings = 1001;
  RunningFace running;
  Program& program = running.program;
  Face& face = running.face;
  MeterSetupWindows panel{running};
  Texts opened;
};

TEST_F(MeterSetup, OpeningAsksTheMeterForEverythingAndShowsIt) {
  running.program.line.Meter.ChangeAtMeter("t-3");
  running.program.line.Meter.ChangeAtMeter("V2");
  Open();
  EXPECT_EQ(opened, (Texts{"D0", "B?", "b?", "U?", "W?", "w?", "C?", "I?", "l?", "L?", "M?", "P?", "R?", "S?",
                           "T?", "t?", "V?", "D1"}));
  EXPECT_EQ(panel.RangeScale().Items(),
            (Texts{"50/250/1250", "100/500/2500", "200/1000/3000", "400/2000/3000"}));
  EXPECT_EQ(panel.LoPwrAlarm().Items(),
            (Texts{"0 Off", "1 W", "2 W", "5 W", "10 W", "25 W", "50 W", "100 W"}));
  EXPECT_EQ(panel.VSWRAlarm().Items(), (Texts{"Alarm Off", "1.5 / 1", "2.0 / 1", "2.5 / 1", "3.0 / 1"}));
  EXPECT_EQ(panel.OpMode().Items(), (Texts{"Fast Reset", "Medium Reset", "Slow Reset", "VSWR Dip"}));
  EXPECT_EQ(panel.RelayPolarity().Items(), (Texts{"A Closes", "A Opens"}));
  EXPECT_EQ(panel.DispInt().Items(), (Texts{"Level 1", "Level 2", "Level 3", "Level 4"}));
  EXPECT_EQ(panel.RangeScale().Selected(), 1);
  EXPECT_EQ(panel.VSWRAlarm().Selected(), 2);
  EXPECT_EQ(panel.DispInt().Selected(), 3) << "the meter's highest intensity, 4";
  EXPECT_EQ(panel.RPTrim().Position(), 3) << "the bar runs upward";
  EXPECT_EQ(panel.Panel().lblRPTrim.Caption(), "-3");
  EXPECT_EQ(panel.CallMsg().Text(), "ORVANE");
  EXPECT_TRUE(panel.DispMessage().Checked());
  EXPECT_EQ(panel.Panel().txtFWVer.Text(), "Orvane Meter Version 2.14");
  program.line.Meter.SetPower(120, 0);
  program.RunFor(500);
  EXPECT_EQ(program.Fwd(), "120") << "readings are live while the panel is open";
}

TEST_F(MeterSetup, ApplySendsWhatChangedInOrderEachWithItsQuery) {
  Open();
  panel.OpMode().Choose(1);
  panel.VSWRAlarm().Choose(0);
  panel.LoPwrAlarm().Choose(3);
  panel.DispInt().Choose(1);
  panel.RangeScale().Choose(2);
  panel.DispMessage().Toggle();
  panel.RelayPolarity().Choose(1);
  panel.RPTrim().MoveTo(3);
  panel.FPTrim().MoveTo(-7);
  panel.CallMsg().Paste("");
  panel.CallMsg().Type("CQ 10");
  EXPECT_EQ(Sent(), Texts{}) << "nothing before Apply";
  const int focusings = panel.Button(panel.Panel().cmdCancelSettings).Focusings();
  panel.Apply();
  EXPECT_EQ(panel.Button(panel.Panel().cmdCancelSettings).Focusings(), focusings + 1);
  program.RunFor(500);
  std::vector<std::int64_t> distances;
  EXPECT_EQ(Sent(&distances), (Texts{"CCQ 1\xD8", "C?", "T7", "T?", "t-3", "t?", "P1", "P?", "S0", "S?",
                                     "b2",        "b?", "I1", "I?", "l3",  "l?", "V0", "V?", "M1", "M?"}));
  for (const auto distance : distances)
    EXPECT_GE(distance, 125);
  EXPECT_EQ(program.Status(), "Paramater Update Complete");
  EXPECT_EQ(face.Controls().lblMessage[0]->Caption(), "Orvane") << "the meter shows no message";
  EXPECT_FALSE(program.desktop.hourglass);
  const auto& kept = program.line.Meter.Settings();
  EXPECT_EQ(kept.CallText, "CQ 1\xD8");
  EXPECT_EQ(std::pair(kept.ForwardTrim, kept.ReflectedTrim), std::pair(7, -3));
  Reopen();
  EXPECT_EQ(panel.CallMsg().Text(), "CQ 1\xD8");
  EXPECT_EQ(panel.FPTrim().Position(), -7);
  EXPECT_EQ(panel.RangeScale().Selected(), 2);
  EXPECT_FALSE(panel.DispMessage().Checked());
}

TEST_F(MeterSetup, ApplyWithNothingChangedSendsNothing) {
  Open();
  panel.Apply();
  EXPECT_EQ(program.Status(), "Paramater Update Complete");
  program.RunFor(500);
  EXPECT_EQ(Sent(), Texts{});
  panel.CallMsg().Type("\b");  // any key counts as an edit
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent(), (Texts{"CORVANE", "C?"}));
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent().size(), 2U) << "sent once";
}

TEST_F(MeterSetup, APressDuringAnUpdateRunsOnceMoreWithWhatIsChosenThen) {
  Open();
  panel.RPTrim().MoveTo(3);
  program.time.Post(EventKind::kInput, 130, [this] {
    panel.FPTrim().MoveTo(1);
    for (int i = 0; i < 20; ++i)
      panel.Apply();
  });
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent(), (Texts{"t-3", "t?", "T-1", "T?"}));
}

TEST_F(MeterSetup, EnterSendsTheCallMessageAtOnce) {
  Open();
  panel.CallMsg().Paste("");
  panel.CallMsg().Type(
      "A0\x7F\xE4"
      "B  \r");  // what the meter cannot show is not taken
  program.RunFor(500);
  EXPECT_EQ(Sent(), (Texts{"CA\xD8"
                           "B",
                           "C?"}));
  EXPECT_EQ(panel.CallMsg().Text(),
            "A\xD8"
            "B  ");
}

TEST_F(MeterSetup, PastedTextIsCutAndFilteredWhenItIsSent) {
  Open();
  panel.CallMsg().Paste("12345678901234567890");
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_EQ(program.desktop.boxes[0].text, "Please limit your message to 16 characters.");
  EXPECT_EQ(program.desktop.boxes[0].title, "Message To Long");
  EXPECT_EQ(panel.CallMsg().Text(), "1234567890123456");
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent(), (Texts{"C123456789\xD8"
                           "123456",
                           "C?"}));
  panel.CallMsg().Paste("T\xE4g\t0");
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent()[2], "CTg\xD8");
}

TEST_F(MeterSetup, ChoicesCountForNothingWhileThePanelIsBeingFilled) {
  Open();
  panel.OpMode().Choose(2);
  program.time.Post(EventKind::kInput, 300, [this] {
    panel.OpMode().Choose(1);
    face.Main().Press(Key::kF2);  // asks for it once more: it is on its way
  });
  Reopen();
  EXPECT_EQ(panel.OpMode().Selected(), 0);
  panel.Apply();
  program.RunFor(500);
  EXPECT_EQ(Sent(), Texts{});
}

TEST_F(MeterSetup, OddMeterDataIsTakenAsFarAsItGoes) {
  sim::MeterOptions meter = MeterAt(38400);
  meter.Facts.Ranges = {1, 2, 3, 4, 5, 6, 7};
  meter.Facts.LowPowerWatts = {0, 1, 2, 5};
  meter.Facts.TrimLow = -10;
  meter.Facts.TrimHigh = 25;
  RunningFace odd(meter);
  ASSERT_TRUE(odd.Start());
  odd.face.Main().Press(Key::kF2);
  const MeterSetupWindows windows(odd);
  EXPECT_EQ(windows.RangeScale().Items(), (Texts{"1/2/3", "4/5/6"}));
  EXPECT_EQ(windows.LoPwrAlarm().Items(), (Texts{"0 Off", "1 W", "2 W", "5 W"}));
  windows.FPTrim().MoveTo(-90);
  EXPECT_EQ(windows.Panel().lblFPTrim.Caption(), "25") << "as far as the meter goes";
  windows.FPTrim().MoveTo(90);
  EXPECT_EQ(windows.Panel().lblFPTrim.Caption(), "-10");
}

TEST_F(MeterSetup, AMeterThatDoesNotAnswerLeavesTheLastValues) {
  Open();
  program.line.Meter.SetMute(true);
  const auto before = program.time.Now();
  face.Main().Press(Key::kF2);
  EXPECT_LT(program.time.Now() - before, 3000);
  EXPECT_EQ(program.Status(), "No answer: last known values shown");
  EXPECT_TRUE(panel.Panel().Visible());
  EXPECT_EQ(panel.RangeScale().Selected(), 1);
}

TEST_F(MeterSetup, ClosesByButtonAndEscapeAndBringsTheKeptViewBack) {
  Open("FORM-REGION=0\r\n");
  EXPECT_TRUE(face.Full()) << "the panel needs the full face";
  face.ToggleView();
  EXPECT_TRUE(face.Full());
  panel.OpMode().Choose(2);
  panel.Button(panel.Panel().cmdCancelSettings).Push();
  EXPECT_FALSE(panel.Panel().Visible());
  EXPECT_FALSE(face.Full());
  Reopen();
  EXPECT_EQ(panel.OpMode().Selected(), 0) << "what was chosen and not applied is gone";
  EXPECT_TRUE(panel.Frame().Press(Key::kEscape));
  EXPECT_FALSE(panel.Panel().Visible());
  EXPECT_FALSE(face.Full());
  program.RunFor(500);
  EXPECT_EQ(Sent(), Texts{});
}

TEST_F(MeterSetup, StoppedReadingsStayStopped) {
  ASSERT_TRUE(running.Start());
  program.desktop.choices = {1005};
  Face::In(face.Main(), *face.Controls().cmdMenu[1]).Click();
  program.line.Meter.ClearLog();
  face.Main().Press(Key::kF2);
  program.RunFor(500);
  EXPECT_EQ(program.Commands().back(), "V?") << "no D1";
}

TEST_F(MeterSetup, UpdatesStartsTheUpdaterAndCloses) {
  Open();
  panel.Button(panel.Panel().cmdFUpdate).Push();
  ASSERT_EQ(program.shell.launches.size(), 1U);
  EXPECT_TRUE(program.shell.launches[0].target.ends_with("OVFirmUpdate.exe"));
  EXPECT_FALSE(panel.Panel().Visible());
}

}  // namespace
}  // namespace orvane
