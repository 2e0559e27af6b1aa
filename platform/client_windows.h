#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orvane {

/// Windows of other programs that take data from us.
struct ClientWindows {
  using Handle = std::uintptr_t;  ///< 0 is none
  enum class Outcome {
    kAnswered,     ///< the window has handled the message
    kTimedOut,     ///< it did not within the time, or counts as hung
    kUnreachable,  ///< the system does not let our messages through to it
  };
  struct Answer {
    Outcome outcome = Outcome::kUnreachable;
    std::int32_t result = 0;  ///< what the window returned
  };

  virtual ~ClientWindows() = default;
  /// A top-level window whose caption is exactly `caption`, 0 when there is none.
  virtual Handle Find(std::string_view caption) = 0;
  /// Sends a data-copy message and waits for the window to handle it, `timeout_ms` at most; it may read the
  /// data only during that time. Messages that other programs send to us are handled meanwhile.
  virtual Answer SendCopyData(Handle window, std::uint32_t tag, std::span<const char> data,
                              int timeout_ms) = 0;
};

}  // namespace orvane
