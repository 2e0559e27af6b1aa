#include "simulator/settings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvane::sim {
namespace {

constexpr std::size_t kCallTextLimit = 16;
constexpr char kSlashedZero = '\xD8';  // Windows-1252: how a call sign's zero is sent and shown

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// A decimal whole number of at most five digits, an optional minus and nothing else: the meter's parser is
// a strict one, a stray blank or plus is refused.
std::optional<int> ReadNumber(std::string_view text) {
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > 5 || !std::all_of(text.begin(), text.end(), IsDigit)) return std::nullopt;
  int value = 0;
  for (const char digit : text)
    value = value * 10 + (digit - '0');
  return negative ? -value : value;
}

std::string JoinNumbers(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) {
    if (!text.empty()) text += ',';
    text += std::to_string(number);
  }
  return text;
}

bool CanShow(char character) {
  return (character >= ' ' && character <= '~') || character == kSlashedZero;
}

}  // namespace

// A setting that is one whole number. The trims take their limits from the model, see SetNumeric.
struct SettingsBank::Numeric {
  char Letter;
  int MeterSettings::*Field;
  int Low;
  int High;
};

std::string_view VerdictName(Verdict verdict) {
  switch (verdict) {
    case Verdict::kAnswered:
      return "answered";
    case Verdict::kAccepted:
      return "accepted";
    case Verdict::kBadCrc:
      return "bad-crc";
    case Verdict::kMalformed:
      return "malformed";
    case Verdict::kUnknown:
      return "unknown";
    case Verdict::kOutOfRange:
      return "out-of-range";
    case Verdict::kNoise:
      return "noise";
  }
  return "?";
}

int VSWRThreshold(int setting) {
  return setting < 1 ? 0 : 100 + 50 * std::min(setting, 4);
}

SettingsBank::SettingsBank(MeterFacts facts, MeterSettings settings)
    : facts_(std::move(facts)), settings_(std::move(settings)) {}

const SettingsBank::Numeric* SettingsBank::FindNumeric(char letter) const {
  static constexpr std::array<Numeric, 9> kNumerics = {{
      {'T', &MeterSettings::ForwardTrim, 0, 0},
      {'t', &MeterSettings::ReflectedTrim, 0, 0},
      {'P', &MeterSettings::RelayPolarity, 0, 1},
      {'S', &MeterSettings::ShowMessage, 0, 1},
      {'b', &MeterSettings::RangeScale, 0, 3},
      {'I', &MeterSettings::Intensity, 0, 4},
      {'l', &MeterSettings::LowPowerAlarm, 0, 7},
      {'V', &MeterSettings::VSWRAlarm, 0, 4},
      {'M', &MeterSettings::Mode, 0, 3},
  }};
  const auto found = std::find_if(kNumerics.begin(), kNumerics.end(),
                                  [letter](const Numeric& numeric) { return numeric.Letter == letter; });
  return found == kNumerics.end() ? nullptr : &*found;
}

std::optional<std::string> SettingsBank::Answer(char letter) const {
  const std::string reply(1, letter);
  if (const Numeric* numeric = FindNumeric(letter)) return reply + std::to_string(settings_.*numeric->Field);
  switch (letter) {
    case 'B':
      return reply + JoinNumbers(facts_.Ranges);
    case 'L':
      return reply + JoinNumbers(facts_.LowPowerWatts);
    case 'U':
      return reply + std::to_string(facts_.TrimLow) + "," + std::to_string(facts_.TrimHigh);
    case 'W':
      return reply + facts_.CouplerText;
    case 'w':
      return reply + facts_.FrequencyText;
    case 'C':
      return reply + settings_.CallText;
    case 'v':
      return reply + facts_.Version;
    default:
      return std::nullopt;
  }
}

Verdict SettingsBank::Set(std::string_view command) {
  if (command.empty()) return Verdict::kUnknown;
  // The mode has two spellings on this meter: "M2", like every other setting, and the older "2M".
  if (command.size() == 2 && command[1] == 'M' && IsDigit(command[0])) {
    return SetNumeric('M', command.substr(0, 1));
  }
  if (command.front() == 'C') return SetCallText(command.substr(1));
  return SetNumeric(command.front(), command.substr(1));
}

Verdict SettingsBank::SetNumeric(char letter, std::string_view digits) {
  const Numeric* numeric = FindNumeric(letter);
  if (numeric == nullptr) return Verdict::kUnknown;
  const std::optional<int> value = ReadNumber(digits);
  if (!value) return digits.empty() ? Verdict::kUnknown : Verdict::kOutOfRange;
  const bool trim = letter == 'T' || letter == 't';
  const int low = trim ? facts_.TrimLow : numeric->Low;
  const int high = trim ? facts_.TrimHigh : numeric->High;
  if (*value < low || *value > high) return Verdict::kOutOfRange;
  // Intensities are set as 0..3 for the levels 1 to 4, but reported within 1..4, where the desktop program
  // reads 3 and 4 as its top level and 1 and 2 as the levels that it set with these numbers. So a level set
  // with 1, 2 or 3 is seen again only when the very number set is reported. For the lowest level, set with
  // 0, there is no such report: 0 is out of the reported range and would be read as full brightness. The
  // nearest the meter can say is 1.
  settings_.*numeric->Field = letter == 'I' ? std::max(*value, 1) : *value;
  return Verdict::kAccepted;
}

Verdict SettingsBank::SetCallText(std::string_view text) {
  if (text.size() > kCallTextLimit || !std::all_of(text.begin(), text.end(), CanShow)) {
    return Verdict::kOutOfRange;
  }
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  settings_.CallText = std::string(text);
  return Verdict::kAccepted;
}

}  // namespace orvane::sim
