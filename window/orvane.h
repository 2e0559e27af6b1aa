#pragma once

#include "display/dip_layout.h"
#include "display/display_mode.h"
#include "display/indicators.h"
#include "display/meter_controls.h"
#include "display/mode_panel.h"
#include "display/power_display.h"
#include "display/spoken_display.h"
#include "forms/focus_speech.h"
#include "forms/form.h"
#include "forms/timer.h"
#include "link/meter_link.h"
#include "outside/about.h"
#include "outside/client_data.h"
#include "outside/launches.h"
#include "platform/platform.h"
#include "settings/ov_user_settings.h"
#include "settings/user_settings.h"
#include "window/announcer.h"
#include "window/face_builder.h"
#include "window/face_images.h"
#include "window/link_settings_adapter.h"
#include "window/settings_panels.h"
#include "window/views.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orvane {

inline constexpr std::string_view kCaption = "Orvane Lite";
inline constexpr int kDefaultPlace = 100;  ///< twips, where a window goes whose kept place no screen has

/// The main window, and the only place that knows every subsystem: it owns them in the order in which they
/// need each other, and hands on what one has to tell another.
class Orvane : private LinkEvents {
 public:
  /// Unload code: end at once and do nothing else.
  static constexpr std::int16_t kEndAtOnce = 100;

  explicit Orvane(Platform& platform);
  Orvane(const Orvane&) = delete;
  Orvane& operator=(const Orvane&) = delete;

  /// Start-up, once. Afterwards timers, the port and the user drive the program.
  void Form_Load();
  /// Shutdown; ends the process. A call during the shutdown does nothing.
  void Form_Unload(std::int16_t cancel);

  const MeterControls& Meter() const { return meter_controls_; }
  const FormControls& Controls() const { return form_controls_; }
  const UserSettings& Settings() const { return kept_.Settings(); }
  const MeterLink& Link() const { return link_; }
  const SettingsPanels& Panels() const { return panels_; }
  /// None before it was opened once.
  const std::optional<About>& AboutBox() const { return about_; }

 private:
  // What the link tells
  void LineHandled() override;
  void RxActivity() override { lights_.ShowRx(); }
  void TxActivity() override { lights_.ShowTx(); }
  void SetModeCommand() override { modes_.Follow(link_.State().MeterMode); }
  void ShowStatus(std::string_view text, StatusTone tone) override;
  void StartClearMessageTimer() override { status_.StartClearTimer(); }
  void ShowMessageText(std::string_view text) override {
    for (auto& label : form_controls_.lblMessage)
      label->SetCaption(text);
  }
  void Beep() override { platform_.windows.Beep(); }
  void SetHourglass(bool on) override { platform_.windows.SetHourglass(on); }
  void EnableFindMeter(bool on) override { TimerFindMeter_.SetEnabled(on); }
  void ClickFwdPwrRange(std::int16_t index) override { OnForwardRange(index); }
  void ClickRefPwrRange(std::int16_t index) override { OnReflectedRange(index); }
  bool MayWait() const override { return !platform_.windows.InModalLoop(); }
  bool InDipMode() const override { return mode_.Dip(); }
  bool AskOkCancel(std::string_view text, std::string_view title) override;
  void ShowBox(std::string_view text, std::string_view title) override;
  void ReadingsStopped() override;

  void OnForwardRange(int index);
  void OnReflectedRange(int index);
  void SendToClient(std::int32_t watts);
  void ConnectFace();
  void ConnectButtons();
  void ConnectAlarms();
  void ConnectMenus();
  void ConnectPanels();
  void ConnectSystem();
  void ConnectSpeech();
  static void OnButton(WindowedControl& control, int button, std::function<void()> action);
  bool OnFaceKey(Key key);
  // Menus open at the pointer, or below a widget.
  void OpenMainMenu(Widget* at = nullptr);
  void OpenWindowMenu(Widget* at);
  void OpenSettingsMenu(Widget* at);
  void OpenHelpMenu(Widget* at);
  void ShowHelp();
  void ShowAbout();
  void MakeAbout();
  void OnFaceMouseUp(const MouseEvent& event);
  void OnLogoMouseUp(const MouseEvent& event);
  void ShowLogo(bool colour);
  void ToggleView();
  void ShowVSWRMode(bool dip);
  void ShowViewOfMode();
  void OpenWebSite();
  void ResetSWRAlarm();
  void ResetPowerAlarm();
  void Minimize();
  void OnShellRestarted();
  void OnDisplayChanged();
  bool PortPresent(int number) const;
  void AddTrayIcon();
  bool LoadFaces();
  void LoadSettings();
  void RestorePosition();
  void RecordPosition();
  void WindDown();

  Platform& platform_;
  OVUserSettings kept_;
  Form form_;
  FormControls form_controls_;
  MeterControls meter_controls_;
  DisplayMode mode_;
  StatusLine status_;
  ActivityLights lights_;
  LinkSettingsAdapter link_settings_;
  MeterLink link_;
  PowerDisplay display_;
  SpokenDisplay spoken_;
  FocusSpeech speech_;
  Announcer announcer_;
  ModePanel modes_;
  DipLayout dip_;
  FaceImages faces_;
  Views views_;
  Launches launches_;
  std::optional<About> about_;
  ClientData client_;
  SettingsPanels panels_;
  Timer tray_retry_;
  bool logo_lit_ = false;
  bool view_waits_ = false;  // the meter changed its mode while the window was minimised
  Timer TimerFindMeter_;
  Timer port_watch_;
  bool started_ = false;
  bool closing_ = false;
};

/// Makes the program and starts it. Where the system refuses what it needs (a window, a timer), a box says so
/// and the process ends.
std::unique_ptr<Orvane> StartProgram(Platform& platform);

}  // namespace orvane
