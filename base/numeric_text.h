#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The number that a text stands for: blanks around it, one sign, digits with an optional decimal point, an
/// optional exponent ("-3", " 12.6 ", ".5", "1E3"). Anything else, also an empty text, is no number. The
/// decimal separator is always the point: the meter and the settings file do not change with the system's
/// language.
/// @throws RuntimeError kOverflow for a number beyond the range of a double
std::optional<double> NumberOf(std::string_view text);

/// NumberOf, then rounded to nearest (ties to even) into the field's width.
/// @throws RuntimeError kTypeMismatch when the text is no number, kOverflow when it does not fit
std::int16_t Int16Of(std::string_view text);
std::int32_t Int32Of(std::string_view text);

/// Reads a switch: "True" and "False" in any letter case, or a number, where 0 is false and all else is true.
/// @throws RuntimeError kTypeMismatch for any other text
bool SwitchOf(std::string_view text);
/// "True" or "False".
std::string SwitchText(bool value);

}  // namespace orvane
