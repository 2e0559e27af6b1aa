#pragma once

#include "display/indicators.h"
#include "forms/form.h"
#include "link/meter_link.h"
#include "outside/client_data.h"
#include "platform/platform.h"
#include "settings/meter_setup_panel.h"
#include "settings/ov_user_settings.h"
#include "settings/program_settings_panel.h"

#include <functional>
#include <optional>

namespace orvane {

/// The two panels over the face: opens them, and carries out what is chosen in them. Only one is open at a
/// time. They leave the readouts and the status line free, so that an operator sees what a trim does. Each is
/// made when it is first opened and stays: their forty windows would cost a third of the start.
class SettingsPanels {
 public:
  SettingsPanels(Platform& platform, Form& form, MeterLink& link, OVUserSettings& kept, StatusLine& status,
                 const ClientData& client);

  /// A panel opened or closed: the face has to be the full one while one is open.
  std::function<void()> OpenChanged;
  /// The kept port is another one.
  std::function<void()> PortChanged;
  /// The firmware updater is wanted.
  std::function<void()> StartUpdater;

  /// Fetches the meter's settings, which takes a second, and shows them. The readings go on when the panel is
  /// there. A meter that does not answer leaves the values that were known last. A call while one is under
  /// way does nothing.
  void ShowFrameMeterSetup();
  void ShowFrameSettings();
  /// True from the call that opens a panel until the panel is closed.
  bool Open() const { return loading_ || (setup_ && setup_->Visible()) || (program_ && program_->Visible()); }
  void Close();

  /// Adapters came or went.
  void RefreshPorts() {
    if (program_) program_->RefreshPorts();
  }
  /// What becomes of the readings may have changed; cheap while the panel is closed.
  void RefreshClientState();

  /// The panels as far as they were opened once.
  const std::optional<MeterSetupPanel>& MeterSetup() const { return setup_; }
  const std::optional<ProgramSettingsPanel>& ProgramSettings() const { return program_; }

 private:
  /// Makes a panel, and says when the system has no window for it.
  bool Made(const std::function<void()>& make);
  void MakeMeterSetup();
  void MakeProgramSettings();
  void UpdateMeter();
  void cmdAction_Click();
  std::string_view ClientState() const;

  Platform& platform_;
  Form& form_;
  MeterLink& link_;
  OVUserSettings& kept_;
  StatusLine& status_;
  const ClientData& client_;
  std::optional<MeterSetupPanel> setup_;
  std::optional<ProgramSettingsPanel> program_;
  bool loading_ = false;
  bool updating_ = false;
  bool update_again_ = false;  // Apply was pressed while an update ran
};

}  // namespace orvane
