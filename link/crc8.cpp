#include "link/crc8.h"

#include "link/frame.h"

namespace orvane {

std::uint8_t CalcCRC8(std::string_view text, bool invert, bool stripCRC) {
  if (text.empty()) return 0;
  if (stripCRC && text.size() >= 5) text.remove_suffix(2);
  std::uint8_t crc = 0;
  for (const char c : text) {
    if (c == kSTX || c == kETX) continue;
    crc = CRC8Table[crc ^ static_cast<std::uint8_t>(c)];
  }
  return invert ? static_cast<std::uint8_t>(crc ^ 0xFFU) : crc;
}

std::string CRCToHex(std::uint8_t crc) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {kDigits[crc >> 4], kDigits[crc & 0x0F]};
}

bool CheckCRC(std::string_view line, std::string_view hex) {
  return line.substr(line.size() < 2 ? 0 : line.size() - 2) == hex;
}

}  // namespace orvane
