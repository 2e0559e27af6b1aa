// What the meter understands, what it refuses, and how it finds commands in what it hears.
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

const std::string kAck = MessageFrame("A");
const std::string kRefusal = MessageFrame("N");

std::string Frame(const std::string& text, const std::string& digits) {
  return "\x02" + text + "\x03" + digits + "\r";
}

// Frames taken from a real line, so that this arithmetic has a witness outside itself.
TEST(MeterFrames, AgreeWithKnownFrames) {
  for (const auto& [command, digits] :
       {std::pair{"D1", "C0"}, {"D0", "71"}, {"v?", "BB"}, {"B?", "CF"}, {"A", "8F"}})
    EXPECT_EQ(CommandFrame(command), Frame(command, digits));
  EXPECT_EQ(MessageFrame("A"), Frame("A", "8F") + "\n");
}

TEST(MeterCommands, AnswerEveryQueryOfAFreshMeter) {
  VirtualLine line;
  for (const char* answer : {"B50,250,1250,100,500,2500,200,1000,3000,400,2000,3000", "L0,1,2,5,10,25,50,100",
                             "U-20,20", "WCoupler 3000 W", "w1.8-54 MHz 50R", "vOrvane Meter Version 2.14",
                             "CORVANE", "b1", "I4", "l0", "M0", "P0", "R0", "S1", "T0", "t0", "V4"})
    EXPECT_EQ(line.Command(std::string{*answer, '?'}), MessageFrame(answer));
}

TEST(MeterCommands, KeepWhatTheyAccept) {
  VirtualLine line;
  const auto keeps = [&](const std::string& set, const std::string& answer) {
    EXPECT_EQ(line.Command(set), kAck) << set;
    EXPECT_EQ(line.LastVerdict(), Verdict::kAccepted) << set;
    EXPECT_EQ(line.Command(std::string{answer[0], '?'}), MessageFrame(answer)) << set;
  };
  for (const char* set : {"T-3", "T20", "t-20", "t0", "P1", "S0", "b3", "l7", "V0", "M3", "I1", "I4",
                          "CDL\xD8 BC", "C1234567890123456", "C"})
    keeps(set, set);
  keeps("2M", "M2");
  keeps("0M", "M0");
  keeps("I0", "I1");  // reported within 1..4
  keeps("CTEST            ", "CTEST");
}

TEST(MeterCommands, RefuseWithoutChangingAnything) {
  const std::string out_of_range[] = {"T21",    "T-21",  "t-21", "P2", "S2",      "b4",
                                      "b-1",    "I5",    "l8",   "V5", "M4",      "4M",
                                      "T 3",    "T+3",   "T3x",  "T-", "T000003", "C12345678901234567",
                                      "CA\x07", "CA\xD9"};
  const std::string unknown[] = {"M", "x", "D2", "D?", "B1", "v2", "a", "12M", "x?", "A?"};
  const std::string malformed[] = {"\x02\x44\x31\x43\x30\r", "\x02\x44\x31\x03\x43\r", "\x02\r",
                                   "\x02\x03\x46\x46\r"};
  VirtualLine line;
  const auto all_settings = [&] {
    std::string answers;
    for (const char letter : std::string("BbUCIlLMPSTtV"))
      answers += line.Command(std::string{letter, '?'});
    return answers;
  };
  const std::string before = all_settings();
  const auto refused = [&](const std::string& frame, Verdict outcome) {
    EXPECT_EQ(line.Exchange(frame), kRefusal) << frame;
    EXPECT_EQ(line.LastVerdict(), outcome) << frame;
  };
  for (const std::string& command : out_of_range)
    refused(CommandFrame(command), Verdict::kOutOfRange);
  for (const std::string& command : unknown)
    refused(CommandFrame(command), Verdict::kUnknown);
  for (const std::string& frame : malformed)
    refused(frame, Verdict::kMalformed);
  // Wrong digits, in lower case, of another command.
  for (const std::string& frame : {Frame("D1", "C1"), Frame("D1", "c0"), Frame("D0", "C0")})
    refused(frame, Verdict::kBadCrc);
  EXPECT_EQ(all_settings(), before);
  EXPECT_FALSE(line.Meter.Streaming());
}

TEST(MeterCommands, AreFoundAmongGarbageAndTornPortions) {
  const std::string query = CommandFrame("b?");
  for (const std::string& stream :
       {"garbage\r\n\x03" + query, query + "tail",
        "\x02T-1" + query,                              // a frame that was cut off: the new STX starts over
        "\x02" + std::string(100, 'x') + "\r" + query,  // too long for any command: given up in silence
        std::string(5, '\0') + "\xFF\xFE" + query}) {
    VirtualLine whole;
    EXPECT_EQ(whole.Exchange(stream), MessageFrame("b1"));
    EXPECT_EQ(whole.Meter.Log().CommandTotal, 1U);
    VirtualLine torn;
    std::string answer;
    for (const char c : stream)
      answer += torn.Exchange(std::string(1, c));
    EXPECT_EQ(answer, MessageFrame("b1"));
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

}  // namespace
}  // namespace orvane::sim
