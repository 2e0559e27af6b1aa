#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace orvane {

/// What went wrong, by the number that the operator's message boxes and the logs use.
enum class Fault : int {
  kOverflow = 6,             ///< a result does not fit its 16- or 32-bit field
  kSubscriptOutOfRange = 9,  ///< a table was indexed outside its bounds
  kTypeMismatch = 13,        ///< a text is not the number or switch it should be
  kFileNotFound = 53,        ///< a file that must be there is not
  kBadFile = 54,             ///< a file is there and cannot be used
  kPathAccess = 75,          ///< the system refuses access to a file
  kInvalidPicture = 481,     ///< a picture file cannot be decoded
  kInvalidPort = 8002,       ///< no such port, or no port chosen
  kPortUnavailable = 8005,   ///< the port is there and cannot be had (in use, refused)
  kPortNotOpen = 8018,       ///< an operation that needs an open port
  kPortLost = 8020,          ///< the open port stopped working (unplugged, driver gone)
  kLineBusy = 8021,          ///< the line does not take its bytes
};

/// A fault of the run: its class, and a text that says what was being done ("Opening COM3: access denied").
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(Fault fault, const std::string& doing) : std::runtime_error(doing), fault_(fault) {}
  Fault fault() const { return fault_; }

 private:
  Fault fault_;
};

/// Runs `step` and swallows a RuntimeError, nothing else: the one visible way to go on after a failed step.
/// @return true when the step came to its end
template <typename Step>
bool Attempt(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace orvane
