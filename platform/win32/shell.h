#pragma once

#include "platform/shell.h"

namespace orvane {

class Win32Shell : public Shell {
 public:
  bool Execute(const Launch& launch) override;
};

}  // namespace orvane
