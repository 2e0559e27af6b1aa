#pragma once

#include "platform/system_info.h"

#include <string>
#include <string_view>

namespace orvane {

/// Text of the program (Windows-1252) as a part of a web or mail address: UTF-8, and every byte that is not a
/// letter or digit of ASCII or one of "-._~" as % and two hexadecimal digits. A blank is %20, never a plus
/// sign, which mail programs take for one.
std::string PercentEncoded(std::string_view text);

/// A "mailto:" target that opens a mail to the maker's support: its subject names program and system, its
/// body begins with a greeting.
std::string SupportMailTarget(SystemInfo& system);

}  // namespace orvane
