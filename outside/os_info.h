#pragma once

#include "platform/system_info.h"

#include <cstdint>
#include <string>

namespace orvane {

/// The system in words, for the About box and the support mail.
struct OSInfo {
  std::uint32_t PlatformId = 0;
  std::string OSName;       ///< empty for a platform that has no name here
  std::string OSVersion;    ///< "6.1"
  std::string ServicePack;  ///< empty without one
  std::string OSBuild;      ///< "7601"
};

/// Asks the system for its version. All is empty when it does not answer.
OSInfo GetOSInfo(SystemInfo& system);

/// "Running on Windows XP 5.1 Build 2600 (Service Pack 2)"; empty pieces leave their blanks and brackets.
std::string RunningOn(const OSInfo& info);

/// ", Version 1.0", as it follows the product name.
std::string VersionSuffix(const ProgramVersion& program);

}  // namespace orvane
