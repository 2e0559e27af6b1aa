#include "window/menus.h"

#include "base/number_format.h"

#include <array>
#include <string>

namespace orvane::menus {
namespace {

MenuItem Line(int id, std::string text, bool checked = false) {
  return {id, std::move(text), checked, false, {}};
}
MenuItem Separator(int id) {
  return {id, "/separator/", false, true, {}};
}
MenuItem Opener(std::string text, std::vector<MenuItem> submenu, bool checked = false) {
  return {0, std::move(text), checked, false, std::move(submenu)};
}

std::vector<MenuItem> RangeMenu(const MeterState& meter, const MeterLists& lists) {
  std::vector<MenuItem> menu;
  for (const MeterLists::Item& item : lists.RangeItems) {
    menu.push_back(Line(kRange + item.Value, item.Text, item.Value == meter.MeterRange()));
  }
  return menu;
}

std::vector<MenuItem> LowPowerMenu(const MeterState& meter, const MeterLists& lists) {
  constexpr std::size_t kMost = 8;
  std::vector<MenuItem> menu;
  for (std::size_t i = 0; i < lists.LowPowerWatts.size() && i < kMost; ++i) {
    const int index = static_cast<int>(i);
    menu.push_back(Line(kLowPowerAlarm + index, lists.LowPowerWatts[i] + (i == 0 ? " Off" : " Watts"),
                        index == meter.ParamL2));
  }
  return menu;
}

std::vector<MenuItem> VSWRMenu(const MeterState& meter) {
  std::vector<MenuItem> menu{Line(kVSWRAlarm, "Off", meter.ParamV == 0)};
  int index = 0;
  for (const float threshold : kVSWRThresholds) {
    ++index;
    menu.push_back(Line(kVSWRAlarm + index, kThresholdFormat.Write(static_cast<double>(threshold)) + ":1",
                        index == meter.ParamV));
  }
  return menu;
}

std::vector<MenuItem> TrimList(int centre, int sign, int limit, int trim) {
  std::vector<MenuItem> menu;
  for (int percent = 1; percent <= limit; ++percent) {
    const int value = sign * percent;
    menu.push_back(
        Line(centre + value, (sign > 0 ? "+ " : "- ") + std::to_string(percent) + "%", value == trim));
  }
  return menu;
}

std::vector<MenuItem> TrimMenu(int centre, int limit, int trim) {
  return {Opener("Positive", TrimList(centre, 1, limit, trim), trim >= 1),
          Line(centre, "Zero Trim", trim == 0),
          Opener("Negative", TrimList(centre, -1, limit, trim), trim < 0)};
}

struct IdRange {
  int first;
  int last;
  int zero;
  char letter;
};
constexpr std::array<IdRange, 5> kSettings{
    {{kRange, kRange + 3, kRange, 'b'},
     {kLowPowerAlarm, kLowPowerAlarm + 7, kLowPowerAlarm, 'l'},
     {kVSWRAlarm, kVSWRAlarm + 4, kVSWRAlarm, 'V'},
     {kForwardTrim - kMostTrim, kForwardTrim + kMostTrim, kForwardTrim, 'T'},
     {kReflectedTrim - kMostTrim, kReflectedTrim + kMostTrim, kReflectedTrim, 't'}}};

}  // namespace

std::vector<MenuItem> WindowMenu() {
  return {Line(kClose, "Close"), Separator(1001), Line(kMinimize, "Minimize"), Line(kRestore, "Restore")};
}

std::vector<MenuItem> SettingsMenu() {
  return {Line(kMeterSettings, "Meter Settings"), Line(kProgramSettings, "Program Settings"), Separator(1003),
          Line(kStartDataFlow, "Start Data Flow"), Line(kStopDataFlow, "Stop Data Flow")};
}

std::vector<MenuItem> HelpMenu() {
  return {Line(kHelpContents, "Help Contents"), Line(kAbout, "About Orvane Lite")};
}

std::vector<MenuItem> MainMenu(const MeterState& meter, const MeterLists& lists) {
  const int limit = lists.TrimMenuLimit;
  return {Opener("Select Range", RangeMenu(meter, lists)),
          Opener("Set Lo Pwr Alarm", LowPowerMenu(meter, lists)), Opener("Set VSWR Alarm", VSWRMenu(meter)),
          Opener("Set Trim Values", {Opener("Forward", TrimMenu(kForwardTrim, limit, meter.ParamT)),
                                     Opener("Reflected", TrimMenu(kReflectedTrim, limit, meter.ParamT2))})};
}

std::optional<Setting> SettingOf(int id) {
  for (const IdRange& range : kSettings) {
    if (id >= range.first && id <= range.last) {
      return Setting{range.letter, static_cast<std::int16_t>(id - range.zero)};
    }
  }
  return std::nullopt;
}

}  // namespace orvane::menus
