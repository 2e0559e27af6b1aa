// What the parts of the inspector share.
#pragma once

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <windows.h>

namespace inspect {

/// One command: acts on a window, reads what else it needs from `words`, and writes JSON objects, one a line.
/// @return false where it could not be done
using Command = bool (*)(HWND window, std::istream& words, std::ostream& out);

inline std::uintptr_t Number(HWND window) {
  return reinterpret_cast<std::uintptr_t>(window);
}
HWND NextWindow(std::istream& words);
std::string Escaped(std::wstring_view text);
std::wstring ClassOf(HWND window);
DWORD ProcessOf(HWND window);

// accessible.cpp: what a screen reader finds
bool Tree(HWND window, std::istream& words, std::ostream& out);
bool Object(HWND window, std::istream& words, std::ostream& out);
bool Watch(HWND window, std::istream& words, std::ostream& out);

// stress.cpp: wears the program out
bool Open(HWND window, std::istream& words, std::ostream& out);
bool Count(HWND window, std::istream& words, std::ostream& out);

}  // namespace inspect
