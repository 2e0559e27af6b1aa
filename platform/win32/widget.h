#pragma once

#include "platform/win32/accessible_window.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/win32/handles.h"
#include "platform/win32/paint_requests.h"
#include "platform/win32/system_events.h"
#include "platform/win32/tool_tips.h"
#include "platform/win32/windows_api.h"
#include "platform/window_system.h"

#include <functional>
#include <string_view>

namespace orvane {

/// What all windows of the program share: fonts, painting memory, the screen's resolution, tooltips.
class WindowContext {
 public:
  /// Makes the classes of the program's windows known to the system.
  WindowContext(int resolution, PaintRequests& paint_requests);

  /// A press that drags `window` once the pointer has gone far enough; screen pixels.
  struct Drag {
    HWND window = nullptr;
    POINT from{};    ///< where the pointer was pressed
    POINT corner{};  ///< where the window was then
    bool moving = false;
  };

  Size pixels_per_inch;
  PaintRequests& paints;
  bool hourglass = false;
  Drag drag;
  FontCache fonts;
  BackBuffer buffer;
  Rasterizer rasterizer;
  ToolTips tips;

  /// The system's font for messages at nine points, for controls in the system's look.
  HFONT PanelFont();

 private:
  UniqueFont panel_font_;
};

/// What a window of ours sends to a control of the system's in it when that told it something; the first
/// parameter says what, as the control's own notification does.
inline constexpr UINT kNoticeMessage = WM_APP + 0x100;

/// The class of windows in which the keyboard works as in a dialog, and of all others.
inline constexpr wchar_t kPanelClass[] = L"OrvanePanel";
inline constexpr wchar_t kControlClass[] = L"OrvaneControl";

/// A window of the system whose painting and mouse messages go to a client.
class Win32Window : public PaintTarget {
 public:
  Win32Window(WindowContext& context, WidgetClient& client)
      : context_(context), client_(client), accessible_([&client] { return client.Describe(); }) {}
  ~Win32Window() override { Destroy(); }
  Win32Window(const Win32Window&) = delete;
  Win32Window& operator=(const Win32Window&) = delete;

  HWND hwnd() const { return hwnd_; }
  /// The window's corner, twips from the top window's corner.
  virtual Point Origin() const { return {}; }
  /// The system's colour (COLOR_...) under what is painted; none on the face, which is painted whole.
  virtual int Ground() const { return kNoGround; }
  /// Place of `area` (twips from this window's corner) in pixels of this window.
  Rect PixelsOf(const Rect& area) const;
  /// Paints all of it and what lies in it to `screen`, whose origin is this window's corner. For a face that
  /// is just shown, before panels are in it: sixty paintings on one road, and nobody sees it grow.
  void PaintTree(HDC screen);
  void PaintNow(const RECT& area) override;
  void PaintLater(const RECT& area) override { ::RedrawWindow(hwnd_, &area, nullptr, RDW_INVALIDATE); }

 protected:
  static constexpr int kNoGround = -1;
  struct Creation {
    const wchar_t* class_name;
    DWORD style;
    DWORD extended_style;
    RECT place;
    HWND parent;
  };
  void Create(const Creation& how, std::string_view text);
  void Destroy();
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void PutText(std::string_view text);
  void AskForPainting(const Rect& area);
  WindowContext& context() const { return context_; }

 private:
  friend class WindowContext;  // names the procedure to the system
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  void Paint();
  void PaintPart(HDC screen, const RECT& area);
  LRESULT OnPointerMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void TellMouse(MouseAction action, int button, LPARAM position);
  void OnButton(UINT message, LPARAM position);
  bool Drags(WPARAM buttons);
  bool OnKeyMessage(UINT message, WPARAM wparam);
  LRESULT PassOn(UINT message, WPARAM wparam, LPARAM lparam);

  WindowContext& context_;
  WidgetClient& client_;
  AccessibleWindow accessible_;
  HWND hwnd_ = nullptr;
  bool tracking_leave_ = false;
  bool pressed_ = false;  // a button went down here and has the pointer captured
};

/// A control's window.
class Win32Child : public Widget, public Win32Window {
 public:
  Win32Child(WindowContext& context, WidgetClient& client, Win32Window& container, const Rect& bounds);

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override;
  void SetVisible(bool visible) override;
  void SetToolTip(std::string_view text) override { context().tips.Set(hwnd(), text); }
  void Invalidate(const Rect& area) override { AskForPainting(area); }
  void SetContainer(Widget& container) override;
  void SetTabStop(bool on) override;
  void SetFocus() override { ::SetFocus(hwnd()); }
  void TellChanged(AccessibleChange change) override { AccessibleWindow::Tell(hwnd(), change); }
  Point Origin() const override;
  int Ground() const override { return container_->Ground(); }

 protected:
  /// For windows of another look, which make themselves at `Place()`.
  struct LaterTag {};
  Win32Child(WindowContext& context, WidgetClient& client, Win32Window& container, const Rect& bounds,
             LaterTag)
      : Win32Window(context, client), container_(&container), bounds_(bounds) {}
  Rect Place() const { return container_->PixelsOf(bounds_); }

 private:
  void HideWithFocus();
  void PutBits(int word, LONG_PTR bits, bool on);

  Win32Window* container_;
  Rect bounds_;
};

/// A window on the desktop: the face, or a dialog.
class Win32TopWindow : public TopWindow, public Win32Window {
 public:
  Win32TopWindow(WindowContext& context, TopWindowClient& client, std::string_view caption, Size size,
                 WindowLook look);
  ~Win32TopWindow() override;

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override;
  void SetVisible(bool visible) override;
  void SetToolTip(std::string_view text) override { context().tips.Set(hwnd(), text); }
  void Invalidate(const Rect& area) override { AskForPainting(area); }
  /// With all that lies inside: what changes on the face changes behind its controls too.
  void PaintNow(const RECT& area) override { PaintLater(area); }
  void PaintLater(const RECT& area) override {
    ::RedrawWindow(hwnd(), &area, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
  }
  void SetContainer(Widget&) override {}
  void SetTabStop(bool) override {}
  void SetFocus() override;
  void TellChanged(AccessibleChange change) override { AccessibleWindow::Tell(hwnd(), change); }
  int Ground() const override { return look_ == WindowLook::kDialog ? COLOR_3DFACE : kNoGround; }

  void Show() override;
  Rect Bounds() override;
  void MoveTo(Point corner) override;
  WindowState State() override;
  void SetState(WindowState state) override;
  bool OnScreen() override;
  void CenterOnScreenOf(TopWindow& other) override;
  void SetTopMost(bool on) override;
  void SetShape(const std::vector<Rect>& runs) override;
  Size BorderPixels() const override;
  void BeginDrag() override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void ShowFirst();
  RECT FrameAround(const Rect& pixels) const;
  RECT PlaceInPixels() const;
  bool OnFocusMessage(UINT message, WPARAM wparam);
  bool GiveFocusBack();
  void KeepFocusWhile(const std::function<void()>& minimise);

  TopWindowClient& client_;
  WindowLook look_;
  bool shown_ = false;
  UINT shell_restarted_;    // the system's number for "the taskbar was made anew"
  SystemEvents events_;     // what the face hears of devices, power and session
  UniqueWindow owner_;      // of a dialog: never shown, it keeps it off the taskbar
  HWND focused_ = nullptr;  // had the keyboard when another window of the desktop took it
};

}  // namespace orvane
