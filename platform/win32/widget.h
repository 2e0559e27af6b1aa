#pragma once

#include "platform/win32/gdi_canvas.h"
#include "platform/win32/windows_api.h"
#include "platform/window_system.h"

#include <string_view>

namespace orvane {

/// What all windows of the program share: fonts, painting memory, the screen's resolution, tooltips.
class WindowContext {
 public:
  explicit WindowContext(int resolution) : pixels_per_inch{resolution, resolution} {}

  Size pixels_per_inch;
  bool hourglass = false;
  FontCache fonts;
  BackBuffer buffer;
  Rasterizer rasterizer;

  /// Shows `text` when the pointer rests on `widget`; replaces an earlier text. The tip window is made at the
  /// first call.
  void SetToolTip(HWND widget, std::string_view text);

 private:
  HWND tips_ = nullptr;
};

/// A window of the system whose painting and mouse messages go to a client.
class Win32Window {
 public:
  Win32Window(WindowContext& context, WidgetClient& client) : context_(context), client_(client) {}
  virtual ~Win32Window();
  Win32Window(const Win32Window&) = delete;
  Win32Window& operator=(const Win32Window&) = delete;

  HWND hwnd() const { return hwnd_; }
  /// The window's corner, twips from the top window's corner.
  virtual Point Origin() const { return {}; }

 protected:
  struct Creation {
    DWORD style;
    DWORD extended_style;
    RECT place;
    HWND parent;
  };
  void Create(const Creation& how, std::string_view text);
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void PutText(std::string_view text);
  void InvalidatePixels(const Rect& area, UINT flags);
  /// Place of `area` (twips from this window's corner) in pixels of this window.
  Rect PixelsOf(const Rect& area) const;
  WindowContext& context() const { return context_; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  void Paint();
  void TellMouse(MouseAction action, int button, LPARAM position);
  void OnButton(UINT message, LPARAM position);
  void OnPointerMove(LPARAM position);
  bool OnKeyMessage(UINT message, WPARAM wparam);
  LRESULT PassOn(UINT message, WPARAM wparam, LPARAM lparam);

  WindowContext& context_;
  WidgetClient& client_;
  HWND hwnd_ = nullptr;
  bool tracking_leave_ = false;
};

/// A control's window.
class Win32Child : public Widget, public Win32Window {
 public:
  Win32Child(WindowContext& context, WidgetClient& client, Win32Window& container, const Rect& bounds);

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override;
  void SetVisible(bool visible) override;
  void SetToolTip(std::string_view text) override { context().SetToolTip(hwnd(), text); }
  void Invalidate(const Rect& area) override { InvalidatePixels(area, RDW_INVALIDATE); }
  void SetContainer(Widget& container) override;
  void SetTabStop(bool on) override;
  void SetFocus() override { ::SetFocus(hwnd()); }
  Point Origin() const override;

 private:
  Rect Place() const;

  Win32Window* container_;
  Rect bounds_;
};

/// The main window.
class Win32TopWindow : public TopWindow, public Win32Window {
 public:
  Win32TopWindow(WindowContext& context, TopWindowClient& client, std::string_view caption, Size size);

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override;
  void SetVisible(bool visible) override;
  void SetToolTip(std::string_view text) override { context().SetToolTip(hwnd(), text); }
  void Invalidate(const Rect& area) override { InvalidatePixels(area, RDW_INVALIDATE | RDW_ALLCHILDREN); }
  void SetContainer(Widget&) override {}
  void SetTabStop(bool) override {}
  void SetFocus() override { ::SetFocus(hwnd()); }

  void Show() override;
  Rect Bounds() override;
  void MoveTo(Point corner) override;
  WindowState State() override;
  void SetState(WindowState state) override;
  bool OnScreen() override;
  void SetTopMost(bool on) override;
  void SetShape(const std::vector<Rect>& runs) override;
  Size BorderPixels() const override { return {}; }
  void BeginDrag() override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  TopWindowClient& client_;
  UINT shell_restarted_;  // the system's number for "the taskbar was made anew"
};

}  // namespace orvane
