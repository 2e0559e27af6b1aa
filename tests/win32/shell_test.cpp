#include "platform/win32/shell.h"

#include "platform/win32/text.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

class Win32ShellTest : public testing::Test {
 protected:
  void SetUp() override {
    wchar_t path[MAX_PATH];
    ASSERT_NE(::GetTempPathW(MAX_PATH, path), 0U);
    // Text of the program is Windows-1252 on its way to the system: a folder that shows it.
    folder = FromWide(path) + "shell test \xE4\xF6\xFC " + std::to_string(::GetCurrentProcessId());
    ASSERT_TRUE(::CreateDirectoryW(ToWide(folder).c_str(), nullptr));
  }
  void TearDown() override {
    ::DeleteFileW(ToWide(Made()).c_str());
    // A program that ran in it holds it until its end.
    EXPECT_TRUE(Within10s([this] { return ::RemoveDirectoryW(ToWide(folder).c_str()) != FALSE; }));
  }
  std::string Made() const { return folder + "\\made \xE9.txt"; }
  static bool Within10s(const std::function<bool()>& condition) {
    for (int i = 0; i < 200; ++i) {
      if (condition()) return true;
      ::Sleep(50);
    }
    return false;
  }

  std::string folder;
  EventWindow events;
  Win32WindowSystem windows{events, 96};
  Win32Shell shell{windows};
};

TEST_F(Win32ShellTest, AProgramGetsItsParametersAndItsFolder) {
  ASSERT_TRUE(shell.Execute({"open", "cmd.exe", "/c echo x> \"made \xE9.txt\"", folder, ShowMode::kNormal}));
  EXPECT_TRUE(
      Within10s([this] { return ::GetFileAttributesW(ToWide(Made()).c_str()) != INVALID_FILE_ATTRIBUTES; }));
}

TEST_F(Win32ShellTest, WhatIsNotThereIsToldByTheResultAndByNoBox) {
  const ULONGLONG start = ::GetTickCount64();
  EXPECT_FALSE(shell.Execute({"open", folder + "\\OVFirmUpdate.exe", "", "", ShowMode::kNormal}));
  EXPECT_FALSE(shell.Execute({"", folder + "\\no such page.html", "", "C:\\", ShowMode::kMaximized}));
  // A box would have waited for somebody.
  EXPECT_LT(::GetTickCount64() - start, 5000U);
}

}  // namespace
}  // namespace orvane
