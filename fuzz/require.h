#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace orvane::fuzz {

/// What must hold for every input; where it does not, the process ends and libFuzzer keeps the input.
inline void Require(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace orvane::fuzz
