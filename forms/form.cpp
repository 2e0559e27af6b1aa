#include "forms/form.h"

namespace orvane {

// What the window tells goes to the form's own handlers; only the wish to close is a form's alone.
struct Form::Client : TopWindowClient {
  Client(Form& form, WidgetClient& base) : form_(form), base_(base) {}
  void OnPaint(Canvas& canvas) override { base_.OnPaint(canvas); }
  void OnMouse(const MouseEvent& event) override { base_.OnMouse(event); }
  bool OnKey(const KeyEvent& event) override { return base_.OnKey(event); }
  void OnFocus(bool has_focus) override { base_.OnFocus(has_focus); }
  Accessible Describe() const override { return base_.Describe(); }
  void OnClose() override { Tell(form_.CloseRequested); }
  void OnShellRestarted() override { Tell(form_.ShellRestarted); }
  void OnDisplayChanged() override { Tell(form_.DisplayChanged); }
  void OnDevicesChanged() override { Tell(form_.DevicesChanged); }
  void OnPortRemoved(int number) override {
    if (form_.PortRemoved) form_.PortRemoved(number);
  }
  void OnResumed() override { Tell(form_.Resumed); }
  void OnSessionEnd() override { Tell(form_.SessionEnd); }
  static void Tell(const std::function<void()>& handler) {
    if (handler) handler();
  }
  Form& form_;
  WidgetClient& base_;
};

Form::Form(WindowSystem& windows, std::string_view caption, Size size, WindowLook look)
    : WindowedControl(Rect{0, 0, size.width, size.height}),
      client_(std::make_unique<Client>(*this, AsClient())),
      window_(windows.CreateTopWindow(*client_, caption, size, look)),
      look_(look) {
  Adopt(*window_);
  SetWindowText(caption);
}

Form::~Form() = default;

void Form::Paint(Canvas& canvas) const {
  if (look_ == WindowLook::kDialog) return;  // the system's ground shows
  canvas.FillRect({0, 0, Width(), Height()}, back_color_);
  if (picture_) canvas.DrawPicture({0, 0}, *picture_);
}

// The user moves the window, and TopWindow::MoveTo does; from here it only gets its size.
void Form::PlaceChanged(const Rect& before) {
  if (before == Bounds()) return;
  const Rect place = window_->Bounds();
  window_->SetBounds({place.left, place.top, Width(), Height()});
}

}  // namespace orvane
