#include "platform/win32/port_list.h"
#include "tests/win32/panel_fixture.h"

#include <algorithm>

namespace orvane {
namespace {

using PanelControlsTest = PanelTest;

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
    EXPECT_STREQ(text, frame == panel.get() ? L"Panel " : L"Group ");
  }
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
