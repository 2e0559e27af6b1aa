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
  void AddHelpFile() {
    std::filesystem::create_directory(InFolder("/Help"));
    program.files.CreateEmpty(InFolder("/Help/OrvaneLite.hlp"));
  }
  Program program;
  Launches launches{program.platform};
  const Shell::Launch help_page{"", InFolder("/Help/OrvaneLite.html"), "", "C:\\", ShowMode::kMaximized};
};

TEST_F(LaunchesTest, EachHandsTheShellExactlyItsArguments) {
  program.system.program.ProductName = "P";
  const struct {
    std::function<bool()> step;
    Shell::Launch launch;
  } rows[] = {
      {[this] { return launches.OpenDocument("https://a.example/?x=1"); },
       {"", "https://a.example/?x=1", "", "C:\\", ShowMode::kMaximized}},
      {[this] { return launches.ShowSystemInfo(); },
       {"Open", "Msinfo32.exe", "/Category Components", "", ShowMode::kMaximized}},
      {[this] { return launches.SendSupportMail(); },
       {"", SupportMailTarget(program.system), "", "C:\\", ShowMode::kMaximized}},
      {[this] { return launches.LaunchFirmwareUpdater(); },
       {"open", InFolder("/OVFirmUpdate.exe"), "", "", ShowMode::kNormal}},
      {[this] { return launches.ShowHelp(); }, help_page},
  };
  for (const bool works : {true, false}) {
    program.shell.works = works;
    for (const auto& row : rows) {
      program.shell.launches.clear();
      EXPECT_EQ(row.step(), works) << row.launch.target;
      ASSERT_EQ(program.shell.launches.size(), 1U) << row.launch.target;
      EXPECT_EQ(program.shell.launches[0], row.launch) << row.launch.target;
    }
  }
  EXPECT_TRUE(program.shell.help_files.empty());
}

TEST_F(LaunchesTest, AHelpFileIsShownByTheOldViewerWhereThatWorks) {
  AddHelpFile();
  EXPECT_TRUE(launches.ShowHelp());
  EXPECT_EQ(program.shell.help_files, std::vector{InFolder("/Help/OrvaneLite.hlp")});
  EXPECT_TRUE(program.shell.launches.empty());

  program.shell.has_help_viewer = false;
  EXPECT_TRUE(launches.ShowHelp());
  EXPECT_EQ(program.shell.help_files.size(), 1U);
  EXPECT_EQ(program.shell.launches, std::vector{help_page});
}

}  // namespace
}  // namespace orvane
