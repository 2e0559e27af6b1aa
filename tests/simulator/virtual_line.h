// A peer that talks to a MeterModel in virtual time.
#pragma once

#include "simulator/crc.h"
#include "simulator/meter_model.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::sim {

struct VirtualLine {
  explicit VirtualLine(MeterOptions options = {}) : Meter(std::move(options)) {}

  // What the meter sends until `until_ms`, one element for each read; time stops at every due moment.
  std::vector<std::string> Reads(std::int64_t until_ms) {
    std::vector<std::string> reads;
    while (true) {
      std::string bytes = Meter.Run(Now);
      if (!bytes.empty()) reads.push_back(std::move(bytes));
      const auto due = Meter.NextDue();
      if (!due || *due > until_ms) break;
      Now = std::max(Now, *due);
    }
    Now = until_ms;
    Meter.Run(Now);  // nothing more to send, but the meter's clock keeps up
    return reads;
  }

  std::string Until(std::int64_t until_ms) {
    std::string bytes;
    for (const std::string& read : Reads(until_ms))
      bytes += read;
    return bytes;
  }

  // Sends bytes and returns what comes within the next 10 ms.
  std::string Exchange(std::string_view bytes) {
    Meter.Receive(bytes, Now);
    return Until(Now + 10);
  }

  std::string Command(std::string_view text) { return Exchange(CommandFrame(text)); }

  Verdict LastVerdict() const { return Meter.Log().Commands.back().Outcome; }

  MeterModel Meter;
  std::int64_t Now = 1000;
};

// A line with its stream just switched on.
struct StreamingLine : VirtualLine {
  explicit StreamingLine(double forward = 0, double reflected = 0, std::string_view setting = {}) {
    if (!setting.empty()) Command(setting);
    Meter.SetPower(forward, reflected);
    Command("D1");
  }
};

// The lines of a stream, LF included; an unfinished one comes last.
inline std::vector<std::string> Lines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    lines.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(end);
  }
  return lines;
}

// The packet that steady power makes, as a whole line.
inline std::string FirstPacket(VirtualLine& line) {
  for (const std::string& text : Lines(line.Until(line.Now + 250))) {
    if (text.starts_with("\x02\x44")) return text;
  }
  return "";
}

}  // namespace orvane::sim
