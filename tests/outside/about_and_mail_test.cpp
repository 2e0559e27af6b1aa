#include "outside/about_text.h"
#include "outside/os_info.h"
#include "outside/support_mail.h"
#include "platform/headless/files.h"
#include "platform/headless/system_info.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

SystemVersion VersionOf(std::uint32_t platform, std::uint32_t major, std::uint32_t minor) {
  return {1, platform, major, minor, 2600, {}};
}

TEST(OSInfoTest, TheNameComesFromPlatformAndMinorVersionAlone) {
  const struct {
    std::uint32_t platform, major, minor;
    const char* name;
  } rows[] = {
      {0, 1, 30, "Win32s"},     {1, 4, 0, "Windows 95"}, {1, 4, 10, "Windows 98"},
      {1, 4, 90, "Windows ME"}, {1, 4, 1, "Windows 98"}, {2, 5, 1, "Windows XP"},
      {2, 6, 1, "Windows XP"},  {2, 5, 0, "Windows NT"}, {2, 10, 0, "Windows NT"},
      {2, 5, 90, "Windows NT"}, {3, 1, 1, ""},           {0xFFFFFFFF, 1, 0, ""},
  };
  HeadlessSystemInfo system;
  for (const auto& row : rows) {
    system.version = VersionOf(row.platform, row.major, row.minor);
    const OSInfo info = GetOSInfo(system);
    EXPECT_EQ(info.OSName, row.name) << row.platform << ' ' << row.major << '.' << row.minor;
    EXPECT_EQ(info.PlatformId, row.platform);
    EXPECT_EQ(info.OSVersion, std::to_string(row.major) + "." + std::to_string(row.minor));
    EXPECT_EQ(info.OSBuild, "2600");
  }
}

TEST(OSInfoTest, TheRecordIsFilledOnlyWhenTheQueryReturnsExactlyOne) {
  HeadlessSystemInfo system;
  system.SetServicePack("Service Pack 2");
  for (const std::int32_t result : {0, 2, -1}) {
    system.version.Result = result;
    const OSInfo info = GetOSInfo(system);
    EXPECT_EQ(info.OSName + info.OSVersion + info.OSBuild + info.ServicePack, "") << result;
    EXPECT_EQ(info.PlatformId, 0U) << result;
  }
}

TEST(OSInfoTest, TheServicePackEndsAtItsFirstNul) {
  const std::pair<std::string, std::string> rows[] = {
      {"Service Pack 2", "Service Pack 2"},
      {"", ""},
      {std::string("Pack 1\0rest", 11), "Pack 1"},
      {std::string(127, 'x'), std::string(127, 'x')},
      {std::string(128, 'x'), ""},  // no NUL left in the field
  };
  HeadlessSystemInfo system;
  for (const auto& [field, text] : rows) {
    system.SetServicePack(field);
    EXPECT_EQ(GetOSInfo(system).ServicePack, text);
  }
}

class AboutTextTest : public testing::Test {
 protected:
  TempFolder folder;
  HeadlessFiles files{folder.Path()};
  HeadlessSystemInfo system;
};

TEST_F(AboutTextTest, TheLinesNameProgramSystemAndFolder) {
  system.program = {"Orvane Lite", "RF watt meter companion", 3, 14};
  system.version = VersionOf(2, 5, 1);
  system.SetServicePack("Service Pack 2");
  const AboutText text = MakeAboutText(system, files);
  EXPECT_EQ(text.lblAppInfo, "Orvane Lite, Version 3.14 RF watt meter companion, for Windows XP");
  EXPECT_EQ(text.lblVersion, "Running on Windows XP 5.1 Build 2600 (Service Pack 2)");
  EXPECT_EQ(text.lblPath, folder.Path());
  EXPECT_EQ(text.lblCopyright, "Copyright (c) 2026 the Orvane Lite developers. The MIT licence.");
  EXPECT_EQ(text.lblCopyright.size(), 63U);
}

TEST_F(AboutTextTest, WhatIsUnknownIsLeftEmpty) {
  system.SetServicePack("");
  EXPECT_EQ(MakeAboutText(system, files).lblVersion, "Running on Windows XP 6.1 Build 7601 ()");
  system.version.Result = 0;
  system.program = {};
  const AboutText text = MakeAboutText(system, files);
  EXPECT_EQ(text.lblAppInfo, ", Version 0.0 , for ");
  EXPECT_EQ(text.lblVersion, "Running on   Build  ()");
}

TEST(PercentEncodedTest, OnlyUnreservedCharactersStayAsTheyAre) {
  const std::pair<const char*, const char*> rows[] = {
      {"", ""},
      {"azAZ09-._~", "azAZ09-._~"},
      {"a b", "a%20b"},
      {"a+b", "a%2Bb"},
      {"?subject=x&body=y#z", "%3Fsubject%3Dx%26body%3Dy%23z"},
      {"100%", "100%25"},
      {"\r\n\x7F", "%0D%0A%7F"},
      {"(1),/:;@\"'", "%281%29%2C%2F%3A%3B%40%22%27"},
      {"\xE4\xF6\xFC\xDF", "%C3%A4%C3%B6%C3%BC%C3%9F"},  // a, o, u with two dots, sharp s
      {"\xA0\xFF", "%C2%A0%C3%BF"},
      {"\x80\x99\x8A\x9F",
       "%E2%82%AC%E2%84%A2%C5%A0%C5%B8"},  // euro, trade mark, S with caron, Y with two dots
      {"\x81", "%C2%81"},                  // no character of the code page
  };
  for (const auto& [text, encoded] : rows)
    EXPECT_EQ(PercentEncoded(text), encoded);
}

TEST(SupportMailTest, TheTargetCarriesSubjectAndGreeting) {
  HeadlessSystemInfo system;
  system.program = {"Watts & M\xFCller", "unused", 1, 2};
  system.version = VersionOf(1, 4, 90);
  system.SetServicePack("A");
  EXPECT_EQ(
      SupportMailTarget(system),
      "mailto:support@quorran.example?subject=Comments%20on%20Watts%20%26%20M%C3%BCller%2C%20Version%201.2"
      "%2C%20Running%20on%20Windows%20ME%204.90%20Build%202600%20%28A%29&Body=Hello");
}

}  // namespace
}  // namespace orvane
