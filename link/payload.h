#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The text up to the last ETX (all of it when there is none), without STX, ETX, CR and LF. What follows the
/// ETX is not checked: a reply that was hit is put right by the next one.
std::string ExtractPayload(std::string_view message);

/// The payload without the first `letter` in it, as a 16-bit number rounded to nearest (ties to even);
/// nothing when it is no number. docs/protocol.md, "Replies". @throws RuntimeError kOverflow
std::optional<std::int16_t> PayloadNumber(std::string_view message, char letter);

}  // namespace orvane
