#pragma once

#include "platform/shell.h"

#include <functional>
#include <string>
#include <vector>

namespace orvane {

/// Records what was to be started.
class HeadlessShell : public Shell {
 public:
  bool Execute(const Launch& launch) override {
    launches.push_back(launch);
    if (on_launch) on_launch();
    return works;
  }
  bool ShowHelpFile(const std::string& path) override {
    if (has_help_viewer) help_files.push_back(path);
    return has_help_viewer;
  }
  std::function<void()> on_launch;
  std::vector<Launch> launches;
  std::vector<std::string> help_files;  ///< that the old viewer shows
  bool works = true;
  bool has_help_viewer = true;
};

}  // namespace orvane
