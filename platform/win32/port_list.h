#pragma once

#include "platform/port_list.h"

namespace orvane {

/// The registry's map of serial devices says which ports there are; the device manager's list adds the names.
class Win32PortList : public PortList {
 public:
  std::vector<PresentPort> PresentPorts() override;
};

}  // namespace orvane
