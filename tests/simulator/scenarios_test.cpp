// The stories that the antenna line can tell, and the console that starts them.
#include "simulator/console.h"
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

std::string StreamOf(std::string_view scenario, std::uint64_t seed) {
  VirtualLine line({.Seed = seed});
  line.Meter.SetScenario(scenario);
  line.Meter.SetStreamRate(50);
  line.Command("D1");
  return line.Until(line.Now + 40000);
}

TEST(Scenarios, AreRepeatable) {
  for (const Scenario& scenario : Scenarios()) {
    EXPECT_EQ(StreamOf(scenario.Name, 7), StreamOf(scenario.Name, 7)) << scenario.Name;
  }
  EXPECT_NE(StreamOf("ssb", 7), StreamOf("ssb", 8));
}

struct Extent {
  double LowForward = 1e9, HighForward = 0, LowVSWR = 1e9, HighVSWR = 0;
  int Pauses = 0;  // moments without power
  bool SWRAlarm = false;
};

Extent ExtentOf(std::string_view scenario, std::int64_t for_ms) {
  VirtualLine line;
  line.Meter.SetScenario(scenario);
  line.Meter.SetStreamRate(20);
  line.Command("D1");
  line.Until(line.Now + for_ms);
  Extent extent;
  for (const PacketRecord& packet : line.Meter.Log().Packets) {
    extent.LowForward = std::min<double>(extent.LowForward, packet.ForwardPower);
    extent.HighForward = std::max<double>(extent.HighForward, packet.ForwardPower);
    extent.Pauses += packet.ForwardPower == 0 ? 1 : 0;
    extent.SWRAlarm |= packet.SWRAlarm;
    if (packet.ForwardPower < 5) continue;
    extent.LowVSWR = std::min(extent.LowVSWR, packet.VSWR);
    extent.HighVSWR = std::max(extent.HighVSWR, packet.VSWR);
  }
  return extent;
}

TEST(Scenarios, TellTheirStories) {
  const Extent speech = ExtentOf("ssb", 60000);
  EXPECT_NEAR(speech.HighForward, 775, 75);
  EXPECT_NEAR(speech.Pauses, 400, 300);
  EXPECT_FALSE(speech.SWRAlarm);
  const Extent tune = ExtentOf("tune", 20000);
  EXPECT_NEAR(tune.LowVSWR, 1.1, 0.01);
  EXPECT_NEAR(tune.HighVSWR, 4, 0.05);
  EXPECT_EQ(tune.LowForward, tune.HighForward);
  EXPECT_FALSE(ExtentOf("antenna", 7900).SWRAlarm);
  EXPECT_TRUE(ExtentOf("antenna", 18900).SWRAlarm);
  EXPECT_GT(ExtentOf("antenna", 18900).Pauses, 10);
  const Extent sweep = ExtentOf("sweep", 60000);
  EXPECT_EQ(sweep.LowForward, 0);
  EXPECT_GT(sweep.HighForward, 2980);
}

TEST(Scenarios, StartWhenTheyAreChosen) {
  StreamingLine line;
  line.Until(500000);
  EXPECT_FALSE(line.Meter.SetScenario("no such story"));
  EXPECT_TRUE(line.Meter.SetScenario("sweep"));
  std::string stream = line.Until(line.Now + 30000);
  EXPECT_NEAR(line.Meter.Log().Packets.back().ForwardPower, 3000, 50);
  stream += line.Until(line.Now + 32000);
  for (const char* row : {"\x02R1", "\x02R2", "\x02R0"})
    EXPECT_NE(stream.find(row), std::string::npos) << row;
  line.Meter.SetScenario("antenna");
  line.Until(line.Now + 21000);
  line.Command("A");
  line.Until(line.Now + 1000);
  EXPECT_FALSE(line.Meter.SWRAlarm()) << "mended, so a reset holds";
  EXPECT_EQ(line.Meter.Log().Packets.back().ForwardPower, 400);
}

TEST(SimulatorConsole, EscapesBothWays) {
  std::string all;
  for (int code = 0; code < 256; ++code)
    all += static_cast<char>(code);
  EXPECT_EQ(Unescaped(Escaped(all)), all);
  EXPECT_EQ(Escaped("\x02R1\x03\r\n\\\xD8"), "\\x02R1\\x03\\r\\n\\\\\\xD8");
  EXPECT_EQ(Unescaped("\\x2 \\q \\xZZ \\"), "\\x2 \\q \\xZZ \\");
}

TEST(SimulatorConsole, CarriesOutOrExplains) {
  MeterModel meter;
  Console console(meter);
  for (const char* line : {"power 100 5\r", "  scenario   ssb ", "rate 187", "set CHELLO  YOU",
                           "fault crc 10", "fault crc every 3", "fault none", "silence 10", "mute off"})
    EXPECT_EQ(console.Execute(line), "ok") << line;
  EXPECT_EQ(meter.ScenarioName(), "ssb");
  EXPECT_EQ(meter.StreamRate(), 187);
  EXPECT_EQ(meter.Settings().CallText, "HELLO  YOU");
  EXPECT_EQ(console.Execute("power 100 5"), "ok");
  EXPECT_EQ(meter.PowerNow().Reflected, 5);
  for (const char* line : {"power 100", "power nan 1", "power 1 -1", "scenario x", "fault x 10", "fault crc",
                           "fault crc 10 20", "mute maybe", "rate fast", "set b9", "raw"})
    EXPECT_TRUE(console.Execute(line).value_or("").starts_with("error: ")) << line;
  EXPECT_EQ(console.Execute(""), "");
  EXPECT_EQ(console.Execute("unplug"), std::nullopt);
  meter.Run(20);
  EXPECT_EQ(console.Execute("raw \\x02 x\\r\\n"), "ok");
  EXPECT_EQ(meter.Run(21), "\x02 x\r\n");
}

}  // namespace
}  // namespace orvane::sim
