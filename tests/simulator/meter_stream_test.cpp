// The measurement stream: its pace, its readings, its alarms and the scale row.
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

std::vector<std::int64_t> PacketTimes(const MeterLog& log) {
  std::vector<std::int64_t> times;
  for (const PacketRecord& packet : log.Packets)
    times.push_back(packet.TimeMs);
  return times;
}

TEST(MeterStream, IsPacedByTheMode) {
  for (const auto& [mode, interval] : {std::pair{"M0", 200}, {"M1", 1000}, {"M2", 2000}, {"M3", 200}}) {
    StreamingLine line(0, 0, mode);
    line.Until(line.Now + 20000);
    const auto times = PacketTimes(line.Meter.Log());
    ASSERT_EQ(times.size(), static_cast<std::size_t>(20000 / interval + 1)) << mode;
    for (std::size_t i = 1; i < times.size(); ++i)
      EXPECT_EQ(times[i] - times[i - 1], interval) << mode;
  }
}

TEST(MeterStream, SendsWhatItMeasures) {
  const std::tuple<double, double, const char*> rows[] = {
      {0, 0, "D,0,0,0.00,0;0"},      // nothing to compare
      {0.4, 0.4, "D,0,0,0.00,0;0"},  // below what it can measure
      {100, 0, "D,100,0,1.00,0;0"},   {100, 4, "D,100,4,1.50,0;0"},
      {12.6, 0.5, "D,13,1,1.50,0;0"},  // whole watts, but the VSWR of the true power
      {1000, 1, "D,1000,1,1.07,0;0"}, {50, 50, "D,50,50,99.99,1;0"},
      {50, 80, "D,50,80,99.99,1;0"},  {1000, 999, "D,1000,999,99.99,1;0"},
      {3000, 0, "D,3000,0,1.00,0;0"}};
  for (const auto& [forward, reflected, packet] : rows) {
    StreamingLine line(forward, reflected);
    EXPECT_EQ(FirstPacket(line), MessageFrame(packet));
  }
}

TEST(MeterStream, AppliesTheTrims) {
  VirtualLine line;
  line.Meter.SetPower(1000, 40);
  line.Command("T-3");
  line.Command("t10");
  line.Command("D1");
  EXPECT_EQ(FirstPacket(line), MessageFrame("D,970,44,1.54,0;0"));
  EXPECT_EQ(line.Meter.Log().Packets.back().ForwardPower, 970);
  EXPECT_EQ(line.Meter.Log().Packets.back().VSWR, 1.54);
}

TEST(MeterStream, ReadsThePeakSinceTheLastPacket) {
  VirtualLine line;
  line.Command("M1");
  line.Meter.SetScenario("cw");  // keyed within every second of its first six
  line.Command("D1");
  line.Until(line.Now + 6000);
  for (std::size_t i = 1; i < 6; ++i)
    EXPECT_EQ(line.Meter.Log().Packets[i].ForwardPower, 100);
}

TEST(MeterAlarms, FollowTheThresholdChosen) {
  const std::tuple<const char*, double, double, std::string>
      rows[] = {{"V0", 100, 90, "0;0"},   {"V1", 100, 4, "0;0"},   // 1.50 is not above 1.5
                {"V1", 100, 4.1, "1;0"},  {"V2", 100, 11, "0;0"},  // 1.99
                {"V2", 100, 11.3, "1;0"}, {"V3", 100, 18.3, "0;0"}, {"V3", 100, 18.6, "1;0"},
                {"V4", 100, 25, "0;0"},   {"V4", 100, 25.4, "1;0"}, {"l0", 1, 0, "0;0"},
                {"l1", 1, 0, "0;0"},      {"l2", 1, 0, "0;1"},      {"l7", 99, 0, "0;1"},
                {"l7", 100, 0, "0;0"},    {"l7", 0, 0, "0;0"},  // no alarm without a transmission
                {"l7", 50, 20, "1;1"}};
  for (const auto& [setting, forward, reflected, flags] : rows) {
    StreamingLine line(forward, reflected, setting);
    const std::string packet = FirstPacket(line);
    EXPECT_NE(packet.find("," + flags + "\x03"), std::string::npos) << setting << ": " << packet;
  }
}

TEST(MeterAlarms, LatchUntilResetAndComeBack) {
  StreamingLine line(20, 15, "l5");
  const auto alarms = [&] {
    line.Until(line.Now + 1000);
    return std::pair(line.Meter.Log().Packets.back().SWRAlarm, line.Meter.Log().Packets.back().PwrAlarm);
  };
  line.Meter.SetPower(500, 5);
  EXPECT_EQ(alarms(), std::pair(true, true));
  EXPECT_EQ(line.Command("A"), MessageFrame("A"));
  EXPECT_EQ(alarms(), std::pair(false, false));
  line.Meter.SetPower(500, 400);
  EXPECT_EQ(alarms(), std::pair(true, false));
  line.Command("A");
  EXPECT_FALSE(line.Meter.SWRAlarm());
  EXPECT_EQ(alarms(), std::pair(true, false)) << "the cause persists";
  line.Command("V0");
  EXPECT_EQ(alarms(), std::pair(false, false)) << "switched off";
}

TEST(MeterRow, IsSentWhenItChanges) {
  VirtualLine line;  // range setting 1: 100, 500, 2500 W
  line.Meter.SetPower(80, 0);
  line.Command("D1");
  const auto next = [&line](double watts, std::int64_t for_ms) {
    line.Meter.SetPower(watts, 0);
    std::string rows;
    for (const std::string& text : Lines(line.Until(line.Now + for_ms))) {
      if (text.starts_with("\x02R")) rows += text.substr(1, 2);
    }
    return rows;
  };
  EXPECT_EQ(next(100, 400), "");
  EXPECT_EQ(next(101, 400), "R1");
  EXPECT_EQ(next(2501, 400), "R2");  // beyond every row: the last
  EXPECT_EQ(next(10, 900), "") << "speech must not make the scale jump";
  EXPECT_EQ(next(10, 400), "R0");
  EXPECT_EQ(next(400, 400), "R1");
  line.Command("b3");  // 400, 2000, 3000 W
  EXPECT_EQ(next(400, 400), "R0") << "a new range setting counts at once";
}

}  // namespace
}  // namespace orvane::sim
