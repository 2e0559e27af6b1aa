#include "platform/win32/tool_tips.h"

#include "platform/win32/text.h"

namespace orvane {

void ToolTips::Set(HWND widget, std::string_view text) {
  const auto found = tips_.find(widget);
  if (found != tips_.end()) {
    if (found->second.told) Tell(TTM_DELTOOLW, widget, found->second);
    tips_.erase(found);
  }
  if (!text.empty()) tips_[widget].text = ToWide(text);
}

void ToolTips::OnMessage(HWND widget, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message < WM_MOUSEFIRST || message > WM_MOUSELAST) return;
  const auto found = tips_.find(widget);
  if (found == tips_.end()) return;
  if (window_ == nullptr) {
    window_ = ::CreateWindowExW(
        WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  if (!found->second.told) {
    Tell(TTM_ADDTOOLW, widget, found->second);
    found->second.told = true;
  }
  MSG seen{};
  seen.hwnd = widget;
  seen.message = message;
  seen.wParam = wparam;
  seen.lParam = lparam;
  ::SendMessageW(window_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&seen));
}

void ToolTips::Tell(UINT what, HWND widget, Tip& tip) const {
  TOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;  // the size that the oldest common controls take too
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = ::GetParent(widget);
  tool.uId = reinterpret_cast<UINT_PTR>(widget);
  tool.lpszText = tip.text.data();
  ::SendMessageW(window_, what, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace orvane
