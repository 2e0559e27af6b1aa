#include "outside/os_info.h"

#include <algorithm>
#include <string_view>

namespace orvane {
namespace {

constexpr std::int32_t kAnswered = 1;

// Named by platform and minor version alone. The major version is not looked at, on purpose: the names are
// those that support knows from earlier mails, where every system with the minor version 1 is "Windows XP"
// (6.1 too) and every other one of that platform "Windows NT". The numbers behind the name tell the rest.
std::string_view NameOf(std::uint32_t platform, std::uint32_t minor) {
  switch (platform) {
    case 0:
      return "Win32s";
    case 1:
      if (minor == 0) return "Windows 95";
      return minor == 90 ? "Windows ME" : "Windows 98";
    case 2:
      return minor == 1 ? "Windows XP" : "Windows NT";
    default:
      return "";
  }
}

}  // namespace

OSInfo GetOSInfo(SystemInfo& system) {
  const SystemVersion version = system.QueryVersion();
  OSInfo info;
  if (version.Result != kAnswered) return info;
  info.PlatformId = version.PlatformId;
  info.OSName = NameOf(version.PlatformId, version.MinorVersion);
  info.OSVersion = std::to_string(version.MajorVersion) + "." + std::to_string(version.MinorVersion);
  info.OSBuild = std::to_string(version.BuildNumber);
  // A field without a NUL was not filled as it should be: better no text than one that may be torn.
  const auto& field = version.ServicePack;
  const auto nul = std::find(field.begin(), field.end(), '\0');
  if (nul != field.end()) info.ServicePack.assign(field.begin(), nul);
  return info;
}

std::string RunningOn(const OSInfo& info) {
  return "Running on " + info.OSName + " " + info.OSVersion + " Build " + info.OSBuild + " (" +
         info.ServicePack + ")";
}

std::string VersionSuffix(const ProgramVersion& program) {
  return ", Version " + std::to_string(program.Major) + "." + std::to_string(program.Minor);
}

}  // namespace orvane
