// A library that somebody put beside a program under the name of one of the system's: it does nothing but
// leave a trace when it is loaded.

#include <cstring>
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID) {
  constexpr char kTrace[] = ".loaded";
  char path[MAX_PATH + sizeof kTrace];
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  const DWORD length = ::GetModuleFileNameA(self, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return TRUE;
  std::memcpy(path + length, kTrace, sizeof kTrace);
  const HANDLE file =
      ::CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) ::CloseHandle(file);
  return TRUE;
}
