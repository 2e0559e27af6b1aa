#include "outside/addresses.h"
#include "window/orvane.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

// What clicks, drags and the desktop do to the main window.

namespace orvane {
namespace {

// Mouse messages that the tray icon sends as a horizontal position in pixels.
constexpr int kTrayFirst = 512;
constexpr int kTrayDoubleClick = 515;
constexpr int kTrayRightUp = 517;
constexpr int kTrayLast = 526;

}  // namespace

// Adds to what a control does already: the left button may have a meaning of its own beside the menu of the
// right one.
void Orvane::OnButton(WindowedControl& control, int button, std::function<void()> action) {
  control.MouseUp = [before = std::move(control.MouseUp), button,
                     act = std::move(action)](const MouseEvent& event) {
    if (before) before(event);
    if (event.button == button) act();
  };
}

// The face has no caption: it is dragged wherever nothing else happens, and a double click changes the view.
void Orvane::ConnectFace() {
  const auto drag = [this](const MouseEvent& event) {
    if (event.button == kLeftButton) form_.Window().BeginDrag();
  };
  const auto toggle = [this](const MouseEvent&) { ToggleView(); };
  MeterControls& meter = meter_controls_;
  const std::array<WindowedControl*, 6> draggable{&form_,
                                                  form_controls_.lblMessage[0].get(),
                                                  form_controls_.lblMessage[1].get(),
                                                  meter.pbxModePanel.get(),
                                                  meter.forward.pbxRangeButtons.get(),
                                                  meter.reflected.pbxRangeButtons.get()};
  for (WindowedControl* control : draggable) {
    control->MouseDown = drag;
    control->DblClick = toggle;
  }
  for (GraphControls* graph : {&meter.forward, &meter.reflected}) {
    graph->pbxGraph->DblClick = toggle;
    graph->pbxScale->DblClick = toggle;
    for (auto& label : graph->lblScale)
      label->DblClick = toggle;
  }
  for (Label* label : {meter.lblPwrAlarm.get(), meter.lblSWRAlarm.get(), meter.lblShowStatus.get()}) {
    label->DblClick = toggle;
  }
  form_.MouseUp = [this](const MouseEvent& event) { OnFaceMouseUp(event); };
  // The logo is left over the bare face; a move there turns it grey again.
  form_.MouseMove = [this](const MouseEvent&) { ShowLogo(false); };
  form_controls_.imgLogo->MouseMove = [this](const MouseEvent&) { ShowLogo(true); };
  form_controls_.imgLogo->MouseUp = [this](const MouseEvent& event) { OnLogoMouseUp(event); };
  form_.CloseRequested = [this] { Form_Unload(0); };
  form_.ShellRestarted = [this] { OnShellRestarted(); };
  form_.DisplayChanged = [this] { OnDisplayChanged(); };
}

void Orvane::ConnectButtons() {
  for (int i = 0; i < static_cast<int>(kRangeButtons); ++i) {
    const auto k = static_cast<std::size_t>(i);
    OnButton(*meter_controls_.forward.cmdRange[k], kLeftButton, [this, i] { OnForwardRange(i); });
    OnButton(*meter_controls_.reflected.cmdRange[k], kLeftButton, [this, i] { OnReflectedRange(i); });
  }
  for (std::int16_t i = 0; i < static_cast<std::int16_t>(kModes); ++i) {
    OnButton(*meter_controls_.cmdMode[static_cast<std::size_t>(i)], kLeftButton,
             [this, i] { modes_.Choose(i); });
  }
  OnButton(*form_controls_.cmdMinimize, kLeftButton, [this] { Minimize(); });
  OnButton(*form_controls_.cmdClose, kLeftButton, [this] { Form_Unload(0); });
}

// The meter resets its alarms when it is told to; the lamps follow when it reports that they are off.
void Orvane::ConnectAlarms() {
  OnButton(*meter_controls_.lblPwrAlarm, kLeftButton, [this] { ResetPowerAlarm(); });
  OnButton(*meter_controls_.lblSWRAlarm, kLeftButton, [this] { ResetSWRAlarm(); });
  OnButton(*meter_controls_.cmdResetAlarms, kLeftButton, [this] {
    if (link_.State().PwrAlarm != 0 || link_.State().SWRAlarm != 0) link_.SendCommand("A");
  });
}

void Orvane::ResetSWRAlarm() {
  if (link_.State().SWRAlarm != 0) link_.SendCommand("A");
}

void Orvane::ResetPowerAlarm() {
  if (link_.State().PwrAlarm != 0) link_.SendCommand("A");
}

void Orvane::OnForwardRange(int index) {
  kept_.Settings().FPwrIndex = static_cast<std::int16_t>(index);
  display_.ChooseForwardRange(index);
}

void Orvane::OnReflectedRange(int index) {
  kept_.Settings().RPwrIndex = static_cast<std::int16_t>(index);
  display_.ChooseReflectedRange(index);
}

// What happens at the tray icon comes in here as well: as a release of the right button at the very top, with
// the message's number for a horizontal position in pixels. Of these only two mean anything: a menu at the
// first press of a double click would swallow the rest of it.
void Orvane::OnFaceMouseUp(const MouseEvent& event) {
  if (event.button != kRightButton) return;
  const int pixels_per_inch = platform_.windows.PixelsPerInch().width;
  const int pixel = event.at.x / (kTwipsPerInch / (pixels_per_inch == 0 ? 96 : pixels_per_inch));
  const bool from_tray = event.at.y == 0 && pixel >= kTrayFirst && pixel <= kTrayLast;
  if (from_tray && pixel == kTrayDoubleClick) {
    TopWindow& window = form_.Window();
    window.SetState(window.State() == WindowState::kNormal ? WindowState::kMinimized : WindowState::kNormal);
  } else if (!from_tray || pixel == kTrayRightUp) {
    OpenMainMenu();
  }
}

void Orvane::ShowLogo(bool colour) {
  if (!Assign(logo_lit_, colour)) return;
  form_controls_.imgLogo->SetPicture(faces_.Logo(colour ? FaceImages::kColour : FaceImages::kGrey));
}

void Orvane::OnLogoMouseUp(const MouseEvent& event) {
  if (event.button == kLeftButton) OpenWebSite();
}

void Orvane::OpenWebSite() {
  Minimize();
  if (!launches_.OpenDocument(kWebSite)) {
    form_.Window().SetState(WindowState::kNormal);  // a minimised window tells nothing
    status_.ShowAlert("The browser could not be started.");
  }
}

void Orvane::Minimize() {
  form_.Window().SetState(WindowState::kMinimized);
}

void Orvane::ToggleView() {
  if (mode_.Dip() || panels_.Open()) return;
  std::uint8_t& style = kept_.Settings().FormRegion;
  style = style == Views::kShort ? Views::kFull : Views::kShort;
  views_.SetViewStyle(style);
}

void Orvane::ShowVSWRMode(bool dip) {
  dip_.ShowVSWRMode(dip);
  ShowViewOfMode();
}

// The dip mode's scale and buttons are in the full view only, and only there is room for a panel; the view
// that was kept comes back afterwards.
void Orvane::ShowViewOfMode() {
  view_waits_ = form_.Window().State() == WindowState::kMinimized;
  const std::uint8_t style = mode_.Dip() || panels_.Open() ? Views::kFull : kept_.Settings().FormRegion;
  if ((style != Views::kShort) != views_.Full()) views_.SetViewStyle(style);
}

bool Orvane::PortPresent(int number) const {
  const std::vector<PresentPort> ports = platform_.ports.PresentPorts();
  return std::any_of(ports.begin(), ports.end(),
                     [number](const PresentPort& port) { return port.number == number; });
}

// What the system tells about itself.
void Orvane::ConnectSystem() {
  form_.DevicesChanged = [this] {
    if (closing_ || !started_) return;
    panels_.RefreshPorts();
    link_.Watch();
    if (link_.Flags().PortRefused && PortPresent(link_.KeptPort())) link_.SearchAgain();
  };
  form_.PortRemoved = [this](int number) {
    if (!closing_) link_.PortRemoved(number);
  };
  form_.Resumed = [this] {
    if (!closing_) link_.ReopenPort();
  };
  form_.SessionEnd = [this] { Form_Unload(0); };
}

// At logon the notification area may not be there yet.
void Orvane::AddTrayIcon() {
  const bool added = platform_.windows.Tray().Add(form_.Window(), std::string(kCaption) + " For Quorran");
  tray_retry_.SetEnabled(!added);
}

void Orvane::OnShellRestarted() {
  if (closing_) return;
  AddTrayIcon();
  form_.Window().SetTopMost(kept_.Settings().FormOnTop);
}

void Orvane::OnDisplayChanged() {
  TopWindow& window = form_.Window();
  if (closing_ || !started_ || window.State() == WindowState::kMinimized) return;
  window.SetTopMost(kept_.Settings().FormOnTop);
  if (!window.OnScreen()) window.MoveTo({kDefaultPlace, kDefaultPlace});
  if (view_waits_) ShowViewOfMode();
}

}  // namespace orvane
