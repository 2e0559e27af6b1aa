// Finds the command frames in what a peer sends.
#pragma once

#include "simulator/settings.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvane::sim {

// A run of bytes from an STX to a CR.
struct ScannedFrame {
  std::string Text;                // between STX and ETX; all between STX and CR when malformed
  std::optional<Verdict> Refusal;  // kBadCrc or kMalformed; nothing when the frame is sound
};

// Takes bytes in any portions. What stands outside a frame is skipped; a new STX starts over, so a torn frame
// costs nothing but itself; a frame without an end is given up after 64 bytes.
class LineScanner {
 public:
  // The next complete frame in `bytes`, which loses what was read of it; nothing when more is needed.
  std::optional<ScannedFrame> Next(std::string_view& bytes);

  // Forgets a frame that has only begun.
  void Clear() { frame_.reset(); }

 private:
  std::optional<std::string> frame_;  // after the STX; nothing outside a frame
};

}  // namespace orvane::sim
