#include "platform/win32/panel_controls.h"

#include "platform/win32/panel_frame.h"
#include "platform/win32/system_control.h"
#include "platform/win32/text.h"
#include "platform/win32/text_control.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

class LabelControl : public SystemWidget<Widget> {
 public:
  LabelControl(WindowContext& context, Win32Window& container, const Rect& bounds, std::string_view caption)
      : SystemWidget(context, container, nullptr, bounds) {
    Create(L"STATIC", SS_LEFT | SS_NOPREFIX, 0, caption);
  }
};

class ButtonControl : public SystemWidget<Widget> {
 public:
  ButtonControl(WindowContext& context, Win32Window& container, PanelControlClient& client,
                const Rect& bounds, std::string_view caption)
      : SystemWidget(context, container, &client, bounds) {
    Create(L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON, 0, caption);
  }

 protected:
  void OnNotice(WORD code) override {
    if (code == BN_CLICKED) TellChange();
  }
  // The system presses only the default button by Enter, and which one that is depends on how the keyboard
  // came here. A held key counts once.
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override {
    constexpr LPARAM kHeld = 1 << 30;
    if (message == WM_GETDLGCODE) {
      const LRESULT wanted = ::DefSubclassProc(hwnd(), message, wparam, lparam);
      const auto* key = reinterpret_cast<const MSG*>(lparam);
      return key != nullptr && key->wParam == VK_RETURN ? wanted | DLGC_WANTMESSAGE : wanted;
    }
    if (message == WM_KEYDOWN && wparam == VK_RETURN) {
      if ((lparam & kHeld) == 0) TellChange();
      return 0;
    }
    return SystemWidget::OnMessage(message, wparam, lparam);
  }
};

class CheckControl : public SystemWidget<CheckWidget> {
 public:
  CheckControl(WindowContext& context, Win32Window& container, PanelControlClient& client, const Rect& bounds,
               std::string_view caption)
      : SystemWidget(context, container, &client, bounds) {
    Create(L"BUTTON", WS_TABSTOP | BS_AUTOCHECKBOX, 0, caption);
  }
  void SetChecked(bool on) override { Send(BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED); }
  bool Checked() const override { return Send(BM_GETCHECK) == BST_CHECKED; }

 protected:
  void OnNotice(WORD code) override {
    if (code == BN_CLICKED) TellChange();
  }
};

class ListControl : public SystemWidget<ListWidget> {
 public:
  ListControl(WindowContext& context, Win32Window& container, PanelControlClient& client, const Rect& bounds)
      : SystemWidget(context, container, &client, bounds) {
    Create(L"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, {});
  }

  // An open list is closed first, as if dismissed: what it shows is no longer there to be chosen.
  void SetItems(const std::vector<std::string>& items) override {
    setting_ = true;
    Send(CB_SHOWDROPDOWN, FALSE);
    Send(CB_RESETCONTENT);
    for (const std::string& item : items)
      Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
    WidenFor(items);
    told_ = -1;
    setting_ = false;
  }
  void Select(int index) override {
    Send(CB_SETCURSEL, static_cast<WPARAM>(index));
    told_ = Selected();
  }
  int Selected() const override { return static_cast<int>(Send(CB_GETCURSEL)); }

 protected:
  void ApplyPlace() override;
  bool WantsEscape() const override { return Send(CB_GETDROPPEDSTATE) != 0; }
  // A list that is dismissed gives the old choice back on some versions of the system, without telling: so
  // the choice is looked at when it closes, too.
  void OnNotice(WORD code) override {
    if (setting_ || (code != CBN_SELCHANGE && code != CBN_CLOSEUP)) return;
    if (const int now = Selected(); std::exchange(told_, now) != now) TellChange();
  }

 private:
  void WidenFor(const std::vector<std::string>& items);

  bool setting_ = false;  // the program changes the lines
  int told_ = -1;         // the line that the client knows to be selected
};

// The control is as high as asked for with its list closed; the window's own height is the one with the list
// open. The system adds an edge of its own around the line that is shown, another one with and without visual
// styles: so a try is measured and put right.
void ListControl::ApplyPlace() {
  constexpr int kLines = 9;
  constexpr int kTries = 2;
  constexpr WPARAM kShownLine = static_cast<WPARAM>(-1);
  const Rect place = Place();
  // Half a line for the list's own edge; it shows whole lines only.
  const int line = static_cast<int>(Send(CB_GETITEMHEIGHT));
  const int open = place.height + kLines * line + line / 2;
  ::SetWindowPos(hwnd(), nullptr, place.left, place.top, place.width, open, SWP_NOZORDER | SWP_NOACTIVATE);
  int shown = place.height;
  for (int i = 0; i < kTries; ++i) {
    Send(CB_SETITEMHEIGHT, kShownLine, std::max(shown, 1));
    RECT closed{};
    ::GetWindowRect(hwnd(), &closed);
    shown -= static_cast<int>(closed.bottom - closed.top) - place.height;
  }
}

// Lets the open list show long lines whole.
void ListControl::WidenFor(const std::vector<std::string>& items) {
  const HDC dc = context().buffer.dc();
  const HGDIOBJ before = ::SelectObject(dc, context().PanelFont());
  LONG widest = 0;
  for (const std::string& item : items) {
    const std::wstring wide = ToWide(item);
    SIZE size{};
    ::GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
    widest = std::max(widest, size.cx);
  }
  ::SelectObject(dc, before);
  const int margin = ::GetSystemMetrics(SM_CXVSCROLL) + 4 * ::GetSystemMetrics(SM_CXEDGE);
  Send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest + margin));
}

class ScrollControl : public SystemWidget<ScrollWidget> {
 public:
  ScrollControl(WindowContext& context, Win32Window& container, PanelControlClient& client,
                const Rect& bounds)
      : SystemWidget(context, container, &client, bounds) {
    Create(L"SCROLLBAR", WS_TABSTOP | SBS_VERT, 0, {});
  }
  void SetRange(int least, int most) override {
    least_ = least;
    most_ = std::max(least, most);
    SetPosition(position_);
  }
  void SetPosition(int position) override {
    position_ = std::clamp(position, least_, most_);
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    // A bar without a range is disabled; without that flag it would be hidden.
    info.fMask = SIF_RANGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMin = least_;
    info.nMax = most_;
    info.nPos = position_;
    ::SetScrollInfo(hwnd(), SB_CTL, &info, TRUE);
  }
  int Position() const override { return position_; }

 protected:
  void OnNotice(WORD code) override {
    const int before = position_;
    SetPosition(Target(code));
    if (position_ != before) TellChange();
  }

 private:
  int Target(WORD code) const;

  int least_ = 0;
  int most_ = 0;
  int position_ = 0;
};

// Where a scroll code leads; past the ends, too.
int ScrollControl::Target(WORD code) const {
  const int page = std::max((most_ - least_) / 10, 1);
  switch (code) {
    case SB_LINEUP:
      return position_ - 1;
    case SB_LINEDOWN:
      return position_ + 1;
    case SB_PAGEUP:
      return position_ - page;
    case SB_PAGEDOWN:
      return position_ + page;
    case SB_TOP:
      return least_;
    case SB_BOTTOM:
      return most_;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
      SCROLLINFO info{};
      info.cbSize = sizeof(info);
      info.fMask = SIF_TRACKPOS;
      ::GetScrollInfo(hwnd(), SB_CTL, &info);
      return info.nTrackPos;
    }
    default:
      return position_;
  }
}

Win32Window& WindowOf(Widget& container) {
  return dynamic_cast<Win32Window&>(container);
}

}  // namespace

std::unique_ptr<Widget> Win32PanelControls::CreateFrame(Widget& container, WidgetClient& client,
                                                        const Rect& bounds, std::string_view caption,
                                                        FrameKind kind) {
  return std::make_unique<PanelFrame>(context_, client, WindowOf(container), bounds, caption, kind);
}

std::unique_ptr<Widget> Win32PanelControls::CreateButton(Widget& container, PanelControlClient& client,
                                                         const Rect& bounds, std::string_view caption) {
  return std::make_unique<ButtonControl>(context_, WindowOf(container), client, bounds, caption);
}

std::unique_ptr<Widget> Win32PanelControls::CreateLabel(Widget& container, const Rect& bounds,
                                                        std::string_view caption) {
  return std::make_unique<LabelControl>(context_, WindowOf(container), bounds, caption);
}

std::unique_ptr<ListWidget> Win32PanelControls::CreateList(Widget& container, PanelControlClient& client,
                                                           const Rect& bounds) {
  return std::make_unique<ListControl>(context_, WindowOf(container), client, bounds);
}

std::unique_ptr<CheckWidget> Win32PanelControls::CreateCheckBox(Widget& container, PanelControlClient& client,
                                                                const Rect& bounds,
                                                                std::string_view caption) {
  return std::make_unique<CheckControl>(context_, WindowOf(container), client, bounds, caption);
}

std::unique_ptr<TextWidget> Win32PanelControls::CreateTextBox(Widget& container, PanelControlClient& client,
                                                              const Rect& bounds, bool read_only) {
  return std::make_unique<TextControl>(context_, WindowOf(container), client, bounds, read_only);
}

std::unique_ptr<ScrollWidget> Win32PanelControls::CreateScrollBar(Widget& container,
                                                                  PanelControlClient& client,
                                                                  const Rect& bounds) {
  return std::make_unique<ScrollControl>(context_, WindowOf(container), client, bounds);
}

}  // namespace orvane
