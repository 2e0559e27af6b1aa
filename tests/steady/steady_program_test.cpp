// The whole road of a reading, from the bytes to bars, readouts, lamps and the client program: nothing of it
// is taken from the heap, whether the screen changes or not.
#include "tests/steady/counted_new.h"
#include "tests/support/fed_program.h"
#include "tests/support/meter_text.h"
#include "tests/support/naive_packet.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace orvane {
namespace {

std::string Packet(std::string_view fields) {
  return NaiveLine("D," + std::string(fields));
}

struct Shown {
  int forward_lit;
  int reflected_lit;
  std::string forward;
  std::string reflected;
  std::string vswr;
  std::string lamps;
  bool operator==(const Shown&) const = default;
};

Shown Of(const FedProgram& program) {
  const MeterControls& meter = program.Meter();
  return {FedProgram::Lit(meter.forward),         FedProgram::Lit(meter.reflected),
          meter.forward.dbxPower->digitdisplay(), meter.reflected.dbxPower->digitdisplay(),
          meter.dbxVSWR->digitdisplay(),          Lamps(meter)};
}

class SteadyProgram : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(program.Streaming()); }
  /// What a thousand rounds of two packets take, a hold time apart.
  int AllocationsOf(const std::string& one, const std::string& other) {
    for (int i = 0; i < 4; ++i) {  // buffers grow to their size
      program.Feed(one, 6000);
      program.Feed(other, 6000);
    }
    StartCounting();
    for (int i = 0; i < 1000; ++i) {
      program.Feed(one, 6000);
      program.Feed(std::string_view(other).substr(0, 9), 6000);
      program.Feed(std::string_view(other).substr(9), 0);
    }
    return StopCounting().allocations;
  }
  FedProgram program;
  const std::string high = Packet("3000,1000,3.73,1;1");
};

TEST_F(SteadyProgram, AReadingThatChangesNothingTakesNoMemory) {
  EXPECT_EQ(AllocationsOf(high, high), 0);
}

TEST_F(SteadyProgram, AReadingThatChangesBarsAndReadoutsTakesNoMemory) {
  EXPECT_EQ(AllocationsOf(Packet("0,0,1.00,1;1"), high), 0);
  EXPECT_EQ(Of(program), (Shown{51, 51, "2000", "1000", "3.73", "***"}));
  EXPECT_EQ(program.client.last, "2000");
  EXPECT_EQ(program.client.taken, 8 + 2000);
  program.Feed(Packet("0,0,1.00,0;0"), 6000);
  EXPECT_EQ(Of(program), (Shown{0, 0, "0", "0", "", "..."}));
  EXPECT_EQ(program.client.last, "0");
}

TEST_F(SteadyProgram, AReadingInDipModeTakesNoMemory) {
  program.ClickMode(3);
  EXPECT_EQ(AllocationsOf(Packet("100,1,1.20,1;1"), high), 0);
  EXPECT_EQ(FedProgram::Lit(program.Meter().reflected), 35);
  EXPECT_EQ(program.Meter().dbxVSWR->digitdisplay(), "3.73");
}

TEST_F(SteadyProgram, GarbageTakesNoMemory) {
  std::string garbled = high;
  garbled[4] ^= 1;  // the checksum is wrong now
  EXPECT_EQ(AllocationsOf(garbled,
                          "\x02"
                          "\x03,;,,,,,,\x02"
                          "D,,\r\n"),
            0);
}

}  // namespace
}  // namespace orvane
