#include "link/packet_number.h"

#include "base/checked.h"
#include "base/number_format.h"
#include "base/numeric_text.h"
#include "base/text.h"

namespace orvane {
namespace {

// Digits with an optional point between them: the number is digits / 10^decimals.
struct PlainNumber {
  bool negative = false;
  std::int64_t digits = 0;
  int decimals = 0;
};

// With so many digits the double of the number lies nearer to them than the formats' slack, so that both ways
// round alike.
constexpr std::size_t kMostDigits = 13;

std::size_t TakeDigits(std::string_view text, std::size_t at, std::int64_t& digits) {
  const std::size_t start = at;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
    digits = digits * 10 + (text[at] - '0');
  return at - start;
}

std::optional<PlainNumber> ReadPlain(std::string_view text) {
  text = Trim(text);
  PlainNumber number;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    number.negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.size() > kMostDigits + 1) return std::nullopt;
  const std::size_t whole = TakeDigits(text, 0, number.digits);
  if (whole == 0) return std::nullopt;
  if (whole == text.size()) return number;
  const std::size_t decimals = TakeDigits(text, whole + 1, number.digits);
  if (text[whole] != '.' || decimals == 0 || whole + 1 + decimals != text.size()) return std::nullopt;
  number.decimals = static_cast<int>(decimals);
  return number;
}

// The number times 10^decimals, rounded half away from zero.
std::int64_t ScaledTo(const PlainNumber& number, int decimals) {
  std::int64_t value = number.digits;
  int have = number.decimals;
  for (; have < decimals; ++have)
    value *= 10;
  if (have > decimals) {
    std::int64_t divisor = 10;
    for (; have > decimals + 1; --have)
      divisor *= 10;
    value = (value + divisor / 2) / divisor;
  }
  return number.negative ? -value : value;
}

}  // namespace

std::optional<std::int32_t> WattsOf(std::string_view text) {
  if (const auto plain = ReadPlain(text)) return NarrowToInt32(ScaledTo(*plain, 0));
  const auto number = NumberOf(text);
  if (!number) return std::nullopt;
  return RoundToInt32(RoundedBy(kWattsFormat, *number));
}

std::optional<float> VSWROf(std::string_view text) {
  if (const auto plain = ReadPlain(text)) {
    return static_cast<float>(static_cast<double>(ScaledTo(*plain, 2)) / 100.0);
  }
  const auto number = NumberOf(text);
  if (!number) return std::nullopt;
  return static_cast<float>(RoundedBy(kVSWRFormat, *number));
}

}  // namespace orvane
