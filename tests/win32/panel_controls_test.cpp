#include "platform/win32/event_pump.h"
#include "platform/win32/port_list.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/system_control.h"
#include "platform/win32/window_system.h"

#include <dbt.h>
#include <functional>
#include <gtest/gtest.h>

namespace orvane {
namespace {

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

HWND WindowOf(Widget& widget) {
  if (const auto* control = dynamic_cast<SystemControl*>(&widget)) return control->hwnd();
  return dynamic_cast<Win32Window&>(widget).hwnd();
}

std::string KeyTold(const std::string& who, Key key) {
  return who + " key " + std::to_string(static_cast<int>(key));
}

/// A panel over a face, with one control of each kind; two of them in a group. Keys and pointer are the
/// system's own input.
class PanelControlsTest : public ::testing::Test {
 protected:
  PanelControlsTest() {
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

TEST_F(PanelControlsTest, TypedCharactersAreFilteredAndPastedOnesAreNot) {
  OpenAt(*box);
  Type(L"CQx 10\x20AC\x0416");
  EXPECT_EQ(box->Text(), "CQ 1\xD8\x80");
  EXPECT_EQ(box_told.asked, "CQx 10\x80") << "a character outside the code page is not even asked about";
  EXPECT_EQ(box_told.told, Lines(6, "change"));
  Press(VK_BACK);
  EXPECT_EQ(box->Text(), "CQ 1\xD8");
  EXPECT_EQ(box_told.asked.back(), '\b');
  box_told = {};
  Copy(L"0x");
  Press('V', VK_CONTROL);
  EXPECT_EQ(box->Text(),
            "CQ 1\xD8"
            "0x");
  EXPECT_EQ(box_told.asked, "");
  EXPECT_GE(box_told.releases, 2);
  Press('A', VK_CONTROL);
  Type(L"K");
  EXPECT_EQ(box->Text(), "K");
}

TEST_F(PanelControlsTest, TheProgramsOwnChangesAreNotTold) {
  OpenAt(*box);
  box->SetText("from the program");
  list->Select(1);
  check->SetChecked(true);
  bar->SetPosition(99);
  Settle();
  EXPECT_EQ(box->Text(), "from the program");
  EXPECT_EQ(list->Selected(), 1);
  EXPECT_TRUE(check->Checked());
  EXPECT_EQ(bar->Position(), 60);
  for (const Listener* listener : {&box_told, &list_told, &check_told, &bar_told})
    EXPECT_EQ(listener->told, Lines{});
}

TEST_F(PanelControlsTest, EnterIsTheTextBoxsWhenItWentDownThere) {
  OpenAt(*box);
  Press(VK_RETURN);
  EXPECT_EQ(box_told.told, Lines{"enter"});
  EXPECT_EQ(box_told.asked, "\r");
  EXPECT_EQ(box->Text(), "");
  box_told = {};
  button->SetFocus();
  Input(VK_RETURN, 0, 0);
  box->SetFocus();
  Input(VK_RETURN, 0, KEYEVENTF_KEYUP);
  EXPECT_EQ(button_told.told, Lines{"change"}) << "Enter pushes the focused button";
  EXPECT_EQ(box_told.told, Lines{});
  check->SetFocus();
  Press(VK_RETURN);
  EXPECT_EQ(check_told.told, Lines{}) << "there is no default button";
  EXPECT_EQ(panel_client.Taken(), Lines{});
}

TEST_F(PanelControlsTest, TabWalksInTheOrderOfMakingAndStaysInThePanel) {
  OpenAt(*list);
  const std::vector<Widget*> order{box.get(), check.get(), bar.get(), button.get(), list.get()};
  for (std::size_t i = 0; i < order.size(); ++i) {
    Press(VK_TAB);
    EXPECT_EQ(::GetFocus(), WindowOf(*order[i])) << i;
  }
  Press(VK_TAB, VK_SHIFT);
  EXPECT_EQ(::GetFocus(), WindowOf(*button));
  Press(VK_RIGHT);
  EXPECT_EQ(::GetFocus(), WindowOf(*button)) << "the arrow keys leave no control";
}

TEST_F(PanelControlsTest, MnemonicsWorkFromEveryControlOfThePanel) {
  OpenAt(*list);
  Press('A', VK_MENU);
  EXPECT_EQ(button_told.told, Lines{"change"});
  Press('D', VK_MENU);
  EXPECT_EQ(check_told.told, Lines{"change"});
  EXPECT_TRUE(check->Checked());
  check->SetFocus();
  Press(VK_SPACE);
  EXPECT_FALSE(check->Checked());
  EXPECT_EQ(check_told.told, Lines(2, "change"));
}

TEST_F(PanelControlsTest, AListIsChosenFromByKeyboard) {
  OpenAt(*list);
  EXPECT_EQ(list->Selected(), -1);
  Press(VK_DOWN);
  Press(VK_DOWN);
  EXPECT_EQ(list->Selected(), 1);
  EXPECT_EQ(list_told.told, Lines(2, "change"));
  Press(VK_F4);
  ASSERT_NE(::SendMessageW(WindowOf(*list), CB_GETDROPPEDSTATE, 0, 0), 0);
  Press(VK_ESCAPE);
  EXPECT_EQ(::SendMessageW(WindowOf(*list), CB_GETDROPPEDSTATE, 0, 0), 0);
  EXPECT_EQ(panel_client.Taken(), Lines{}) << "that Escape was the list's";
  Press(VK_F4);
  list->SetItems({"other", "lines"});
  list->Select(1);
  Settle();
  EXPECT_EQ(::SendMessageW(WindowOf(*list), CB_GETDROPPEDSTATE, 0, 0), 0);
  EXPECT_EQ(list->Selected(), 1);
  EXPECT_EQ(list_told.told, Lines(2, "change"));
}

TEST_F(PanelControlsTest, AClosedListIsAsHighAsAskedForAndOpensForNineLines) {
  OpenAt(*list);
  list->SetItems(std::vector<std::string>(20, "line"));
  for (const int height : {315, 360}) {
    list->SetBounds({150, 300, 3000, height});
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    ::GetComboBoxInfo(WindowOf(*list), &info);
    RECT closed{};
    ::GetWindowRect(WindowOf(*list), &closed);
    EXPECT_EQ(closed.bottom - closed.top, height / 15);
    ::SendMessageW(WindowOf(*list), CB_SHOWDROPDOWN, TRUE, 0);
    RECT open{};
    ::GetClientRect(info.hwndList, &open);
    EXPECT_GE(open.bottom, 9 * ::SendMessageW(WindowOf(*list), CB_GETITEMHEIGHT, 0, 0));
    ::SendMessageW(WindowOf(*list), CB_SHOWDROPDOWN, FALSE, 0);
  }
}

TEST_F(PanelControlsTest, TheScrollBarStaysInItsRangeAndTellsRealChangesOnly) {
  OpenAt(*bar);
  struct {
    WORD code;
    int after;
    std::size_t told;
  } const steps[] = {{SB_LINEDOWN, 1, 1}, {SB_PAGEUP, -9, 2},   {SB_TOP, -40, 3},     {SB_LINEUP, -40, 3},
                     {SB_BOTTOM, 60, 4},  {SB_PAGEDOWN, 60, 4}, {SB_ENDSCROLL, 60, 4}};
  for (const auto& step : steps) {
    Scroll(step.code);
    EXPECT_EQ(bar->Position(), step.after) << step.code;
    EXPECT_EQ(bar_told.told.size(), step.told) << step.code;
  }
  Press(VK_UP);
  EXPECT_EQ(bar->Position(), 59);
  bar->SetRange(-5, 5);
  EXPECT_EQ(bar->Position(), 5);
  EXPECT_NE(::IsWindowEnabled(WindowOf(*bar)), 0);
}

TEST_F(PanelControlsTest, KeysThatNoControlWantsGoOutwards) {
  OpenAt(*list);
  Press(VK_ESCAPE);
  EXPECT_EQ(panel_client.Taken(), Lines{KeyTold("panel", Key::kEscape)});
  panel_client.takes_keys = false;
  group_client.takes_keys = false;
  Press(VK_ESCAPE);
  EXPECT_EQ(face.Taken(), Lines{KeyTold("face", Key::kEscape)});
  for (const auto& [code, key] : {std::pair{VK_F1, Key::kF1}, {VK_F2, Key::kF2}, {VK_F3, Key::kF3}}) {
    for (Widget* widget : std::initializer_list<Widget*>{list.get(), box.get(), bar.get(), button.get()}) {
      widget->SetFocus();
      Press(static_cast<WORD>(code));
      EXPECT_EQ(face.Taken(), Lines{KeyTold("face", key)}) << code;
    }
  }
}

TEST_F(PanelControlsTest, TheKeyboardGoesBackWhenThePanelIsHidden) {
  Face other_client;
  const auto other = windows.CreateChild(*top, other_client, {0, 0, 300, 300});
  for (Widget* before : std::initializer_list<Widget*>{top.get(), other.get()}) {
    before->SetFocus();
    OpenAt(*box);
    panel->SetVisible(false);
    EXPECT_EQ(::GetFocus(), WindowOf(*before));
  }
  OpenAt(*box);
  other->SetVisible(false);
  panel->SetVisible(false);
  EXPECT_EQ(::GetFocus(), Top()) << "never to a hidden window";
  OpenAt(*box);
  box->SetVisible(false);
  EXPECT_EQ(::GetFocus(), Top());
}

TEST_F(PanelControlsTest, AControlHasTheKeyboardAgainAfterAnotherWindowHadIt) {
  OpenAt(*box);
  Face dialog_client;
  const auto dialog = windows.CreateTopWindow(dialog_client, "Dialog", {3000, 1500}, WindowLook::kDialog);
  dialog->Show();
  EXPECT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*dialog); }));
  dialog->SetVisible(false);
  ::SetForegroundWindow(Top());
  EXPECT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*box); }));
}

TEST_F(PanelControlsTest, APanelComesUpOverItsSiblingsAndIsNamedByItsFirstChild) {
  EXPECT_EQ(::IsWindowVisible(WindowOf(*panel)), 0);
  Face other_client;
  const auto other = windows.CreateChild(*top, other_client, {0, 0, 6000, 6000});
  other->SetContainer(*top);
  panel->SetVisible(true);
  EXPECT_EQ(::GetTopWindow(Top()), WindowOf(*panel));
  for (Widget* frame : {panel.get(), group.get()}) {
    const HWND first = ::GetTopWindow(WindowOf(*frame));
    EXPECT_EQ(::GetWindowLongPtrW(first, GWL_STYLE) & BS_TYPEMASK, BS_GROUPBOX);
    wchar_t text[10]{};
    ::GetWindowTextW(first, text, 10);
    EXPECT_STREQ(text, frame == panel.get() ? L"Panel" : L"Group");
  }
}

TEST_F(PanelControlsTest, ADialogHasTheClientAreaAskedForAndItsKeys) {
  Face client;
  client.name = "dialog";
  const auto dialog = windows.CreateTopWindow(client, "Dialog", {3000, 1500}, WindowLook::kDialog);
  const auto first = windows.Panels().CreateButton(*dialog, button_told, {150, 150, 1200, 400}, "&One");
  Listener check_in_dialog;
  const auto second =
      windows.Panels().CreateCheckBox(*dialog, check_in_dialog, {150, 600, 1200, 400}, "&Two");
  RECT area{};
  ::GetClientRect(WindowOf(*dialog), &area);
  EXPECT_EQ(area.right, 200);
  EXPECT_EQ(area.bottom, 100);
  POINT corner{};
  RECT frame{};
  ::GetWindowRect(WindowOf(*dialog), &frame);
  ::ClientToScreen(WindowOf(*dialog), &corner);
  EXPECT_EQ(dialog->BorderPixels(), (Size{corner.x - frame.left, corner.y - frame.top}));
  EXPECT_EQ(windows.Main(), Top());

  dialog->CenterOnScreenOf(*top);
  dialog->Show();
  Settle(20);
  RECT room{};
  ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
  ::GetWindowRect(WindowOf(*dialog), &frame);
  EXPECT_NEAR(frame.left + frame.right, room.left + room.right, 2);
  EXPECT_NEAR(frame.top + frame.bottom, room.top + room.bottom, 2);

  ASSERT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*dialog); }));
  Press(VK_ESCAPE);
  Press(VK_RETURN);
  const Lines both{KeyTold("dialog", Key::kEscape), KeyTold("dialog", Key::kEnter)};
  EXPECT_EQ(client.Taken(), both);
  Press(VK_TAB);
  EXPECT_EQ(::GetFocus(), WindowOf(*first));
  Press(VK_TAB);
  EXPECT_EQ(::GetFocus(), WindowOf(*second));
  Press(VK_ESCAPE);
  Press(VK_RETURN);
  EXPECT_EQ(client.Taken(), both);
  Press('O', VK_MENU);
  EXPECT_EQ(button_told.told, Lines{"change"});
}

TEST_F(PanelControlsTest, DevicesSleepAndSessionAreTold) {
  struct {
    DEV_BROADCAST_PORT_W header;
    wchar_t rest[8];
  } port_data{};
  port_data.header.dbcp_size = sizeof(port_data);
  port_data.header.dbcp_devicetype = DBT_DEVTYP_PORT;
  std::wstring_view(L"COM12").copy(port_data.header.dbcp_name, 5);
  const auto data = reinterpret_cast<LPARAM>(&port_data);
  for (const WPARAM event : {DBT_DEVICEARRIVAL, DBT_DEVICEREMOVECOMPLETE, DBT_DEVNODES_CHANGED}) {
    EXPECT_EQ(::SendMessageW(Top(), WM_DEVICECHANGE, event, event == DBT_DEVNODES_CHANGED ? 0 : data), TRUE);
  }
  Settle();
  EXPECT_EQ(face.Taken(), Lines{"removed 12"});
  Settle(400);
  EXPECT_EQ(face.Taken(), Lines{"devices"}) << "a burst is told once";

  for (const WPARAM event : {PBT_APMSUSPEND, PBT_APMRESUMEAUTOMATIC, PBT_APMRESUMESUSPEND}) {
    ::SendMessageW(Top(), WM_POWERBROADCAST, event, 0);
    Settle();
  }
  EXPECT_EQ(face.Taken(), Lines{"resumed"});

  EXPECT_EQ(::SendMessageW(Top(), WM_QUERYENDSESSION, 0, 0), TRUE);
  ::SendMessageW(Top(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(face.Taken(), Lines{});
  ::SendMessageW(Top(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(face.Taken(), Lines{"session end"});
}

TEST_F(PanelControlsTest, ATapOnTheFaceDragsNothingAndTwoAreADoubleClick) {
  int presses = 0;
  face.drag = [&] {
    ++presses;
    top->BeginDrag();
  };
  RECT before{};
  ::GetWindowRect(Top(), &before);
  ::SetCursorPos(before.left + 8, before.top + 8);
  Settle(20);
  for (int i = 0; i < 2; ++i) {
    Pointer(MOUSEEVENTF_LEFTDOWN);
    Pointer(MOUSEEVENTF_MOVE, 1, 0);
    Pointer(MOUSEEVENTF_LEFTUP);
  }
  Pointer(MOUSEEVENTF_MOVE, 40, 0);
  RECT after{};
  ::GetWindowRect(Top(), &after);
  EXPECT_EQ(after.left, before.left);
  EXPECT_EQ(presses, 1);
  EXPECT_EQ(face.Taken(), Lines{"double click"});
}

TEST_F(PanelControlsTest, APressThatLosesThePointerIsOver) {
  RECT place{};
  ::GetWindowRect(Top(), &place);
  ::SetCursorPos(place.left + 8, place.top + 8);
  Settle(20);
  Pointer(MOUSEEVENTF_LEFTDOWN);
  ASSERT_EQ(::GetCapture(), Top());
  ::SetCapture(events.hwnd());
  EXPECT_EQ(face.Taken(), Lines{"leave"});
  ::ReleaseCapture();
  Pointer(MOUSEEVENTF_LEFTUP);
}

TEST_F(PanelControlsTest, ToolTipsAndHourglassHoldOverControls) {
  OpenAt(*box);
  windows.SetHourglass(true);
  const auto over = reinterpret_cast<WPARAM>(WindowOf(*box));
  EXPECT_EQ(::SendMessageW(WindowOf(*box), WM_SETCURSOR, over, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)), TRUE);
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
  windows.SetHourglass(false);
  ::SendMessageW(WindowOf(*box), WM_SETCURSOR, over, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_NE(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));

  button->SetToolTip("Apply Setting Changes");
  RECT place{};
  ::GetWindowRect(WindowOf(*button), &place);
  ::SetCursorPos(place.left + 5, place.top + 5);
  Pointer(MOUSEEVENTF_MOVE, 3, 3);
  HWND tip = nullptr;
  ASSERT_TRUE(Soon([&] {
    tip = ::FindWindowW(TOOLTIPS_CLASSW, nullptr);
    return tip != nullptr && ::IsWindowVisible(tip) != 0;
  }));
  wchar_t text[40]{};
  ::GetWindowTextW(tip, text, 40);
  EXPECT_STREQ(text, L"Apply Setting Changes");
}

TEST(Win32PortListTest, ShowsThePortsOfTheTestLine) {
  std::vector<int> numbers;
  for (const PresentPort& port : Win32PortList().PresentPorts())
    numbers.push_back(port.number);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 5), 1);
  EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 6), 1);
}

}  // namespace
}  // namespace orvane
