#include "settings/setting_rows.h"

#include "base/numeric_text.h"
#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

namespace orvane {
namespace {

constexpr std::string_view kMeter = "METER-SETTINGS";
constexpr std::string_view kUser = "USER-SETTINGS";
constexpr std::size_t kLongestValue = 254;

constexpr std::array kMeterRows{
    SettingRow{kMeter, "COMM-PORT", &UserSettings::CommPort},
    SettingRow{kMeter, "BAUD-RATE", &UserSettings::BaudRate},
};

constexpr std::array kUserRows{
    SettingRow{kUser, "FORM-ON-TOP", &UserSettings::FormOnTop},
    // Kept among the port's settings, read and written with the user's.
    SettingRow{kMeter, "PKTNOTIFY", &UserSettings::PktNotify},
    SettingRow{kUser, "FORM-TOP", &UserSettings::FormTop},
    SettingRow{kUser, "FORM-LEFT", &UserSettings::FormLeft},
    SettingRow{kUser, "FORM-REGION", &UserSettings::FormRegion},
    SettingRow{kUser, "F-PWR-INDEX", &UserSettings::FPwrIndex},
    SettingRow{kUser, "R-PWR-INDEX", &UserSettings::RPwrIndex},
    SettingRow{kUser, "CLIENT-APP", &UserSettings::ClientApp},
    SettingRow{kUser, "CLIENT-MSG-ID", &UserSettings::ClientMsgId},
};

bool IsControl(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F;
}

std::string WithoutControls(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(), IsControl), text.end());
  return text;
}

std::uint8_t ByteOf(std::string_view text) {
  const std::int16_t number = Int16Of(text);
  if (number < 0 || number > std::numeric_limits<std::uint8_t>::max()) {
    throw RuntimeError(Fault::kOverflow, "reading \"" + std::string(text) + "\" as a byte");
  }
  return static_cast<std::uint8_t>(number);
}

template <typename Value>
Value ValueOf(std::string_view text) {
  if constexpr (std::is_same_v<Value, std::string>) {
    return std::string(text);
  } else if constexpr (std::is_same_v<Value, bool>) {
    return SwitchOf(text);
  } else if constexpr (std::is_same_v<Value, std::uint8_t>) {
    return ByteOf(text);
  } else if constexpr (std::is_same_v<Value, std::int16_t>) {
    return Int16Of(text);
  } else {
    return Int32Of(text);
  }
}

template <typename Value>
std::string TextOf(const Value& value) {
  if constexpr (std::is_same_v<Value, std::string>) {
    return WithoutControls(value);
  } else if constexpr (std::is_same_v<Value, bool>) {
    return SwitchText(value);
  } else {
    return std::to_string(value);
  }
}

}  // namespace

std::span<const SettingRow> MeterSettingRows() {
  return kMeterRows;
}
std::span<const SettingRow> UserSettingRows() {
  return kUserRows;
}

std::string SettingText(const SettingRow& row, const UserSettings& settings) {
  return std::visit([&](auto member) { return TextOf(settings.*member); }, row.member);
}

std::string DefaultText(const SettingRow& row) {
  return SettingText(row, UserSettings{});
}

void SetFromText(const SettingRow& row, std::string_view text, UserSettings& settings) {
  std::visit(
      [&](auto member) {
        using Value = std::remove_reference_t<decltype(settings.*member)>;
        settings.*member = ValueOf<Value>(text);
      },
      row.member);
}

bool CanKeep(std::string_view text) {
  const bool quoted =
      text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
  return !quoted && text.size() <= kLongestValue && Trim(text) == text &&
         std::none_of(text.begin(), text.end(), IsControl);
}

}  // namespace orvane
