#include "base/text.h"
#include "tests/settings/user_settings_fixture.h"

namespace orvane {
namespace {

TEST_F(UserSettingsFile, TheFirstRunHasTheDefaultsAndMakesTheFile) {
  Run run(*this);
  EXPECT_EQ(FileBytes(path_), "");
  EXPECT_TRUE(files_.IsNormalFile(path_));
  EXPECT_EQ(run.shown_port, "2");
  EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kNone);
  EXPECT_EQ(run.kept.TroubleText(), "");
  run.kept.SaveUserSettings();
  EXPECT_EQ(FileBytes(path_),
            "[USER-SETTINGS]\r\nFORM-ON-TOP=False\r\nFORM-TOP=100\r\nFORM-LEFT=100\r\nFORM-REGION=1\r\n"
            "F-PWR-INDEX=8\r\nR-PWR-INDEX=8\r\nCLIENT-APP=OVClient\r\nCLIENT-MSG-ID=14300\r\n"
            "[METER-SETTINGS]\r\nPKTNOTIFY=False\r\n")
      << "nine keys and only them";
  run.kept.SaveMeterSettings();
  EXPECT_TRUE(FileBytes(path_).ends_with(
      "[METER-SETTINGS]\r\nPKTNOTIFY=False\r\nCOMM-PORT=2\r\nBAUD-RATE=38400\r\n"));
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
    const char* kept;
    bool usable;
    std::vector<std::string> lines;
  };
  const Row rows[] = {{"7", true, {"FORM-TOP= 7 "}},
                      {"2", true, {"FORM-TOP=2.5"}},
                      {"4", true, {"FORM-TOP=3.5"}},
                      {"1000", true, {"FORM-TOP=1E3"}},
                      {"2147483647", true, {"FORM-TOP=2147483647"}},
                      {"100", false, {"FORM-TOP=2147483648", "FORM-TOP=abc", "FORM-TOP=", "FORM-LEFT=0x10"}},
                      {"255", true, {"FORM-REGION=255"}},
                      {"1", false, {"FORM-REGION=256", "FORM-REGION=-1", "FORM-REGION=70000"}},
                      {"-5", true, {"F-PWR-INDEX=-5"}},
                      {"8", false, {"F-PWR-INDEX=32768", "R-PWR-INDEX=one"}},
                      {"14300", false, {"CLIENT-MSG-ID=1E99"}},
                      {"True", true, {"FORM-ON-TOP=tRUE", "FORM-ON-TOP=-1", "FORM-ON-TOP=0.5"}},
                      {"False", true, {"FORM-ON-TOP=0"}},
                      {"False", false, {"FORM-ON-TOP=yes"}},
                      {"", true, {"CLIENT-APP="}},
                      {"a b", true, {"CLIENT-APP=\"a b\""}}};
  for (const auto& [text, usable, lines] : rows) {
    for (const std::string& line : lines) {
      const std::string content = "[USER-SETTINGS]\r\n" + line + "\r\n";
      PutFile(path_, content);
      Run run(*this);
      const std::string key = line.substr(0, line.find('='));
      for (const SettingRow& setting : UserSettingRows()) {
        EXPECT_EQ(SettingText(setting, run.kept.Settings()), setting.key == key ? text : DefaultText(setting))
            << line;
      }
      EXPECT_EQ(run.fault, usable ? "" : line);
      EXPECT_EQ(FileBytes(path_), content) << "loading changes nothing";
    }
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
  std::vector<std::string> texts{std::string(254, 'x'), std::string(255, 'x'), std::string(1, '\0')};
  for (const auto text :
       Split("|OVClient| a|a |\"a\"|'a'|\"a|'|\"|a\"b|a\tb|a\r\nb|a\x7F|\x01|;x|[x]|=x|a = b|"
             "\xA0x\xA0|\xE4|''|\"a'",
             '|'))
    texts.emplace_back(text);
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
