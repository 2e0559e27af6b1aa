#pragma once

#include "base/runtime_error.h"

#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orvane {

/// Counts what the program asks of its system, and makes one of these calls fail: by a fault where the
/// interface knows one, else by its value for "no", else by doing nothing.
class FaultSwitch {
 public:
  struct Call {
    std::string_view name;
    std::string_view stage;  ///< what the program was doing
  };

  /// @param fails number of the call that fails, counted from 1; 0 for none
  explicit FaultSwitch(std::size_t fails) : fails_(fails) {}

  std::string_view stage;
  std::set<std::string> said;  ///< every text that a window was given
  const std::vector<Call>& Calls() const { return calls_; }
  bool Failed() const { return fails_ > 0 && calls_.size() >= fails_; }

  /// The call, or its result value-initialised.
  template <typename Step>
  std::invoke_result_t<Step> Do(std::string_view name, Step step) {
    using Result = std::invoke_result_t<Step>;
    if (!Fails(name)) return step();
    if constexpr (!std::is_void_v<Result>) return Result{};
  }
  template <typename Step>
  std::invoke_result_t<Step> OrElse(std::string_view name, std::invoke_result_t<Step> failure, Step step) {
    return Fails(name) ? failure : step();
  }
  template <typename Step>
  std::invoke_result_t<Step> OrThrow(std::string_view name, Fault fault, Step step) {
    if (Fails(name)) throw RuntimeError(fault, std::string(name));
    return step();
  }

 private:
  bool Fails(std::string_view name) {
    calls_.push_back({name, stage});
    return calls_.size() == fails_;
  }

  std::size_t fails_;
  std::vector<Call> calls_;
};

}  // namespace orvane
