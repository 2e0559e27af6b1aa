#pragma once

#include "base/runtime_error.h"

#include <functional>
#include <optional>

namespace orvane {

/// The fault that a step ends with.
inline std::optional<Fault> FaultOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const RuntimeError& error) {
    return error.fault();
  }
  return std::nullopt;
}

}  // namespace orvane
