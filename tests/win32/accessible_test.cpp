#include "tests/win32/panel_fixture.h"

#include <oleacc.h>

namespace orvane {
namespace {

/// A control that says what the test wants.
struct Speaker : Face {
  Accessible Describe() const override {
    ++asked;
    return what;
  }
  void OnAction() override { told.emplace_back("action"); }
  Accessible what;
  mutable int asked = 0;
};

class AccessibleTest : public PanelTest {
 protected:
  AccessibleTest() {
    speaker.what.role = Role::kText;
    speaker.what.name = "Forward power";
    speaker.what.value = "1250 watts";
    speaker.what.action = "Reset";
    control = windows.CreateChild(*top, speaker, {300, 300, 600, 300});
    control->SetText("1250");
  }
  static VARIANT Self() {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
  }
  static IAccessible* ObjectOf(HWND window) {
    void* object = nullptr;
    const HRESULT result = ::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                                        __uuidof(IAccessible), &object);
    return SUCCEEDED(result) ? static_cast<IAccessible*>(object) : nullptr;
  }
  using TextOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
  static std::wstring Text(IAccessible& object, TextOf method) {
    BSTR text = nullptr;
    const HRESULT result = (object.*method)(Self(), &text);
    const std::wstring copy(text == nullptr ? L"" : text, ::SysStringLen(text));
    ::SysFreeString(text);
    return result == S_OK ? copy : L"(none)";
  }

  Speaker speaker;
  std::unique_ptr<Widget> control;
};

TEST_F(AccessibleTest, AReaderIsToldWhatTheOwnerSaysAtThatMoment) {
  const int before = speaker.asked;
  control->SetText("1251");
  EXPECT_EQ(speaker.asked, before) << "nobody asks";
  IAccessible* object = ObjectOf(WindowOf(*control));
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(Text(*object, &IAccessible::get_accName), L"Forward power");
  EXPECT_EQ(Text(*object, &IAccessible::get_accValue), L"1250 watts");
  speaker.what.value = "90 watts";
  EXPECT_EQ(Text(*object, &IAccessible::get_accValue), L"90 watts");
  speaker.what.name.clear();
  EXPECT_EQ(Text(*object, &IAccessible::get_accName), L"1251") << "the system's own where there is none";
  VARIANT number{};
  EXPECT_EQ(object->get_accRole(Self(), &number), S_OK);
  EXPECT_EQ(number.lVal, ROLE_SYSTEM_TEXT);
  for (const bool stop : {true, false}) {
    control->SetTabStop(stop);
    EXPECT_EQ(object->get_accState(Self(), &number), S_OK);
    EXPECT_EQ((number.lVal & STATE_SYSTEM_FOCUSABLE) != 0, stop);
    EXPECT_NE(number.lVal & STATE_SYSTEM_READONLY, 0);
  }
  EXPECT_EQ(object->Release(), 0U);
}

TEST_F(AccessibleTest, AnActionIsCarriedOutAfterTheCall) {
  IAccessible* object = ObjectOf(WindowOf(*control));
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->accDoDefaultAction(Self()), S_OK);
  EXPECT_EQ(speaker.Taken(), Lines{});
  Settle();
  EXPECT_EQ(speaker.Taken(), Lines{"action"});
  object->Release();
}

TEST_F(AccessibleTest, AnObjectOutlivesItsWindowAndSaysSo) {
  IAccessible* object = ObjectOf(WindowOf(*control));
  ASSERT_NE(object, nullptr);
  const int before = speaker.asked;
  control.reset();
  BSTR text = nullptr;
  VARIANT number{};
  EXPECT_EQ(object->get_accName(Self(), &text), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(object->get_accRole(Self(), &number), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(object->get_accState(Self(), &number), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(object->accDoDefaultAction(Self()), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(object->accSelect(SELFLAG_TAKEFOCUS, Self()), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(speaker.asked, before);
  EXPECT_EQ(object->Release(), 0U);
}

TEST_F(AccessibleTest, AWindowThatSaysNothingIsTheSystems) {
  speaker.what = {};
  IAccessible* object = ObjectOf(WindowOf(*control));
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(Text(*object, &IAccessible::get_accName), L"1250");
  object->Release();
}

TEST_F(AccessibleTest, KeysWithAltAreTheSystems) {
  control->SetFocus();
  ::SendMessageW(WindowOf(*control), WM_SYSKEYDOWN, VK_F4, 1 << 29);
  ::SendMessageW(WindowOf(*control), WM_SYSKEYUP, VK_F4, 1 << 29);
  Settle();
  EXPECT_EQ(speaker.Taken(), Lines{});
  ::SendMessageW(WindowOf(*control), WM_KEYDOWN, VK_F4, 0);
  EXPECT_EQ(speaker.Taken(), Lines{KeyTold("face", Key::kF4)});
}

// As a high-contrast theme does it.
TEST_F(AccessibleTest, APanelIsPaintedInTheSystemsColours) {
  OpenAt(*box);
  const int element = COLOR_3DFACE;
  const COLORREF before = ::GetSysColor(element);
  const COLORREF odd = RGB(16, 33, 49);
  ASSERT_NE(::SetSysColors(1, &element, &odd), 0);
  ::RedrawWindow(WindowOf(*panel), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  Settle(50);
  const auto ground = [](Widget& widget, int x, int y) {
    const HDC dc = ::GetDC(WindowOf(widget));
    const COLORREF color = ::GetPixel(dc, x, y);
    ::ReleaseDC(WindowOf(widget), dc);
    return color;
  };
  EXPECT_EQ(ground(*panel, 20, 330), odd) << "of the panel";
  EXPECT_EQ(ground(*group, 250, 80), odd) << "of a group in it";
  EXPECT_EQ(ground(*label, 180, 15), odd) << "behind a text";
  ::SetSysColors(1, &element, &before);
}

}  // namespace
}  // namespace orvane
