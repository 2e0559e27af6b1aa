// The meter's own frame check and message framing. Worked out bit by bit and sharing nothing with the
// desktop program, so that a mistake in the program's table shows up as a refused frame. docs/protocol.md,
// "Frames" and "Check digits".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane::sim {

inline constexpr char kStx = '\x02';
inline constexpr char kEtx = '\x03';
inline constexpr char kCr = '\r';
inline constexpr char kLf = '\n';

// CRC-8 of `text`, polynomial x^8+x^7+x^5+x^4+1 (0xB1), most significant bit first, register from 0,
// result complemented as it goes on the line.
std::uint8_t WireCrc(std::string_view text);

// Two upper-case hexadecimal digits.
std::string HexDigits(std::uint8_t value);

// A message of the meter: STX text ETX CRC CR LF. `text` starts with the command letter.
std::string MessageFrame(std::string_view text);

// A command as a peer sends it: STX text ETX CRC CR. For tests and consoles that play the peer.
std::string CommandFrame(std::string_view text);

}  // namespace orvane::sim
