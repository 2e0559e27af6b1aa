#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The two check digits of a text, worked out bit by bit. Shares nothing with the program.
inline std::string NaiveDigits(std::string_view text) {
  unsigned crc = 0;
  for (const char c : text) {
    if (c == 2 || c == 3) continue;
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc << 1U ^ ((crc & 0x80U) != 0 ? 0xB1U : 0U)) & 0xFFU;
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {kDigits[(crc ^ 0xFFU) / 16], kDigits[(crc ^ 0xFFU) % 16]};
}

/// A message of the meter with its frame.
inline std::string NaiveLine(std::string_view text) {
  return "\x02" + std::string(text) + "\x03" + NaiveDigits(text) + "\r\n";
}

/// The five fields of the packet in a line, read in the plainest way that the protocol allows; nothing where
/// there is none or its digits are wrong. The last has the ETX and the digits behind it.
inline std::optional<std::vector<std::string>> NaiveFields(std::string_view line) {
  const auto start = line.find("\x02\x44");
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view text = line.substr(start, line.find('\r', start) - start);
  if (text.size() < 5 || text.find('\x03') == std::string_view::npos) return std::nullopt;
  if (text.substr(text.size() - 2) != NaiveDigits(text.substr(0, text.size() - 2))) return std::nullopt;
  std::vector<std::string> fields(1);
  for (const char c : text) {
    if (c == ',') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields.size() == 5 ? std::optional(fields) : std::nullopt;
}

}  // namespace orvane
