#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orvane {

// The numbers of a measurement packet, rounded as they are written on the readouts: by their decimal digits,
// half away from zero. Plain numbers are rounded by whole-number arithmetic; only unusual ones (exponents,
// more than 13 digits) go through the number formats, with the same result. docs/protocol.md, "Measurement
// packets".

/// Whole watts; nothing when the text is no number. @throws RuntimeError kOverflow beyond 32 bits
std::optional<std::int32_t> WattsOf(std::string_view text);

/// A ratio with two decimals; nothing when the text is no number. @throws RuntimeError kOverflow
std::optional<float> VSWROf(std::string_view text);

}  // namespace orvane
