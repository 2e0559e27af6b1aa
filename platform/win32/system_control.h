#pragma once

#include "platform/panel_controls.h"
#include "platform/win32/widget.h"

#include <string>
#include <string_view>

namespace orvane {

/// A control of the system's own in a window of ours. It paints itself; its messages pass through here first.
class SystemControl {
 public:
  /// @param client hears what the user does; null for a control that tells nothing
  SystemControl(WindowContext& context, Win32Window& container, PanelControlClient* client,
                const Rect& bounds)
      : context_(context), container_(&container), client_(client), bounds_(bounds), accessible_([client] {
          return client != nullptr ? client->Describe() : Accessible{};
        }) {}
  virtual ~SystemControl();
  SystemControl(const SystemControl&) = delete;
  SystemControl& operator=(const SystemControl&) = delete;

  HWND hwnd() const { return hwnd_; }

 protected:
  void Create(const wchar_t* class_name, DWORD style, DWORD extended_style, std::string_view text);
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
  /// The control told its container something: a notification code of its class.
  virtual void OnNotice(WORD) {}
  /// Puts the window where it belongs.
  virtual void ApplyPlace();
  /// Escape means something to the control itself right now.
  virtual bool WantsEscape() const { return false; }

  void PutText(std::string_view text);
  void PutBounds(const Rect& bounds);
  void PutVisible(bool visible);
  void PutContainer(Widget& container);
  void PutTabStop(bool on);
  Rect Place() const { return container_->PixelsOf(bounds_); }
  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return ::SendMessageW(hwnd_, message, wparam, lparam);
  }
  void TellChange();
  WindowContext& context() const { return context_; }
  PanelControlClient* client() const { return client_; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                    DWORD_PTR self);

  WindowContext& context_;
  Win32Window* container_;
  PanelControlClient* client_;
  Rect bounds_;
  AccessibleWindow accessible_;
  HWND hwnd_ = nullptr;
};

/// The same behind one of the interfaces of the panels' controls.
template <typename Interface>
class SystemWidget : public Interface, public SystemControl {
 public:
  using SystemControl::SystemControl;

  void SetText(std::string_view text) override { PutText(text); }
  void SetBounds(const Rect& bounds) override { PutBounds(bounds); }
  void SetVisible(bool visible) override { PutVisible(visible); }
  void SetToolTip(std::string_view text) override { context().tips.Set(hwnd(), text); }
  void Invalidate(const Rect&) override { ::InvalidateRect(hwnd(), nullptr, TRUE); }
  void SetContainer(Widget& container) override { PutContainer(container); }
  void SetTabStop(bool on) override { PutTabStop(on); }
  void SetFocus() override { ::SetFocus(hwnd()); }
  void TellChanged(AccessibleChange change) override { AccessibleWindow::Tell(hwnd(), change); }
};

/// Hides a window. The keyboard, when it is in there, goes to `heir` if that can be seen, else to the top
/// window: in a hidden window keys would be lost.
void HideAndPassFocus(HWND window, HWND heir);

}  // namespace orvane
