#pragma once

#include "display/power_display.h"
#include "forms/form.h"
#include "link/meter_lists.h"
#include "platform/headless/desktop.h"
#include "platform/headless/virtual_time.h"
#include "tests/support/meter_text.h"
#include "window/face_builder.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {

/// The power display with its controls, without link and window code; readings are put into the meter's state
/// by hand.
class DisplayTest : public testing::Test {
 protected:
  DisplayTest() : DisplayTest(0) {}
  explicit DisplayTest(std::int32_t start_tick) : time(start_tick) {
    time.Block(1);  // the clock of a running program is past zero
  }

  void Line(std::int32_t forward, std::int32_t reflected, float vswr = 0.0F) {
    meter.ForwardPower = forward;
    meter.ReflectedPower = reflected;
    meter.VSWR = vswr;
    display.OnMeterLine();
  }
  /// Lit segments as a text of '#' and '.', without the dark tail.
  static std::string Bar(const GraphControls& graph) {
    std::string bar;
    for (const auto& shape : graph.shpGraph)
      bar += shape->BackStyle() == Shape::kOpaque ? '#' : '.';
    return bar.substr(0, bar.find_last_of('#') + 1);
  }
  int FwdLit() const { return static_cast<int>(Bar(controls.forward).size()); }
  int RefLit() const { return static_cast<int>(Bar(controls.reflected).size()); }
  const std::string& Fwd() const { return controls.forward.dbxPower->digitdisplay(); }
  const std::string& Ref() const { return controls.reflected.dbxPower->digitdisplay(); }
  const std::string& Ratio() const { return controls.dbxVSWR->digitdisplay(); }

  VirtualTime time;
  HeadlessDesktop desktop{time};
  Form form{desktop, "form", {9600, 3900}};
  MeterControls controls{BuildMeterControls(desktop, form)};
  MeterState meter;
  MeterLists lists;
  DisplayMode mode;
  std::vector<std::int32_t> sent;
  PowerDisplay display{desktop, time,       time, controls,
                       meter,   lists.Auto, mode, [this](std::int32_t w) { sent.push_back(w); }};
};

}  // namespace orvane
