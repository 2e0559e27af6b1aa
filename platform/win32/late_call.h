#pragma once

#include "platform/win32/windows_api.h"

#include <cstring>

namespace orvane {

/// A call of user32 that came with a later version of the system; null where it is missing. The exe starts on
/// Windows 7 as well.
template <typename Function>
Function FindLateCall(const char* name) {
  const FARPROC found = ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name);
  Function function = nullptr;
  static_assert(sizeof(function) == sizeof(found));
  std::memcpy(&function, &found, sizeof(found));
  return function;
}

}  // namespace orvane
