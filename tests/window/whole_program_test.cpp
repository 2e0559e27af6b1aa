#include "tests/support/face.h"

namespace orvane {
namespace {

using WholeProgramTest = StreamingTest;

// The frames and their pacing are pinned at the link.
TEST_F(WholeProgramTest, StartSearchesAndShowsWhatTheMeterSends) {
  program.RunFor(100);
  EXPECT_EQ(program.Commands(),
            (std::vector<std::string>{"D0", "v?", "D0", "B?", "b?", "U?", "W?", "w?", "C?", "I?",
                                      "l?", "L?", "M?", "P?", "R?", "S?", "T?", "t?", "V?", "D1"}));
  EXPECT_EQ(program.port.Writes()[1].bytes, "\x02v?\x03\x42\x42\r");
  program.line.Meter.SetPower(1000, 40);
  program.RunFor(3000);
  EXPECT_EQ(program.Fwd() + " " + program.Ref() + " " + program.Ratio(), "960 40 1.50");
  EXPECT_GT(program.Lit(program.orvane->Meter().forward), 20);
  EXPECT_EQ(program.orvane->Meter().lblPort->Caption(), "2");
  program.line.Meter.SetPower(0, 0);
  program.RunFor(4000);
  EXPECT_EQ(program.Fwd() + " " + program.Ratio(), "0 ");
  EXPECT_EQ(program.Lit(program.orvane->Meter().forward), 0);
}

TEST(WholeProgram, FindsAMeterAtEachOfItsSpeeds) {
  for (const int baud : {38400, 19200, 9600}) {
    Program program(MeterAt(baud));
    ASSERT_TRUE(program.StartStreaming()) << baud;
    EXPECT_EQ(program.orvane->Settings().BaudRate, std::to_string(baud));
  }
}

TEST(WholeProgram, ASecondCopySaysSoAndTouchesNothing) {
  Program program(MeterAt(38400));
  program.instance.other_copy_runs = true;
  EXPECT_FALSE(program.Start());
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_EQ(program.desktop.boxes[0].text, "Orvane Lite is Already Running. Just 1 Instance Is Required.");
  EXPECT_EQ(program.desktop.boxes[0].title, "Orvane Lite");
  EXPECT_EQ(program.desktop.boxes[0].style, BoxStyle::kInformation);
  EXPECT_EQ(program.SettingsText(), "(no file)");
  EXPECT_TRUE(program.port.Writes().empty());
  EXPECT_FALSE(program.desktop.Tray().Shown());
}

TEST_F(WholeProgramTest, ClosingStopsTheStreamAndKeepsTheSettings) {
  program.desktop.Main()->MoveTo({3000, 1500});
  program.desktop.Main()->Find("500 Watts Full Scale Fixed")->Click();
  const std::int64_t before = program.time.Now();
  EXPECT_TRUE(program.Close());
  EXPECT_EQ(program.Commands().back(), "D0");
  EXPECT_FALSE(program.port.PortOpen());
  EXPECT_LT(program.time.Now() - before, 2000);
  EXPECT_EQ(program.SettingsText(),
            "[USER-SETTINGS]\r\nFORM-ON-TOP=False\r\nFORM-TOP=1500\r\nFORM-LEFT=3000\r\nFORM-REGION=1\r\n"
            "F-PWR-INDEX=3\r\nR-PWR-INDEX=8\r\nCLIENT-APP=OVClient\r\nCLIENT-MSG-ID=14300\r\n"
            "[METER-SETTINGS]\r\nPKTNOTIFY=False\r\n");
}

TEST(WholeProgram, ClosingWithoutAPortSkipsTheLink) {
  Program program(MeterAt(38400));
  program.PutSettings("[METER-SETTINGS]\r\nCOMM-PORT=0\r\n");
  ASSERT_TRUE(program.Start());
  program.RunFor(1500);
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_EQ(program.desktop.boxes[0].text, "Comm Port = 0 No Port Selected. Please Select a Comm Port.");
  EXPECT_EQ(program.desktop.boxes[0].title, "No Port Selected");
  const std::int64_t before = program.time.Now();
  EXPECT_TRUE(program.Close());
  EXPECT_LT(program.time.Now() - before, 400);
  EXPECT_TRUE(program.port.Writes().empty());
  EXPECT_TRUE(program.Keeps("FORM-TOP=100"));
}

TEST(WholeProgram, PositionsOutsideTheScreenGoToTheDefault) {
  // A screen of 28800 x 16200 twips, a window 9600 wide.
  const std::tuple<std::string, std::string, Point> rows[] = {{"-1", "200", {100, 200}},
                                                              {"19200", "15700", {19200, 15700}},
                                                              {"19201", "0", {100, 0}},
                                                              {"500", "15701", {500, 100}},
                                                              {"0", "-5", {0, 100}}};
  for (const auto& [left, top, expected] : rows) {
    Program program(MeterAt(38400));
    program.PutSettings("[USER-SETTINGS]\r\nFORM-LEFT=" + left + "\r\nFORM-TOP=" + top + "\r\n");
    ASSERT_TRUE(program.Start());
    const Rect place = program.desktop.Main()->Bounds();
    EXPECT_EQ((Point{place.left, place.top}), expected) << left << ", " << top;
  }
}

TEST(WholeProgram, ASettingThatIsNoNumberIsNamedOnceAndTheFileIsLeftAlone) {
  Program program(MeterAt(38400));
  const std::string text = "[USER-SETTINGS]\r\nFORM-TOP=abc\r\nFORM-LEFT=700\r\n";
  program.PutSettings(text);
  ASSERT_TRUE(program.Start());
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_NE(program.desktop.boxes[0].text.find("FORM-TOP"), std::string::npos);
  EXPECT_NE(program.desktop.boxes[0].text.find("abc"), std::string::npos);
  EXPECT_EQ(program.desktop.Main()->Bounds().top, 100);
  EXPECT_EQ(program.desktop.Main()->Bounds().left, 700);
  EXPECT_EQ(program.SettingsText(), text);
}

TEST(WholeProgram, TenFailedAttemptsAskTheOperatorOnce) {
  Program program(MeterAt(38400));
  program.line.Meter.SetMute(true);
  program.desktop.answers = {BoxAnswer::kOk, BoxAnswer::kCancel};
  ASSERT_TRUE(program.Start());
  program.RunFor(200000);
  ASSERT_EQ(program.desktop.boxes.size(), 2U);
  EXPECT_EQ(
      program.desktop.boxes[0].text,
      "Orvane Meter Not Detected. Please verify connections and power to meter. Click OK to try again.");
  EXPECT_EQ(program.desktop.boxes[0].title, "Meter Not Detected");
  EXPECT_EQ(program.desktop.boxes[0].style, BoxStyle::kOkCancel);
  EXPECT_TRUE(program.orvane->Link().Flags().SearchAbandoned);
  EXPECT_TRUE(program.Close());
}

TEST(WholeProgram, RunsOverTheEndsOfTheTickCount) {
  for (const std::int32_t start : {2147483647 - 20000, 2147483647 - 3000, -2147483647, -2000}) {
    Program program(MeterAt(38400), start);
    program.line.Meter.SetPower(100, 0);
    ASSERT_TRUE(program.Start());
    program.RunFor(60000);
    program.line.Meter.SetPower(200, 0);
    program.RunFor(5000);
    EXPECT_EQ(program.Fwd(), "200") << "start tick " << start;
    EXPECT_TRUE(program.Close());
  }
}

}  // namespace
}  // namespace orvane
