#pragma once

#include "platform/port_list.h"

#include <vector>

namespace orvane {

/// The ports that a test says are there.
class HeadlessPortList : public PortList {
 public:
  std::vector<PresentPort> PresentPorts() override { return ports; }
  std::vector<PresentPort> ports;
};

}  // namespace orvane
