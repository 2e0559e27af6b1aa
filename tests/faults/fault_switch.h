#pragma once

#include "base/runtime_error.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
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

  /// Counts a call. @return whether it is the one that fails
  bool Fails(std::string_view name) {
    calls_.push_back({name, stage});
    return calls_.size() == fails_;
  }

 private:
  std::size_t fails_;
  std::vector<Call> calls_;
};

/// A part of a faulty platform: hands each call on to the part behind it, but for the one that fails.
template <typename Part>
class Failing {
 public:
  Failing(FaultSwitch& faults, Part& behind) : faults_(faults), behind_(behind) {}

 protected:
  /// The call, or its result value-initialised.
  template <typename Method, typename... Args>
  std::invoke_result_t<Method, Part&, Args...> Do(std::string_view name, Method method,
                                                  Args&&... args) const {
    using Result = std::invoke_result_t<Method, Part&, Args...>;
    if (!faults_.Fails(name)) return std::invoke(method, behind_, std::forward<Args>(args)...);
    if constexpr (!std::is_void_v<Result>) return Result{};
  }
  template <typename Failure, typename Method, typename... Args>
  Failure OrElse(std::string_view name, Failure failure, Method method, Args&&... args) const {
    return faults_.Fails(name) ? failure : std::invoke(method, behind_, std::forward<Args>(args)...);
  }
  template <typename Method, typename... Args>
  auto OrThrow(std::string_view name, Fault fault, Method method, Args&&... args) const {
    if (faults_.Fails(name)) throw RuntimeError(fault, std::string(name));
    return std::invoke(method, behind_, std::forward<Args>(args)...);
  }

  FaultSwitch& faults_;
  Part& behind_;
};

}  // namespace orvane
