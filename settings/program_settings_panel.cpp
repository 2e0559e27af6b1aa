#include "settings/program_settings_panel.h"

#include "settings/port_choices.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orvane {
namespace {

// Places inside the panel, twips. Multiples of 60 fall on whole pixels at 96 and at 120 pixels per inch.
namespace at {
constexpr Size kPanel{6300, 2910};
constexpr Rect kPort{120, 240, 6060, 765};
constexpr Rect kClient{120, 1065, 3960, 1080};
constexpr Rect kOnTop{4200, 1065, 1980, 1080};
constexpr Rect kAction{3780, 2445, 1140, 345};
constexpr Rect kClose{5040, 2445, 1140, 345};
// Inside the port's frame
constexpr Rect kPortLabel{120, 345, 480, 240};
constexpr Rect kPortList{600, 300, 3300, 345};
constexpr Rect kSpeedLabel{4080, 345, 600, 240};
constexpr Rect kSpeedList{4680, 300, 1260, 345};
// Inside the client's frame
constexpr Rect kClientName{120, 300, 3720, 330};
constexpr Rect kClientState{120, 705, 3720, 240};
// Inside the position's frame
constexpr Rect kOnTopBox{120, 315, 1740, 270};
}  // namespace at

}  // namespace

ProgramSettingsPanel::ProgramSettingsPanel(WindowSystem& windows, WindowedControl& form, Point place,
                                           PortList& ports)
    : FrameSettings(windows, form, {place.x, place.y, at::kPanel.width, at::kPanel.height},
                    "Program Settings", FrameKind::kPanel),
      FramePort(windows, FrameSettings, at::kPort, "Serial Port"),
      lblCommPort(windows, FramePort, at::kPortLabel, "Port"),
      cboCommPort(windows, FramePort, at::kPortList, "Select the port that the meter is connected to"),
      lblBaudRate(windows, FramePort, at::kSpeedLabel, "Speed"),
      cboBaudRate(windows, FramePort, at::kSpeedList, "Select the speed to try first, bits per second"),
      FrameClient(windows, FrameSettings, at::kClient, "Messaging Client"),
      txtClient(windows, FrameClient, at::kClientName),
      lblClientState(windows, FrameClient, at::kClientState),
      FrameOnTop(windows, FrameSettings, at::kOnTop, "Program Position"),
      chkOnTop(windows, FrameOnTop, at::kOnTopBox, "Stay On Top"),
      cmdAction(windows, FrameSettings, at::kAction, "&Apply", "Apply port, speed and position"),
      cmdCloseSettings(windows, FrameSettings, at::kClose, "&Close", "Close without applying"),
      ports_(ports) {
  cboCommPort.SetSpokenName(lblCommPort.Caption());
  cboBaudRate.SetSpokenName(lblBaudRate.Caption());
  txtClient.SetToolTipText("Enter the name of the client application to receive data from Orvane Lite");
  txtClient.Change = [this] {
    if (ClientNamed) ClientNamed(txtClient.Text());
  };
  chkOnTop.Click = [this] { pending_on_top_ = chkOnTop.Checked(); };
  cmdAction.Click = [this] {
    if (Apply) Apply();
  };
  cmdCloseSettings.Click = [this] { Close(); };
  FrameSettings.KeyDown = [this](Key key) {
    if (key != Key::kEscape) return false;
    Close();
    return true;
  };
}

void ProgramSettingsPanel::LoadFrameSettings(const LineChoice& kept, bool in_use,
                                             const UserSettings& settings) {
  kept_ = kept;
  in_use_ = in_use;
  cboCommPort.SetItems({});  // also lines that stand are given again: the system may have refused them before
  ListPorts(kept.Port);
  auto speeds = SpeedItems(kept.Speed);
  const auto same = std::find_if(speeds.begin(), speeds.end(),
                                 [&](const ComboBox::Item& item) { return item.Text == kept.Speed; });
  const std::int16_t place = same == speeds.end() ? std::int16_t{0} : same->Value;
  cboBaudRate.SetItems(std::move(speeds));
  cboBaudRate.SelectValue(place);
  chkOnTop.SetChecked(settings.FormOnTop);
  txtClient.SetText(settings.ClientApp);
}

void ProgramSettingsPanel::RefreshPorts() {
  if (Visible()) ListPorts(Chosen().Port);
}

void ProgramSettingsPanel::ListPorts(int selected) {
  std::vector<PresentPort> present = ports_.PresentPorts();
  const bool listed = std::any_of(present.begin(), present.end(),
                                  [this](const PresentPort& port) { return port.number == kept_.Port; });
  if (in_use_ && !listed) present.push_back({kept_.Port, {}});
  auto items = PortItems(present, {kept_.Port, selected});
  if (items != cboCommPort.Items()) cboCommPort.SetItems(std::move(items));
  cboCommPort.SelectValue(static_cast<std::int16_t>(selected));
}

void ProgramSettingsPanel::Show() {
  FrameSettings.SetVisible(true);
  cboCommPort.SetFocus();
}

void ProgramSettingsPanel::Close() {
  if (!Visible()) return;
  FrameSettings.SetVisible(false);
  if (Closed) Closed();
}

LineChoice ProgramSettingsPanel::Chosen() const {
  const ComboBox::Item* port = cboCommPort.Selected();
  const ComboBox::Item* speed = cboBaudRate.Selected();
  return {port != nullptr ? port->Value : kept_.Port, speed != nullptr ? speed->Text : kept_.Speed};
}

}  // namespace orvane
