#pragma once

#include <string_view>

namespace orvane {

// The maker's addresses, in a domain reserved for examples.
inline constexpr std::string_view kWebSite = "https://www.quorran.example/";

}  // namespace orvane
