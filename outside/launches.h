#pragma once

#include "platform/platform.h"

#include <string_view>

namespace orvane {

/// The program's ways out to other programs. None of them waits for what it started or shows a box; each
/// returns whether something was started.
class Launches {
 public:
  explicit Launches(Platform& platform)
      : shell_(platform.shell), files_(platform.files), system_(platform.system) {}

  /// Opens a web address or document with its default program, maximised.
  bool OpenDocument(std::string_view target);
  /// The system's information tool, on its page of components.
  bool ShowSystemInfo();
  /// A new mail to the maker's support in the user's mail program, with program and system in its subject.
  bool SendSupportMail();
  /// The program beside this one that renews the meter's firmware.
  bool LaunchFirmwareUpdater();
  /// The help at its contents: the old kind of help file where it is there and the system still shows such
  /// files, else the help page in the web browser.
  bool ShowHelp();

 private:
  Shell& shell_;
  Files& files_;
  SystemInfo& system_;
};

}  // namespace orvane
