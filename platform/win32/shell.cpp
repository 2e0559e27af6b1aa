#include "platform/win32/shell.h"

#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace orvane {

bool Win32Shell::Execute(const Launch& launch) {
  const std::wstring verb = ToWide(launch.verb);
  const std::wstring target = ToWide(launch.target);
  const std::wstring parameters = ToWide(launch.parameters);
  const std::wstring folder = ToWide(launch.folder);
  const auto or_null = [](const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); };
  const HINSTANCE result = ::ShellExecuteW(nullptr, or_null(verb), target.c_str(), or_null(parameters),
                                           or_null(folder), static_cast<int>(launch.show));
  // The call answers with a number above 32 when it started something.
  return reinterpret_cast<INT_PTR>(result) > 32;
}

}  // namespace orvane
