// Hand-made floors: the same work with nothing around it, written as plainly as somebody would who needed
// nothing else. Each benchmark stands beside its floor in the same run.
#pragma once

#include "platform/geometry.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace orvane::bench {

/// Bitwise, so that it has nothing from the program's own table but the polynomial.
constexpr std::array<std::uint8_t, 256> kFloorTable = [] {
  std::array<std::uint8_t, 256> table{};
  for (int i = 0; i < 256; ++i) {
    int crc = i;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 0x80) != 0 ? (crc << 1 ^ 0xB1) & 0xFF : crc << 1 & 0xFF;
    table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(crc);
  }
  return table;
}();

inline std::uint8_t FloorCRC(std::string_view text) {
  std::uint8_t crc = 0;
  for (const char c : text)
    crc = kFloorTable[crc ^ static_cast<std::uint8_t>(c)];
  return static_cast<std::uint8_t>(crc ^ 0xFFU);
}

/// A line of the meter with its frame around it.
inline std::string Packet(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const std::uint8_t crc = FloorCRC(text);
  return "\x02" + std::string(text) + "\x03" + kDigits[crc >> 4] + kDigits[crc & 15U] + "\r\n";
}

struct FloorReading {
  double forward = 0.0;
  double reflected = 0.0;
  double vswr = 0.0;
  int swr_alarm = 0;
  int power_alarm = 0;
};

/// Check and store of STX "D,f,r,v,a;b" ETX and two digits: a table CRC and std::from_chars.
inline bool FloorPacket(std::string_view line, FloorReading& reading) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto etx = line.find('\x03');
  if (etx == std::string_view::npos || etx + 2 >= line.size() || !line.starts_with("\x02\x44,")) return false;
  const std::uint8_t crc = FloorCRC(line.substr(1, etx - 1));
  if (line[etx + 1] != kDigits[crc >> 4] || line[etx + 2] != kDigits[crc & 15U]) return false;
  const char* const end = line.data() + etx;
  FloorReading read;
  auto at = std::from_chars(line.data() + 3, end, read.forward);
  if (at.ec != std::errc() || *at.ptr != ',') return false;
  at = std::from_chars(at.ptr + 1, end, read.reflected);
  if (at.ec != std::errc() || *at.ptr != ',') return false;
  at = std::from_chars(at.ptr + 1, end, read.vswr);
  if (at.ec != std::errc() || *at.ptr != ',') return false;
  at = std::from_chars(at.ptr + 1, end, read.swr_alarm);
  if (at.ec != std::errc() || *at.ptr != ';') return false;
  at = std::from_chars(at.ptr + 1, end, read.power_alarm);
  if (at.ec != std::errc() || at.ptr != end) return false;
  reading = read;
  return true;
}

/// Collects bytes and gives whole lines to `take`.
class FloorReceiver {
 public:
  template <typename Take>
  void Receive(std::string_view bytes, Take take) {
    buffer_ += bytes;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = buffer_.find('\n', scanned_)) != std::string::npos; scanned_ = start) {
      take(std::string_view(buffer_).substr(start, end - start));
      start = end + 1;
    }
    buffer_.erase(0, start);
    scanned_ = buffer_.size();
  }

 private:
  std::string buffer_;
  std::size_t scanned_ = 0;
};

/// Asked to paint: what a screen is to a hand-made display.
struct FloorScreen {
  virtual ~FloorScreen() = default;
  virtual void Invalidate(const Rect& area) = 0;
};
struct CountingScreen : FloorScreen {
  void Invalidate(const Rect&) override { ++count; }
  std::int64_t count = 0;
};

/// 51 segments, of which only those that change are touched.
class FloorBar {
 public:
  void Show(int lit, FloorScreen& screen) {
    for (; lit_ < lit; ++lit_)
      Set(lit_, true, screen);
    while (lit_ > lit)
      Set(--lit_, false, screen);
  }

 private:
  void Set(int at, bool on, FloorScreen& screen) {
    segments_[static_cast<std::size_t>(at)] = on;
    screen.Invalidate({at * 120, 0, 90, 300});
  }
  std::array<bool, 51> segments_{};
  int lit_ = 0;
};

/// Bars, three readouts, three lamps and a text for the client, each touched only when it changes.
class FloorFace {
 public:
  void Show(const FloorReading& reading, FloorScreen& screen) {
    const double net = reading.forward - reading.reflected;
    forward_.Show(Level(net / 40.0), screen);
    reflected_.Show(Level(reading.reflected / 10.0), screen);
    Text(0, net, 0, screen);
    Text(1, reading.reflected, 0, screen);
    Text(2, reading.vswr, 2, screen);
    Lamp(0, reading.swr_alarm != 0, screen);
    Lamp(1, reading.power_alarm != 0, screen);
    Lamp(2, reading.swr_alarm != 0 || reading.power_alarm != 0, screen);
    *std::to_chars(client_.data(), client_.data() + client_.size() - 1, static_cast<int>(net)).ptr = '\0';
  }

 private:
  static int Level(double value) { return value < 0.0 ? 0 : value > 51.0 ? 51 : static_cast<int>(value); }
  void Text(std::size_t which, double value, int decimals, FloorScreen& screen) {
    if (value == values_[which]) return;
    values_[which] = value;
    std::to_chars(texts_[which].data(), texts_[which].data() + texts_[which].size(), value,
                  std::chars_format::fixed, decimals);
    screen.Invalidate({0, 0, 1200, 420});
  }
  void Lamp(std::size_t which, bool lit, FloorScreen& screen) {
    if (lamps_[which] == lit) return;
    lamps_[which] = lit;
    screen.Invalidate({0, 0, 150, 150});
  }

  FloorBar forward_;
  FloorBar reflected_;
  std::array<double, 3> values_{};
  std::array<std::array<char, 16>, 3> texts_{};
  std::array<bool, 3> lamps_{};
  std::array<char, 16> client_{};
};

}  // namespace orvane::bench
