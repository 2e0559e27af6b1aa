// What happens on the antenna line: named stories of forward and reflected power over time.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orvane::sim {

// True power at the coupler in watts, before the meter's trims.
struct Power {
  double Forward = 0;
  double Reflected = 0;
};

// One story. The power is a pure function of the seed and the time since its start, and is computed with
// the basic operations and the square root only: these are exactly rounded everywhere, so every platform
// tells the same story.
struct Scenario {
  std::string_view Name;
  std::string_view Summary;
  Power (*At)(std::uint64_t seed, std::int64_t time_ms);
};

// All stories, in the order in which a help text lists them.
std::span<const Scenario> Scenarios();

// The story of that name, or nullptr.
const Scenario* FindScenario(std::string_view name);

// Reflected watts that make a VSWR of `vswr` (1 or more) out of `forward` watts.
double ReflectedFor(double forward, double vswr);

}  // namespace orvane::sim
