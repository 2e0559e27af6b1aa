// That every way to misbehave does something, and the same every time: a fault that did nothing would let
// every test pass that is run under it.
#include "tests/simulator/virtual_line.h"

#include <functional>
#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

const std::string kPacket = MessageFrame("D,97,5,1.59,0;0");  // check digits C7: spoilable in both ways
const std::string kBody = kPacket.substr(0, kPacket.size() - 4);
const std::string kHalf = kPacket.substr(0, kPacket.size() / 2);

TEST(MeterFaults, StrikePackets) {
  using Reads = const std::vector<std::string>&;
  // What is read in a second of five packets.
  const std::tuple<FaultKind, std::size_t, std::function<bool(Reads)>> rows[] = {
      {FaultKind::kLowerCaseCrc, 5, [](Reads r) { return r[0] == kBody + "c7\r\n"; }},
      {FaultKind::kWrongCrc, 5, [](Reads r) { return r[0].starts_with(kBody) && r[0] != kPacket; }},
      {FaultKind::kTornLine, 10, [](Reads r) { return r[0] != kPacket && r[0] + r[1] == kPacket; }},
      {FaultKind::kCutLine, 5, [](Reads r) { return r[0] == kHalf && r[4] == kHalf; }},
      {FaultKind::kMergedLines, 2, [](Reads r) { return r[0] == kPacket + kPacket; }},
      {FaultKind::kNoise, 5, [](Reads r) { return r[0] != kPacket && r[0].ends_with(kPacket); }},
      {FaultKind::kOverlongLine, 5, [](Reads r) { return r[0].size() > 4096 && r[0].ends_with(kPacket); }},
      {FaultKind::kReset, 1, [](Reads r) { return r[0] == MessageFrame("!Meter Restarted"); }},
  };
  for (const auto& [kind, reads, holds] : rows) {
    StreamingLine line(97, 5);
    line.Until(line.Now + 180);
    line.Meter.SetFaultEvery(kind, 1);
    const auto got = line.Reads(line.Now + 1000);
    ASSERT_EQ(got.size(), reads) << NameOfFault(kind);
    EXPECT_TRUE(holds(got)) << NameOfFault(kind) << ": " << got[0];
    EXPECT_EQ(line.Meter.Streaming(), kind != FaultKind::kReset);
  }
}

TEST(MeterFaults, SilenceTheMeterButNotItsWork) {
  StreamingLine line;
  line.Meter.Silence(1000);
  EXPECT_EQ(line.Command("b3") + line.Until(line.Now + 985), "");
  EXPECT_EQ(Lines(line.Until(line.Now + 1000)).size(), 5U);
  line.Meter.SetMute(true);
  EXPECT_EQ(line.Until(line.Now + 60000), "");
  line.Meter.SetMute(false);
  EXPECT_EQ(line.Command("b?"), MessageFrame("b3"));
}

TEST(MeterFaults, StrikeTheirShareOfPacketsAndSpareReplies) {
  const auto struck = [](std::uint64_t seed, double percent) {
    VirtualLine line({.Seed = seed});
    line.Meter.SetStreamRate(100);
    line.Meter.SetFault(FaultKind::kWrongCrc, percent);
    EXPECT_EQ(line.Command("b?"), MessageFrame("b1"));
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
  VirtualLine line;
  line.Meter.SetFaultEvery(FaultKind::kWrongCrc, 1);
  line.Meter.SetFaultsOnReplies(true);
  EXPECT_NE(line.Command("b?"), MessageFrame("b1"));
}

}  // namespace
}  // namespace orvane::sim
