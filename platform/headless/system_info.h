#pragma once

#include "platform/system_info.h"

#include <string_view>

namespace orvane {

/// A system and a program of any version.
class HeadlessSystemInfo : public SystemInfo {
 public:
  SystemVersion QueryVersion() override { return version; }
  ProgramVersion OwnVersion() override { return program; }
  /// The text at the start of the service pack field, NUL after it.
  void SetServicePack(std::string_view text) {
    version.ServicePack.fill('\0');
    text.copy(version.ServicePack.data(), version.ServicePack.size());
  }

  SystemVersion version{1, 2, 6, 1, 7601, {}};
  ProgramVersion program{"Orvane Lite", "RF watt meter companion", 1, 0};
};

}  // namespace orvane
