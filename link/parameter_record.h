#pragma once

#include "link/call_text.h"
#include "link/meter_state.h"

#include <cstdint>

namespace orvane {

/// The meter's settings as the settings panel handles them: what the meter has, or what the operator wants.
/// Letters and ranges: docs/protocol.md.
struct ParameterRecord {
  std::int16_t ForwardTrim = 0;     ///< "T", percent
  std::int16_t ReflectedTrim = 0;   ///< "t", percent
  std::int16_t RelayPolarity = 0;   ///< "P", 0..1
  std::int16_t DisplayMessage = 0;  ///< "S", 1 shows the call message
  std::int16_t RangeScale = 0;      ///< "b", 0..3
  std::int16_t Intensity = 0;       ///< "I", 0..3
  std::int16_t LowPowerAlarm = 0;   ///< "l", 0..7
  std::int16_t VSWRAlarm = 0;       ///< "V", 0..4
  std::int16_t OperationMode = 0;   ///< "M", 0..3
  CallText CallMessage;             ///< "C"
  bool CallMessageEdited = false;   ///< the call message is to be sent
};

/// The settings that the meter reported last. The panel's list of intensities goes from 0 to 3, so the
/// meter's highest, 4, counts as 3 here, and so does one that it has not reported: an untouched list then is
/// no change.
ParameterRecord CurrentParameters(const MeterState& state);

}  // namespace orvane
