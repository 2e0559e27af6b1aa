#pragma once

#include "display/meter_controls.h"

#include <string>

namespace orvane {

/// SWR, power and reset lamp: '*' lit, '.' dark.
inline std::string Lamps(const MeterControls& meter) {
  std::string lamps;
  for (const Shape* lamp : {meter.shpSWRAlarm.get(), meter.shpPowerAlarm.get(), meter.shpResetAlarm.get()})
    lamps += lamp->FillStyle() == Shape::kSolid ? '*' : '.';
  return lamps;
}

/// The markers of the four modes.
inline std::string Markers(const MeterControls& meter) {
  std::string markers;
  for (const auto& marker : meter.shpMode)
    markers += marker->FillStyle() == Shape::kSolid ? '*' : '.';
  return markers;
}

/// The labels of a scale.
inline std::string Labels(const GraphControls& graph) {
  return graph.lblScale[0]->Caption() + "|" + graph.lblScale[1]->Caption() + "|" +
         graph.lblScale[2]->Caption();
}

}  // namespace orvane
