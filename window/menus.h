#pragma once

#include "link/meter_lists.h"
#include "link/meter_state.h"
#include "platform/window_system.h"

#include <optional>
#include <vector>

namespace orvane::menus {

// The popup menus as data. They are built afresh each time they open, so that their check marks are the
// meter's.

// Window menu
inline constexpr int kClose = 1000;
inline constexpr int kMinimize = 1002;
inline constexpr int kRestore = 1003;
// Settings menu
inline constexpr int kMeterSettings = 1001;
inline constexpr int kProgramSettings = 1002;
inline constexpr int kStartDataFlow = 1004;
inline constexpr int kStopDataFlow = 1005;
// Help menu
inline constexpr int kHelpContents = 1001;
inline constexpr int kAbout = 1002;
// Main menu: the first line of each list; trims count from their centre
inline constexpr int kRange = 2000;
inline constexpr int kLowPowerAlarm = 3000;
inline constexpr int kVSWRAlarm = 4000;
inline constexpr int kForwardTrim = 6050;
inline constexpr int kReflectedTrim = 7050;
inline constexpr int kMostTrim = 20;  ///< percent, to both sides

std::vector<MenuItem> WindowMenu();
std::vector<MenuItem> SettingsMenu();
std::vector<MenuItem> HelpMenu();
/// Range, alarms and trims, as the meter offers and has them.
std::vector<MenuItem> MainMenu(const MeterState& meter, const MeterLists& lists);
/// Menus that the main menu is made of: its own, and one below each line that opens one.
inline constexpr int kMainMenuParts = 11;

/// The meter's setting that a line of the main menu stands for.
struct Setting {
  char letter;
  std::int16_t value;
  bool operator==(const Setting&) const = default;
};
/// Nothing for ids that stand for none, 0 included.
std::optional<Setting> SettingOf(int id);

}  // namespace orvane::menus
