#pragma once

#include <string_view>

namespace orvane {

// The maker's addresses, in a domain reserved for examples.
inline constexpr std::string_view kWebSite = "https://www.quorran.example/";
inline constexpr std::string_view kSupportAddress = "support@quorran.example";
inline constexpr std::string_view kSupportGreeting = "Hello";

// Files in the program's folder.
inline constexpr std::string_view kFirmwareUpdater = "\\OVFirmUpdate.exe";
inline constexpr std::string_view kHelpFile = "\\Help\\OrvaneLite.hlp";   ///< for the help viewer of old
inline constexpr std::string_view kHelpPage = "\\Help\\OrvaneLite.html";  ///< for the web browser

// The system's own information tool.
inline constexpr std::string_view kSystemInfoTool = "Msinfo32.exe";
inline constexpr std::string_view kSystemInfoPage = "/Category Components";

}  // namespace orvane
