#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using namespace std::string_literals;

using Replies = LinkTest;
using State = MeterState;

TEST_F(Replies, NumbersAreClampedAndStored) {
  struct Row {
    std::string letter;
    std::int16_t MeterState::*field;
    std::vector<std::pair<const char*, int>> values;  // what is sent, what is stored
  };
  const Row rows[] = {
      {"V", &State::ParamV, {{"3", 3}, {"5", 4}, {"-1", 4}, {"x", 0}, {"", 0}, {" 2 ", 2}}},
      {"V", &State::ParamV, {{"2.5", 2}, {"3.5", 4}, {"0.5", 0}}},
      {"l", &State::ParamL2, {{"7", 7}, {"8", 0}, {"-1", 0}, {"x", 0}}},
      {"P", &State::ParamP, {{"1", 1}, {"5", 1}, {"0", 0}, {"x", 0}}},
      {"M", &State::MeterMode, {{"3", 3}, {"7", 0}, {"x", 0}}},
      {"I", &State::ParamI, {{"2", 2}, {"0", 4}, {"x", 4}, {"5", 4}}},
      {"R", &State::ParamR, {{"2", 2}, {"3", 0}, {"x", 0}}},
      {"b", &State::ParamB2, {{"3", 3}, {"4", 0}, {"x", 0}}},
      {"S", &State::ParamS, {{"17", 17}, {"-32768", -32768}, {"x", 0}}},
      {"T", &State::ParamT, {{"25", 25}, {"26", 0}, {"-10", -10}, {"-11", 0}}},
      {"t", &State::ParamT2, {{"25", 25}, {"26", 0}, {"-10", -10}, {"x", 0}}},
  };
  Feed(Line("U-10,25"));
  for (const Row& row : rows) {
    for (const auto& [payload, stored] : row.values) {
      Feed(Line(row.letter + "1") + Line(row.letter + payload));
      EXPECT_EQ(link.State().*row.field, stored) << row.letter << payload;
    }
  }
}

TEST_F(Replies, FollowUps) {
  const MeterState& state = link.State();
  for (const bool on : {true, false}) {
    Feed(on ? Line("V1") + Line("l1") : Line("V0") + Line("l9"));
    EXPECT_EQ(std::pair(state.ParamVOn, state.ParamL2On),
              std::pair(on ? kTrue : kFalse, on ? kTrue : kFalse));
  }
  EXPECT_EQ(std::pair(state.ParamRValid, state.ParamB2Valid), std::pair(kFalse, kFalse));
  Feed(Line("R9") + Line("bx"));
  EXPECT_EQ(std::pair(state.ParamRValid, state.ParamB2Valid), std::pair(kTrue, kTrue));
  // A mode out of range is stored as 0 and shown all the same, with the new value.
  std::int16_t seen = -1;
  events.on_mode = [&] { seen = state.MeterMode; };
  Feed(Line("M7"));
  EXPECT_EQ(seen, 0);
}

TEST_F(Replies, NumbersBeyond16BitsChangeNothing) {
  settings.pkt_notify = true;
  Feed(Line("V3") + Line("S5") + Line("T0"));
  events.log.clear();
  Feed(Line("V32768") + Line("V1E999") + Line("S-32769"));
  EXPECT_EQ(link.State().ParamV, 3);
  EXPECT_EQ(link.State().ParamS, 5);
  EXPECT_EQ(events.Count("beep"), 3);
  EXPECT_EQ(events.lines, 6);
  Feed(Line("M99999"));
  EXPECT_EQ(events.Count("mode"), 0);
}

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

TEST_F(Replies, TrimLimitsAreKeptNegated) {
  const std::tuple<const char*, int, int> rows[] = {
      {"U-10,25", 10, -25},
      {"U5", 1, -2},
      {"U", 1, -2},
      {"U-20,20,99", 20, -20},
      {"Ux,20", 1, -20},
      {"U-20,x", 1, -2},
      {"U-32767,32767", 32767, -32767},
      {"U-32768,20", 1, -20},  // the second limit is taken first
      {"U-20,-32768", 1, -2},  // its negation has no place in 16 bits
      {"U-20,40000", 1, -2},
  };
  for (const auto& [text, min_neg, max_neg] : rows) {
    Feed(Line("U-1,2") + Line(text));
    EXPECT_EQ((std::pair<int, int>(link.State().RangeMinNeg, link.State().RangeMaxNeg)),
              std::pair(min_neg, max_neg))
        << text;
  }
}

TEST_F(Replies, CallMessage) {
  const std::pair<std::string, std::string> rows[] = {
      {Line("CCQ CQ"), "CQ CQ            "},
      {Line("CABCDEFGHIJKLMNOPQRST"), "ABCDEFGHIJKLMNOPQ"},
      {Line("C"), "                 "},
      {Line("C two  "), " two             "},
      {"\x02"s + "CX\r\n", "CX               "},    // no ETX: nothing is cut by position
      {"CX\x03" + "00\r\n"s, "CX               "},  // no STX
      {"..\x02"s + "CY\x03" + "00\r\n", "Y                "},
      {"\x03\x02"s + "CZ 00\r\n", "                 "},  // the ETX before the STX ends the text
  };
  for (const auto& [bytes, field] : rows) {
    Feed(Line("Cold") + bytes);
    EXPECT_EQ(link.State().MeterCallText.Field(), field) << bytes;
  }
}

TEST_F(Replies, VersionCountsOnlyInASearch) {
  Feed(Line("vOrvane Version 2.14"));
  EXPECT_EQ(link.State().FirmwareVersion, "");
  replies["v?"] = "vWattmeter 2.14";
  link.FindMeter();
  EXPECT_EQ(link.State().FirmwareVersion, "");
  replies["v?"] = "vvox VERSION 2  ";
  link.FindMeter();
  EXPECT_EQ(link.State().FirmwareVersion, "vox VERSION 2");
  Feed(Line("vVersion 3"));
  EXPECT_EQ(link.State().FirmwareVersion, "vox VERSION 2");
}

TEST_F(Replies, NoticesAndAcknowledgements) {
  Feed(Line("A") + Line("N"));
  EXPECT_EQ(events.log, (std::vector<std::string>{"clear timer", "clear timer"}));
  Feed(Line("!Restarted"));
  EXPECT_EQ(events.log.back(), "status !Restarted");
  EXPECT_FALSE(events.FindMeterEnabled());
  bool tries_soon = false;
  events.on_line = [&] { tries_soon = events.FindMeterEnabled(); };
  replies["v?"] = "!Restarted";
  link.FindMeter();
  EXPECT_TRUE(tries_soon) << "in a search it is a reason to try again";
}

}  // namespace
}  // namespace orvane
