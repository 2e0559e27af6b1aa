#pragma once

#include "forms/control.h"

#include <memory>
#include <string>

namespace orvane {

/// A top-level window and the root of its controls.
class Form : public WindowedControl {
 public:
  /// Makes the window, hidden. `size` in twips, without the system's frame.
  Form(WindowSystem& windows, std::string_view caption, Size size, WindowLook look = WindowLook::kFace);
  ~Form() override;

  /// The user or the system wants it closed.
  std::function<void()> CloseRequested;
  std::function<void()> ShellRestarted;         ///< see TopWindowClient
  std::function<void()> DisplayChanged;         ///< see TopWindowClient
  std::function<void()> DevicesChanged;         ///< see TopWindowClient
  std::function<void(int number)> PortRemoved;  ///< see TopWindowClient
  std::function<void()> Resumed;                ///< see TopWindowClient
  std::function<void()> SessionEnd;             ///< see TopWindowClient
  /// The keyboard came to a control of the form or left it, or what has it changed.
  std::function<void(WindowedControl& control, FocusNews news)> FocusTold;

  const std::string& Caption() const { return WindowText(); }
  void SetBackColor(Color color) {
    if (Assign(back_color_, color)) Invalidate();
  }
  /// The face; without one the back colour shows.
  void SetPicture(const Picture& picture) {
    if (Assign(picture_, picture)) Invalidate();
  }
  TopWindow& Window() { return *window_; }

 protected:
  void TellFocus(WindowedControl& control, FocusNews news) override {
    if (FocusTold) FocusTold(control, news);
  }
  void Paint(Canvas& canvas) const override;
  void PlaceChanged(const Rect& before) override;

 private:
  struct Client;
  std::unique_ptr<Client> client_;
  std::unique_ptr<TopWindow> window_;
  WindowLook look_;
  Color back_color_ = MakeColor(0, 0, 0);
  Picture picture_;
};

}  // namespace orvane
