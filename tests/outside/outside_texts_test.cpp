// What the program says of the system in its about box and in mails to support.
#include "outside/about_text.h"
#include "outside/os_info.h"
#include "outside/support_mail.h"
#include "platform/headless/files.h"
#include "platform/headless/system_info.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

struct OutsideTexts : testing::Test {
  void SetVersion(std::uint32_t platform, std::uint32_t major, std::uint32_t minor) {
    system.version = {1, platform, major, minor, 2600, {}};
  }
  HeadlessSystemInfo system;
  HeadlessFiles files{"/program"};
};

TEST_F(OutsideTexts, TheSystemsNameComesFromPlatformAndMinorVersionAlone) {
  const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, const char*> rows[] = {
      {0, 1, 30, "Win32s"},     {1, 4, 0, "Windows 95"}, {1, 4, 10, "Windows 98"}, {1, 4, 90, "Windows ME"},
      {1, 4, 1, "Windows 98"},  {2, 5, 1, "Windows XP"}, {2, 6, 1, "Windows XP"},  {2, 5, 0, "Windows NT"},
      {2, 5, 90, "Windows NT"}, {3, 1, 1, ""},
  };
  for (const auto& [platform, major, minor, name] : rows) {
    SetVersion(platform, major, minor);
    const OSInfo info = GetOSInfo(system);
    EXPECT_EQ(info.OSName, name) << platform << ' ' << major << '.' << minor;
    EXPECT_EQ(info.OSVersion, std::to_string(major) + "." + std::to_string(minor));
  }
}

TEST_F(OutsideTexts, TheServicePackEndsAtItsFirstNul) {
  const std::pair<std::string, std::string> rows[] = {
      {"Service Pack 2", "Service Pack 2"},
      {std::string("Pack 1\0rest", 11), "Pack 1"},
      {std::string(127, 'x'), std::string(127, 'x')},
      {std::string(128, 'x'), ""},  // no NUL left in the field
  };
  for (const auto& [field, text] : rows) {
    system.SetServicePack(field);
    EXPECT_EQ(GetOSInfo(system).ServicePack, text);
  }
}

TEST_F(OutsideTexts, OfTheAboutBox) {
  system.program = {"Orvane Lite", "RF watt meter companion", 3, 14};
  SetVersion(2, 5, 1);
  system.SetServicePack("Service Pack 2");
  AboutText text = MakeAboutText(system, files);
  EXPECT_EQ(text.lblAppInfo, "Orvane Lite, Version 3.14 RF watt meter companion, for Windows XP");
  EXPECT_EQ(text.lblVersion, "Running on Windows XP 5.1 Build 2600 (Service Pack 2)");
  EXPECT_EQ(text.lblPath, "/program");
  EXPECT_EQ(text.lblCopyright, "Copyright (c) 2026 the Orvane Lite developers. The MIT licence.");
  for (const std::int32_t unknown : {0, 2, -1}) {  // the system's call says 1 when it knows
    system.version.Result = unknown;
    text = MakeAboutText(system, files);
    EXPECT_EQ(text.lblAppInfo, "Orvane Lite, Version 3.14 RF watt meter companion, for ");
    EXPECT_EQ(text.lblVersion, "Running on   Build  ()");
  }
}

TEST_F(OutsideTexts, OfAMailArePercentEncoded) {
  const std::pair<const char*, const char*> rows[] = {
      {"azAZ09-._~", "azAZ09-._~"},
      {"a b+?&=#%\r\n\x7F", "a%20b%2B%3F%26%3D%23%25%0D%0A%7F"},
      {"(1),/:;@\"'", "%281%29%2C%2F%3A%3B%40%22%27"},
      {"\xE4\xFF\xA0", "%C3%A4%C3%BF%C2%A0"},
      {"\x80\x99\x8A\x81", "%E2%82%AC%E2%84%A2%C5%A0%C2%81"},  // euro, trade mark, S with caron, nothing
  };
  for (const auto& [text, encoded] : rows)
    EXPECT_EQ(PercentEncoded(text), encoded);
  system.program = {"Watts & M\xFCller", "unused", 1, 2};
  SetVersion(1, 4, 90);
  system.SetServicePack("A");
  EXPECT_EQ(
      SupportMailTarget(system),
      "mailto:support@quorran.example?subject=Comments%20on%20Watts%20%26%20M%C3%BCller%2C%20Version%201.2"
      "%2C%20Running%20on%20Windows%20ME%204.90%20Build%202600%20%28A%29&Body=Hello");
}

}  // namespace
}  // namespace orvane
