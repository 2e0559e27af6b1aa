#include "platform/win32/shell.h"

#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace orvane {
namespace {

// Later systems keep a small program in the viewer's place that only says that there is none any more; the
// viewers themselves have a few hundred kilobytes.
constexpr DWORD kSmallestViewer = 64 * 1024;

bool IsHelpViewer(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  return ::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) &&
         (data.nFileSizeHigh != 0 || data.nFileSizeLow >= kSmallestViewer);
}

// Windows has the viewer in its own folder, Wine in that of the system's programs.
bool HasHelpViewer() {
  for (const auto folder_of : {&::GetSystemWindowsDirectoryW, &::GetSystemDirectoryW}) {
    wchar_t folder[MAX_PATH];
    const UINT length = folder_of(folder, MAX_PATH);
    if (length != 0 && length < MAX_PATH && IsHelpViewer(std::wstring(folder, length) + L"\\winhlp32.exe")) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool Win32Shell::Execute(const Launch& launch) {
  const std::wstring verb = ToWide(launch.verb);
  const std::wstring target = ToWide(launch.target);
  const std::wstring parameters = ToWide(launch.parameters);
  const std::wstring folder = ToWide(launch.folder);
  const auto or_null = [](const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); };
  // The shorter call cannot be kept from showing a box of the system's own; our status line tells failures.
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI;
  info.lpVerb = or_null(verb);
  info.lpFile = target.c_str();
  info.lpParameters = or_null(parameters);
  info.lpDirectory = or_null(folder);
  info.nShow = static_cast<int>(launch.show);
  return ::ShellExecuteExW(&info) != FALSE;
}

bool Win32Shell::ShowHelpFile(const std::string& path) {
  return HasHelpViewer() && ::WinHelpW(windows_.Main(), ToWide(path).c_str(), HELP_CONTENTS, 0) != FALSE;
}

}  // namespace orvane
