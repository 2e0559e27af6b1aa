#pragma once

#include "platform/win32/windows_api.h"

#include <cstring>

namespace orvane {

/// From now on a library that is asked for by its name alone is looked for in the system's own folder, not in
/// the program's, where somebody may have put another one of that name, nor in the current one. Call it
/// first.
void TakeLibrariesFromTheSystem();

/// A library of the system by its file name, from the system's own folder, loaded when it is first asked for
/// and never given back. Null when there is none.
///
/// The program is linked to few libraries: those that the system has in memory for every program and takes
/// from nowhere else. All others, such as version.dll, it would look for in the program's folder first,
/// before a line of ours runs.
HMODULE SystemLibrary(const wchar_t* file_name);

/// A function of a loaded library; null where it is missing.
template <typename Function>
Function FindCall(HMODULE library, const char* name) {
  const FARPROC found = library == nullptr ? nullptr : ::GetProcAddress(library, name);
  Function function = nullptr;
  static_assert(sizeof(function) == sizeof(found));
  std::memcpy(&function, &found, sizeof(found));
  return function;
}

/// A call of user32 that came with a later version of the system; null where it is missing. The exe starts on
/// Windows 7 as well.
template <typename Function>
Function FindLateCall(const char* name) {
  return FindCall<Function>(::GetModuleHandleW(L"user32.dll"), name);
}

}  // namespace orvane
