#include "base/numeric_text.h"

#include "base/checked.h"
#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace orvane {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t CountDigits(std::string_view text, std::size_t at) {
  std::size_t count = 0;
  while (at + count < text.size() && IsDigit(text[at + count]))
    ++count;
  return count;
}

// The shape is tested first: from_chars alone would take "inf", "nan" and leave a tail unread.
bool HasNumberShape(std::string_view body) {
  std::size_t at = CountDigits(body, 0);
  std::size_t digits = at;
  if (at < body.size() && body[at] == '.') {
    const std::size_t decimals = CountDigits(body, at + 1);
    digits += decimals;
    at += 1 + decimals;
  }
  if (digits == 0) return false;
  if (at < body.size() && (body[at] == 'e' || body[at] == 'E')) {
    ++at;
    if (at < body.size() && (body[at] == '+' || body[at] == '-')) ++at;
    const std::size_t exponent = CountDigits(body, at);
    if (exponent == 0) return false;
    at += exponent;
  }
  return at == body.size();
}

// Plain whole numbers are what the meter sends nearly always; up to 15 digits are exact in a double.
std::optional<double> ShortWholeNumber(std::string_view body) {
  if (body.empty() || body.size() > 15) return std::nullopt;
  std::int64_t value = 0;
  for (const char c : body) {
    if (!IsDigit(c)) return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return static_cast<double>(value);
}

// Too small a number is zero; only one that is too large is a fault. from_chars does not say which it was:
// the place of the first digit that counts says it, moved by the exponent.
bool IsTiny(std::string_view body) {
  const auto mark = std::min(body.find_first_of("eE"), body.size());
  const std::string_view digits = body.substr(0, mark);
  const auto point = std::min(digits.find('.'), digits.size());
  const auto first = digits.find_first_of("123456789");
  const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  std::string_view power = body.substr(mark);
  power.remove_prefix(std::min(power.find_first_not_of("eE+"), power.size()));
  int exponent = 0;
  const auto result = std::from_chars(power.data(), power.data() + power.size(), exponent);
  if (result.ec == std::errc::result_out_of_range) return power.starts_with('-');
  return place + exponent < 0;
}

}  // namespace

std::optional<double> NumberOf(std::string_view text) {
  std::string_view body = Trim(text);
  const bool negative = !body.empty() && body.front() == '-';
  if (negative || (!body.empty() && body.front() == '+')) body.remove_prefix(1);
  if (const auto whole = ShortWholeNumber(body)) return negative ? -*whole : *whole;
  if (!HasNumberShape(body)) return std::nullopt;
  double value = 0.0;
  const auto result = std::from_chars(body.data(), body.data() + body.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    if (!IsTiny(body)) throw RuntimeError(Fault::kOverflow, "reading a number beyond all ranges");
    value = 0.0;
  }
  return negative ? -value : value;
}

std::int16_t Int16Of(std::string_view text) {
  const auto number = NumberOf(text);
  if (!number) throw RuntimeError(Fault::kTypeMismatch, "reading \"" + std::string(text) + "\" as a number");
  return RoundToInt16(*number);
}

std::int32_t Int32Of(std::string_view text) {
  const auto number = NumberOf(text);
  if (!number) throw RuntimeError(Fault::kTypeMismatch, "reading \"" + std::string(text) + "\" as a number");
  return RoundToInt32(*number);
}

bool SwitchOf(std::string_view text) {
  const std::string_view word = Trim(text);
  if (EqualNoCase(word, "True")) return true;
  if (EqualNoCase(word, "False")) return false;
  const auto number = NumberOf(word);
  if (!number) throw RuntimeError(Fault::kTypeMismatch, "reading \"" + std::string(text) + "\" as a switch");
  return *number != 0.0;
}

std::string SwitchText(bool value) {
  return value ? "True" : "False";
}

}  // namespace orvane
