#include "tests/link/link_fixture.h"

namespace orvane {
namespace {

using namespace std::string_literals;

using Replies = LinkTest;

TEST_F(Replies, NumbersAreClampedAndStored) {
  struct Value {
    const char* payload;
    int stored;
  };
  struct Row {
    std::string letter;
    std::int16_t MeterState::*field;
    std::vector<Value> values;
  };
  const Row rows[] = {
      {"V",
       &MeterState::ParamV,
       {{"3", 3}, {"5", 4}, {"-1", 4}, {"x", 0}, {"", 0}, {" 2 ", 2}, {"2.5", 2}, {"3.5", 4}, {"0.5", 0}}},
      {"l", &MeterState::ParamL2, {{"7", 7}, {"8", 0}, {"-1", 0}, {"x", 0}}},
      {"P", &MeterState::ParamP, {{"1", 1}, {"5", 1}, {"0", 0}, {"x", 0}}},
      {"M", &MeterState::MeterMode, {{"3", 3}, {"7", 0}, {"x", 0}}},
      {"I", &MeterState::ParamI, {{"2", 2}, {"0", 4}, {"x", 4}, {"5", 4}}},
      {"R", &MeterState::ParamR, {{"2", 2}, {"3", 0}, {"x", 0}}},
      {"b", &MeterState::ParamB2, {{"3", 3}, {"4", 0}, {"x", 0}}},
      {"S", &MeterState::ParamS, {{"17", 17}, {"-32768", -32768}, {"x", 0}}},
      {"T", &MeterState::ParamT, {{"25", 25}, {"26", 0}, {"-10", -10}, {"-11", 0}}},
      {"t", &MeterState::ParamT2, {{"25", 25}, {"26", 0}, {"-10", -10}, {"x", 0}}},
  };
  Feed(Line("U-10,25"));
  for (const Row& row : rows) {
    for (const Value& value : row.values) {
      Feed(Line(row.letter + "1"));
      Feed(Line(row.letter + value.payload));
      EXPECT_EQ(link.State().*row.field, value.stored) << row.letter << value.payload;
    }
  }
}

TEST_F(Replies, FollowUps) {
  Feed(Line("V1") + Line("l1"));
  EXPECT_EQ(link.State().ParamVOn, kTrue);
  EXPECT_EQ(link.State().ParamL2On, kTrue);
  Feed(Line("V0") + Line("l9"));
  EXPECT_EQ(link.State().ParamVOn, kFalse);
  EXPECT_EQ(link.State().ParamL2On, kFalse);
  EXPECT_EQ(link.State().ParamRValid, kFalse);
  EXPECT_EQ(link.State().ParamB2Valid, kFalse);
  Feed(Line("R9") + Line("bx"));
  EXPECT_EQ(link.State().ParamRValid, kTrue);
  EXPECT_EQ(link.State().ParamB2Valid, kTrue);
  // A mode out of range is stored as 0 and shown all the same, with the new value.
  std::int16_t seen = -1;
  events.on_mode = [&] { seen = link.State().MeterMode; };
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
  Feed(Line("BAB,B") + Line("L0,1,L") + Line("WWatt") + Line("www"));
  EXPECT_EQ(link.State().ParamBText, "AB,B");
  EXPECT_EQ(link.State().ParamLText, "0,1,L");
  EXPECT_EQ(link.State().ParamWText, "Watt");
  EXPECT_EQ(link.State().ParamW2Text, "ww");
  // Only the last ETX ends the text; those inside are taken out, and without any the tail stays.
  Feed("\x02"s + "B1\x03,2\x03" + "FF\r\n");
  EXPECT_EQ(link.State().ParamBText, "1,2");
  Feed("\x02"s + "B1,2FF\r\n");
  EXPECT_EQ(link.State().ParamBText, "1,2FF");
}

TEST_F(Replies, TrimLimitsAreKeptNegated) {
  struct Row {
    const char* text;
    int min_neg;
    int max_neg;
  };
  const Row rows[] = {
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
  for (const Row& row : rows) {
    Feed(Line("U-1,2"));
    Feed(Line(row.text));
    EXPECT_EQ(link.State().RangeMinNeg, row.min_neg) << row.text;
    EXPECT_EQ(link.State().RangeMaxNeg, row.max_neg) << row.text;
  }
}

TEST_F(Replies, CallMessage) {
  struct Row {
    std::string bytes;
    std::string field;
  };
  const Row rows[] = {
      {Line("CCQ CQ"), "CQ CQ            "},
      {Line("CABCDEFGHIJKLMNOPQRST"), "ABCDEFGHIJKLMNOPQ"},
      {Line("C"), "                 "},
      {Line("C two  "), " two             "},
      {"\x02"s + "CX\r\n", "CX               "},    // no ETX: nothing is cut by position
      {"CX\x03" + "00\r\n"s, "CX               "},  // no STX
      {"..\x02"s + "CY\x03" + "00\r\n", "Y                "},
      {"\x03\x02"s + "CZ 00\r\n", "                 "},  // the ETX before the STX ends the text
  };
  for (const Row& row : rows) {
    Feed(Line("Cold"));
    Feed(row.bytes);
    EXPECT_EQ(link.State().MeterCallText.Field(), row.field) << row.bytes;
  }
}

TEST_F(Replies, VersionCountsOnlyInASearch) {
  Feed(Line("vOrvane Version 2.14"));
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
}

}  // namespace
}  // namespace orvane
