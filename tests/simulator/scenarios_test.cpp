// The stories that the antenna line can tell, and the console that starts them.
#include "simulator/console.h"
#include "tests/simulator/virtual_line.h"

#include <gtest/gtest.h>

namespace orvane::sim {
namespace {

/// What was sent in a minute of a story, and what the log says of it.
struct Told {
  explicit Told(std::string_view scenario, std::uint64_t seed = 7, std::int64_t for_ms = 60000)
      : line({.Seed = seed}) {
    line.Meter.SetScenario(scenario);
    line.Meter.SetStreamRate(20);
    line.Command("D1");
    stream = line.Until(line.Now + for_ms);
    for (const PacketRecord& packet : line.Meter.Log().Packets) {
      most = std::max(most, packet.ForwardPower);
      pauses += packet.ForwardPower == 0 ? 1 : 0;
      if (packet.ForwardPower >= 5) worst = std::max(worst, packet.VSWR);
    }
  }
  VirtualLine line;
  std::string stream;
  int most = 0;
  int pauses = 0;
  double worst = 0;
};

TEST(Scenarios, TellTheirStoriesTheSameEachTime) {
  for (const Scenario& scenario : Scenarios())
    EXPECT_EQ(Told(scenario.Name).stream, Told(scenario.Name).stream) << scenario.Name;
  const Told speech("ssb");
  EXPECT_NE(speech.stream, Told("ssb", 8).stream);
  EXPECT_NEAR(speech.most, 775, 75);
  EXPECT_NEAR(speech.pauses, 400, 300);
  EXPECT_NEAR(Told("tune", 7, 20000).worst, 4, 0.05);
  EXPECT_FALSE(Told("antenna", 7, 7900).line.Meter.SWRAlarm());
  EXPECT_TRUE(Told("antenna", 7, 18900).line.Meter.SWRAlarm());
  const Told sweep("sweep");
  EXPECT_GT(sweep.most, 2980);
  for (const char* row : {"\x02R1", "\x02R2", "\x02R0"})
    EXPECT_NE(sweep.stream.find(row), std::string::npos) << row;
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
  for (const char* line : {"  scenario   ssb ", "rate 187", "set CHELLO  YOU", "fault crc 10",
                           "fault crc every 3", "fault none", "silence 10", "mute off", "power 100 5\r"})
    EXPECT_EQ(console.Execute(line), "ok") << line;
  EXPECT_EQ(meter.StreamRate(), 187);
  EXPECT_EQ(meter.Settings().CallText, "HELLO  YOU");
  EXPECT_EQ(meter.PowerNow().Reflected, 5);
  for (const char* line : {"power 100", "power nan 1", "power 1 -1", "scenario x", "fault x 10", "fault crc",
                           "fault crc 10 20", "mute maybe", "rate fast", "set b9", "raw"})
    EXPECT_TRUE(console.Execute(line).value_or("").starts_with("error: ")) << line;
  EXPECT_EQ(console.Execute(""), "");
  EXPECT_EQ(console.Execute("unplug"), std::nullopt);
}

}  // namespace
}  // namespace orvane::sim
