#include "platform/win32/system_library.h"

#include <string>

namespace orvane {

// On Windows 7 without its later updates only the current folder can be left out.
void TakeLibrariesFromTheSystem() {
  constexpr DWORD kSystemFolderOnly = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  ::SetDllDirectoryW(L"");
  const auto set_folders =
      FindCall<BOOL(WINAPI*)(DWORD)>(::GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories");
  if (set_folders != nullptr) set_folders(kSystemFolderOnly);
}

// By its whole path, which every version of the system understands; what it needs itself is then looked for
// beside it.
HMODULE SystemLibrary(const wchar_t* file_name) {
  wchar_t folder[MAX_PATH];
  const UINT length = ::GetSystemDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return nullptr;
  const std::wstring path = std::wstring(folder, length) + L"\\" + file_name;
  return ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace orvane
