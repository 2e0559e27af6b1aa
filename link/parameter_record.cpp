#include "link/parameter_record.h"

namespace orvane {

ParameterRecord CurrentParameters(const MeterState& state) {
  ParameterRecord record;
  record.ForwardTrim = state.ParamT;
  record.ReflectedTrim = state.ParamT2;
  record.RelayPolarity = state.ParamP;
  record.DisplayMessage = state.ParamS;
  record.RangeScale = state.ParamB2;
  record.Intensity = state.ParamI == 0 || state.ParamI == 4 ? std::int16_t{3} : state.ParamI;
  record.LowPowerAlarm = state.ParamL2;
  record.VSWRAlarm = state.ParamV;
  record.OperationMode = state.MeterMode;
  record.CallMessage = state.MeterCallText;
  return record;
}

}  // namespace orvane
