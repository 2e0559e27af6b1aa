// Texts that stand for numbers, as they come over the line and from the settings file, and numbers that are
// written for the readouts. What the quick ways give is compared with the slow ones, and with the C library.
#include "base/checked.h"
#include "base/number_format.h"
#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "fuzz/require.h"
#include "link/packet_number.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orvane::fuzz {
namespace {

/// What a step gave, or the fault that ended it.
template <typename Value>
struct Outcome {
  std::optional<Value> value;
  std::optional<Fault> fault;
  bool operator==(const Outcome&) const = default;
};
template <typename Step>
auto OutcomeOf(Step step) -> Outcome<decltype(step())> {
  try {
    return {step(), std::nullopt};
  } catch (const RuntimeError& error) {
    return {std::nullopt, error.fault()};
  }
}

// A number by its grammar: sign, digits with a point, exponent.
bool IsNumber(std::string_view text) {
  std::size_t at = 0;
  const auto digits = [&] {
    std::size_t count = 0;
    for (; at < text.size() && std::strchr("0123456789", text[at]) != nullptr && text[at] != '\0'; ++at)
      ++count;
    return count;
  };
  const auto one_of = [&](char a, char b) {
    const bool there = at < text.size() && (text[at] == a || text[at] == b);
    at += there ? 1 : 0;
    return there;
  };
  one_of('+', '-');
  std::size_t count = digits();
  if (one_of('.', '.')) count += digits();
  if (count == 0) return false;
  if (one_of('e', 'E')) {
    one_of('+', '-');
    if (digits() == 0) return false;
  }
  return at == text.size();
}

void CheckReading(const std::string& text) {
  const std::string body(Trim(text));
  const auto number = OutcomeOf([&] { return NumberOf(text); });
  if (!IsNumber(body)) {
    Require(!number.fault && !*number.value, "what is no number is none");
    return;
  }
  const double expected = std::strtod(body.c_str(), nullptr);
  if (std::isinf(expected)) {
    Require(number.fault == Fault::kOverflow, "a number beyond all ranges is a fault");
    return;
  }
  Require(number.value && *number.value, "a number is read");
  const double read = **number.value;
  // Numbers too small for all digits of a double may come as zero.
  const bool tiny = std::fabs(expected) < 1e-300 && read == 0.0;
  Require(read == expected || tiny, "a number is what the C library says");
  const auto whole = OutcomeOf([&] { return Int32Of(text); });
  const bool fits = std::fabs(std::nearbyint(read)) < 2147483648.0 || std::nearbyint(read) == -2147483648.0;
  Require(whole.value.has_value() == fits, "what fits 32 bits is rounded, the rest a fault");
  if (fits) Require(*whole.value == std::nearbyint(read), "rounded to nearest, ties to even");
  const auto narrow = OutcomeOf([&] { return Int16Of(text); });
  Require(narrow.value.has_value() == (fits && *whole.value >= -32768 && *whole.value <= 32767) &&
              (!narrow.value || *narrow.value == *whole.value),
          "16 bits are what fits of 32");
}

// The whole-number arithmetic of packets against the number formats.
void CheckPacketNumbers(const std::string& text) {
  const auto slow_watts = [&]() -> std::optional<std::int32_t> {
    const auto number = NumberOf(text);
    if (!number) return std::nullopt;
    return RoundToInt32(RoundedBy(kWattsFormat, *number));
  };
  const auto slow_ratio = [&]() -> std::optional<float> {
    const auto number = NumberOf(text);
    if (!number) return std::nullopt;
    return static_cast<float>(RoundedBy(kVSWRFormat, *number));
  };
  Require(OutcomeOf([&] { return WattsOf(text); }) == OutcomeOf(slow_watts), "watts both ways are the same");
  Require(OutcomeOf([&] { return VSWROf(text); }) == OutcomeOf(slow_ratio), "ratios both ways are the same");
}

struct Written {
  const NumberFormat* format;
  std::size_t least_whole;
  std::size_t least_decimals;
  std::size_t most_decimals;
};
constexpr std::array<Written, 8> kFormats{{{&kWattsFormat, 1, 0, 0},
                                           {&kHalfWattsFormat, 1, 1, 1},
                                           {&kAutoHalfFormat, 1, 0, 0},
                                           {&kVSWRFormat, 1, 2, 2},
                                           {&kDipVSWRFormat, 0, 2, 2},
                                           {&kThresholdFormat, 1, 1, 1},
                                           {&kTwoDigitFormat, 2, 0, 0},
                                           {&kSecondsFormat, 2, 3, 3}}};

void CheckShape(const Written& format, std::string_view text, double value) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const auto point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  const std::string_view decimals = point == std::string_view::npos ? "" : text.substr(point + 1);
  const auto all_digits = [](std::string_view part) {
    return part.find_first_not_of("0123456789") == std::string_view::npos;
  };
  Require(all_digits(whole) && all_digits(decimals), "digits only");
  Require((point != std::string_view::npos) == (format.most_decimals > 0), "a point where decimals are");
  Require(whole.size() >= format.least_whole && decimals.size() >= format.least_decimals &&
              decimals.size() <= format.most_decimals,
          "as many digits as the picture has");
  Require(whole.size() <= format.least_whole || whole[0] != '0', "no zero in front");
  const bool zero = text.find_first_not_of("0.") == std::string_view::npos;
  Require(!negative || (value < 0.0 && !zero), "a sign only before what is less than nothing");
}

void CheckWriting(double value) {
  for (const Written& format : kFormats) {
    const auto text = OutcomeOf([&] { return format.format->Write(value); });
    const double unit = std::pow(10.0, -static_cast<double>(format.most_decimals));
    if (!text.value) {
      Require(!std::isfinite(value) || std::fabs(value) / unit >= 8.9e18, "every ordinary number is written");
      continue;
    }
    CheckShape(format, *text.value, value);
    const double back = std::strtod(text.value->c_str(), nullptr);
    Require(std::fabs(back - value) <= unit * 0.5 + std::fabs(value) * 1e-14,
            "the nearest with these digits");
    if (std::fabs(value) < 1e12)
      Require(format.format->Write(back) == *text.value, "what was written stays as it is");
    Require(RoundedBy(*format.format, value) == back, "read back as it was written");
  }
}

void CheckSwitch(const std::string& text) {
  const auto on = OutcomeOf([&] { return SwitchOf(text); });
  const std::string_view word = Trim(text);
  const auto number = OutcomeOf([&] { return NumberOf(word); });
  if (EqualNoCase(word, "true") || EqualNoCase(word, "false")) {
    Require(on.value == EqualNoCase(word, "true"), "a word is its switch");
  } else {
    Require(on.value.has_value() == (number.value && *number.value), "a number or a word");
  }
}

void CheckText(const std::string& text) {
  const auto pieces = Split(text, ',');
  std::string joined;
  for (const auto& piece : pieces)
    joined.append(joined.empty() && &piece == &pieces.front() ? "" : ",").append(piece);
  Require(joined == text, "pieces and separators are the whole");
  Require(RemoveFirst(text, 'C').size() + (text.find('C') != std::string::npos ? 1 : 0) == text.size(),
          "one letter less");
  const std::string_view middle = Trim(text);
  Require(middle.empty() || (middle.front() != ' ' && middle.back() != ' '), "no blanks at the ends");
  const std::size_t half = text.size() / 2;
  Require(ContainsNoCase(text, std::string_view(text).substr(half / 2, half)), "a part is in the whole");
}

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane::fuzz;
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckReading(text);
  CheckPacketNumbers(text);
  CheckSwitch(text);
  CheckText(text);
  double value = 0.0;
  std::memcpy(&value, data, std::min(size, sizeof value));
  CheckWriting(value);
  if (size < 40) CheckWriting(std::strtod(text.c_str(), nullptr));
  return 0;
}
