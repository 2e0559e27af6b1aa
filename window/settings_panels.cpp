#include "window/settings_panels.h"

#include "base/runtime_error.h"
#include "link/scoped_true.h"
#include "settings/setting_rows.h"
#include "window/layout.h"

#include <string>
#include <string_view>

namespace orvane {

SettingsPanels::SettingsPanels(Platform& platform, Form& form, MeterLink& link, OVUserSettings& kept,
                               StatusLine& status, const ClientData& client)
    : platform_(platform), form_(form), link_(link), kept_(kept), status_(status), client_(client) {}

bool SettingsPanels::Made(const std::function<void()>& make) {
  if (Attempt(make)) return true;
  status_.ShowAlert("The panel could not be opened.");
  return false;
}

void SettingsPanels::MakeMeterSetup() {
  if (setup_) return;
  setup_.emplace(platform_.windows, form_, layout::kPanels);
  setup_->Apply = [this] { UpdateMeter(); };
  setup_->SendCallMessage = [this](std::string_view text) { link_.SendCallMessage(std::string(text)); };
  setup_->Update = [this] {
    if (StartUpdater) StartUpdater();
  };
  setup_->Closed = [this] {
    if (OpenChanged) OpenChanged();
  };
}

void SettingsPanels::MakeProgramSettings() {
  if (program_) return;
  program_.emplace(platform_.windows, form_, layout::kPanels, platform_.ports);
  program_->Apply = [this] { cmdAction_Click(); };
  program_->ClientNamed = [this](std::string_view name) {
    kept_.Settings().ClientApp = name;
    RefreshClientState();
  };
  program_->Closed = [this] {
    if (OpenChanged) OpenChanged();
  };
}

void SettingsPanels::ShowFrameMeterSetup() {
  if (loading_ || !Made([this] { MakeMeterSetup(); })) return;
  {
    const ScopedTrue guard(loading_);
    if (program_) program_->Close();
    setup_->Suspend();
    if (OpenChanged) OpenChanged();
    platform_.windows.SetHourglass(true);
    const bool answered = link_.RefreshParameters();
    platform_.windows.SetHourglass(false);
    if (!answered) status_.ShowAlert("No answer: last known values shown");
    const MeterState& meter = link_.State();
    link_.ShowCallMessage(meter.ParamS != 0 ? meter.MeterCallText.Text() : "Orvane", meter.ParamS == 0);
    setup_->LoadMeterSetup(meter, link_.Lists());
    setup_->Show();
  }
  link_.ResumeDataFlow();
}

// Pressed again while it runs, it runs once more with what is chosen then: two updates at once would mix
// their commands.
void SettingsPanels::UpdateMeter() {
  update_again_ = true;
  if (updating_) return;
  const ScopedTrue guard(updating_);
  while (update_again_) {
    update_again_ = false;
    const ParameterRecord pending = setup_->Pending();
    setup_->ForgetEdit();
    link_.UpdateMeterParameters(pending, link_.CurrentParameters());
  }
}

void SettingsPanels::ShowFrameSettings() {
  if (loading_ || !Made([this] { MakeProgramSettings(); })) return;
  if (setup_) setup_->Close();
  program_->LoadFrameSettings({link_.KeptPort(), kept_.Settings().BaudRate}, link_.PortOpen(),
                              kept_.Settings());
  program_->Show();
  RefreshClientState();
  if (OpenChanged) OpenChanged();
}

// The link is left alone when nothing about its line changed, unless it had given up: then pressing the
// button asks for another try.
void SettingsPanels::cmdAction_Click() {
  UserSettings& settings = kept_.Settings();
  const LineChoice chosen = program_->Chosen();
  const bool changed = program_->LineChanged();
  if (changed) {
    settings.CommPort = std::to_string(chosen.Port);
    settings.BaudRate = chosen.Speed;
    if (PortChanged) PortChanged();
  }
  settings.FormOnTop = program_->PendingOnTop();
  form_.Window().SetTopMost(settings.FormOnTop);
  program_->Close();
  if (changed || link_.Flags().SearchAbandoned) link_.ApplyPortSettings();
}

void SettingsPanels::Close() {
  if (setup_) setup_->Close();
  if (program_) program_->Close();
}

void SettingsPanels::RefreshClientState() {
  if (program_ && program_->Visible()) program_->ShowClientState(ClientState());
}

std::string_view SettingsPanels::ClientState() const {
  const std::string& name = kept_.Settings().ClientApp;
  if (name.empty()) return "No client: readings go to no program.";
  if (!CanKeep(name)) return "Not kept as it is: outer blanks or quotes.";
  const auto window = platform_.clients.Find(name);
  if (window == 0) return "No window with this name is open.";
  if (window != client_.ClientWnd()) return "Found; it gets the next reading.";
  if (!client_.Reachable()) return "Cannot be reached: it runs as administrator.";
  return "Found: it gets each reading.";
}

}  // namespace orvane
