#include "window/menus.h"

#include "tests/support/face.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

/// A menu as a person sees it: a line an entry, what is checked with a star, what lies below indented.
std::string Seen(const std::vector<MenuItem>& items, const std::string& indent = "") {
  std::string seen;
  for (const MenuItem& item : items) {
    seen += indent + (item.separator ? "----" : item.text) + (item.checked ? " *" : "");
    if (item.submenu.empty()) seen += " " + std::to_string(item.id);
    seen += "\n" + Seen(item.submenu, indent + "  ");
  }
  return seen;
}

MeterLists ListsOf(const MeterState& meter) {
  MeterLists lists;
  lists.Build(meter);
  return lists;
}

TEST(Menus, MainMenuShowsWhatTheMeterOffersAndHas) {
  MeterState meter;
  meter.ParamBText = "50,250,1250,100,500,2500,200,1000,3000,400,2000,3000";
  meter.ParamLText = "0,1,2,5,10,25,50,100";
  meter.RangeMaxNeg = -2;
  meter.RangeMinNeg = meter.ParamT = 2;
  meter.ParamB2 = 1;
  meter.ParamL2 = 7;
  meter.ParamV = 3;
  meter.ParamT2 = -1;
  EXPECT_EQ(Seen(menus::MainMenu(meter, ListsOf(meter))),
            "Select Range\n"
            "  50/250/1250 2000\n  100/500/2500 * 2001\n  200/1000/3000 2002\n  400/2000/3000 2003\n"
            "Set Lo Pwr Alarm\n"
            "  0 Off 3000\n  1 Watts 3001\n  2 Watts 3002\n  5 Watts 3003\n"
            "  10 Watts 3004\n  25 Watts 3005\n  50 Watts 3006\n  100 Watts * 3007\n"
            "Set VSWR Alarm\n"
            "  Off 4000\n  1.5:1 4001\n  2.0:1 4002\n  2.5:1 * 4003\n  3.0:1 4004\n"
            "Set Trim Values\n"
            "  Forward\n"
            "    Positive *\n      + 1% 6051\n      + 2% * 6052\n"
            "    Zero Trim 6050\n"
            "    Negative\n      - 1% 6049\n      - 2% 6048\n"
            "  Reflected\n"
            "    Positive\n      + 1% 7051\n      + 2% 7052\n"
            "    Zero Trim 7050\n"
            "    Negative *\n      - 1% * 7049\n      - 2% 7048\n");
}

TEST(Menus, OddMeterDataLeavesOutWhatIsMissing) {
  MeterState meter;
  EXPECT_EQ(Seen(menus::MainMenu(meter, ListsOf(meter)).at(3).submenu.at(0).submenu),
            "Positive 0\nZero Trim * 6050\nNegative 0\n");
  meter.ParamBText = "50,250,1250,100,500";
  meter.ParamLText = "0,1,2,5,10,25,50,100,200,400";
  meter.RangeMaxNeg = -98;
  meter.RangeMinNeg = 98;
  const auto menu = menus::MainMenu(meter, ListsOf(meter));
  EXPECT_EQ(menu[0].submenu.size(), 1U);
  EXPECT_EQ(menu[1].submenu.size(), 8U);
  EXPECT_EQ(menu[3].submenu[0].submenu[0].submenu.size(), 20U) << "ids reach no further";
}

TEST(Menus, TheOtherMenusAreAlwaysTheSame) {
  EXPECT_EQ(Seen(menus::WindowMenu()), "Close 1000\n---- 1001\nMinimize 1002\nRestore 1003\n");
  EXPECT_EQ(
      Seen(menus::SettingsMenu()),
      "Meter Settings 1001\nProgram Settings 1002\n---- 1003\nStart Data Flow 1004\nStop Data Flow 1005\n");
  EXPECT_EQ(Seen(menus::HelpMenu()), "Help Contents 1001\nAbout Orvane Lite 1002\n");
}

TEST(Menus, IdsStandForSettings) {
  using menus::Setting;
  using menus::SettingOf;
  const std::pair<int, Setting> rows[] = {{2000, {'b', 0}}, {2003, {'b', 3}},   {3007, {'l', 7}},
                                          {4004, {'V', 4}}, {6030, {'T', -20}}, {6070, {'T', 20}},
                                          {7070, {'t', 20}}};
  for (const auto& [id, setting] : rows)
    EXPECT_EQ(SettingOf(id), setting) << id;
  for (const int none : {0, 1000, 2004, 3008, 4005, 6029, 6071, 7029, 7071}) {
    EXPECT_EQ(SettingOf(none), std::nullopt) << none;
  }
}

using MenusTest = StreamingTest;

TEST_F(MenusTest, AChoiceSendsItsCommandAndItsQueryAfterTheMenuIsGone) {
  program.RunFor(500);
  const std::size_t before = program.Commands().size();
  const std::int64_t opened = program.time.Now();
  program.desktop.choices = {6047};
  program.orvane->Meter().pbxModePanel->MouseUp({MouseAction::kUp, kRightButton, {}});
  program.RunFor(1000);
  const auto commands = program.Commands();
  ASSERT_EQ(commands.size(), before + 2);
  EXPECT_EQ(commands[before] + commands[before + 1], "T-3T?");
  EXPECT_GT(program.port.Writes()[before].at - opened, menus::kMainMenuParts * 50);
  EXPECT_EQ(program.orvane->Link().State().ParamT, -3);
}

TEST_F(MenusTest, DismissedMenusSendNothing) {
  const std::size_t before = program.Commands().size();
  program.desktop.Main()->Click(kRightButton);
  EXPECT_TRUE(program.desktop.Main()->Press(Key::kMenu));
  for (const char* button : {"Window", "Settings", "Help"})
    program.desktop.Main()->Find(button)->Click();
  program.RunFor(1000);
  EXPECT_EQ(program.desktop.menus.size(), 5U);
  EXPECT_EQ(program.Commands().size(), before);
  EXPECT_TRUE(program.desktop.Main()->Press(Key::kF1));
  ASSERT_EQ(program.shell.launches.size(), 1U);
  EXPECT_TRUE(program.shell.launches[0].target.ends_with("OrvaneLite.html"));
  EXPECT_FALSE(program.desktop.Main()->Press(Key::kEscape));
}

TEST_F(MenusTest, WindowMenuClosesAfterHalfASecond) {
  program.desktop.choices = {menus::kClose};
  const std::int64_t before = program.time.Now();
  program.time.Post(EventKind::kInput, 0, [&] { program.desktop.Main()->Find("Window")->Click(); });
  EXPECT_FALSE(program.RunFor(5000));
  EXPECT_GT(program.time.Now() - before, 500);
  EXPECT_EQ(program.Commands().back(), "D0");
}

TEST_F(MenusTest, DataFlowStopsAndStarts) {
  program.desktop.choices = {menus::kStopDataFlow, menus::kStartDataFlow};
  std::size_t before = 0;
  for (const bool streams : {false, true}) {
    before = program.port.Writes().size();
    program.desktop.Main()->Find("Settings")->Click();
    program.RunFor(100);
    EXPECT_EQ(program.line.Meter.Streaming(), streams);
  }
  ASSERT_EQ(program.port.Writes().size(), before + 2);
  EXPECT_GT(program.port.Writes()[before + 1].at - program.port.Writes()[before].at, 1500);
}

// The click comes at the very moment in which a line is being shown; menu and box stay open for five seconds.
TEST_F(MenusTest, ReadingsGoOnWhileAMenuOrABoxIsOpen) {
  program.desktop.menu_ms = program.desktop.box_ms = 5000;
  for (const bool menu : {true, false}) {
    program.line.Meter.SetPower(100, 0);
    program.RunFor(5000);
    std::string shown;
    const std::uint64_t packets = program.line.Meter.Log().PacketTotal;
    program.time.Post(EventKind::kInput, 0, [&] {
      program.time.Post(EventKind::kTimer, 3000, [&] { shown = program.Fwd(); });
      program.line.Meter.SetPower(700, 0);
      program.line.Pump();
      if (menu) {
        program.desktop.Main()->Click(kRightButton);
      } else {
        program.desktop.ShowMessageBox("any", "any", BoxStyle::kPlain);
      }
    });
    program.RunFor(6000);
    EXPECT_EQ(program.desktop.menus.size() + program.desktop.boxes.size(), menu ? 1U : 2U);
    EXPECT_GT(program.line.Meter.Log().PacketTotal, packets + 20);
    EXPECT_EQ(shown, "700");
  }
}

}  // namespace
}  // namespace orvane
