#pragma once

#include <string>
#include <string_view>

namespace orvane {

inline constexpr char kSTX = '\x02';  ///< opens a frame
inline constexpr char kETX = '\x03';  ///< ends its text; the checksum follows
inline constexpr char kLF = '\x0A';   ///< ends a message of the meter
inline constexpr char kCR = '\x0D';   ///< ends a command to the meter

/// A command as it goes out: STX, text, ETX, two checksum digits, CR. The meter ends its messages with LF
/// instead, so that a line echoed back is not taken for a command. docs/protocol.md, "Frames".
std::string FrameCommand(std::string_view text);

}  // namespace orvane
