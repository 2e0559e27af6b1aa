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

// How many keys, in the order of saving, have the new value; -1 when the others are not all old.
int SavedKeys(std::span<const SettingRow> rows, const UserSettings& settings) {
  int saved = 0;
  bool end = false;
  for (const SettingRow& row : rows) {
    const std::string text = SettingText(row, settings);
    const bool is_new = text == SettingText(row, OtherSettings());
    if (!is_new && text != DefaultText(row)) return -1;
    if (is_new && end) return -1;
    if (is_new) ++saved;
    end = !is_new;
  }
  return saved;
}

TEST_F(UserSettingsFile, KilledAtAnyPointOfASaveEachSettingIsOldOrNew) {
  {
    Run first(*this);
    first.Save();
  }
  const std::string before = "; mine\r\n" + FileBytes(path_) + "[OTHER]\r\nx=1\r\n";
  int most_saved = 0;
  for (int step = 1;; ++step) {
    PutFile(path_, before);
    std::filesystem::remove(copy_);
    Run run(*this);
    run.kept.Settings() = OtherSettings();
    files_.KillAtStep(step);
    try {
      run.kept.SaveUserSettings();
    } catch (const ProcessKilled&) {
    }
    if (files_.KillPending()) {
      EXPECT_EQ(step - 1, 10 * HeadlessFiles::kStepsOfChange) << "a copy and nine keys";
      break;
    }
    EXPECT_TRUE(FileBytes(copy_).empty() || FileBytes(copy_) == before) << step;
    Run next(*this);
    const int saved = SavedKeys(UserSettingRows(), next.kept.Settings());
    EXPECT_GE(saved, most_saved) << "killed at step " << step;
    most_saved = saved;
    EXPECT_EQ(next.fault, "");
    EXPECT_EQ(next.kept.Trouble(), SettingsTrouble::kNone);
    const std::string text = FileBytes(path_);
    EXPECT_TRUE(text.starts_with("; mine\r\n") && text.ends_with("[OTHER]\r\nx=1\r\n")) << text;
    next.kept.Settings() = OtherSettings();
    next.Save();
    EXPECT_EQ(Loaded(), OtherSettings()) << "what a kill left over is in nobody's way";
  }
  files_.KillAtStep(0);
  EXPECT_EQ(most_saved, 9);
}

TEST_F(UserSettingsFile, AWriteThatFailsIsSkipped) {
  const auto rows = UserSettingRows();
  for (std::size_t change = 1; change <= rows.size() + 1; ++change) {
    PutFile(path_, "[OTHER]\r\n");
    Run run(*this);
    run.kept.Settings() = OtherSettings();
    files_.FailChange(static_cast<int>(change));  // the first one is the copy
    run.kept.SaveUserSettings();
    const UserSettings again = Loaded();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(SettingText(rows[i], again),
                i + 2 == change ? DefaultText(rows[i]) : SettingText(rows[i], OtherSettings()))
          << rows[i].key << " with change " << change << " failing";
    }
    EXPECT_EQ(run.kept.Trouble(), change == 1 ? SettingsTrouble::kNone : SettingsTrouble::kCannotSave);
  }
}

}  // namespace
}  // namespace orvane
