#include "tests/settings/user_settings_fixture.h"

namespace orvane {
namespace {

TEST_F(UserSettingsFile, WaitsALittleForAFileInUseAndNeverSavesDefaultsOverIt) {
  SaveOther();
  const std::string content = FileBytes(path_);
  files_.SetHeld(path_, 2);
  EXPECT_EQ(Loaded(), OtherSettings());
  EXPECT_EQ(time_.Now(), 200);
  files_.SetHeld(path_);
  Run run(*this);
  EXPECT_EQ(time_.Now(), 400) << "one wait for both loads";
  EXPECT_EQ(run.kept.Settings(), UserSettings{});
  EXPECT_EQ(run.shown_port, "2");
  EXPECT_EQ(run.kept.TroubleText(), "Settings file in use: not saved");
  files_.SetHeld(path_, 0);
  run.Save();
  EXPECT_EQ(FileBytes(path_), content);
}

TEST_F(UserSettingsFile, DoesNotSaveOverAByteOrderMark) {
  const std::string content =
      "\xEF\xBB\xBF[USER-SETTINGS]\r\nFORM-TOP=7\r\n[METER-SETTINGS]\r\nCOMM-PORT=3\r\n";
  PutFile(path_, content);
  Run run(*this);
  EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kByteOrderMark);
  EXPECT_EQ(run.shown_port, "3");
  run.Save();
  EXPECT_EQ(FileBytes(path_), content);
  EXPECT_EQ(folder_.Count(), 1U);
  std::filesystem::remove(path_);
  Run later(*this);
  PutFile(path_, content);  // during the run
  later.Save();
  EXPECT_EQ(FileBytes(path_), content);
  EXPECT_EQ(later.kept.Trouble(), SettingsTrouble::kByteOrderMark);
}

TEST_F(UserSettingsFile, SaysThatTheFolderCannotBeWrittenAndTriesAgain) {
  files_.SetReadOnly(true);
  Run run(*this);
  EXPECT_EQ(run.kept.Settings(), UserSettings{});
  EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kCannotSave);
  EXPECT_EQ(run.kept.TroubleText(), "Settings cannot be saved here");
  run.kept.Settings() = OtherSettings();
  run.Save();
  EXPECT_EQ(folder_.Count(), 0U);
  files_.SetReadOnly(false);
  run.Save();
  EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kNone);
  EXPECT_EQ(Loaded(), OtherSettings());
  files_.SetReadOnly(true);
  Run next(*this);
  EXPECT_EQ(next.kept.Trouble(), SettingsTrouble::kCannotSave) << "said before the first save";
  EXPECT_EQ(next.kept.Settings(), OtherSettings());
}

TEST_F(UserSettingsFile, TheCopyIsTheFileBeforeTheSave) {
  PutFile(path_, "[USER-SETTINGS]\r\nFORM-TOP=7\r\n");
  Run run(*this);
  run.kept.SaveUserSettings();
  EXPECT_EQ(FileBytes(copy_), "[USER-SETTINGS]\r\nFORM-TOP=7\r\n");
  PutFile(path_, std::string(100, '\0'));
  run.kept.SaveUserSettings();
  EXPECT_EQ(FileBytes(copy_), "[USER-SETTINGS]\r\nFORM-TOP=7\r\n") << "never a copy of a blank file";
}

TEST_F(UserSettingsFile, AMissingFileAndABlankOneWithoutCopyMeanDefaults) {
  PutFile(copy_, "[USER-SETTINGS]\r\nFORM-TOP=7\r\n");
  EXPECT_EQ(Loaded(), UserSettings{}) << "the user deleted the file to start anew";
  std::filesystem::remove(copy_);
  for (const std::string& blank : {std::string(), std::string(500, '\0')}) {
    PutFile(path_, blank);
    EXPECT_EQ(Loaded(), UserSettings{});
    SaveOther();
    EXPECT_EQ(Loaded(), OtherSettings()) << blank.size();
    std::filesystem::remove(copy_);
  }
}

TEST_F(UserSettingsFile, KilledAtAnyPointOfASaveTheFileIsOldOrNewWhole) {
  {
    Run first(*this);
    first.Save();
  }
  const std::string before = "; mine\r\n" + FileBytes(path_) + "[OTHER]\r\nx=1\r\n";
  const auto save = [&] {
    Run run(*this);
    run.kept.Settings() = OtherSettings();
    run.kept.SaveUserSettings();
  };
  PutFile(path_, before);
  save();
  const std::string after = FileBytes(path_);
  bool saved = false;
  int steps = 0;
  for (bool killed = true; killed; ++steps) {
    PutFile(path_, before);
    std::filesystem::remove(copy_);
    files_.KillAtStep(steps + 1);
    try {
      save();
      killed = false;
    } catch (const ProcessKilled&) {
    }
    files_.KillAtStep(0);
    const std::string left = FileBytes(path_);
    EXPECT_TRUE(left == after || (left == before && !saved)) << "killed at step " << steps << ":\n" << left;
    saved = left == after;
    EXPECT_TRUE(FileBytes(copy_).empty() || FileBytes(copy_) == before) << steps;
    save();
    EXPECT_EQ(FileBytes(path_), after) << "what a kill left over is in nobody's way";
  }
  EXPECT_GT(steps, 60) << "two copies, nine keys, the change of places";
}

TEST_F(UserSettingsFile, AChangeThatFailsOnceIsTriedAgain) {
  for (int change = 1; change <= 12; ++change) {
    PutFile(path_, "[OTHER]\r\n");
    Run run(*this);
    run.kept.Settings() = OtherSettings();
    files_.FailChange(change);
    const auto before = time_.Now();
    run.Save();
    EXPECT_EQ(Loaded(), OtherSettings()) << change;
    EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kNone) << change;
    EXPECT_LE(time_.Now() - before, 100) << change;
  }
}

/// A store that never takes one of the keys.
struct WithoutOneKey : HeadlessProfileStore {
  WithoutOneKey(HeadlessFiles& files, std::string_view key) : HeadlessProfileStore(files), missing(key) {}
  bool WritePrivateProfileString(std::string_view section, OptionalText key, OptionalText value,
                                 const std::string& file) override {
    return key != missing && HeadlessProfileStore::WritePrivateProfileString(section, key, value, file);
  }
  std::string_view missing;
};

TEST_F(UserSettingsFile, AWriteThatAlwaysFailsIsSkipped) {
  for (const SettingRow& missing : UserSettingRows()) {
    PutFile(path_, "[OTHER]\r\n");
    WithoutOneKey store(files_, missing.key);
    OVUserSettings kept(store, files_, time_, [](const std::string&) {});
    kept.LoadUserSettings();
    kept.Settings() = OtherSettings();
    kept.SaveUserSettings();
    EXPECT_EQ(kept.Trouble(), SettingsTrouble::kCannotSave);
    const UserSettings again = Loaded();
    for (const SettingRow& row : UserSettingRows()) {
      EXPECT_EQ(SettingText(row, again),
                row.key == missing.key ? DefaultText(row) : SettingText(row, OtherSettings()))
          << row.key << " without " << missing.key;
    }
  }
}

// One outcome for each kind of file that is no settings file.
TEST_F(UserSettingsFile, WhateverLiesInItsPlaceStaysAsItIsOrIsUsed) {
  const std::string lines = "[USER-SETTINGS]\r\nFORM-TOP=7\r\n";
  struct Row {
    const char* what;
    std::string content;
    SettingsTrouble trouble;  // at the start
    int form_top;
    bool saved;
  };
  const Row rows[] = {
      {"settings", lines, SettingsTrouble::kNone, 7, true},
      {"a mark in front", "\xEF\xBB\xBF" + lines, SettingsTrouble::kByteOrderMark, 100, false},
      {"a line of 10 MB", ";" + std::string(10 << 20, 'y') + "\r\n" + lines, SettingsTrouble::kNone, 7, true},
      {"no text", std::string("\x01\0\xFF\xFE[", 5), SettingsTrouble::kNone, 100, true},
      {"a folder", "", SettingsTrouble::kCannotSave, 100, false},
      {"a full disk", lines, SettingsTrouble::kNone, 7, false}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    const bool folder = row.what == std::string_view("a folder");
    folder ? void(std::filesystem::create_directory(path_)) : PutFile(path_, row.content);
    Run run(*this);
    EXPECT_EQ(run.kept.Trouble(), row.trouble);
    EXPECT_EQ(run.kept.Settings().FormTop, row.form_top);
    run.kept.Settings() = OtherSettings();
    files_.SetReadOnly(row.what == std::string_view("a full disk"));
    run.kept.SaveUserSettings();
    files_.SetReadOnly(false);
    EXPECT_EQ(run.kept.Trouble() == SettingsTrouble::kNone, row.saved);
    if (row.saved) {
      EXPECT_EQ(Loaded().FormTop, OtherSettings().FormTop);
    } else {
      EXPECT_TRUE(folder || FileBytes(path_) == row.content);
    }
    std::filesystem::remove_all(path_);
    std::filesystem::remove(copy_);
  }
}

}  // namespace
}  // namespace orvane
