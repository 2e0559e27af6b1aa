#include "tests/support/face.h"

#include <utility>

namespace orvane {
namespace {

// A port that goes and comes, a meter that falls silent: the program gets over it by itself, and nobody takes
// an old number for a reading meanwhile.
class RecoveryTest : public StreamingTest {
 protected:
  void SetUp() override {
    program.line.Meter.SetPower(500, 20);
    StreamingTest::SetUp();
    program.RunFor(2000);
    EXPECT_EQ(program.Fwd(), "480");
  }
  void TearDown() override { EXPECT_TRUE(program.desktop.boxes.empty()) << "nobody is asked anything"; }
  bool Dark() const {
    const MeterControls& meter = program.orvane->Meter();
    return program.Fwd().empty() && program.Ref().empty() && program.Ratio().empty() &&
           program.Lit(meter.forward) == 0 && program.Lit(meter.reflected) == 0;
  }
  bool Lives(std::int64_t within_ms) {
    return program.RunUntil([&] { return program.Fwd() == "480" && program.line.Meter.Streaming(); },
                            within_ms);
  }
};

// The attempt fails before the system tells of the loss.
TEST_F(RecoveryTest, ALossInTheMomentInWhichASearchBegins) {
  program.time.Post(EventKind::kInput, 1000, [&] { program.port.Lose(); });
  program.port.Raise(CommEvent::kFrame);
  program.RunFor(2000);
  EXPECT_EQ(program.Status(), "Port Lost");
  program.port.SetPresent(true);
  EXPECT_TRUE(Lives(3000));
}

// The showing of a line lets arrivals in, and the loss is one: what is shown of that line must not stay.
TEST_F(RecoveryTest, ALossWhileALineIsShown) {
  program.line.Meter.SetPower(300, 10);
  bool lost = false;
  program.tap.on_taken = [&](std::string_view) {
    if (!std::exchange(lost, true)) program.port.Lose();
  };
  program.RunFor(400);
  EXPECT_TRUE(lost && Dark()) << program.Fwd();
  program.line.Meter.SetPower(500, 20);
  program.port.SetPresent(true);
  EXPECT_TRUE(Lives(3000));
}

TEST_F(RecoveryTest, APortThatDiesWithoutAWordIsNoticed) {
  program.port.SetPresent(false);
  program.port.Close();  // as after a sleep: the program's own handle is no good any more
  program.RunFor(11000);
  EXPECT_TRUE(Dark());
  program.port.SetPresent(true);
  EXPECT_TRUE(Lives(13000));
}

TEST_F(RecoveryTest, ASilentMeterIsSaidAndSearchedQuietly) {
  program.line.Meter.SetMute(true);
  program.RunFor(4500);
  EXPECT_EQ(program.Fwd(), "480");
  program.RunFor(1500);
  EXPECT_EQ(program.Status(), "No Data");
  EXPECT_TRUE(Dark());
  EXPECT_EQ(program.Count("v?"), 1);
  program.RunFor(120000);
  EXPECT_GE(program.Count("v?"), 3);  // the meter hears only those at its own speed
  EXPECT_LE(program.Count("v?"), 13);
  program.line.Meter.SetMute(false);
  EXPECT_TRUE(Lives(50000));
  program.line.Meter.Reset();  // switched off and on
  program.RunFor(1000);
  EXPECT_FALSE(program.line.Meter.Streaming());
  EXPECT_TRUE(Lives(25000));
}

TEST_F(RecoveryTest, StoppedReadingsStayStoppedOverALoss) {
  program.port.Lose();
  program.RunFor(1000);
  program.desktop.choices = {1005};
  program.desktop.Main()->Find("Settings")->Click();
  program.port.SetPresent(true);
  program.RunFor(5000);
  EXPECT_TRUE(program.orvane->Link().Flags().MeterFound);
  EXPECT_TRUE(Dark());
  EXPECT_EQ(program.Commands().back(), "V?") << "no D1";
  program.desktop.choices = {1004};
  program.desktop.Main()->Find("Settings")->Click();
  EXPECT_TRUE(Lives(3000));
}

// A search that began under an open menu would take its keys and clicks away.
TEST_F(RecoveryTest, NothingIsSearchedWhileAMenuIsOpen) {
  program.port.Lose();
  program.RunFor(1000);
  program.port.SetPresent(true);
  program.desktop.menu_ms = 5000;
  const std::size_t before = program.Commands().size();
  program.time.Post(EventKind::kInput, 4900, [&] { EXPECT_EQ(program.Commands().size(), before); });
  program.desktop.Main()->Find("Help")->Click();
  EXPECT_TRUE(Lives(3000)) << "and at once when it is closed";
}

}  // namespace
}  // namespace orvane
