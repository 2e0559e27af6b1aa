#include "base/runtime_error.h"
#include "platform/wait.h"
#include "window/menus.h"
#include "window/orvane.h"

// What the popup menus do.

namespace orvane {
namespace {

constexpr std::int32_t kMenuPauseMs = 50;
constexpr std::int32_t kClosePauseMs = 500;
constexpr std::int32_t kFlowPauseMs = 1500;

}  // namespace

void Orvane::ConnectMenus() {
  const std::array<void (Orvane::*)(Widget*), 3> actions{&Orvane::OpenWindowMenu, &Orvane::OpenSettingsMenu,
                                                         &Orvane::OpenHelpMenu};
  for (std::size_t i = 0; i < actions.size(); ++i) {
    CommandButton& button = *form_controls_.cmdMenu[i];
    button.MouseUp = [this, &button, action = actions[i]](const MouseEvent& event) {
      (this->*action)(event.by_keys ? &button.AsWidget() : nullptr);
    };
  }
  OnButton(*form_controls_.cmdHelp, kLeftButton, [this] { ShowHelp(); });
  form_.KeyDown = [this](Key key) { return OnFaceKey(key); };
  MeterControls& meter = meter_controls_;
  for (WindowedControl* control : std::initializer_list<WindowedControl*>{
           form_controls_.imgLogo.get(), form_controls_.lblMessage[0].get(),
           form_controls_.lblMessage[1].get(), meter.lblPort.get(), meter.lblPwrAlarm.get(),
           meter.lblSWRAlarm.get(), meter.lblShowStatus.get(), meter.forward.pbxGraph.get(),
           meter.reflected.pbxGraph.get(), meter.pbxModePanel.get(), meter.forward.pbxRangeButtons.get(),
           meter.reflected.pbxRangeButtons.get(), meter.forward.pbxScale.get(),
           meter.reflected.pbxScale.get(), meter.forward.dbxPower.get(), meter.reflected.dbxPower.get(),
           meter.dbxVSWR.get()}) {
    OnButton(*control, kRightButton, [this] { OpenMainMenu(); });
  }
  for (GraphControls* graph : {&meter.forward, &meter.reflected}) {
    for (auto& label : graph->lblScale)
      OnButton(*label, kRightButton, [this] { OpenMainMenu(); });
  }
}

void Orvane::ConnectPanels() {
  panels_.OpenChanged = [this] { ShowViewOfMode(); };
  panels_.StartUpdater = [this] {
    if (!launches_.LaunchFirmwareUpdater()) status_.ShowAlert("The updater could not be started.");
  };
  panels_.PortChanged = [this] { meter_controls_.lblPort->SetCaption(kept_.Settings().CommPort); };
}

bool Orvane::OnFaceKey(Key key) {
  switch (key) {
    case Key::kMenu:
      OpenMainMenu(speech_.Focused() != nullptr ? &speech_.Focused()->AsWidget() : &form_.AsWidget());
      return true;
    case Key::kF1:
      ShowHelp();
      return true;
    case Key::kF2:
      panels_.ShowFrameMeterSetup();
      return true;
    case Key::kF3:
      panels_.ShowFrameSettings();
      return true;
    case Key::kF4:
      ToggleView();
      return true;
    default:
      return false;
  }
}

// The system takes a moment over each part of the menu; the command goes out when all of them are gone.
void Orvane::OpenMainMenu(Widget* at) {
  const int chosen = platform_.windows.ShowPopupMenu(menus::MainMenu(link_.State(), link_.Lists()), at);
  for (int part = 0; part < menus::kMainMenuParts; ++part) {
    WaitTicks(platform_.clock, platform_.pump, kMenuPauseMs);
  }
  if (const auto setting = menus::SettingOf(chosen)) link_.ChangeSetting(setting->letter, setting->value);
}

void Orvane::OpenWindowMenu(Widget* at) {
  TopWindow& window = form_.Window();
  switch (platform_.windows.ShowPopupMenu(menus::WindowMenu(), at)) {
    case menus::kClose:
      Attempt([this] { WaitTicks(platform_.clock, platform_.pump, kClosePauseMs); });
      Form_Unload(0);
      break;
    case menus::kMinimize:
      if (window.State() != WindowState::kMinimized) window.SetState(WindowState::kMinimized);
      break;
    case menus::kRestore:
      if (window.State() != WindowState::kNormal) window.SetState(WindowState::kNormal);
      break;
    default:
      break;
  }
}

void Orvane::OpenSettingsMenu(Widget* at) {
  switch (platform_.windows.ShowPopupMenu(menus::SettingsMenu(), at)) {
    case menus::kMeterSettings:
      panels_.ShowFrameMeterSetup();
      break;
    case menus::kProgramSettings:
      panels_.ShowFrameSettings();
      break;
    case menus::kStartDataFlow:
      if (link_.Flags().SearchAbandoned) {  // there is no meter yet whose flow could be started
        link_.SearchAgain();
        break;
      }
      link_.SetDataFlow(false);
      WaitTicks(platform_.clock, platform_.pump, kFlowPauseMs);
      link_.SetDataFlow(true);
      break;
    case menus::kStopDataFlow:
      link_.SetDataFlow(false);
      break;
    default:
      break;
  }
}

void Orvane::OpenHelpMenu(Widget* at) {
  switch (platform_.windows.ShowPopupMenu(menus::HelpMenu(), at)) {
    case menus::kHelpContents:
      ShowHelp();
      break;
    case menus::kAbout:
      ShowAbout();
      break;
    default:
      break;
  }
}

// The main window makes room for the box and comes back when it is closed. Somebody may bring it back before
// and ask again: the box that is open then comes to the front.
void Orvane::ShowAbout() {
  if (!Attempt([this] { MakeAbout(); })) {
    status_.ShowAlert("The box could not be opened.");
    return;
  }
  form_.Window().SetState(WindowState::kMinimized);
  about_->Show(form_.Window());
}

void Orvane::MakeAbout() {
  if (about_) return;
  about_.emplace(platform_, launches_);
  about_->Closed = [this] {
    if (!closing_) form_.Window().SetState(WindowState::kNormal);
  };
  about_->LaunchFailed = [this](std::string_view sentence) {
    form_.Window().SetState(WindowState::kNormal);  // a minimised window tells nothing
    status_.ShowAlert(sentence);
  };
}

void Orvane::ShowHelp() {
  if (!launches_.ShowHelp()) status_.ShowAlert("The help could not be opened.");
}

}  // namespace orvane
