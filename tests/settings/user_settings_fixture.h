#pragma once

#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#include "platform/headless/virtual_time.h"
#include "settings/ov_user_settings.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {

/// Every field off its default.
inline UserSettings OtherSettings() {
  return {"12", "9600", true, true, -2147483647, 70000, 0, -32768, 3, "My = Cli;ent \xE4", 2147483647};
}

/// The settings on the files of the tests.
class UserSettingsFile : public testing::Test {
 protected:
  UserSettingsFile() { files_.SetFlushing(false); }

  /// One run of the program: its settings are loaded, its faults kept.
  struct Run {
    explicit Run(UserSettingsFile& test)
        : kept(test.store_, test.files_, test.time_, [this](const std::string& port) { shown_port = port; }) {
      try {
        kept.LoadUserSettings();
      } catch (const SettingsFault& told) {
        fault = told.what();
      }
      kept.LoadMeterSettings();
    }
    void Save() {
      kept.SaveUserSettings();
      kept.SaveMeterSettings();
    }
    OVUserSettings kept;
    std::string shown_port = "(not shown)";
    std::string fault;
  };
  UserSettings Loaded() { return Run(*this).kept.Settings(); }
  void SaveOther() {
    Run run(*this);
    run.kept.Settings() = OtherSettings();
    run.Save();
  }

  TempFolder folder_;
  VirtualTime time_;
  HeadlessFiles files_{folder_.Path()};
  HeadlessProfileStore store_{files_};
  const std::string path_ = folder_.Path("Orvane.dat");
  const std::string copy_ = folder_.Path("Orvane.dat.bak");
};

}  // namespace orvane
