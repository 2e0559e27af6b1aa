// What the readings must be after some bytes of the line, worked out once more by other means: check digits
// bit by bit, lines and fields by plain searching.
#pragma once

#include "base/runtime_error.h"
#include "link/packet_number.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::fuzz {

inline std::string DigitsOf(std::string_view text) {
  unsigned crc = 0;
  bool some = false;
  for (const char c : text) {
    some = true;
    if (c == '\x02' || c == '\x03') continue;
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 0x80U) != 0 ? (crc << 1 ^ 0xB1U) & 0xFFU : crc << 1;
  }
  crc = some ? crc ^ 0xFFU : 0;
  const std::string_view digits = "0123456789ABCDEF";
  return {digits[crc / 16], digits[crc % 16]};
}

struct PacketModel {
  std::int32_t forward = 0;
  std::int32_t reflected = 0;
  float vswr = 0.0F;
  /// All powers that may be shown: of each standing pair of readings, and none.
  std::vector<std::int64_t> nets{0};

  /// One line with its LF, as the receiver cuts it.
  void Take(std::string_view line) {
    const auto at =
        line.find(std::string_view("\x02"
                                   "D"));
    if (at != std::string_view::npos) TakePacket(line.substr(at));
    nets.push_back(static_cast<std::int64_t>(forward) - reflected);
  }

  bool MayShow(const std::string& text) const {
    if (text.empty()) return true;
    for (const std::int64_t net : nets) {
      if (text == std::to_string(net)) return true;
    }
    return false;
  }

 private:
  void TakePacket(std::string_view packet) {
    packet = packet.substr(0, packet.find('\r'));
    if (packet.size() < 2) return;
    // A text this short has no room for digits of its own: all of it counts.
    const std::string_view covered = packet.size() < 5 ? packet : packet.substr(0, packet.size() - 2);
    if (packet.substr(packet.size() - 2) != DigitsOf(covered)) return;
    if (packet.find('\x03') == std::string_view::npos) return;
    std::vector<std::string> fields(1);
    for (const char c : packet) {
      if (c == ',') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    if (fields.size() != 5) return;
    Attempt([&] { forward = WattsOf(fields[1]).value_or(forward); });
    Attempt([&] { reflected = WattsOf(fields[2]).value_or(reflected); });
    Attempt([&] { vswr = VSWROf(fields[3]).value_or(vswr); });
  }
};

}  // namespace orvane::fuzz
