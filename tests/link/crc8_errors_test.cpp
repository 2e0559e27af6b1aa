// What the check lets through when bits of a packet are hit on the line, from its STX to its last check
// digit.
#include "link/crc8.h"
#include "link/data_packet.h"
#include "simulator/crc.h"
#include "simulator/meter_model.h"

#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <vector>

namespace orvane {
namespace {

// The check takes the highest bit of a byte first; the line sends it last.
enum class BitOrder { kOfTheCheck, kOfTheLine };

void Flip(std::string& line, std::size_t bit, BitOrder order) {
  const std::size_t place = order == BitOrder::kOfTheCheck ? 7 - bit % 8 : bit % 8;
  line[bit / 8] = static_cast<char>(line[bit / 8] ^ (1 << place));
}

// As the receiver and the classifier hand it on. A packet that passes its check makes the readings live.
MeterState Taken(std::string_view line, MeterState state) {
  state.ReadingsLive = false;
  while (!line.empty()) {
    const std::string_view message = line.substr(0, line.find('\n'));
    const auto at = message.find("\x02\x44");
    if (at != std::string_view::npos) ProcessDataPacket(message.substr(at), state);
    line.remove_prefix(std::min(message.size() + 1, line.size()));
  }
  return state;
}

bool SameReadings(const MeterState& one, const MeterState& other) {
  return one.ForwardPower == other.ForwardPower && one.ReflectedPower == other.ReflectedPower &&
         one.VSWR == other.VSWR && one.SWRAlarm == other.SWRAlarm && one.PwrAlarm == other.PwrAlarm;
}

/// Bits that are hit together, by their distance from the first.
using Pattern = std::vector<std::size_t>;

struct Share {
  int passed = 0;  // the check
  int wrong = 0;   // with a reading that was not sent
  int tried = 0;

  /// Hits the packet in every way, at every place from its STX to its last check digit.
  void Try(const std::string& packet, const std::vector<Pattern>& ways, BitOrder order) {
    // The readings of the packet stand already, so that a field which cannot be used changes nothing.
    const MeterState sent = Taken(packet, {});
    for (const Pattern& way : ways) {
      for (std::size_t first = 0; first + way.back() < (packet.size() - 2) * 8; ++first) {
        std::string hit = packet;
        for (const std::size_t bit : way)
          Flip(hit, first + bit, order);
        const MeterState got = Taken(hit, sent);
        ++tried;
        passed += got.ReadingsLive ? 1 : 0;
        wrong += SameReadings(got, sent) ? 0 : 1;
      }
    }
  }
};

// All bursts of up to 8 bits, single bits among them: the first and the last bit of a burst are hit.
std::vector<Pattern> Bursts() {
  std::vector<Pattern> bursts;
  for (unsigned bits = 1; bits < 256; bits += 2) {
    bursts.emplace_back();
    for (std::size_t i = 0; i < 8; ++i) {
      if ((bits >> i & 1U) != 0) bursts.back().push_back(i);
    }
  }
  return bursts;
}

std::vector<Pattern> Pairs() {
  std::vector<Pattern> pairs;
  for (std::size_t apart = 1; apart < 400; ++apart)
    pairs.push_back({0, apart});
  return pairs;
}

// What the simulated meter sends in the first seconds of each of its stories.
std::set<std::string> RealPackets() {
  std::set<std::string> packets;
  for (const sim::Scenario& scenario : sim::Scenarios()) {
    sim::MeterModel meter;
    meter.Run(0);
    meter.SetScenario(scenario.Name);
    meter.Receive(sim::CommandFrame("D1"), 0);
    std::istringstream sent(meter.Run(2500));
    for (std::string line; std::getline(sent, line);) {
      if (line.starts_with("\x02\x44,")) packets.insert(line + "\n");
    }
  }
  return packets;
}

TEST(CRC8Errors, NoSingleBitAndNoShortBurstMakesAReading) {
  const auto packets = RealPackets();
  EXPECT_GE(packets.size(), 20U);
  int passed = 0;
  for (const std::string& packet : packets) {
    EXPECT_TRUE(Taken(packet, {}).ReadingsLive);
    Share share;
    share.Try(packet, Bursts(), BitOrder::kOfTheCheck);
    EXPECT_EQ(share.wrong, 0) << packet;
    EXPECT_GT(share.tried, 15000);
    // These make STX or ETX of a digit, which the check leaves out; but they make no number either.
    EXPECT_LE(share.passed, 6) << packet;
    passed += share.passed;
  }
  EXPECT_GT(passed, 0) << "docs/protocol.md says that there are some";
}

// The period of the polynomial is 51: two bits that far apart undo each other. docs/protocol.md has these
// numbers.
TEST(CRC8Errors, AFewOthersPass) {
  for (std::size_t apart = 1; apart <= 128; ++apart) {
    std::string two(17, '\0');
    Flip(two, 1, BitOrder::kOfTheCheck);
    Flip(two, 1 + apart, BitOrder::kOfTheCheck);
    EXPECT_EQ(CalcCRC8(two, false, false) == 0, apart % 51 == 0) << apart;
  }
  const std::string packet = sim::MessageFrame("D,1000,40,1.50,0;0");
  Share pairs;
  pairs.Try(packet, Pairs(), BitOrder::kOfTheCheck);
  EXPECT_EQ(std::tuple(pairs.passed, pairs.wrong, pairs.tried), std::tuple(79, 54, 15400));
  Share bursts;
  bursts.Try(packet, Bursts(), BitOrder::kOfTheLine);
  EXPECT_EQ(std::tuple(bursts.passed, bursts.tried), std::tuple(12, 21759));
  Share all_pairs;
  Share all_bursts;
  for (const std::string& real : RealPackets()) {
    all_pairs.Try(real, Pairs(), BitOrder::kOfTheCheck);
    all_bursts.Try(real, Bursts(), BitOrder::kOfTheLine);
  }
  EXPECT_NEAR(100.0 * all_pairs.passed / all_pairs.tried, 0.4, 0.05);
  EXPECT_NEAR(100.0 * all_pairs.wrong / all_pairs.tried, 0.2, 0.05);
  EXPECT_NEAR(100.0 * all_bursts.passed / all_bursts.tried, 0.06, 0.005);
  EXPECT_EQ(all_bursts.wrong, 0);
}

}  // namespace
}  // namespace orvane
