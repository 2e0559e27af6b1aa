// What the check lets through when bits of a packet are hit on the line, from its STX to its last check
// digit.
#include "link/crc8.h"
#include "link/data_packet.h"
#include "simulator/crc.h"
#include "simulator/meter_model.h"

#include <bit>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

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

struct Share {
  int passed = 0;  // the check
  int wrong = 0;   // with a reading that was not sent
  int tried = 0;
  Share& operator+=(const Share& other) {
    passed += other.passed;
    wrong += other.wrong;
    tried += other.tried;
    return *this;
  }
};

class HitPacket {
 public:
  explicit HitPacket(const std::string& packet) : packet_(packet), sent_(Taken(packet, {})) {}

  // All bursts of up to 8 bits, single bits among them: the first and the last bit of a burst are hit.
  Share Bursts(BitOrder order) const {
    Share share;
    for (unsigned pattern = 1; pattern < 256; pattern += 2) {
      for (std::size_t first = 0; first + std::bit_width(pattern) <= Bits(); ++first) {
        std::string hit = packet_;
        for (std::size_t i = 0; i < 8; ++i) {
          if ((pattern >> i & 1U) != 0) Flip(hit, first + i, order);
        }
        Try(hit, share);
      }
    }
    return share;
  }
  Share Pairs() const {
    Share share;
    for (std::size_t one = 0; one < Bits(); ++one) {
      for (std::size_t other = one + 1; other < Bits(); ++other) {
        std::string hit = packet_;
        Flip(hit, one, BitOrder::kOfTheCheck);
        Flip(hit, other, BitOrder::kOfTheCheck);
        Try(hit, share);
      }
    }
    return share;
  }

 private:
  std::size_t Bits() const { return (packet_.size() - 2) * 8; }  // CR and LF are not covered
  // The readings of the packet stand already, so that a field which cannot be used changes nothing.
  void Try(const std::string& hit, Share& share) const {
    const MeterState got = Taken(hit, sent_);
    ++share.tried;
    share.passed += got.ReadingsLive ? 1 : 0;
    share.wrong += SameReadings(got, sent_) ? 0 : 1;
  }

  std::string packet_;
  MeterState sent_;
};

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
    const Share share = HitPacket(packet).Bursts(BitOrder::kOfTheCheck);
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
  const HitPacket packet(sim::MessageFrame("D,1000,40,1.50,0;0"));
  const Share pairs = packet.Pairs();
  EXPECT_EQ(pairs.passed, 79);
  EXPECT_EQ(pairs.wrong, 54);
  EXPECT_EQ(pairs.tried, 15400);
  const Share bursts = packet.Bursts(BitOrder::kOfTheLine);
  EXPECT_EQ(bursts.passed, 12);
  EXPECT_EQ(bursts.tried, 21759);
  Share all_pairs;
  Share all_bursts;
  for (const std::string& real : RealPackets()) {
    all_pairs += HitPacket(real).Pairs();
    all_bursts += HitPacket(real).Bursts(BitOrder::kOfTheLine);
  }
  EXPECT_NEAR(100.0 * all_pairs.passed / all_pairs.tried, 0.4, 0.05);
  EXPECT_NEAR(100.0 * all_pairs.wrong / all_pairs.tried, 0.2, 0.05);
  EXPECT_NEAR(100.0 * all_bursts.passed / all_bursts.tried, 0.06, 0.005);
  EXPECT_EQ(all_bursts.wrong, 0);
}

}  // namespace
}  // namespace orvane
