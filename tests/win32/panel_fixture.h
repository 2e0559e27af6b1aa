#pragma once

#include "platform/win32/event_pump.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/system_control.h"
#include "platform/win32/window_system.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

using Lines = std::vector<std::string>;

/// Notes what a control tells, and gives back what the test wants for a character.
struct Listener : PanelControlClient {
  void OnChange() override { told.emplace_back("change"); }
  unsigned char OnKeyPress(unsigned char code) override {
    asked += static_cast<char>(code);
    if (code == 'x') return 0;
    return code == '0' ? static_cast<unsigned char>(0xD8) : code;
  }
  void OnKeyUp(bool enter) override {
    if (enter) told.emplace_back("enter");
    ++releases;
  }
  Lines told;
  std::string asked;
  int releases = 0;
};

struct Face : TopWindowClient {
  void OnPaint(Canvas&) override {}
  void OnMouse(const MouseEvent& event) override {
    if (event.action == MouseAction::kDown && drag) drag();
    if (event.action == MouseAction::kLeave) told.emplace_back("leave");
    if (event.action == MouseAction::kDoubleClick) told.emplace_back("double click");
  }
  bool OnKey(const KeyEvent& event) override {
    if (event.down) told.push_back(name + " key " + std::to_string(static_cast<int>(event.key)));
    return takes_keys;
  }
  void OnFocus(bool) override {}
  void OnClose() override {}
  void OnShellRestarted() override {}
  void OnDisplayChanged() override {}
  void OnDevicesChanged() override { told.emplace_back("devices"); }
  void OnPortRemoved(int number) override { told.push_back("removed " + std::to_string(number)); }
  void OnResumed() override { told.emplace_back("resumed"); }
  void OnSessionEnd() override { told.emplace_back("session end"); }
  Lines Taken() { return std::exchange(told, {}); }

  std::string name = "face";
  bool takes_keys = true;
  std::function<void()> drag;
  Lines told;
};

inline HWND WindowOf(Widget& widget) {
  if (const auto* control = dynamic_cast<SystemControl*>(&widget)) return control->hwnd();
  return dynamic_cast<Win32Window&>(widget).hwnd();
}

inline std::string KeyTold(const std::string& who, Key key) {
  return who + " key " + std::to_string(static_cast<int>(key));
}

/// A panel over a face, with one control of each kind; two of them in a group. Keys and pointer are the
/// system's own input.
class PanelTest : public ::testing::Test {
 protected:
  PanelTest() {
    panel_client.name = "panel";
    top = windows.CreateTopWindow(face, "Panel test", {6000, 6000}, WindowLook::kFace);
    PanelControls& panels = windows.Panels();
    panel = panels.CreateFrame(*top, panel_client, {300, 300, 5400, 5400}, "Panel", FrameKind::kPanel);
    group = panels.CreateFrame(*panel, group_client, {150, 300, 5000, 1500}, "Group", FrameKind::kGroup);
    list = panels.CreateList(*group, list_told, {150, 300, 3000, 315});
    label = panels.CreateLabel(*group, {150, 700, 3000, 300}, "A & B");
    box = panels.CreateTextBox(*panel, box_told, {150, 2000, 3000, 330}, false);
    check = panels.CreateCheckBox(*panel, check_told, {150, 2500, 3000, 300}, "&Display");
    bar = panels.CreateScrollBar(*panel, bar_told, {4000, 2000, 300, 2000});
    button = panels.CreateButton(*panel, button_told, {150, 3000, 1500, 400}, "&Apply");
    list->SetItems({"one", "two", "three"});
    bar->SetRange(-40, 60);
    top->MoveTo({1500, 1500});
    top->Show();
    ::SetForegroundWindow(Top());
    Settle(50);
  }

  HWND Top() const { return WindowOf(*top); }
  /// Lets everything happen that is under way.
  void Settle(DWORD ms = 0) {
    const ULONGLONG end = ::GetTickCount64() + ms;
    do {
      pump.DeliverPending();
      if (ms > 0) ::Sleep(1);
    } while (::GetTickCount64() < end);
  }
  /// For what another process, the window manager, has a part in.
  template <typename Condition>
  bool Soon(Condition condition) {
    for (int i = 0; i < 60 && !condition(); ++i)
      Settle(50);
    return condition();
  }
  void OpenAt(Widget& first) {
    panel->SetVisible(true);
    first.SetFocus();
    Settle();
    ASSERT_EQ(::GetFocus(), WindowOf(first));
  }
  void Input(WORD key, wchar_t character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    ::SendInput(1, &input, sizeof(input));
    Settle();
  }
  void Press(WORD key, WORD with = 0) {
    if (with != 0) Input(with, 0, 0);
    Input(key, 0, 0);
    Input(key, 0, KEYEVENTF_KEYUP);
    if (with != 0) Input(with, 0, KEYEVENTF_KEYUP);
  }
  void Type(std::wstring_view text) {
    for (const wchar_t character : text) {
      Input(0, character, KEYEVENTF_UNICODE);
      Input(0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
  }
  void Pointer(DWORD flags, int dx = 0, int dy = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = dx;
    input.mi.dy = dy;
    input.mi.dwFlags = flags;
    ::SendInput(1, &input, sizeof(input));
    Settle();
  }
  void Scroll(WORD code) {
    ::SendMessageW(::GetParent(WindowOf(*bar)), WM_VSCROLL, code, reinterpret_cast<LPARAM>(WindowOf(*bar)));
  }
  static void Copy(std::wstring_view text) {
    ::OpenClipboard(nullptr);
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (text.size() + 1) * sizeof(wchar_t));
    text.copy(static_cast<wchar_t*>(::GlobalLock(memory)), text.size());
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_UNICODETEXT, memory);
    ::CloseClipboard();
  }

  EventWindow events;
  Win32Clock clock;
  Win32SerialPort port{events};
  Win32EventPump pump{clock, port};
  Win32WindowSystem windows{events, 96};
  Face face, panel_client, group_client;
  Listener list_told, box_told, check_told, bar_told, button_told;
  std::unique_ptr<TopWindow> top;
  std::unique_ptr<Widget> panel, group, label, button;
  std::unique_ptr<ListWidget> list;
  std::unique_ptr<TextWidget> box;
  std::unique_ptr<CheckWidget> check;
  std::unique_ptr<ScrollWidget> bar;
};

}  // namespace orvane
