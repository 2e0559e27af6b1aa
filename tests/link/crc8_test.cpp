#include "link/crc8.h"

#include "link/frame.h"

#include <gtest/gtest.h>
#include <tuple>

namespace orvane {
namespace {

using namespace std::string_literals;

TEST(CRC8, OfTexts) {
  const std::tuple<std::string, bool, bool, int> rows[] = {
      {"", true, true, 0},  // not complemented
      {"D1", true, false, 0xC0},
      {"D1", false, false, 0x3F},
      {"D\x03\x02"s + "1", true, false, 0xC0},  // framing characters do not count, wherever they stand
      {"D1\x03"s + "C0", true, true, 0xC0},     // five characters: stripped
      {"\x02"s + "D1zz", true, true, 0xC0},     // just the last two
      {"\x02\x02"s + "D1", true, true, 0xC0},   // four: taken whole
      {"\x02\x03\x02", true, false, 0xFF},      // not empty, though nothing is left
  };
  for (const auto& [text, invert, strip, crc] : rows)
    EXPECT_EQ(CalcCRC8(text, invert, strip), crc) << text;
}

TEST(CRC8, Digits) {
  const std::tuple<const char*, std::uint8_t, bool> rows[] = {
      {"...C0", 0xC0, true}, {"...c0", 0xC0, false}, {"C0.", 0xC0, false},
      {"C1", 0xC0, false},   {"D0", 0xC0, false},    {"C0", 0xC0, true},
      {"0", 0x00, false},    {"", 0x00, false},      {"...0A", 0x0A, true}};
  for (const auto& [text, crc, right] : rows) {
    EXPECT_EQ(CheckCRC(text, crc), right) << text;
    EXPECT_EQ(CheckCRC(text, CRCToHex(crc)), right) << text;
  }
  EXPECT_EQ(FrameCommand("v?"), "\x02\x76\x3F\x03\x42\x42\x0D");
}

}  // namespace
}  // namespace orvane
