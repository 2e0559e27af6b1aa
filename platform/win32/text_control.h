#pragma once

#include "platform/win32/system_control.h"

namespace orvane {

/// An edit control of one line.
class TextControl : public SystemWidget<TextWidget> {
 public:
  TextControl(WindowContext& context, Win32Window& container, PanelControlClient& client, const Rect& bounds,
              bool read_only);

  void SetText(std::string_view text) override;
  std::string Text() const override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void OnNotice(WORD code) override;

 private:
  LRESULT OnCharacter(WPARAM character, LPARAM lparam);
  void OnKeyReleased(WPARAM key);

  bool read_only_;
  bool setting_ = false;     // the program puts the text in
  bool enter_here_ = false;  // the Enter key went down in this box
};

}  // namespace orvane
