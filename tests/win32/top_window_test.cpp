#include "tests/win32/panel_fixture.h"

#include <dbt.h>

namespace orvane {
namespace {

using TopWindowTest = PanelTest;

TEST_F(TopWindowTest, AControlHasTheKeyboardAgainAfterAnotherWindowHadIt) {
  OpenAt(*box);
  Face dialog_client;
  const auto dialog = windows.CreateTopWindow(dialog_client, "Dialog", {3000, 1500}, WindowLook::kDialog);
  dialog->Show();
  EXPECT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*dialog); }));
  dialog->SetVisible(false);
  ::SetForegroundWindow(Top());
  EXPECT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*box); }));

  const auto timer = windows.StartTimer(20, [] {
    const HWND message_box = ::FindWindowW(L"#32770", L"Message To Long");
    if (message_box != nullptr) ::PostMessageW(message_box, WM_COMMAND, IDOK, 0);
  });
  EXPECT_EQ(windows.ShowMessageBox("Text", "Message To Long", BoxStyle::kPlain), BoxAnswer::kOk);
  EXPECT_TRUE(Soon([&] { return ::GetFocus() == WindowOf(*box); }));
}

TEST_F(TopWindowTest, ADialogHasTheClientAreaAskedForAndItsKeys) {
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

TEST_F(TopWindowTest, DevicesSleepAndSessionAreTold) {
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

TEST_F(TopWindowTest, ATapOnTheFaceDragsNothingAndTwoAreADoubleClick) {
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

TEST_F(TopWindowTest, APressThatLosesThePointerIsOver) {
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

TEST_F(TopWindowTest, ToolTipsAndHourglassHoldOverControls) {
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

}  // namespace
}  // namespace orvane
