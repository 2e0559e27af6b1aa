#include "link/parameter_load.h"

#include "base/checked.h"
#include "platform/wait.h"

#include <array>
#include <string_view>

namespace orvane {
namespace {

// The trim limits ("U") come before the trims, which are checked against them.
constexpr std::array<std::string_view, 16> kQueries{"B?", "b?", "U?", "W?", "w?", "C?", "I?", "l?",
                                                    "L?", "M?", "P?", "R?", "S?", "T?", "t?", "V?"};
constexpr std::int32_t kQueryDistanceMs = 50;

}  // namespace

void LoadMeterParameters(const LinkContext& link, Transmitter& transmitter, std::int32_t extra_delay) {
  link.events.ShowStatus("Loading Meter Paramaters", StatusTone::kNormal);
  transmitter.SetDataFlow(false);
  for (const std::string_view query : kQueries) {
    WaitTicks(link.clock, link.pump, CheckedAdd(extra_delay, kQueryDistanceMs));
    transmitter.SendCommand(query);
  }
  link.events.ShowStatus("", StatusTone::kNormal);
  link.flags.ResyncPending = false;
}

}  // namespace orvane
