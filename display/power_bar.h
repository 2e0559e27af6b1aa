#pragma once

#include "display/meter_controls.h"
#include "platform/event_pump.h"

#include <cstdint>

namespace orvane {

/// One bar graph: segments 0..50 of its shapes, lit from the left. Touches only segments whose state changes
/// with the level, and lets arriving bytes in after each one it puts out.
class PowerBar {
 public:
  PowerBar(ControlArray<Shape, kBarShapes>& shapes, EventPump& pump) : shapes_(shapes), pump_(pump) {}

  /// Bar segments per watt.
  void SetScale(float segments_per_watt) { scale_ = segments_per_watt; }

  /// Draws the bar for a power in watts. @throws RuntimeError kOverflow when the level leaves 16 bits
  void Show(std::int16_t watts);
  /// Puts out segments 50 down to `level` (-1: all, and the bar counts as wholly cleared, so that the next
  /// call does nothing but note its level).
  void Clear(std::int16_t level);
  /// Puts out segments 0..50 whatever their state; `with_events` lets bytes in after each.
  void ClearAll(bool with_events);
  /// All out, and the next reading is drawn whatever was shown before.
  void Restart();
  /// Lights segments 0 to `level`, as far as there are any.
  void Light(std::int16_t level);

 private:
  ControlArray<Shape, kBarShapes>& shapes_;
  EventPump& pump_;
  float scale_ = 0.0F;
  std::int16_t level_ = 0;    // last level drawn; -1 stands for level 0, which never counts as unchanged
  std::int16_t cleared_ = 0;  // level to which the bar was last cleared; -1: wholly
};

}  // namespace orvane
