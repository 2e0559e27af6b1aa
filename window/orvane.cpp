#include "window/orvane.h"

#include "base/runtime_error.h"
#include "window/layout.h"
#include "window/palette.h"

namespace orvane {
namespace {

constexpr int kFindMeterMs = 1000;
constexpr int kTrayRetryMs = 5000;

}  // namespace

Orvane::Orvane(Platform& platform)
    : platform_(platform),
      kept_(platform.profiles, platform.files, platform.clock,
            [this](const std::string& port) { meter_controls_.lblPort->SetCaption(port); }),
      form_(platform.windows, kCaption, layout::kFullFace),
      form_controls_(BuildFormControls(platform.windows, form_)),
      meter_controls_(BuildMeterControls(platform.windows, form_)),
      status_(platform.windows, platform.clock, *meter_controls_.lblShowStatus),
      lights_(platform.windows, platform.clock, meter_controls_),
      link_settings_(kept_),
      link_(platform.clock, platform.pump, platform.port, link_settings_, *this),
      display_(platform.windows, platform.clock, platform.pump, meter_controls_, link_.State(),
               link_.Lists().Auto, mode_, [this](std::int32_t watts) { SendToClient(watts); }),
      spoken_(meter_controls_, display_, link_.State(), mode_, lights_),
      speech_(platform.windows, platform.clock),
      announcer_(platform.windows, platform.clock, *form_controls_.lblAnnouncement),
      modes_(meter_controls_, mode_),
      dip_(meter_controls_, display_),
      faces_(platform.windows, platform.files),
      views_(form_, form_controls_, meter_controls_, faces_, dip_),
      launches_(platform),
      client_(platform.clients, platform.clock),
      panels_(platform, form_, link_, kept_, status_, client_),
      tray_retry_(platform.windows, platform.clock, kTrayRetryMs),
      TimerFindMeter_(platform.windows, platform.clock, kFindMeterMs),
      port_watch_(platform.windows, platform.clock, PortWatch::kTickMs) {
  form_.SetBackColor(palette::kFace);
  TimerFindMeter_.Tick = [this] { link_.FindMeter(); };
  port_watch_.Tick = [this] {
    panels_.RefreshClientState();
    link_.Watch();
    announcer_.Update(link_.State(), link_.Flags());
  };
  tray_retry_.Tick = [this] { AddTrayIcon(); };
  modes_.SendCommand = [this](std::string_view command) { link_.SendCommand(command); };
  modes_.ShowVSWRMode = [this](bool dip) { ShowVSWRMode(dip); };
  dip_.RestoreRanges = [this] {
    Attempt([this] { OnForwardRange(kept_.Settings().FPwrIndex); });
    Attempt([this] { OnReflectedRange(kept_.Settings().RPwrIndex); });
  };
  ConnectFace();
  ConnectButtons();
  ConnectAlarms();
  ConnectMenus();
  ConnectPanels();
  ConnectSystem();
  ConnectSpeech();
}

void Orvane::LineHandled() {
  display_.OnMeterLine();
  announcer_.Update(link_.State(), link_.Flags());
}

void Orvane::ReadingsStopped() {
  display_.ShowNoReadings();
  announcer_.Update(link_.State(), link_.Flags());
}

void Orvane::ShowStatus(std::string_view text, StatusTone tone) {
  if (tone == StatusTone::kUrgent) {
    status_.ShowAlert(text);
    return;
  }
  status_.Show(text);
  status_.StartClearTimer();
}

void Orvane::SendToClient(std::int32_t watts) {
  const UserSettings& settings = kept_.Settings();
  client_.SendClientData(watts, settings.ClientApp, settings.ClientMsgId);
}

bool Orvane::AskOkCancel(std::string_view text, std::string_view title) {
  return platform_.windows.ShowMessageBox(text, title, BoxStyle::kOkCancel) == BoxAnswer::kOk;
}

void Orvane::ShowBox(std::string_view text, std::string_view title) {
  platform_.windows.ShowMessageBox(text, title, BoxStyle::kPlain);
}

}  // namespace orvane
