#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using namespace std::string_literals;

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

TEST_F(Classifier, Messages) {
  const std::string packet = Line("D,50,1,1.20,0;0");
  // Name, what arrives, and what is seen of it after an "S1" reply.
  const std::tuple<const char*, std::string, const char*> rows[] = {
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
      {"no letter at all", Line(std::string(3, '\0')), " R0 M0 V0 S1 F0"},
      {"an acknowledgement", Line("A"), "clear timer; R0 M0 V0 S1 F0"},
      // Too short for a letter: goes to the letter before, here "S", which finds no number.
      {"three characters with STX", "\x02V\n", "beep; R0 M0 V0 S0 F0"},
      {"four characters with STX", "\x02V2\n", "beep; R0 M0 V2 S1 F0"},
      {"two characters", "5\n", "beep; R0 M0 V0 S5 F0"},
      {"one character", "\n", "beep; R0 M0 V0 S0 F0"},
      {"STX near the end", "zzz\x02V\n", "beep; R0 M0 V0 S0 F0"},
  };
  for (const auto& [name, bytes, seen] : rows) {
    for (const std::string way : {"whole", "byte by byte", "with the next line behind it"}) {
      Feed(Line("S1") + Line("V0") + Line("R0") + Line("M0") + Line("D,0,0,0,0;0") + Line("S1"));
      events.log.clear();
      if (way == "byte by byte") {
        for (const char c : bytes)
          Feed(std::string_view(&c, 1));
      } else {
        Feed(way == "whole" ? bytes : bytes + "\x02next line");
      }
      EXPECT_EQ(Seen(), seen) << name << ", " << way;
      if (way.starts_with("with")) Feed("\r\n");
    }
  }
}

TEST_F(Classifier, BeepsAfterSomeLetters) {
  for (const bool notify : {true, false}) {
    settings.pkt_notify = notify;
    const std::string beeping = notify ? "bVITtPSvRM" : "";
    for (const char letter : std::string("BLlWwCUANDxn0!bVITtPSvRM")) {
      events.log.clear();
      Feed(Line(std::string(1, letter) + "1"));
      EXPECT_EQ(events.Count("beep"), beeping.find(letter) != std::string::npos ? 1 : 0) << letter;
    }
  }
}

TEST_F(Classifier, NoMessageAtAllIsNoReply) {
  MeterState state;
  LinkFlags flags;
  MessageClassifier classifier(state, flags, events, settings);
  classifier.ProcessMessage(Line("V3"));
  classifier.ProcessMessage("");
  EXPECT_EQ(state.ParamV, 3);
  EXPECT_EQ(flags.Replies, 1U);
  classifier.ProcessMessage(Line("D,50,1,1.20,0;0"));
  classifier.ProcessMessage(Line("D,50,1"));
  EXPECT_EQ(flags.Readings, 1U) << "one of the two can be read";
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
