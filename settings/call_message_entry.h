#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// What a typed character becomes in the call message (Windows-1252): a zero becomes the slashed one, so that
/// the meter never shows a zero that looks like the letter O; printable ASCII and the keys that edit pass.
/// @return 0 for what the meter cannot show
unsigned char CallMessageKey(unsigned char code);

/// A whole text by the same rule, for text that was pasted: what the meter cannot show is left out, as are
/// blanks at the end. A slashed zero stays one.
std::string CallMessageText(std::string_view text);

}  // namespace orvane
