#include "settings/ov_user_settings.h"
#include "tests/contract/platform_under_test.h"
#include "tests/support/files_in.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct CountingClock final : Clock {
  std::int32_t GetTickCount() override { return blocked; }
  void Block(std::int32_t ms) override { blocked += ms; }
  std::int32_t blocked = 0;
};

// The whole way of the settings on the system that the program will run on.
class UserSettingsContract : public testing::Test {
 protected:
  struct Run {
    explicit Run(UserSettingsContract& test)
        : kept(test.platform_.Profiles(), test.files_, test.clock_, [](const std::string&) {}) {
      kept.LoadUserSettings();
      kept.LoadMeterSettings();
    }
    void Save(const UserSettings& settings) {
      kept.Settings() = settings;
      kept.SaveUserSettings();
      kept.SaveMeterSettings();
    }
    OVUserSettings kept;
  };
  UserSettings Loaded() { return Run(*this).kept.Settings(); }

  PlatformUnderTest platform_;
  FilesOfProgramIn files_{platform_.TheFiles(), platform_.Folder().Path()};
  CountingClock clock_;
  const std::string path_ = platform_.Folder().Path("Orvane.dat");
  const UserSettings other_{"12", "9600", true, true, -5, 70000, 0, -1, 3, "My Cli;ent \xE4", 2147483647};
};

TEST_F(UserSettingsContract, ASaveGivesBackTheSameRecordAndABlankFileIsReplacedByTheCopy) {
  EXPECT_EQ(Loaded(), UserSettings{});
  EXPECT_EQ(FileBytes(path_), "");
  for (const std::string& blank : {std::string(), std::string(300, '\0')}) {
    std::filesystem::remove(path_ + ".bak");
    PutFile(path_, blank);
    Run(*this).Save(other_);
    EXPECT_EQ(Loaded(), other_) << "without a copy there are new settings";
    Run(*this).Save(other_);
    EXPECT_EQ(platform_.Folder().Count(), 2U) << "the file and its copy";
    PutFile(path_, blank);
    Run run(*this);
    EXPECT_EQ(run.kept.Trouble(), SettingsTrouble::kRestored);
    EXPECT_EQ(run.kept.Settings(), other_);
    run.Save(UserSettings{});
    EXPECT_EQ(Loaded(), UserSettings{});
  }
}

}  // namespace
}  // namespace orvane
