// What the meter understands, what it refuses, and how it finds commands in what it hears.
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

const std::string kAck = MessageFrame("A");
const std::string kRefusal = MessageFrame("N");

// Frames taken from a real line, so that this arithmetic has a witness outside itself.
TEST(MeterFrames, AgreeWithKnownFrames) {
  EXPECT_EQ(CommandFrame("D1"),
            "\x02"
            "D1"
            "\x03"
            "C0\r");
  EXPECT_EQ(CommandFrame("D0"),
            "\x02"
            "D0"
            "\x03"
            "71\r");
  EXPECT_EQ(CommandFrame("v?"),
            "\x02"
            "v?"
            "\x03"
            "BB\r");
  EXPECT_EQ(CommandFrame("B?"),
            "\x02"
            "B?"
            "\x03"
            "CF\r");
  EXPECT_EQ(CommandFrame("A"),
            "\x02"
            "A"
            "\x03"
            "8F\r");
  EXPECT_EQ(MessageFrame("A"),
            "\x02"
            "A"
            "\x03"
            "8F\r\n");
}

TEST(MeterCommands, AnswerEveryQueryOfAFreshMeter) {
  const std::vector<std::pair<std::string, std::string>> answers = {
      {"B?", "B50,250,1250,100,500,2500,200,1000,3000,400,2000,3000"},
      {"L?", "L0,1,2,5,10,25,50,100"},
      {"U?", "U-20,20"},
      {"W?", "WCoupler 3000 W"},
      {"w?", "w1.8-54 MHz 50R"},
      {"v?", "vOrvane Meter Version 2.14"},
      {"C?", "CORVANE"},
      {"b?", "b1"},
      {"I?", "I4"},
      {"l?", "l0"},
      {"M?", "M0"},
      {"P?", "P0"},
      {"R?", "R0"},
      {"S?", "S1"},
      {"T?", "T0"},
      {"t?", "t0"},
      {"V?", "V4"},
  };
  VirtualLine line;
  for (const auto& [query, answer] : answers)
    EXPECT_EQ(line.Command(query), MessageFrame(answer));
}

TEST(MeterCommands, KeepWhatTheyAccept) {
  struct Case {
    std::string Set, Query, Answer;
  };
  const std::vector<Case> cases = {
      {"T-3", "T?", "T-3"},
      {"T20", "T?", "T20"},
      {"t-20", "t?", "t-20"},
      {"t0", "t?", "t0"},
      {"P1", "P?", "P1"},
      {"S0", "S?", "S0"},
      {"b3", "b?", "b3"},
      {"l7", "l?", "l7"},
      {"V0", "V?", "V0"},
      {"2M", "M?", "M2"},
      {"M3", "M?", "M3"},
      {"0M", "M?", "M0"},
      {"I1", "I?", "I1"},
      {"I2", "I?", "I2"},
      {"I3", "I?", "I3"},
      {"I4", "I?", "I4"},
      {"I0", "I?", "I1"},  // reported within 1..4
      {"CDL\xD8"
       "ABC",
       "C?",
       "CDL\xD8"
       "ABC"},
      {"C1234567890123456", "C?", "C1234567890123456"},
      {"CTEST            ", "C?", "CTEST"},
      {"C", "C?", "C"},
  };
  VirtualLine line;
  for (const Case& test : cases) {
    EXPECT_EQ(line.Command(test.Set), kAck) << test.Set;
    EXPECT_EQ(line.LastVerdict(), Verdict::kAccepted) << test.Set;
    EXPECT_EQ(line.Command(test.Query), MessageFrame(test.Answer)) << test.Set;
  }
}

TEST(MeterCommands, RefuseWithoutChangingAnything) {
  struct Case {
    std::string Command;
    Verdict Outcome;
  };
  const std::vector<Case> cases = {
      {"T21", Verdict::kOutOfRange},     {"T-21", Verdict::kOutOfRange},
      {"t-21", Verdict::kOutOfRange},    {"P2", Verdict::kOutOfRange},
      {"S2", Verdict::kOutOfRange},      {"b4", Verdict::kOutOfRange},
      {"b-1", Verdict::kOutOfRange},     {"I5", Verdict::kOutOfRange},
      {"l8", Verdict::kOutOfRange},      {"V5", Verdict::kOutOfRange},
      {"M4", Verdict::kOutOfRange},      {"4M", Verdict::kOutOfRange},
      {"T 3", Verdict::kOutOfRange},     {"T+3", Verdict::kOutOfRange},
      {"T3x", Verdict::kOutOfRange},     {"T-", Verdict::kOutOfRange},
      {"T000003", Verdict::kOutOfRange}, {"C12345678901234567", Verdict::kOutOfRange},
      {"CA\x07", Verdict::kOutOfRange},  {"CA\xD9", Verdict::kOutOfRange},
      {"M", Verdict::kUnknown},          {"x", Verdict::kUnknown},
      {"D2", Verdict::kUnknown},         {"D?", Verdict::kUnknown},
      {"B1", Verdict::kUnknown},         {"v2", Verdict::kUnknown},
      {"a", Verdict::kUnknown},          {"12M", Verdict::kUnknown},
      {"x?", Verdict::kUnknown},         {"A?", Verdict::kUnknown},
  };
  const std::string queries = "B?b?U?C?I?l?L?M?P?S?T?t?V?";
  VirtualLine line;
  const auto all_settings = [&] {
    std::string answers;
    for (std::size_t i = 0; i < queries.size(); i += 2)
      answers += line.Command(queries.substr(i, 2));
    return answers;
  };
  const std::string before = all_settings();
  for (const Case& test : cases) {
    EXPECT_EQ(line.Command(test.Command), kRefusal) << test.Command;
    EXPECT_EQ(line.LastVerdict(), test.Outcome) << test.Command;
  }
  EXPECT_EQ(all_settings(), before);
  EXPECT_FALSE(line.Meter.Streaming());
}

TEST(MeterCommands, RefuseSpoiledFrames) {
  const std::vector<std::pair<std::string, Verdict>> frames = {
      {"\x02"
       "D1"
       "\x03"
       "C1\r",
       Verdict::kBadCrc},
      {"\x02"
       "D1"
       "\x03"
       "c0\r",
       Verdict::kBadCrc},  // lower case
      {"\x02"
       "D0"
       "\x03"
       "C0\r",
       Verdict::kBadCrc},  // the digits of another command
      {"\x02"
       "D1C0\r",
       Verdict::kMalformed},
      {"\x02"
       "D1"
       "\x03"
       "C\r",
       Verdict::kMalformed},
      {"\x02\r", Verdict::kMalformed},
      {"\x02\x03"
       "FF\r",
       Verdict::kMalformed},
  };
  VirtualLine line;
  for (const auto& [frame, outcome] : frames) {
    EXPECT_EQ(line.Exchange(frame), kRefusal);
    EXPECT_EQ(line.LastVerdict(), outcome);
  }
  EXPECT_FALSE(line.Meter.Streaming());
}

TEST(MeterCommands, SurviveTornPortions) {
  VirtualLine line;
  const std::string frame = CommandFrame("v?");
  for (std::size_t i = 0; i + 1 < frame.size(); ++i)
    EXPECT_EQ(line.Exchange(frame.substr(i, 1)), "");
  EXPECT_EQ(line.Exchange("\r"), MessageFrame("vOrvane Meter Version 2.14"));
}

TEST(MeterCommands, AreFoundAmongGarbage) {
  const std::string query = CommandFrame("b?");
  const std::vector<std::string> streams = {
      "garbage\r\n\x03" + query,
      query + "tail",
      "\x02T-1" + query,                              // a frame that was cut off: the new STX starts over
      "\x02" + std::string(100, 'x') + "\r" + query,  // too long for any command: given up in silence
      std::string(5, '\0') + "\xFF\xFE" + query,
  };
  for (const std::string& stream : streams) {
    VirtualLine line;
    EXPECT_EQ(line.Exchange(stream), MessageFrame("b1"));
    EXPECT_EQ(line.Meter.Log().CommandTotal, 1U);
  }
}

TEST(MeterCommands, AreAnsweredInTheirOrderAfterTheDelay) {
  VirtualLine line;
  line.Meter.Receive(CommandFrame("b2") + CommandFrame("b?"), line.Now);
  EXPECT_EQ(line.Meter.NextDue(), line.Now + 5);
  EXPECT_EQ(line.Meter.Run(line.Now + 4), "");
  EXPECT_EQ(line.Meter.Run(line.Now + 5), kAck + MessageFrame("b2"));
  EXPECT_EQ(line.Meter.NextDue(), std::nullopt);
}

TEST(MeterCommands, AreNoiseAtAnotherLineSpeed) {
  VirtualLine line({.Baud = 19200});
  line.Meter.SetPeerBaud(38400);
  EXPECT_EQ(line.Command("D1"), "");
  EXPECT_EQ(line.LastVerdict(), Verdict::kNoise);
  EXPECT_FALSE(line.Meter.Streaming());
  line.Meter.SetPeerBaud(19200);
  EXPECT_EQ(line.Command("D1").substr(0, kAck.size()), kAck);

  // The other way round: the peer changes its speed under a running stream and hears noise of that length.
  line.Meter.SetPeerBaud(9600);
  const std::string noise = line.Until(line.Now + 1000);
  EXPECT_EQ(noise.size(), 5 * MessageFrame("D,0,0,0.00,0;0").size());
  EXPECT_EQ(noise.find("D,0"), std::string::npos);
}

TEST(MeterCommands, AreLoggedUpToTheLimit) {
  VirtualLine line({.LogLimit = 2});
  line.Command("b?");
  const std::int64_t second = line.Now;
  line.Command("T99");
  line.Command("P1");
  const MeterLog& log = line.Meter.Log();
  EXPECT_EQ(log.CommandTotal, 3U);
  ASSERT_EQ(log.Commands.size(), 2U);
  EXPECT_EQ(log.Commands[0].Text, "T99");
  EXPECT_EQ(log.Commands[0].TimeMs, second);
  EXPECT_EQ(log.Commands[0].Outcome, Verdict::kOutOfRange);
  EXPECT_EQ(log.Commands[1].Text, "P1");
}

TEST(MeterKnobs, ReportTheirNewValueUnasked) {
  VirtualLine line;
  EXPECT_TRUE(line.Meter.ChangeAtMeter("2M"));
  EXPECT_TRUE(line.Meter.ChangeAtMeter("b3"));
  EXPECT_FALSE(line.Meter.ChangeAtMeter("b4"));
  EXPECT_FALSE(line.Meter.ChangeAtMeter(""));
  EXPECT_EQ(line.Until(line.Now + 10), MessageFrame("M2") + MessageFrame("b3"));
}

}  // namespace
}  // namespace orvane::sim
