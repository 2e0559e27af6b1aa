#include "base/number_format.h"

#include "base/runtime_error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace orvane {
namespace {

constexpr std::array<double, 10> kPowersOfTen{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Fifteen significant digits are what a double surely carries; the rounding goes by them. Past 1e15 a double
// has no decimals left to round.
double RoundByDecimalDigits(double value, int decimals) {
  const double power = kPowersOfTen[static_cast<std::size_t>(decimals)];
  const double scaled = std::fabs(value) * power;
  if (scaled >= 1e15) return scaled;
  const double below = std::floor(scaled);
  const double part = scaled - below;
  // Half a unit in the fifteenth digit: nearer than that to one half counts as one half, and one half goes
  // up. Where that would reach whole numbers, the multiplication is off by less than a tenth.
  const double slack = std::fmin(scaled * 5e-15, 0.1);
  return part >= 0.5 - slack ? below + 1.0 : below;
}

}  // namespace

std::string NumberFormat::Write(double value) const {
  if (!std::isfinite(value)) throw RuntimeError(Fault::kTypeMismatch, "writing something that is no number");
  const double scaled = RoundByDecimalDigits(value, decimals_);
  if (scaled >= 9e18) throw RuntimeError(Fault::kOverflow, "writing a number too long to show");
  std::array<char, 24> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<std::uint64_t>(scaled));
  std::string digits(buffer.data(), end.ptr);
  if (digits == "0") digits.clear();
  const auto decimals = static_cast<std::size_t>(decimals_);
  const auto forced_whole = static_cast<std::size_t>(whole_digits_);
  if (digits.size() < decimals + forced_whole) digits.insert(0, decimals + forced_whole - digits.size(), '0');

  const bool negative = value < 0.0 && scaled > 0.0;
  if (!point_) return negative ? "-" + digits : digits;
  std::size_t shown = decimals;
  const auto forced = static_cast<std::size_t>(forced_decimals_);
  const std::size_t whole = digits.size() - decimals;
  while (shown > forced && digits[whole + shown - 1] == '0')
    --shown;
  std::string text = negative ? "-" : "";
  text.append(digits, 0, whole).append(1, '.').append(digits, whole, shown);
  return text;
}

double RoundedBy(const NumberFormat& format, double value) {
  const std::string text = format.Write(value);
  double number = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace orvane
