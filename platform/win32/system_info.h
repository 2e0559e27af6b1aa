#pragma once

#include "platform/system_info.h"

#include <string>

namespace orvane {

class Win32SystemInfo final : public SystemInfo {
 public:
  /// What the system answers depends on the manifest of the program: without one that names it, a newer
  /// system passes itself off as an older one.
  SystemVersion QueryVersion() override;
  ProgramVersion OwnVersion() override;
};

/// What the version resource of a file says, in its first language.
ProgramVersion ReadVersionResource(const std::wstring& path);

}  // namespace orvane
