#include "link/crc8.h"

#include "link/frame.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::string_literals;

TEST(CRC8, TableHoldsTheProtocolsValues) {
  const auto& table = InitCRC8Table();
  EXPECT_EQ(table[0], 0x00);
  EXPECT_EQ(table[1], 0xB1);
  EXPECT_EQ(table[2], 0xD3);
  EXPECT_EQ(table[3], 0x62);
  EXPECT_EQ(table[4], 0x17);
  EXPECT_EQ(table[128], 0x33);
  EXPECT_EQ(table[255], 0x4D);
}

TEST(CRC8, OfTexts) {
  struct Row {
    std::string text;
    bool invert;
    bool strip;
    int crc;
  };
  const Row rows[] = {
      {"", false, false, 0},
      {"", true, true, 0},  // not complemented
      {"D1", true, false, 0xC0},
      {"D0", true, false, 0x71},
      {"v?", true, false, 0xBB},
      {"B?", true, false, 0xCF},
      {"A", true, false, 0x8F},
      {"D1", false, false, 0x3F},
      {"\x02"s + "D1\x03", true, false, 0xC0},  // framing characters do not count
      {"D\x03\x02"s + "1", true, false, 0xC0},  // wherever they stand
      {"\x02"s + "D1\x03"s + "C0", true, true, 0xC0},
      {"D1\x03"s + "C0", true, true, 0xC0},    // five characters: stripped
      {"\x02\x02"s + "D1", true, true, 0xC0},  // four: taken whole
      {"\x02\x03\x02", true, false, 0xFF},     // not empty, though nothing is left
  };
  for (const Row& row : rows)
    EXPECT_EQ(CalcCRC8(row.text, row.invert, row.strip), row.crc) << row.text;
}

TEST(CRC8, Digits) {
  EXPECT_EQ(CRCToHex(0x0A), "0A");
  EXPECT_EQ(CRCToHex(0xB1), "B1");
  EXPECT_EQ(CRCToHex(0x00), "00");
  EXPECT_TRUE(CheckCRC("...C0", "C0"));
  EXPECT_FALSE(CheckCRC("...c0", "C0"));
  EXPECT_FALSE(CheckCRC("C0.", "C0"));
  EXPECT_TRUE(CheckCRC("C0", "C0"));
  EXPECT_FALSE(CheckCRC("0", "00"));
  EXPECT_FALSE(CheckCRC("", "00"));
  EXPECT_TRUE(CheckCRC("...C0", 0xC0));
  EXPECT_FALSE(CheckCRC("...c0", 0xC0));
  EXPECT_FALSE(CheckCRC("...C1", 0xC0));
  EXPECT_FALSE(CheckCRC("0", 0x00));
}

TEST(Frame, OfCommands) {
  EXPECT_EQ(FrameCommand("D1"), "\x02\x44\x31\x03\x43\x30\x0D");
  EXPECT_EQ(FrameCommand("D0"), "\x02\x44\x30\x03\x37\x31\x0D");
  EXPECT_EQ(FrameCommand("v?"), "\x02\x76\x3F\x03\x42\x42\x0D");
  EXPECT_EQ(FrameCommand("A"), "\x02\x41\x03\x38\x46\x0D");
}

}  // namespace
}  // namespace orvane
