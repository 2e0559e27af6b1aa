// Every way to misbehave, and that it is the same way every time.
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>
#include <set>

namespace orvane::sim {
namespace {

const std::string kPacket = MessageFrame("D,97,5,1.59,0;0");  // check digits C7: spoilable in both ways

// A meter with its stream just switched on and its fault in force.
struct FaultyLine : StreamingLine {
  explicit FaultyLine(FaultKind kind, int every = 1) : StreamingLine(97, 5) {
    Until(Now + 180);
    Meter.SetFaultEvery(kind, every);
  }
};

TEST(MeterFaults, SpoilCheckDigits) {
  const std::string body = kPacket.substr(0, kPacket.size() - 4);
  FaultyLine lower(FaultKind::kLowerCaseCrc);
  EXPECT_EQ(lower.Until(lower.Now + 200), body + "c7\r\n");
  FaultyLine line(FaultKind::kWrongCrc);
  for (const std::string& text : Lines(line.Until(line.Now + 1000))) {
    EXPECT_TRUE(text.starts_with(body) && text.size() == kPacket.size()) << text;
    EXPECT_NE(text, kPacket);
    EXPECT_EQ(text.find_first_of("abcdef", body.size()), std::string::npos);
  }
  FaultyLine overlong(FaultKind::kOverlongLine);
  const auto lines = Lines(overlong.Until(overlong.Now + 200));
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_GT(lines[0].size(), 4096U);
  EXPECT_TRUE(lines[0].starts_with("\x02\x44,") && lines[0].ends_with(kPacket));
}

TEST(MeterFaults, TearLinesOverTwoReads) {
  FaultyLine line(FaultKind::kTornLine);
  const auto reads = line.Reads(line.Now + 1000);
  ASSERT_EQ(reads.size(), 10U);
  for (std::size_t i = 0; i < reads.size(); i += 2) {
    EXPECT_NE(reads[i], kPacket);
    EXPECT_EQ(reads[i] + reads[i + 1], kPacket);
  }
  // A host that comes late gets the halves in two calls all the same.
  line.Now += 1000;
  const std::string half = line.Meter.Run(line.Now);
  EXPECT_EQ(half + line.Meter.Run(line.Now), kPacket + half);
  line.Until(line.Now + 16);                         // a millisecond into the pause
  line.Meter.Receive(CommandFrame("b?"), line.Now);  // the answer is due before the other half
  EXPECT_TRUE(line.Until(line.Now + 100).ends_with("C7\r\n" + MessageFrame("b1"))) << "nothing overtakes it";
}

TEST(MeterFaults, CutLinesRunIntoTheNext) {
  FaultyLine line(FaultKind::kCutLine, 2);
  const auto lines = Lines(line.Until(line.Now + 800));
  ASSERT_EQ(lines.size(), 3U);  // whole; half; the next, whole; half
  EXPECT_EQ(lines[0], kPacket);
  EXPECT_EQ(lines[1], kPacket.substr(0, kPacket.size() / 2) + kPacket);
  EXPECT_EQ(lines[2], kPacket.substr(0, kPacket.size() / 2));
}

TEST(MeterFaults, MergeTwoLinesIntoOneBurst) {
  FaultyLine line(FaultKind::kMergedLines);
  const auto reads = line.Reads(line.Now + 1200);
  ASSERT_EQ(reads.size(), 3U);
  for (const std::string& read : reads)
    EXPECT_EQ(read, kPacket + kPacket);
  line.Until(line.Now + 200);  // one is kept back
  EXPECT_EQ(line.Command("D0"), kPacket + MessageFrame("A")) << "and goes out with whatever comes next";
}

TEST(MeterFaults, PutNoiseBetweenLines) {
  FaultyLine line(FaultKind::kNoise);
  std::set<std::string> noises;
  const auto lines = Lines(line.Until(line.Now + 20000));
  ASSERT_EQ(lines.size(), 100U);
  for (const std::string& text : lines) {
    ASSERT_TRUE(text.ends_with(kPacket));
    const std::string noise = text.substr(0, text.size() - kPacket.size());
    ASSERT_TRUE(noise.size() <= 8 && !noise.empty());
    ASSERT_EQ(noise.find('\x02'), std::string::npos);
    noises.insert(noise);
  }
  EXPECT_GT(noises.size(), 80U);
}

TEST(MeterFaults, RestartInMidStream) {
  FaultyLine line(FaultKind::kReset, 3);
  line.Command("T-3");
  line.Meter.SetPower(100, 90);
  const auto lines = Lines(line.Until(line.Now + 5000));
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_TRUE(lines[1].starts_with("\x02\x44,97"));
  EXPECT_EQ(lines[2], MessageFrame("!Meter Restarted"));
  EXPECT_FALSE(line.Meter.Streaming());
  EXPECT_FALSE(line.Meter.SWRAlarm());
  EXPECT_EQ(line.Command("T?"), MessageFrame("T-3")) << "settings survive";
  line.Command("D1");
  EXPECT_TRUE(line.Meter.Streaming()) << "and the stream comes back on request";
}

TEST(MeterFaults, SilenceTheMeterButNotItsWork) {
  FaultyLine line(FaultKind::kNoise, 0);
  line.Meter.Silence(1000);
  EXPECT_EQ(line.Command("b3"), "");
  EXPECT_EQ(line.Until(line.Now + 985), "");
  EXPECT_EQ(line.Meter.Log().LostLines, 6U);  // five packets and the acknowledgement
  EXPECT_EQ(Lines(line.Until(line.Now + 1000)).size(), 5U);
  line.Meter.SetMute(true);
  EXPECT_EQ(line.Until(line.Now + 60000), "");
  line.Meter.SetMute(false);
  EXPECT_EQ(line.Command("b?"), MessageFrame("b3"));
}

TEST(MeterFaults, StrikeTheirShareOfPackets) {
  const auto struck = [](std::uint64_t seed, double percent) {
    VirtualLine line({.Seed = seed});
    line.Meter.SetStreamRate(100);
    line.Meter.SetFault(FaultKind::kWrongCrc, percent);
    line.Command("D1");
    line.Until(line.Now + 100000);
    std::vector<std::size_t> places;
    const auto& packets = line.Meter.Log().Packets;
    for (std::size_t i = 0; i < packets.size(); ++i) {
      if (packets[i].Fault == FaultKind::kWrongCrc) places.push_back(i);
    }
    return places;
  };
  EXPECT_NEAR(static_cast<double>(struck(1, 10).size()), 1000, 100);
  EXPECT_EQ(struck(1, 10), struck(1, 10));
  EXPECT_NE(struck(1, 10), struck(2, 10));
  EXPECT_EQ(struck(1, 0).size(), 0U);
  EXPECT_GE(struck(1, 100).size(), 10000U);
}

TEST(MeterFaults, SpareRepliesUnlessAskedNotTo) {
  VirtualLine line;
  line.Meter.SetFaultEvery(FaultKind::kWrongCrc, 1);
  EXPECT_EQ(line.Command("b?"), MessageFrame("b1"));
  line.Meter.SetFaultsOnReplies(true);
  EXPECT_NE(line.Command("b?"), MessageFrame("b1"));
  line.Meter.ClearFaults();
  EXPECT_EQ(line.Command("b?"), MessageFrame("b1"));

  line.Meter.SetFaultEvery(FaultKind::kReset, 1);
  EXPECT_EQ(line.Command("D1"), "") << "the acknowledgement became a restart";
  EXPECT_FALSE(line.Meter.Streaming());
}

}  // namespace
}  // namespace orvane::sim
