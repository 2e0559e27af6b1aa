#pragma once

#include "link/link_context.h"
#include "link/transmitter.h"

#include <cstdint>

namespace orvane {

/// Stops the readings and asks the meter for all its parameters, `extra_delay` + 50 ms before each query. The
/// replies come in during the waits; those to the last query may still be on their way at the end.
/// docs/protocol.md, "Found: the parameter load", has the queries.
/// @throws RuntimeError kOverflow when a wait would pass the end of the tick count
void LoadMeterParameters(const LinkContext& link, Transmitter& transmitter, std::int32_t extra_delay);

}  // namespace orvane
