#include "link/crc8.h"

#include "link/frame.h"

namespace orvane {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

}  // namespace

std::uint8_t CalcCRC8(std::string_view text, bool invert, bool strip_crc) {
  if (text.empty()) return 0;
  if (strip_crc && text.size() >= 5) text.remove_suffix(2);
  std::uint8_t crc = 0;
  for (const char c : text) {
    if (c == kSTX || c == kETX) continue;
    crc = CRC8Table[crc ^ static_cast<std::uint8_t>(c)];
  }
  return invert ? static_cast<std::uint8_t>(crc ^ 0xFFU) : crc;
}

std::string CRCToHex(std::uint8_t crc) {
  return {kHexDigits[crc >> 4], kHexDigits[crc & 0x0F]};
}

bool CheckCRC(std::string_view line, std::string_view hex) {
  return line.substr(line.size() < 2 ? 0 : line.size() - 2) == hex;
}

bool CheckCRC(std::string_view line, std::uint8_t crc) {
  const std::size_t size = line.size();
  return size >= 2 && line[size - 2] == kHexDigits[crc >> 4] && line[size - 1] == kHexDigits[crc & 0x0F];
}

}  // namespace orvane
