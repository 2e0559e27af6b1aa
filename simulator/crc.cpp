#include "simulator/crc.h"

namespace orvane::sim {

std::uint8_t WireCrc(std::string_view text) {
  unsigned crc = 0;
  for (const char character : text) {
    crc ^= static_cast<unsigned char>(character);
    for (int bit = 0; bit < 8; ++bit) {
      const bool carry = (crc & 0x80U) != 0;
      crc = (crc << 1) & 0xFFU;
      if (carry) crc ^= 0xB1U;
    }
  }
  return static_cast<std::uint8_t>(~crc & 0xFFU);
}

std::string HexDigits(std::uint8_t value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {kDigits[value >> 4], kDigits[value & 0x0F]};
}

std::string CommandFrame(std::string_view text) {
  std::string frame(1, kStx);
  frame += text;
  frame += kEtx;
  frame += HexDigits(WireCrc(text));
  frame += kCr;
  return frame;
}

std::string MessageFrame(std::string_view text) {
  return CommandFrame(text) + kLf;
}

}  // namespace orvane::sim
