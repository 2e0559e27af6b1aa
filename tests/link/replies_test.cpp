// What of the replies no readout, lamp or status line shows; the rest is in tests/sessions.
#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using namespace std::string_literals;

using Replies = LinkTest;
using State = MeterState;

TEST_F(Replies, TextsLoseTheirLetterOnce) {
  const std::tuple<std::string, std::string State::*, const char*> rows[] = {
      {Line("BAB,B"), &State::ParamBText, "AB,B"},
      {Line("L0,1,L"), &State::ParamLText, "0,1,L"},
      {Line("WWatt"), &State::ParamWText, "Watt"},
      {Line("www"), &State::ParamW2Text, "ww"},
      // Only the last ETX ends the text; those inside are taken out, and without any the tail stays.
      {"\x02"s + "B1\x03,2\x03" + "FF\r\n", &State::ParamBText, "1,2"},
      {"\x02"s + "B1,2FF\r\n", &State::ParamBText, "1,2FF"}};
  for (const auto& [bytes, field, text] : rows) {
    Feed(bytes);
    EXPECT_EQ(link.State().*field, text) << bytes;
  }
}

TEST_F(Replies, ACallMessageEndsAtItsLastETX) {
  const std::pair<std::string, const char*> rows[] = {
      {Line("CCQ CQ"), "CQ CQ"},
      {"\x02"s + "CW\r\n", "CW"},    // no ETX: nothing is cut by position
      {"CX\x03" + "00\r\n"s, "CX"},  // no STX
      {"..\x02"s + "CY\x03" + "00\r\n", "Y"},
      {"\x03\x02"s + "CZ 00\r\n", ""},  // the ETX before the STX ends the text
  };
  for (const auto& [bytes, text] : rows) {
    Feed(Line("Cold") + bytes);
    EXPECT_EQ(link.State().MeterCallText.Text(), text) << bytes;
  }
}

TEST_F(Replies, FollowUps) {
  const MeterState& state = link.State();
  EXPECT_EQ(std::pair(state.ParamRValid, state.ParamB2Valid), std::pair(kFalse, kFalse));
  Feed(Line("R9") + Line("bx") + Line("V1") + Line("l1"));
  EXPECT_EQ(std::pair(state.ParamRValid, state.ParamB2Valid), std::pair(kTrue, kTrue));
  EXPECT_EQ(std::pair(state.ParamVOn, state.ParamL2On), std::pair(kTrue, kTrue));
  Feed(Line("V0") + Line("l9"));
  EXPECT_EQ(std::pair(state.ParamVOn, state.ParamL2On), std::pair(kFalse, kFalse));
}

TEST_F(Replies, VersionCountsOnlyInASearch) {
  Feed(Line("vOrvane Version 2.14"));
  EXPECT_EQ(link.State().FirmwareVersion, "");
  replies["v?"] = "vWattmeter 2.14";
  link.FindMeter();
  EXPECT_EQ(link.State().FirmwareVersion, "");
  EXPECT_TRUE(events.FindMeterEnabled());
  Feed(Line("vvox VERSION 2  "));
  EXPECT_FALSE(events.FindMeterEnabled()) << "too late for its attempt, it keeps the next from starting";
  Feed(Line("vVersion 3"));
  EXPECT_EQ(link.State().FirmwareVersion, "vox VERSION 2");
}

TEST_F(Replies, ANoticeDuringASearchIsAReasonToTrySoon) {
  bool tries_soon = false;
  events.on_line = [&] { tries_soon = events.FindMeterEnabled(); };
  replies["v?"] = "!Restarted";
  link.FindMeter();
  EXPECT_TRUE(tries_soon);
}

TEST_F(Replies, NoMessageAtAllIsNoReply) {
  MeterState state;
  LinkFlags flags;
  MessageClassifier classifier(state, flags, events, settings);
  classifier.ProcessMessage(Line("V3"));
  classifier.ProcessMessage("");
  EXPECT_EQ(state.ParamV, 3);
  EXPECT_EQ(flags.Replies, 1U);
}

TEST_F(Replies, AFaultyHandlerIsLeftAndTheNextLineGoesOn) {
  settings.pkt_notify = true;
  events.on_mode = [] { throw RuntimeError(Fault::kOverflow, "showing the mode"); };
  Feed(Line("M1") + Line("V3"));
  EXPECT_EQ(events.log, (std::vector<std::string>{"mode", "beep", "beep"}));
  EXPECT_EQ(link.State().ParamV, 3);
  EXPECT_EQ(events.lines, 2);
  EXPECT_EQ(link.Flags().Replies, 2U);
}

}  // namespace
}  // namespace orvane
