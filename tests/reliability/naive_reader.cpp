#include "tests/reliability/naive_reader.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace orvane {
namespace {

std::string CheckDigits(std::string_view text) {
  unsigned crc = 0;
  for (const char c : text) {
    if (c == 2 || c == 3) continue;
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit)
      crc = ((crc << 1U) ^ ((crc & 0x80U) != 0 ? 0xB1U : 0U)) & 0xFFU;
  }
  std::array<char, 3> digits{};
  std::snprintf(digits.data(), digits.size(), "%02X", crc ^ 0xFFU);
  return digits.data();
}

std::vector<std::string> Fields(const std::string& text) {
  std::vector<std::string> fields(1);
  for (const char c : text) {
    if (c == ',') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

// The simulated meter sends plain numbers only; what noise made of them is not read.
std::optional<double> Plain(const std::string& field) {
  if (field.empty() || field.find_first_not_of("0123456789.") != std::string::npos) return std::nullopt;
  return std::strtod(field.c_str(), nullptr);
}

std::optional<NaiveReading> Read(const std::string& line) {
  const auto start = line.find("\x02\x44");
  if (start == std::string::npos) return std::nullopt;
  const std::string text = line.substr(start, line.find('\r', start) - start);
  if (text.size() < 5) return std::nullopt;
  const std::string body = text.substr(0, text.size() - 2);
  if (text.substr(text.size() - 2) != CheckDigits(body)) return std::nullopt;
  const auto fields = Fields(text);
  if (text.find('\x03') == std::string::npos || fields.size() != 5) return std::nullopt;
  const auto forward = Plain(fields[1]);
  const auto reflected = Plain(fields[2]);
  const auto vswr = Plain(fields[3]);
  if (!forward || !reflected || !vswr) std::abort();  // a packet that fits by chance: choose another seed
  return NaiveReading{std::lround(*forward), std::lround(*reflected), static_cast<float>(*vswr),
                      fields[4].substr(0, 1) == "1", fields[4].substr(2, 1) == "1"};
}

}  // namespace

void NaiveReader::Take(std::string_view bytes,
                       const std::function<void(const std::optional<NaiveReading>&)>& on_line) {
  rest_ += bytes;
  for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
    on_line(Read(rest_.substr(0, end + 1)));
    rest_.erase(0, end + 1);
  }
}

}  // namespace orvane
