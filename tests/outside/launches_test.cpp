#include "outside/launches.h"

#include "outside/support_mail.h"
#include "tests/support/program.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// Only the platform is used: nothing is started.
class LaunchesTest : public testing::Test {
 protected:
  std::string InFolder(const std::string& tail) { return program.folder.Path() + tail; }
  Program program;
  Launches launches{program.platform};
  const Shell::Launch help_page{"", InFolder("/Help/OrvaneLite.html"), "", "C:\\", ShowMode::kMaximized};
};

TEST_F(LaunchesTest, EachHandsTheShellItsArgumentsAndTellsWhatBecameOfIt) {
  const std::pair<bool (Launches::*)(), Shell::Launch> rows[] = {
      {&Launches::ShowSystemInfo, {"Open", "Msinfo32.exe", "/Category Components", "", ShowMode::kMaximized}},
      {&Launches::SendSupportMail, {"", SupportMailTarget(program.system), "", "C:\\", ShowMode::kMaximized}},
      {&Launches::LaunchFirmwareUpdater, {"open", InFolder("/OVFirmUpdate.exe"), "", "", ShowMode::kNormal}},
      {&Launches::ShowHelp, help_page},
  };
  for (const auto& [step, launch] : rows) {
    EXPECT_TRUE((launches.*step)());
    EXPECT_EQ(program.shell.launches.back(), launch) << launch.target;
    program.shell.works = false;
    EXPECT_FALSE((launches.*step)()) << launch.target;
    program.shell.works = true;
  }
}

TEST_F(LaunchesTest, AHelpFileIsShownByTheOldViewerWhereThatWorks) {
  std::filesystem::create_directory(InFolder("/Help"));
  program.files.CreateEmpty(InFolder("/Help/OrvaneLite.hlp"));
  EXPECT_TRUE(launches.ShowHelp());
  EXPECT_EQ(program.shell.help_files, std::vector{InFolder("/Help/OrvaneLite.hlp")});
  EXPECT_TRUE(program.shell.launches.empty());
  program.shell.has_help_viewer = false;
  EXPECT_TRUE(launches.ShowHelp());
  EXPECT_EQ(program.shell.launches, std::vector{help_page});
}

}  // namespace
}  // namespace orvane
