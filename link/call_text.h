#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace orvane {

/// How a call sign's zero is sent and shown (Windows-1252): the meter's digit 0 looks like the letter O.
inline constexpr char kSlashedZero = '\xD8';

/// The call-sign message: a field of 17 characters, of which the meter takes 16. docs/protocol.md, "Replies"
/// and "Changing a parameter".
class CallText {
 public:
  static constexpr std::size_t kWidth = 17;
  static constexpr std::size_t kSent = 16;

  CallText() : CallText(std::string_view{}) {}
  explicit CallText(std::string_view text) { Set(text); }

  /// Cuts the text to the field's width, or pads it with blanks.
  void Set(std::string_view text) {
    field_.fill(' ');
    std::copy_n(text.begin(), std::min(text.size(), kWidth), field_.begin());
  }
  /// All 17 characters.
  std::string_view Field() const { return {field_.data(), kWidth}; }
  /// Without the blanks at its end.
  std::string_view Text() const { return Field().substr(0, Field().find_last_not_of(' ') + 1); }
  bool Empty() const { return Text().empty(); }
  bool operator==(const CallText&) const = default;

 private:
  std::array<char, kWidth> field_{};
};

}  // namespace orvane
