#include "simulator/crc.h"
#include "tests/support/face.h"
#include "tests/support/speech.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace orvane {
namespace {

using testing::ElementsAreArray;
using Names = std::vector<std::string>;

/// A program at a meter whose alarms strike above VSWR 1.50 and below 100 W.
class AccessibilityTest : public testing::Test, public RunningFace {
 protected:
  static sim::MeterOptions Alarming() {
    sim::MeterOptions options = MeterAt(38400);
    options.Settings.VSWRAlarm = 1;
    options.Settings.LowPowerAlarm = 7;
    return options;
  }
  AccessibilityTest() : RunningFace(Alarming()) {}
  void SetUp() override {
    program.line.Meter.SetPower(500, 0);
    ASSERT_TRUE(Start());
    program.RunFor(2000);
  }
  void PowerFor(double forward, double reflected, int ms = 4000) {
    program.line.Meter.SetPower(forward, reflected);
    program.RunFor(ms);
  }
  void Choose(const std::string& button) { speech.Of(button).Press(Key::kEnter); }
  Speech speech{face};
};

const Names kTitleRow{"Quorran on the web", "Message", "Window", "Settings", "Help", "Help",
                      "Minimize",           "Close"};
const Names kStatusRow{"Status", "Port", "Rx data activity", "Tx data activity", "SWR alarm", "Power alarm"};

Names Ring(const Names& title, const Names& middle) {
  Names ring(title);
  ring.insert(ring.end(), middle.begin(), middle.end());
  ring.insert(ring.end(), kStatusRow.begin(), kStatusRow.end());
  return ring;
}

TEST_F(AccessibilityTest, TheTabKeyWalksAllThatIsReadOrPressedInReadingOrder) {
  const Names readouts{"Forward bar", "Forward power", "Reflected bar", "Reflected power", "VSWR"};
  Names full(readouts);
  full.insert(full.end(),
              {"Auto Range Scale", "Auto Range Scale", "Fast Display Update 5x/Sec", "Reset Alarms"});
  EXPECT_THAT(speech.Ring(), ElementsAreArray(Ring(kTitleRow, full)));
  face.Main().Press(Key::kF4);
  const Names short_title(kTitleRow.begin() + 1, kTitleRow.end());
  EXPECT_THAT(speech.Ring(), ElementsAreArray(Ring(short_title, {"Power bars", "Forward power", "VSWR"})));
  face.Main().Press(Key::kF4);
  Choose("VSWR Dip Mode Fast Display Update");
  EXPECT_THAT(speech.Ring(),
              ElementsAreArray(Ring(kTitleRow, {"Forward bar", "Forward power", "VSWR bar", "VSWR",
                                                "VSWR Dip Mode Fast Display Update", "Reset Alarms"})));
}

// Each view has a message label of its own, which is no other thing to whom it is told.
TEST_F(AccessibilityTest, TheKeyboardStaysOnTheMessageWhenTheViewChanges) {
  speech.Of("Message").TakeFocus();
  for (const char* view : {"short", "full"}) {
    face.Main().Press(Key::kF4);
    EXPECT_EQ(face.Main().FocusInside(), &speech.Of("Message")) << view;
  }
}

TEST_F(AccessibilityTest, ControlsSayWhatTheyAreAndWhatTheyShow) {
  struct Row {
    double forward, reflected;
    std::string name, value;
  };
  const Row rows[] = {{1250, 0, "Forward power", "1250 watts"},
                      {1250, 0, "Forward bar", "1250 of 2500 watts"},
                      {1250, 0, "Reflected power", "0 watts"},
                      {1250, 0, "VSWR", "1.00"},
                      {500, 12, "Reflected power", "12 watts"},
                      {500, 12, "VSWR", "1.37"},
                      {500, 12, "SWR alarm", "off"},
                      {500, 12, "Power alarm", "off"},
                      {500, 125, "Reflected bar", "125 of 500 watts"},
                      {500, 125, "VSWR", "3.00, high"},
                      {500, 125, "SWR alarm", "on"},
                      {51, 50, "Forward power", "1 watt, alarm"},
                      {51, 50, "Power alarm", "on"},
                      {0, 0, "Forward power", "0 watts, alarm"},
                      {0, 0, "VSWR", "no power"},
                      {500, 0, "Port", "COM2"},
                      {500, 0, "Rx data activity", "on"},
                      {500, 0, "Status", "no message"},
                      {500, 0, "Message", "ORVANE"}};
  for (const Row& row : rows) {
    PowerFor(row.forward, row.reflected);
    EXPECT_EQ(speech.Value(row.name), row.value)
        << row.name << " at " << row.forward << ", " << row.reflected;
  }
  EXPECT_EQ(speech.Value("Tx data activity"), "off") << "seconds after the last command";
  face.Main().Press(Key::kF4);
  PowerFor(500, 12);
  EXPECT_EQ(speech.Value("Power bars"), "forward 488 of 500 watts, reflected 12 of 500 watts");
}

TEST_F(AccessibilityTest, DipModeSpeaksOfTheRatio) {
  Choose("VSWR Dip Mode Fast Display Update");
  const std::tuple<double, double, const char*, const char*> rows[] = {
      {500, 125, "3.00 of 5.0", "3.00"}, {500, 0, "1.00 of 5.0", "1.00"}, {0, 0, "no power", "no power"}};
  for (const auto& [forward, reflected, bar, readout] : rows) {
    PowerFor(forward, reflected);
    EXPECT_EQ(speech.Value("VSWR bar"), bar);
    EXPECT_EQ(speech.Value("VSWR").substr(0, std::string(readout).size()), readout);
    EXPECT_EQ(speech.Value("Forward bar"), "off in dip mode");
  }
  program.port.Deliver(sim::MessageFrame("D,2147483647,-1,2.00,0;0"));  // a difference beyond 32 bits
  program.RunFor(1);
  EXPECT_EQ(speech.Value("VSWR bar"), "2.00 of 5.0");
}

void ExpectNoReading(const Speech& speech) {
  for (const char* name : {"Forward power", "Forward bar", "Reflected power", "Reflected bar", "VSWR"})
    EXPECT_EQ(speech.Value(name), "no reading") << name;
}

TEST(AccessibilityAtStart, ZerosThatStandBeforeAMeterIsFoundAreNoReading) {
  RunningFace running;
  running.program.PutSettings("[METER-SETTINGS]\nCOMM-PORT=0\n");
  ASSERT_TRUE(running.program.Start());
  ASSERT_EQ(running.program.Fwd(), "0");
  ExpectNoReading(Speech(running.face));
}

TEST_F(AccessibilityTest, WithoutReadingsNothingIsSaidThatLooksLikeOne) {
  PowerFor(500, 125);
  program.port.Lose();
  program.RunFor(5000);
  ExpectNoReading(speech);
  EXPECT_EQ(speech.Value("Rx data activity"), "off");
  EXPECT_EQ(speech.Value("Status"), "Port Lost");
}

TEST_F(AccessibilityTest, ButtonsSayWhatKindTheyAreAndWhichIsChosen) {
  const auto chosen = [&](const HeadlessWindow& group) {
    std::string names;
    for (const HeadlessWindow* button : group.Children()) {
      EXPECT_EQ(button->Describe().role, Role::kChoice);
      if (button->Describe().checked) names += button->Describe().name;
    }
    return names;
  };
  HeadlessWindow& ranges = speech.Of("Forward range");
  EXPECT_EQ(ranges.Describe().role, Role::kGroup);
  EXPECT_EQ(chosen(ranges), "Auto Range Scale");
  ranges.Children()[3]->Press(Key::kSpace);
  EXPECT_EQ(chosen(ranges), "500 Watts Full Scale Fixed");
  EXPECT_EQ(speech.Value("Forward bar"), "500 of 500 watts");
  ranges.Children()[1]->Act();
  EXPECT_EQ(speech.Value("Forward bar"), "more than 100 watts");
  EXPECT_EQ(chosen(speech.Of("Reflected range")), "Auto Range Scale");
  EXPECT_EQ(chosen(speech.Of("Display mode")), "Fast Display Update 5x/Sec");
}

// Tab enters a group at what is chosen, the arrow keys move in it without choosing, and Tab leaves it from
// there.
TEST_F(AccessibilityTest, ArrowKeysMoveInsideAGroup) {
  HeadlessWindow& modes = speech.Of("Display mode");
  const auto stop = [&] {
    std::string stops;
    for (const HeadlessWindow* button : modes.Children())
      stops += button->TabStop() ? '1' : '0';
    return stops;
  };
  EXPECT_EQ(stop(), "1000");
  modes.Children()[0]->TakeFocus();
  const std::tuple<Key, int, const char*> steps[] = {{Key::kRight, 1, "0100"},
                                                     {Key::kDown, 2, "0010"},
                                                     {Key::kLeft, 1, "0100"},
                                                     {Key::kUp, 0, "1000"},
                                                     {Key::kUp, 3, "0001"}};
  for (const auto& [key, index, stops] : steps) {
    ASSERT_TRUE(face.Main().FocusInside()->Press(key));
    EXPECT_EQ(face.Main().FocusInside(), modes.Children()[static_cast<std::size_t>(index)]);
    EXPECT_EQ(stop(), stops);
  }
  speech.Of("VSWR").TakeFocus();
  EXPECT_EQ(stop(), "1000");
  EXPECT_EQ(program.Count("2M"), 0) << "nothing was chosen";
  modes.Children()[2]->TakeFocus();
  modes.Children()[2]->Press(Key::kSpace);
  speech.Of("VSWR").TakeFocus();
  EXPECT_EQ(stop(), "0010");
  program.RunFor(100);
  EXPECT_EQ(program.Count("2M"), 1);
}

TEST_F(AccessibilityTest, TheFocusedControlTellsItsChangesAndNoOtherDoes) {
  HeadlessWindow& ratio = speech.Of("VSWR");
  HeadlessWindow& power = speech.Of("Forward power");
  const std::size_t before = power.Told().size();
  ratio.TakeFocus();
  for (int i = 0; i < 100; ++i)
    PowerFor(500 + i, i % 20, 50);
  EXPECT_GE(ratio.Told().size(), 3U);
  EXPECT_LE(ratio.Told().size(), 11U) << "twice a second at most, in five seconds";
  EXPECT_EQ(power.Told().size(), before);
  // The value at which it comes to rest is told, and then no more.
  PowerFor(500, 20, 3000);
  const std::size_t at_rest = ratio.Told().size();
  PowerFor(500, 20, 10000);
  EXPECT_EQ(ratio.Told().size(), at_rest);
  // After a pause the next value is told as soon as it is there.
  PowerFor(500, 80, 450);
  EXPECT_EQ(ratio.Told().size(), at_rest + 1);
  EXPECT_EQ(ratio.Told().back(), AccessibleChange::kValue);
}

TEST_F(AccessibilityTest, EdgesAreAnnouncedOnceAndAgainAfterHalfAMinute) {
  EXPECT_EQ(speech.Announced(), "Meter found");
  EXPECT_EQ(speech.Announcements(), 1U);
  program.RunFor(40000);
  EXPECT_EQ(speech.Announcements(), 1U) << "the stream is not announced";
  struct Row {
    double forward, reflected;
    int ms;
    const char* words;
    std::size_t count;
  };
  const auto reset = [&] { speech.Of("Reset Alarms").Press(Key::kEnter); };
  const Row rows[] = {{500, 125, 1000, "SWR alarm on", 2},
                      {500, 125, 40000, "SWR alarm on", 2},
                      {500, 0, 1000, "SWR alarm off", 3},
                      {500, 125, 1000, "SWR alarm on", 4},
                      {500, 0, 1000, "SWR alarm on", 4},    // sooner than half a minute: not again
                      {500, 125, 1000, "SWR alarm on", 4},  // and what is told stands again
                      {500, 0, 40000, "SWR alarm off", 5},  // told when it may be
                      {51, 50, 40000, "SWR alarm on. Power alarm on", 6},
                      {500, 125, 1000, "Power alarm off", 7}};
  for (const Row& row : rows) {
    program.line.Meter.SetPower(row.forward, row.reflected);
    program.RunFor(300);
    reset();
    program.RunFor(row.ms);
    EXPECT_EQ(speech.Announced(), row.words) << row.ms;
    EXPECT_EQ(speech.Announcements(), row.count) << row.words;
  }
}

TEST_F(AccessibilityTest, LossAndReturnOfTheMeterAreAnnounced) {
  program.line.Meter.SetPower(500, 125);
  program.RunFor(40000);
  ASSERT_EQ(speech.Announced(), "SWR alarm on");
  const std::tuple<const char*, std::function<void()>, const char*> rows[] = {
      {"falls silent", [this] { program.line.Meter.Silence(40000); }, "No data"},
      {"speaks again", [] {}, "Meter found. SWR alarm on"},
      // and nothing about an alarm that nobody knows of
      {"is unplugged", [this] { program.port.Lose(); }, "Port lost"},
      {"is plugged in", [this] { program.port.SetPresent(true); }, "Meter found. SWR alarm on"}};
  for (const auto& [what, happen, words] : rows) {
    const std::size_t before = speech.Announcements();
    happen();
    program.RunFor(35000);
    EXPECT_EQ(speech.Announced(), words) << "the meter " << what;
    EXPECT_EQ(speech.Announcements(), before + 1) << "the meter " << what;
  }
}

TEST_F(AccessibilityTest, AlarmsAreWrittenBesideTheirLamps) {
  const MeterControls& meter = face.Meter();
  EXPECT_EQ(meter.lblSWRAlarm->Caption(), "SWR Alarm");
  PowerFor(51, 50);
  EXPECT_EQ(meter.lblSWRAlarm->Caption(), "SWR Alarm!");
  EXPECT_EQ(meter.lblSWRAlarm->ToolTipText(), "Alarm on: press to reset");
  EXPECT_EQ(meter.lblPwrAlarm->Caption(), "Pwr Alarm!");
  EXPECT_EQ(speech.Of("Reset Alarms").Describe().description, "An alarm is on");
  speech.Of("SWR alarm").Press(Key::kSpace);
  PowerFor(500, 0);
  EXPECT_EQ(meter.lblSWRAlarm->Caption(), "SWR Alarm");
  EXPECT_EQ(meter.lblSWRAlarm->ToolTipText(), "Alarm off");
  EXPECT_EQ(program.Count("A"), 1);
}

}  // namespace
}  // namespace orvane
