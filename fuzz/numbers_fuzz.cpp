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
#include <regex>
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

bool IsNumber(const std::string& text) {
  static const std::regex number("[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?");
  return std::regex_match(text, number);
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

constexpr std::array<std::pair<const NumberFormat*, int>, 8> kFormats{{{&kWattsFormat, 0},
                                                                       {&kHalfWattsFormat, 1},
                                                                       {&kAutoHalfFormat, 0},
                                                                       {&kVSWRFormat, 2},
                                                                       {&kDipVSWRFormat, 2},
                                                                       {&kThresholdFormat, 1},
                                                                       {&kTwoDigitFormat, 0},
                                                                       {&kSecondsFormat, 3}}};

void CheckWriting(double value) {
  for (const auto& [format, decimals] : kFormats) {
    const auto text = OutcomeOf([&, format = format] { return format->Write(value); });
    const double unit = std::pow(10.0, -decimals);
    if (!text.value) {
      Require(!std::isfinite(value) || std::fabs(value) / unit >= 8.9e18, "every ordinary number is written");
      continue;
    }
    const auto point = text.value->find('.');
    Require(decimals == 0 ? point == std::string::npos
                          : text.value->size() - point - 1 == static_cast<std::size_t>(decimals),
            "as many digits behind the point as the picture has");
    const double back = std::strtod(text.value->c_str(), nullptr);
    Require(std::fabs(back - value) <= unit * 0.5 + std::fabs(value) * 1e-14,
            "the nearest with these digits");
    if (std::fabs(value) < 1e12)
      Require(format->Write(back) == *text.value, "what was written stays as it is");
    Require(RoundedBy(*format, value) == back, "read back as it was written");
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

}  // namespace
}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane::fuzz;
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckReading(text);
  CheckPacketNumbers(text);
  CheckSwitch(text);
  double value = 0.0;
  std::memcpy(&value, data, std::min(size, sizeof value));
  CheckWriting(value);
  if (size < 40) CheckWriting(std::strtod(text.c_str(), nullptr));
  return 0;
}
