#include "link/crc8.h"

#include "link/frame.h"

#include <gtest/gtest.h>
#include <tuple>

namespace orvane {
namespace {

using namespace std::string_literals;

TEST(CRC8, TableHoldsTheProtocolsValues) {
  const std::pair<std::size_t, int> rows[] = {{0, 0x00}, {1, 0xB1},   {2, 0xD3},  {3, 0x62},
                                              {4, 0x17}, {128, 0x33}, {255, 0x4D}};
  for (const auto& [at, value] : rows)
    EXPECT_EQ(InitCRC8Table()[at], value) << at;
}

TEST(CRC8, OfTexts) {
  const std::tuple<std::string, bool, bool, int> rows[] = {
      {"", false, false, 0},
      {"", true, true, 0},  // not complemented
      {"D1", true, false, 0xC0},
      {"B?", true, false, 0xCF},
      {"D1", false, false, 0x3F},
      {"D\x03\x02"s + "1", true, false, 0xC0},  // framing characters do not count, wherever they stand
      {"\x02"s + "D1\x03"s + "C0", true, true, 0xC0},
      {"D1\x03"s + "C0", true, true, 0xC0},    // five characters: stripped
      {"\x02"s + "D1zz", true, true, 0xC0},    // just the last two
      {"\x02\x02"s + "D1", true, true, 0xC0},  // four: taken whole
      {"\x02\x03\x02", true, false, 0xFF},     // not empty, though nothing is left
  };
  for (const auto& [text, invert, strip, crc] : rows)
    EXPECT_EQ(CalcCRC8(text, invert, strip), crc) << text;
}

TEST(CRC8, Digits) {
  for (const auto& [crc, digits] : {std::pair{0x0A, "0A"}, {0xB1, "B1"}, {0x00, "00"}})
    EXPECT_EQ(CRCToHex(static_cast<std::uint8_t>(crc)), digits);
  const std::tuple<const char*, const char*, bool> rows[] = {{"...C0", "C0", true}, {"...c0", "C0", false},
                                                             {"C0.", "C0", false},  {"C0", "C0", true},
                                                             {"0", "00", false},    {"", "00", false}};
  for (const auto& [text, digits, right] : rows)
    EXPECT_EQ(CheckCRC(text, digits), right) << text;
  for (const auto& [text, right] :
       {std::pair{"...C0", true}, {"...c0", false}, {"...C1", false}, {"C0", true}})
    EXPECT_EQ(CheckCRC(text, 0xC0), right) << text;
  EXPECT_FALSE(CheckCRC("0", 0x00));
}

TEST(Frame, OfCommands) {
  for (const auto& [command, frame] : {std::pair{"D1", "\x02\x44\x31\x03\x43\x30\x0D"},
                                       {"D0", "\x02\x44\x30\x03\x37\x31\x0D"},
                                       {"v?", "\x02\x76\x3F\x03\x42\x42\x0D"},
                                       {"A", "\x02\x41\x03\x38\x46\x0D"}})
    EXPECT_EQ(FrameCommand(command), frame);
}

}  // namespace
}  // namespace orvane
