#pragma once

#include "settings/user_settings.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace orvane {

/// Where a setting lives in the record; the alternative that is held is the setting's kind.
using SettingMember =
    std::variant<std::string UserSettings::*, bool UserSettings::*, std::uint8_t UserSettings::*,
                 std::int16_t UserSettings::*, std::int32_t UserSettings::*>;

/// One setting of the file. The rows drive loading and saving.
struct SettingRow {
  std::string_view section;
  std::string_view key;
  SettingMember member;
};

/// Port and speed, kept when they are applied or found.
std::span<const SettingRow> MeterSettingRows();
/// All others, in the order in which they are read and written.
std::span<const SettingRow> UserSettingRows();

/// The setting as the file has it: decimal digits, "True" or "False", or the text itself without its control
/// characters, which would break the file's lines.
std::string SettingText(const SettingRow& row, const UserSettings& settings);
/// The text that stands for a missing key.
std::string DefaultText(const SettingRow& row);
/// Takes the file's text into the record.
/// @throws RuntimeError kTypeMismatch or kOverflow when it cannot be converted; the record is as it was then
void SetFromText(const SettingRow& row, std::string_view text, UserSettings& settings);

/// True when the file gives this text back as it is. It cannot keep control characters, blanks at an end, a
/// pair of quotes around the whole, or more than 254 characters.
bool CanKeep(std::string_view text);

}  // namespace orvane
