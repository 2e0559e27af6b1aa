#pragma once

#include <string>
#include <vector>

namespace orvane {

/// A serial port that the system has now.
struct PresentPort {
  int number = 0;    ///< 5 for COM5
  std::string name;  ///< what its maker calls it, "USB Serial Port"; empty when unknown
  bool operator==(const PresentPort&) const = default;
};

struct PortList {
  virtual ~PortList() = default;
  /// By number, each once. Takes some milliseconds. Never fails; what cannot be found out is left out.
  virtual std::vector<PresentPort> PresentPorts() = 0;
};

}  // namespace orvane
