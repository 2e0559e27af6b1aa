#pragma once

#include "base/checked.h"
#include "display/display_mode.h"

#include <cstdint>

namespace orvane {

/// The time until which a shown value stands. Deadlines are tick counts and compared as they are; one that
/// lies further ahead than any hold lasts was set before the tick count wrapped, and is over.
class HoldClock {
 public:
  bool Expired(std::int32_t now) const {
    return now > until_ || static_cast<std::int64_t>(until_) - now > kLongestHold;
  }
  /// @throws RuntimeError kOverflow in the last moments before the tick count wraps; the old deadline stands
  /// then
  void Start(std::int32_t now, std::int16_t hold_time) { until_ = CheckedAdd(now, hold_time); }

 private:
  std::int32_t until_ = 0;
};

/// Peak hold of a readout: a rising value shows at once, a falling one when the hold is over, and then as the
/// highest value seen meanwhile.
template <typename Value>
class PeakHold {
 public:
  /// Takes a value. @return true when the readout has to change: write Shown(), then call Hold
  bool Take(Value value, std::int32_t now) {
    if (value > peak_) peak_ = value;
    if (clock_.Expired(now)) shown_ = 0;
    if (!(peak_ > shown_ || shown_ == 0)) return false;
    shown_ = peak_;
    peak_ = 0;
    return true;
  }
  void Hold(std::int32_t now, std::int16_t hold_time) { clock_.Start(now, hold_time); }
  Value Shown() const { return shown_; }
  /// Forgets everything, also a hold that runs.
  void Restart() { *this = {}; }
  /// Replaces the shown value: 0, or -1, gives way to the next one that comes.
  void SetShown(Value value) { shown_ = value; }

 private:
  Value shown_ = 0;
  Value peak_ = 0;
  HoldClock clock_;
};

}  // namespace orvane
