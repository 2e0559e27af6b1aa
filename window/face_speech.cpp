#include "window/orvane.h"

// What the title row says to a screen reader, and what the keyboard does outside buttons.

namespace orvane {

void Orvane::ConnectSpeech() {
  form_.FocusTold = [this](WindowedControl& control, FocusNews news) {
    if (&control != &form_) speech_.OnFocus(control, news);
  };
  Image& logo = *form_controls_.imgLogo;
  logo.SetTabStop(true);
  logo.Pressed = [this] { OpenWebSite(); };
  logo.Describing = [](Accessible& what) {
    what.role = Role::kLink;
    what.action = "Open";
  };
  for (auto& message : form_controls_.lblMessage) {
    message->SetTabStop(true);
    message->Describing = [&message](Accessible& what) {
      what.role = Role::kText;
      what.name = "Message";
      what.value = message->Caption().empty() ? "no message" : message->Caption();
    };
  }
  for (auto& button : form_controls_.cmdMenu)
    button->Describing = [](Accessible& what) { what.role = Role::kMenuButton; };
  meter_controls_.lblSWRAlarm->Pressed = [this] { ResetSWRAlarm(); };
  meter_controls_.lblPwrAlarm->Pressed = [this] { ResetPowerAlarm(); };
}

}  // namespace orvane
