#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Windows-1252 to the system's wide characters, and back ('?' for what the code page does not have).
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);

}  // namespace orvane
