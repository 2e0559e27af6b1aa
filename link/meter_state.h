#pragma once

#include "base/checked.h"
#include "link/call_text.h"

#include <cstdint>
#include <string>

namespace orvane {

/// What the meter last said about itself. The link writes it, everybody else reads it. Replies come at any
/// time, also inside a wait, so a value read before one may be another after it. The fields have the letters
/// of the replies that write them ("b" is B2, "t" T2); docs/protocol.md, "Replies", tells what they mean.
struct MeterState {
  std::int16_t ParamR = 0;   ///< row of the meter's own scale, 0..2
  std::int16_t ParamB2 = 0;  ///< bar-graph range scale, 0..3
  std::string ParamLText;    ///< low-power thresholds, comma-separated
  std::string ParamWText;
  std::string ParamW2Text;
  std::string ParamBText;        ///< twelve full scales in watts, comma-separated; range k has 3k, 3k+1, 3k+2
  std::int16_t RangeMaxNeg = 0;  ///< highest trim, negated
  std::int16_t RangeMinNeg = 0;  ///< lowest trim, negated
  std::int16_t ParamT = 0;       ///< forward trim, percent
  std::int16_t ParamT2 = 0;      ///< reflected trim, percent
  Bool16 ParamRValid = kFalse;
  Bool16 ParamB2Valid = kFalse;
  std::int16_t ParamI = 0;   ///< display intensity, 1..4; 0 until it was reported
  std::int16_t ParamL2 = 0;  ///< low-power alarm, 0..7, 0 is off
  Bool16 ParamL2On = kFalse;
  std::int16_t ParamV = 0;  ///< VSWR alarm, 0..4, 0 is off
  Bool16 ParamVOn = kFalse;
  std::int16_t ParamS = 0;  ///< the meter shows the call message
  CallText MeterCallText;
  std::int16_t MeterMode = 0;  ///< operation mode, 0..3
  std::string FirmwareVersion;
  std::int16_t ParamP = 0;  ///< alarm relay polarity, 0..1

  /// False from the moment on at which the readings below were dropped, until the next packet. Before the
  /// first packet of all their zeros stand.
  bool ReadingsLive = true;
  bool ReadingsSeen = false;        ///< a packet came, in this run of the program
  std::int32_t ForwardPower = 0;    ///< watts
  std::int32_t ReflectedPower = 0;  ///< watts
  float VSWR = 0.0F;                ///< a ratio, two decimals
  Bool16 SWRAlarm = kFalse;
  Bool16 PwrAlarm = kFalse;

  std::int16_t MeterRange() const { return ParamB2; }  ///< 0..3
  std::int16_t MeterRow() const { return ParamR; }     ///< 0..2
  bool operator==(const MeterState&) const = default;
};

}  // namespace orvane
