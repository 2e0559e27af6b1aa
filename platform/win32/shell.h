#pragma once

#include "platform/shell.h"
#include "platform/win32/window_system.h"

namespace orvane {

class Win32Shell : public Shell {
 public:
  /// @param windows gives the window that help is shown for: the main window
  explicit Win32Shell(Win32WindowSystem& windows) : windows_(windows) {}
  bool Execute(const Launch& launch) override;
  bool ShowHelpFile(const std::string& path) override;

 private:
  Win32WindowSystem& windows_;
};

}  // namespace orvane
