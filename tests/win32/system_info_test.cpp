#include "platform/win32/system_info.h"

#include "platform/win32/windows_api.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

TEST(Win32SystemInfoTest, TheVersionQueryAnswersWithASystemOfTheNtLine) {
  const SystemVersion version = Win32SystemInfo().QueryVersion();
  EXPECT_EQ(version.Result, 1);
  EXPECT_EQ(version.PlatformId, static_cast<std::uint32_t>(VER_PLATFORM_WIN32_NT));
  EXPECT_GE(version.MajorVersion * 100 + version.MinorVersion, 601U);  // nothing older runs this program
  EXPECT_GE(version.BuildNumber, 7600U);
  EXPECT_NE(std::find(version.ServicePack.begin(), version.ServicePack.end(), '\0'),
            version.ServicePack.end());
}

TEST(Win32SystemInfoTest, AVersionResourceIsReadWhereThereIsOne) {
  wchar_t folder[MAX_PATH];
  ASSERT_NE(::GetSystemDirectoryW(folder, MAX_PATH), 0U);
  const ProgramVersion library = ReadVersionResource(folder + std::wstring(L"\\kernel32.dll"));
  EXPECT_NE(library.ProductName, "");
  EXPECT_EQ(library.ProductName.find('\0'), std::string::npos);
  EXPECT_NE(library.FileDescription, library.ProductName);
  EXPECT_GE(library.Major, 5);
  // The test itself has no resource; a file that is not there has none either.
  for (const ProgramVersion& none :
       {Win32SystemInfo().OwnVersion(), ReadVersionResource(L"C:\\no such file.exe")}) {
    EXPECT_EQ(none.ProductName + none.FileDescription, "");
    EXPECT_EQ(none.Major, 0);
  }
}

}  // namespace
}  // namespace orvane
