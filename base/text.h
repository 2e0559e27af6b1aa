#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

// Texts are bytes, one character a byte. Letter case is folded for ASCII letters only: the meter sends ASCII,
// and a fold that depended on the system's language would make two computers read one line differently.

/// True when both texts are the same but for the case of their letters.
bool EqualNoCase(std::string_view a, std::string_view b);
/// Position of `part` in `text` without regard to letter case, npos when it is not there. An empty part is
/// found at 0.
std::size_t FindNoCase(std::string_view text, std::string_view part);
inline bool ContainsNoCase(std::string_view text, std::string_view part) {
  return FindNoCase(text, part) != std::string_view::npos;
}

/// The text without blanks (0x20 only) at its end; at both ends.
std::string_view TrimRight(std::string_view text);
std::string_view Trim(std::string_view text);

/// The pieces between the separators, empty ones included; an empty text gives no piece at all.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// `text` without the first `letter` in it (letter case counts).
std::string RemoveFirst(std::string_view text, char letter);
/// `text` with every `from` replaced by `to`.
std::string ReplaceAll(std::string_view text, char from, char to);

}  // namespace orvane
