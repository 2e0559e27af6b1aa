#pragma once

#include "platform/win32/event_window.h"
#include "platform/win32/handles.h"
#include "platform/win32/panel_controls.h"
#include "platform/win32/picture_loader.h"
#include "platform/win32/widget.h"

#include <string>

namespace orvane {

/// The icon in the notification area; one record serves adding and removing.
class Win32TrayIcon : public TrayIcon {
 public:
  bool Add(TopWindow& window, std::string_view tip) override;
  void Remove() override;

 private:
  NOTIFYICONDATAA record_{};
};

class Win32WindowSystem : public WindowSystem {
 public:
  /// @param pixels_per_inch that the program draws for
  Win32WindowSystem(EventWindow& events, int pixels_per_inch)
      : events_(events), context_(pixels_per_inch, events.Paints()) {}

  std::unique_ptr<TopWindow> CreateTopWindow(TopWindowClient& client, std::string_view caption, Size size,
                                             WindowLook look) override;
  std::unique_ptr<Widget> CreateChild(Widget& container, WidgetClient& client, const Rect& bounds) override;
  PanelControls& Panels() override { return panels_; }
  std::unique_ptr<TimerHandle> StartTimer(int milliseconds, std::function<void()> tick) override;
  BoxAnswer ShowMessageBox(std::string_view text, std::string_view title, BoxStyle style) override;
  int ShowPopupMenu(const std::vector<MenuItem>& items, Widget* at) override;
  bool InModalLoop() override;
  Size ScreenSize() override;
  Size PixelsPerInch() override { return context_.pixels_per_inch; }
  Size MeasureText(std::string_view text, const Font& font) override;
  void Beep() override;
  void SetHourglass(bool on) override;
  TrayIcon& Tray() override { return tray_; }
  HWND Main() const { return main_; }
  Picture LoadPicture(const std::string& path) override { return pictures_.Load(path); }

 private:
  EventWindow& events_;
  WindowContext context_;
  Win32PanelControls panels_{context_};
  Win32TrayIcon tray_;
  PictureLoader pictures_;
  HWND main_ = nullptr;
  int modal_loops_ = 0;  // boxes and menus of ours that are open
};

/// One program a session of a user, by a named mutex that lives as long as the process.
class Win32SingleInstance : public SingleInstance {
 public:
  bool Claim() override;

 private:
  UniqueHandle mutex_;
};

}  // namespace orvane
