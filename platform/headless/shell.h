#pragma once

#include "platform/shell.h"

#include <vector>

namespace orvane {

/// Records what was to be started.
class HeadlessShell : public Shell {
 public:
  bool Execute(const Launch& launch) override {
    launches.push_back(launch);
    return works;
  }
  std::vector<Launch> launches;
  bool works = true;
};

}  // namespace orvane
