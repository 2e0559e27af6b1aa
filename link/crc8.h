#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

// CRC-8 with the polynomial 0xB1 (x^8 + x^7 + x^5 + x^4 + 1), most significant bit first, start value 0. On
// the wire it is complemented, and covers what stands between STX and ETX, the command letter included.
// docs/protocol.md, "Check digits", has it worked out by hand.

constexpr std::array<std::uint8_t, 256> MakeCRC8Table() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i) {
    unsigned value = i;
    for (int bit = 0; bit < 8; ++bit)
      value = (value & 0x80U) != 0 ? value << 1 ^ 0xB1U : value << 1;
    table[i] = static_cast<std::uint8_t>(value & 0xFFU);
  }
  return table;
}
inline constexpr std::array<std::uint8_t, 256> CRC8Table = MakeCRC8Table();

/// The table, ready before the program starts: nothing is left to do when the link comes up.
constexpr const std::array<std::uint8_t, 256>& InitCRC8Table() {
  return CRC8Table;
}

/// CRC of the text without its STX and ETX characters. Allocates nothing.
/// @param invert     complement the result
/// @param strip_crc  leave out the last two characters, the received digits; texts under 5 characters are
///                   taken whole all the same
/// @return 0 for an empty text, whatever `invert` says
std::uint8_t CalcCRC8(std::string_view text, bool invert, bool strip_crc);

/// Two upper-case hexadecimal digits.
std::string CRCToHex(std::uint8_t crc);

/// True when the line ends with exactly these two digits; lower-case digits are no match.
bool CheckCRC(std::string_view line, std::string_view hex);
/// The same without writing the digits down first.
bool CheckCRC(std::string_view line, std::uint8_t crc);

}  // namespace orvane
