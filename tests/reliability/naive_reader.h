#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// What one measurement packet says.
struct NaiveReading {
  long forward = 0;    ///< watts
  long reflected = 0;  ///< watts
  float vswr = 0;
  bool swr_alarm = false;
  bool power_alarm = false;
};

/// Reads the meter's bytes in the plainest way that the protocol allows, and shares nothing with the program:
/// lines are split, the check is worked out bit by bit, numbers are the C library's.
class NaiveReader {
 public:
  /// Calls `on_line` for each line that is whole by now, with the reading if it is one.
  void Take(std::string_view bytes, const std::function<void(const std::optional<NaiveReading>&)>& on_line);

 private:
  std::string rest_;
};

}  // namespace orvane
