#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using namespace std::string_literals;

// One row: what arrives, and what it changes. Each is fed whole, byte by byte, and with the next line already
// behind it.
class Classifier : public LinkTest {
 protected:
  Classifier() { settings.pkt_notify = true; }

  std::string Seen() const {
    std::string seen;
    for (const auto& entry : events.log)
      seen += entry + ";";
    const MeterState& state = link.State();
    return seen + " R" + std::to_string(state.ParamR) + " M" + std::to_string(state.MeterMode) + " V" +
           std::to_string(state.ParamV) + " S" + std::to_string(state.ParamS) + " F" +
           std::to_string(state.ForwardPower);
  }
};

enum class Shape { kWhole, kByteByByte, kWithTheNext };

class ClassifierShapes : public Classifier, public ::testing::WithParamInterface<Shape> {};

TEST_P(ClassifierShapes, Messages) {
  const std::string packet = Line("D,50,1,1.20,0;0");
  struct Row {
    const char* name;
    std::string bytes;
    std::string seen;  // after an "S1" reply; "..." stands for its beep
  };
  const Row rows[] = {
      {"a reply", Line("V2"), "beep; R0 M0 V2 S1 F0"},
      {"a packet makes no beep", packet, " R0 M0 V0 S1 F50"},
      {"a packet behind a torn reply", "\x02V"s + packet, " R0 M0 V0 S1 F50"},
      {"a packet wins over a row before it", "\x02R1\x03" + packet, " R0 M0 V0 S1 F50"},
      {"a row in another reply", "\x02V2\x03" + Line("R1"), "beep; R1 M0 V0 S1 F0"},
      {"a row wins over a mode before it", "\x02M2" + Line("R1"), "beep; R1 M0 V0 S1 F0"},
      {"a mode in another reply", "\x02V2\x03" + Line("M3"), "mode;beep; R0 M3 V0 S1 F0"},
      {"eight characters of a row count", "\x02R0000012\x03zz\r\n", "beep; R1 M0 V0 S1 F0"},
      {"a mode without STX is nothing", "M3\x03zz\r\n", " R0 M0 V0 S1 F0"},
      {"letters go by case", Line("v2"), "beep; R0 M0 V0 S1 F0"},
      {"small letters that mean nothing", Line("a1") + Line("n1") + Line("71"), " R0 M0 V0 S1 F0"},
      {"without STX the first letter counts", "V3\x03" + "00\r\n"s, "beep; R0 M0 V3 S1 F0"},
      {"the letter follows the first STX", "zz\x02V3\x02S2\x03zz\r\n", "beep; R0 M0 V0 S1 F0"},
      {"an acknowledgement", Line("A"), "clear timer; R0 M0 V0 S1 F0"},
      // Too short for a letter: goes to the letter before, here "S", which finds no number.
      {"three characters with STX", "\x02V\n", "beep; R0 M0 V0 S0 F0"},
      {"four characters with STX", "\x02V2\n", "beep; R0 M0 V2 S1 F0"},
      {"two characters", "5\n", "beep; R0 M0 V0 S5 F0"},
      {"one character", "\n", "beep; R0 M0 V0 S0 F0"},
      {"STX near the end", "zzz\x02V\n", "beep; R0 M0 V0 S0 F0"},
  };
  for (const Row& row : rows) {
    Feed(Line("S1") + Line("V0") + Line("R0") + Line("M0") + Line("D,0,0,0,0;0") + Line("S1"));
    events.log.clear();
    if (GetParam() == Shape::kWhole) Feed(row.bytes);
    if (GetParam() == Shape::kWithTheNext) Feed(row.bytes + "\x02next line");
    if (GetParam() == Shape::kByteByByte) {
      for (const char c : row.bytes)
        Feed(std::string_view(&c, 1));
    }
    EXPECT_EQ(Seen(), row.seen) << row.name;
    if (GetParam() == Shape::kWithTheNext) Feed("\r\n");
  }
}
INSTANTIATE_TEST_SUITE_P(All, ClassifierShapes,
                         ::testing::Values(Shape::kWhole, Shape::kByteByByte, Shape::kWithTheNext));

TEST_F(Classifier, BeepsAfterSomeLetters) {
  const std::string silent = "BLlWwCUANDxn0!";
  const std::string beeping = "bVITtPSvRM";
  for (const char letter : silent + beeping) {
    events.log.clear();
    Feed(Line(std::string(1, letter) + "1"));
    EXPECT_EQ(events.Count("beep"), beeping.find(letter) != std::string::npos ? 1 : 0) << letter;
    settings.pkt_notify = false;
    Feed(Line(std::string(1, letter) + "1"));
    EXPECT_EQ(events.Count("beep"), beeping.find(letter) != std::string::npos ? 1 : 0) << letter;
    settings.pkt_notify = true;
  }
}

TEST_F(Classifier, BeepComesAfterTheHandler) {
  Feed(Line("M1"));
  EXPECT_EQ(events.log, (std::vector<std::string>{"mode", "beep"}));
}

TEST_F(Classifier, AFaultyHandlerIsLeftAndTheNextLineGoesOn) {
  events.on_mode = [] { throw RuntimeError(Fault::kOverflow, "showing the mode"); };
  Feed(Line("M1") + Line("V3"));
  EXPECT_EQ(events.log, (std::vector<std::string>{"mode", "beep", "beep"}));
  EXPECT_EQ(link.State().ParamV, 3);
  EXPECT_EQ(events.lines, 2);
}

}  // namespace
}  // namespace orvane
