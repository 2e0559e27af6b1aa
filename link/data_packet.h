#pragma once

#include "link/meter_state.h"

#include <string_view>

namespace orvane {

/// Takes the readings of one measurement packet into the state: forward power, reflected power, VSWR and the
/// two alarm flags.
///
///     STX D,<forward>,<reflected>,<VSWR>,<SWR alarm>;<power alarm> ETX <two CRC digits> CR ...
///
/// Only the text up to the first CR counts. A packet with a wrong checksum, without ETX or without exactly
/// five fields is dropped silently: the next one is 200 ms away. Each field that cannot be used leaves its
/// value as it was and costs the others nothing. Never throws; allocates nothing for ordinary numbers.
/// docs/protocol.md, "Measurement packets", has examples.
/// @return whether it was taken
bool ProcessDataPacket(std::string_view packet, MeterState& state);

}  // namespace orvane
