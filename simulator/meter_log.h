// What a meter remembers of its own doings, for tests and consoles.
#pragma once

#include "simulator/faults.h"
#include "simulator/settings.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace orvane::sim {

// One command heard, or one stretch of noise.
struct CommandRecord {
  std::int64_t TimeMs = 0;
  std::string Text;  // between STX and ETX; the raw bytes when they were no command frame
  Verdict Outcome = Verdict::kNoise;
};

// One measurement packet handed to the line.
struct PacketRecord {
  std::int64_t TimeMs = 0;
  int ForwardPower = 0;    // watts
  int ReflectedPower = 0;  // watts
  double VSWR = 0;         // two decimals, as sent
  bool SWRAlarm = false;
  bool PwrAlarm = false;
  std::optional<FaultKind> Fault;  // what happened to it on its way
};

// The newest records are at the back. The totals count all, also those no longer kept.
struct MeterLog {
  std::deque<CommandRecord> Commands;
  std::deque<PacketRecord> Packets;
  std::uint64_t CommandTotal = 0;
  std::uint64_t PacketTotal = 0;
  std::uint64_t LostLines = 0;  // lines that never left: silence, mute, a reset in between
};

}  // namespace orvane::sim
