#include "tests/settings/user_settings_fixture.h"

#include <map>

namespace orvane {
namespace {

TEST_F(UserSettingsFile, TheFirstRunHasTheDefaultsAndMakesTheFile) {
  Run run(*this);
  EXPECT_EQ(FileBytes(path_), "");
  EXPECT_TRUE(files_.IsNormalFile(path_));
  EXPECT_EQ(run.shown_port, "2");
  EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kNone);
  EXPECT_EQ(run.kept.TroubleText(), "");
  const UserSettings& settings = run.kept.Settings();
  EXPECT_EQ(settings.CommPort + settings.BaudRate + settings.ClientApp, "238400OVClient");
  EXPECT_FALSE(settings.PktNotify || settings.FormOnTop);
  EXPECT_EQ(settings.FormTop + settings.FormLeft, 200);
  EXPECT_EQ(settings.FormRegion, 1);
  EXPECT_EQ(settings.FPwrIndex + settings.RPwrIndex, 16);
  EXPECT_EQ(settings.ClientMsgId, 14300);
}

TEST_F(UserSettingsFile, ShutdownWritesTheNineKeysAndOnlyThem) {
  Run run(*this);
  run.kept.SaveUserSettings();
  EXPECT_EQ(FileBytes(path_),
            "[USER-SETTINGS]\r\nFORM-ON-TOP=False\r\nFORM-TOP=100\r\nFORM-LEFT=100\r\nFORM-REGION=1\r\n"
            "F-PWR-INDEX=8\r\nR-PWR-INDEX=8\r\nCLIENT-APP=OVClient\r\nCLIENT-MSG-ID=14300\r\n"
            "[METER-SETTINGS]\r\nPKTNOTIFY=False\r\n");
  run.kept.SaveMeterSettings();
  EXPECT_TRUE(FileBytes(path_).ends_with(
      "[METER-SETTINGS]\r\nPKTNOTIFY=False\r\nCOMM-PORT=2\r\nBAUD-RATE=38400\r\n"));
}

TEST_F(UserSettingsFile, ASaveGivesBackTheSameRecord) {
  for (const auto rows : {MeterSettingRows(), UserSettingRows()}) {
    for (const SettingRow& row : rows) {
      EXPECT_NE(SettingText(row, OtherSettings()), DefaultText(row)) << row.key << " would not be tested";
    }
  }
  SaveOther();
  Run run(*this);
  EXPECT_EQ(run.kept.Settings(), OtherSettings());
  EXPECT_EQ(run.shown_port, "12");
}

TEST_F(UserSettingsFile, EveryRowCanBeToldToAPerson) {
  const std::map<std::string_view, std::string_view> kinds{
      {"FORM-ON-TOP", "True or False"},
      {"PKTNOTIFY", "True or False"},
      {"FORM-TOP", "-2147483648 to 2147483647"},
      {"FORM-LEFT", "-2147483648 to 2147483647"},
      {"FORM-REGION", "0 to 255"},
      {"F-PWR-INDEX", "-32768 to 32767"},
      {"R-PWR-INDEX", "-32768 to 32767"},
      {"CLIENT-APP", "text"},
      {"CLIENT-MSG-ID", "-2147483648 to 2147483647"},
  };
  ASSERT_EQ(UserSettingRows().size(), kinds.size());
  for (const SettingRow& row : UserSettingRows()) {
    EXPECT_EQ(KindText(row), kinds.at(row.key)) << row.key;
    EXPECT_FALSE(row.meaning.empty()) << row.key;
  }
}

TEST_F(UserSettingsFile, WhatItDoesNotKnowStays) {
  PutFile(path_, "; mine\r\n[METER-SETTINGS]\r\nCALL-MSG=QR1ABC\r\nCOMM-PORT=4\r\n\r\n[OTHER]\r\nx=1\r\n");
  SaveOther();
  const std::string text = FileBytes(path_);
  EXPECT_TRUE(text.starts_with("; mine\r\n[METER-SETTINGS]\r\nCALL-MSG=QR1ABC\r\nCOMM-PORT=12\r\n")) << text;
  EXPECT_NE(text.find("\r\n\r\n[OTHER]\r\nx=1\r\n"), std::string::npos) << text;
  EXPECT_EQ(Loaded(), OtherSettings());
}

TEST_F(UserSettingsFile, ConvertsWhatAPersonMayHaveTyped) {
  struct Row {
    std::string line;  // in the file
    bool usable;
    std::string text;  // as it is kept then
  };
  const Row rows[] = {
      {"FORM-TOP= 7 ", true, "7"},
      {"FORM-TOP=2.5", true, "2"},
      {"FORM-TOP=3.5", true, "4"},
      {"FORM-TOP=1E3", true, "1000"},
      {"FORM-TOP=2147483647", true, "2147483647"},
      {"FORM-TOP=2147483648", false, "100"},
      {"FORM-TOP=abc", false, "100"},
      {"FORM-TOP=", false, "100"},
      {"FORM-LEFT=0x10", false, "100"},
      {"FORM-REGION=255", true, "255"},
      {"FORM-REGION=256", false, "1"},
      {"FORM-REGION=-1", false, "1"},
      {"FORM-REGION=70000", false, "1"},
      {"F-PWR-INDEX=-5", true, "-5"},
      {"F-PWR-INDEX=32768", false, "8"},
      {"R-PWR-INDEX=one", false, "8"},
      {"CLIENT-MSG-ID=-1", true, "-1"},
      {"CLIENT-MSG-ID=1E99", false, "14300"},
      {"FORM-ON-TOP=tRUE", true, "True"},
      {"FORM-ON-TOP=-1", true, "True"},
      {"FORM-ON-TOP=0.5", true, "True"},
      {"FORM-ON-TOP=0", true, "False"},
      {"FORM-ON-TOP=yes", false, "False"},
      {"CLIENT-APP=", true, ""},
      {"CLIENT-APP=\"a b\"", true, "a b"},
  };
  for (const Row& row : rows) {
    const std::string content = "[USER-SETTINGS]\r\n" + row.line + "\r\n";
    PutFile(path_, content);
    Run run(*this);
    const std::string key = row.line.substr(0, row.line.find('='));
    for (const SettingRow& setting : UserSettingRows()) {
      EXPECT_EQ(SettingText(setting, run.kept.Settings()),
                setting.key == key ? row.text : DefaultText(setting))
          << row.line;
    }
    EXPECT_EQ(run.fault, row.usable ? "" : row.line);
    EXPECT_EQ(FileBytes(path_), content) << "loading changes nothing";
  }
}

TEST_F(UserSettingsFile, TellsAllUnusableValuesTogetherAndLoadsTheRest) {
  PutFile(path_,
          "[USER-SETTINGS]\r\nFORM-REGION=300\r\nFORM-TOP=abc\r\nFORM-LEFT=42\r\nCLIENT-APP=X\r\n"
          "[METER-SETTINGS]\r\nPKTNOTIFY=maybe\r\nCOMM-PORT=7\r\n");
  Run run(*this);
  EXPECT_EQ(run.fault, "PKTNOTIFY=maybe\nFORM-TOP=abc\nFORM-REGION=300") << "in the order of loading";
  EXPECT_EQ(run.kept.Settings().FormLeft, 42);
  EXPECT_EQ(run.kept.Settings().ClientApp, "X");
  EXPECT_EQ(run.kept.Settings().FormTop, 100);
  EXPECT_EQ(run.kept.Settings().FormRegion, 1);
  EXPECT_EQ(run.shown_port, "7");
  run.kept.Settings().FormTop = 5;
  EXPECT_THROW(run.kept.LoadUserSettings(), SettingsFault);
  EXPECT_EQ(run.kept.Settings().FormTop, 100) << "the default, not what was there before";
}

TEST_F(UserSettingsFile, SaysWhatTheFileCannotKeep) {
  const std::string texts[] = {
      "OVClient",
      "",
      " a",
      "a ",
      "\"a\"",
      "'a'",
      "\"a",
      "'",
      "\"",
      "a\"b",
      "a\tb",
      "a\r\nb",
      "a\x7F",
      "\x01",
      ";x",
      "[x]",
      "=x",
      "a = b",
      "\xA0x\xA0",
      "\xE4",
      std::string(254, 'x'),
      std::string(255, 'x'),
      std::string(1, '\0'),
      "''",
      "\"a'",
  };
  for (const std::string& text : texts) {
    Run run(*this);
    run.kept.Settings().ClientApp = text;
    run.Save();
    EXPECT_EQ(CanKeep(text), Loaded().ClientApp == text) << text;
  }
}

TEST_F(UserSettingsFile, ControlCharactersDoNotReachTheFile) {
  Run run(*this);
  run.kept.Settings().ClientApp = "A\r\nFORM-TOP=7\r[X]\n\x01\x1A\x7F\tB";
  run.Save();
  const UserSettings again = Loaded();
  EXPECT_EQ(again.ClientApp, "AFORM-TOP=7[X]B");
  EXPECT_EQ(again.FormTop, 100);
}

TEST_F(UserSettingsFile, SavesNothingThatItHasNotLoaded) {
  SaveOther();
  OVUserSettings kept(store_, files_, time_, [](const std::string&) {});
  kept.SaveUserSettings();
  kept.SaveMeterSettings();
  EXPECT_EQ(Loaded(), OtherSettings());
}

}  // namespace
}  // namespace orvane
