#include "tests/support/face.h"

namespace orvane {
namespace {

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

}  // namespace
}  // namespace orvane
