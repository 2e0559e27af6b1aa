#include "display/power_bar.h"

#include "base/checked.h"

#include <algorithm>

namespace orvane {

void PowerBar::Show(std::int16_t watts) {
  const std::int16_t level = RoundToInt16(static_cast<double>(static_cast<float>(watts) * scale_));
  if (level == level_) return;
  level_ = level == 0 ? std::int16_t{-1} : level;
  Clear(level);
  if (watts > 0 && scale_ > 0.0F) {  // a bar without a scale says nothing, not even that there is something
    Light(level);
  } else {
    // A small power before this one lit segment 0 at this same level, which Clear does not look at again.
    shapes_[0]->SetBackStyle(0);
  }
}

void PowerBar::Clear(std::int16_t level) {
  if (level != cleared_ && cleared_ != -1) {
    for (int i = kLastSegment; i >= std::max<int>(level, 0); --i) {
      shapes_[static_cast<std::size_t>(i)]->SetBackStyle(0);
      pump_.DeliverArrivals();
    }
  }
  cleared_ = level;
}

void PowerBar::ClearAll(bool with_events) {
  for (int i = 0; i <= kLastSegment; ++i) {
    shapes_[static_cast<std::size_t>(i)]->SetBackStyle(0);
    if (with_events) pump_.DeliverArrivals();
  }
}

void PowerBar::Restart() {
  ClearAll(false);
  level_ = -1;  // also a small power, whose level is 0, is a change then
  cleared_ = -1;
}

void PowerBar::Light(std::int16_t level) {
  for (int i = 0; i <= std::min<int>(level, kLastSegment); ++i) {
    shapes_[static_cast<std::size_t>(i)]->SetBackStyle(Shape::kOpaque);
  }
}

}  // namespace orvane
