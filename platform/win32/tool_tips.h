#pragma once

#include "platform/win32/windows_api.h"

#include <map>
#include <string>
#include <string_view>

namespace orvane {

/// The texts that are shown when the pointer rests on a window. The system's tip window, and its note of
/// each text, are made when a pointer first comes: at the start there is none, and they cost a fifth of it.
class ToolTips {
 public:
  /// @param text replaces an earlier one; empty is none
  void Set(HWND widget, std::string_view text);
  /// The window goes; its handle may soon be another's.
  void Forget(HWND widget) { Set(widget, {}); }
  /// Every message to a window that may have a text, before the window acts on it: the system's own way to
  /// see them would cost each window's every message.
  void OnMessage(HWND widget, UINT message, WPARAM wparam, LPARAM lparam);

 private:
  struct Tip {
    std::wstring text;
    bool told = false;  // the tip window has it
  };
  void Tell(UINT what, HWND widget, Tip& tip) const;

  std::map<HWND, Tip> tips_;
  HWND window_ = nullptr;
};

}  // namespace orvane
