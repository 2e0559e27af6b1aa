#include "settings/meter_setup_panel.h"

#include "base/number_format.h"
#include "settings/call_message_entry.h"

#include <utility>

namespace orvane {
namespace {

// Places inside the panel, twips. Multiples of 60 fall on whole pixels at 96 and at 120 pixels per inch.
namespace at {
constexpr Size kPanel{6300, 2910};
constexpr Rect kVersion{120, 2505, 2520, 330};
constexpr Rect kUpdates{2700, 2505, 1080, 330};
constexpr Rect kApply{3960, 2505, 1080, 330};
constexpr Rect kClose{5100, 2505, 1080, 330};
constexpr Rect kOpMode{120, 225, 1575, 660};
constexpr Rect kDispInt{1755, 225, 1455, 660};
constexpr Rect kLoPwrAlarm{120, 900, 1575, 660};
constexpr Rect kVSWRAlarm{1755, 900, 1455, 660};
constexpr Rect kFwdTrim{3270, 225, 1410, 1335};
constexpr Rect kRefTrim{4740, 225, 1410, 1335};
constexpr Rect kRangeScale{120, 1575, 2040, 660};
constexpr Rect kRelay{2220, 1575, 1545, 660};
constexpr Rect kDispMessage{165, 2250, 2400, 240};
constexpr Rect kCall{3825, 1575, 2325, 885};
// Inside a list's frame: the list fills what the caption leaves.
constexpr int kMargin = 90;
constexpr int kListTop = 240;
constexpr int kListHeight = 345;
// Inside a trim's frame
constexpr Rect kTrimBar{180, 255, 285, 990};
constexpr Rect kTrimValue{600, 660, 720, 225};
// Inside the call message's frame
constexpr Rect kCallLabel{105, 240, 2100, 225};
constexpr Rect kCallText{90, 480, 2145, 315};
}  // namespace at

constexpr int kFarthestTrim = 98;  // percent; a limit beyond it is no limit of the meter
constexpr int kUsualTrim = 20;     // limits of a trim bar until the meter told its own
constexpr std::size_t kLongestMessage = CallText::kSent;

/// The list fills what the caption leaves of its frame.
constexpr Rect ListIn(const Rect& frame) {
  return {at::kMargin, at::kListTop, frame.width - 2 * at::kMargin, at::kListHeight};
}

std::vector<ComboBox::Item> Numbered(std::initializer_list<std::string_view> texts) {
  std::vector<ComboBox::Item> items;
  for (const std::string_view text : texts)
    items.push_back({std::string(text), static_cast<std::int16_t>(items.size())});
  return items;
}

std::vector<ComboBox::Item> VSWRItems() {
  auto items = Numbered({"Alarm Off"});
  for (const float threshold : kVSWRThresholds) {
    items.push_back({kThresholdFormat.Write(static_cast<double>(threshold)) + " / 1",
                     static_cast<std::int16_t>(items.size())});
  }
  return items;
}

std::vector<ComboBox::Item> LowPowerItems(const MeterLists& lists) {
  std::vector<ComboBox::Item> items;
  for (const std::string& watts : lists.LowPowerWatts)
    items.push_back({watts + (items.empty() ? " Off" : " W"), static_cast<std::int16_t>(items.size())});
  return items;
}

std::vector<ComboBox::Item> RangeItems(const MeterLists& lists) {
  std::vector<ComboBox::Item> items;
  for (const MeterLists::Item& item : lists.RangeItems)
    items.push_back({item.Text, item.Value});
  return items;
}

void ShowTrim(PanelLabel& label, int percent) {
  label.SetCaption(std::to_string(percent));
}

}  // namespace

MeterSetupPanel::MeterSetupPanel(WindowSystem& windows, WindowedControl& form, Point place)
    : FrameMeterSetup(windows, form, {place.x, place.y, at::kPanel.width, at::kPanel.height},
                      "Orvane Meter Setup", FrameKind::kPanel),
      txtFWVer(windows, FrameMeterSetup, at::kVersion, TextBox::Use::kReadOnly),
      cmdFUpdate(windows, FrameMeterSetup, at::kUpdates, "&Updates", "Browse for Orvane Firmware Updates"),
      FrameRelay(windows, FrameMeterSetup, at::kRelay, "Relay Polarity"),
      cboRelayPolarity(windows, FrameRelay, ListIn(at::kRelay), "Select Alarm Relay Polarity"),
      FrameRangeScale(windows, FrameMeterSetup, at::kRangeScale, "Bargraph Range Scale"),
      cboRangeScale(windows, FrameRangeScale, ListIn(at::kRangeScale), "Select Meter Bargraph Range Scale"),
      FrameDispInt(windows, FrameMeterSetup, at::kDispInt, "Display Intensity"),
      cboDispInt(windows, FrameDispInt, ListIn(at::kDispInt), "Select Meter Display Intensity"),
      FrameRefTrim(windows, FrameMeterSetup, at::kRefTrim, "Ref Pwr Trim"),
      vsRPTrim(windows, FrameRefTrim, at::kTrimBar),
      lblRPTrim(windows, FrameRefTrim, at::kTrimValue),
      cmdCancelSettings(windows, FrameMeterSetup, at::kClose, "&Close", "Close Settings Dialog"),
      cmdApplySettings(windows, FrameMeterSetup, at::kApply, "&Apply", "Apply Setting Changes"),
      FrameFwdTrim(windows, FrameMeterSetup, at::kFwdTrim, "Fwd Pwr Trim"),
      vsFPTrim(windows, FrameFwdTrim, at::kTrimBar),
      lblFPTrim(windows, FrameFwdTrim, at::kTrimValue),
      FrameMode(windows, FrameMeterSetup, at::kOpMode, "Operation Mode"),
      cboOpMode(windows, FrameMode, ListIn(at::kOpMode), "Select Meter Operation Mode"),
      FrameLPAlarm(windows, FrameMeterSetup, at::kLoPwrAlarm, "Low Pwr Alarm"),
      cboLoPwrAlarm(windows, FrameLPAlarm, ListIn(at::kLoPwrAlarm), "Select Low Power Alarm Threshold"),
      FrameVSWRAlarm(windows, FrameMeterSetup, at::kVSWRAlarm, "VSWR Alarm"),
      cboVSWRAlarm(windows, FrameVSWRAlarm, ListIn(at::kVSWRAlarm), "Select VSWR Alarm Threshold"),
      FrameCall(windows, FrameMeterSetup, at::kCall, "Callsign / Message"),
      lblCallMessage(windows, FrameCall, at::kCallLabel, "Enter Call / Message"),
      txtCallMsg(windows, FrameCall, at::kCallText),
      chkDispMessage(windows, FrameMeterSetup, at::kDispMessage, "Display  Message",
                     "Select to Display Message on Meter"),
      windows_(windows) {
  ConnectList(cboRelayPolarity, &ParameterRecord::RelayPolarity, 1);
  ConnectList(cboRangeScale, &ParameterRecord::RangeScale, 3);
  ConnectList(cboDispInt, &ParameterRecord::Intensity, 3);
  ConnectList(cboOpMode, &ParameterRecord::OperationMode, 3);
  ConnectList(cboLoPwrAlarm, &ParameterRecord::LowPowerAlarm, 7);
  ConnectList(cboVSWRAlarm, &ParameterRecord::VSWRAlarm, 4);
  vsFPTrim.SetRange(-kUsualTrim, kUsualTrim);
  vsRPTrim.SetRange(-kUsualTrim, kUsualTrim);
  ConnectTrim(vsFPTrim, lblFPTrim, &ParameterRecord::ForwardTrim);
  ConnectTrim(vsRPTrim, lblRPTrim, &ParameterRecord::ReflectedTrim);
  ConnectCallMessage();
  txtFWVer.SetSpokenName("Firmware version");
  chkDispMessage.Click = [this] { pending_.DisplayMessage = chkDispMessage.Checked() ? 1 : 0; };
  cmdApplySettings.Click = [this] {
    cmdCancelSettings.SetFocus();
    if (Apply) Apply();
  };
  cmdCancelSettings.Click = [this] { Close(); };
  cmdFUpdate.Click = [this] {
    if (Update) Update();
    Close();
  };
  FrameMeterSetup.KeyDown = [this](Key key) {
    if (key != Key::kEscape) return false;
    Close();
    return true;
  };
}

void MeterSetupPanel::ConnectList(ComboBox& list, Value value, std::int16_t most) {
  list.Click = [this, &list, value, most] {
    const ComboBox::Item* chosen = list.Selected();
    if (ready_ && chosen != nullptr && chosen->Value >= 0 && chosen->Value <= most)
      pending_.*value = chosen->Value;
  };
}

// The bar runs upward, as a knob for more does: its value is the negated trim.
void MeterSetupPanel::ConnectTrim(VScrollBar& bar, PanelLabel& label, Value value) {
  bar.Change = [this, &bar, &label, value] {
    const int percent = -bar.Value();
    if (ready_) pending_.*value = static_cast<std::int16_t>(percent);
    ShowTrim(label, percent);
  };
  bar.SpokenValue = [&label] { return label.Caption() + " percent"; };
}

void MeterSetupPanel::ConnectCallMessage() {
  txtCallMsg.KeyPress = [this](unsigned char code) {
    pending_.CallMessageEdited = true;
    return CallMessageKey(code);
  };
  txtCallMsg.Change = [this] {
    pending_.CallMessageEdited = true;
    pending_.CallMessage.Set(CallMessageText(txtCallMsg.Text()));
  };
  txtCallMsg.KeyUp = [this](bool enter) { OnCallMessageKeyUp(enter); };
}

void MeterSetupPanel::OnCallMessageKeyUp(bool enter) {
  if (txtCallMsg.Text().size() > kLongestMessage) {
    windows_.ShowMessageBox("Please limit your message to 16 characters.", "Message To Long",
                            BoxStyle::kPlain);
    txtCallMsg.SetText(txtCallMsg.Text().substr(0, kLongestMessage));
    pending_.CallMessage.Set(CallMessageText(txtCallMsg.Text()));
  }
  if (!enter) return;
  pending_.CallMessage.Set(CallMessageText(txtCallMsg.Text()));
  if (SendCallMessage) SendCallMessage(pending_.CallMessage.Text());
}

void MeterSetupPanel::LoadMeterSetup(const MeterState& meter, const MeterLists& lists) {
  ready_ = false;
  pending_ = CurrentParameters(meter);
  txtFWVer.SetText(meter.FirmwareVersion);
  FillLists(lists);
  FillTrim(vsFPTrim, lblFPTrim, lists, pending_.ForwardTrim);
  FillTrim(vsRPTrim, lblRPTrim, lists, pending_.ReflectedTrim);
  chkDispMessage.SetChecked(pending_.DisplayMessage != 0);
  txtCallMsg.SetText(pending_.CallMessage.Text());
  pending_.CallMessageEdited = false;
  ready_ = true;
}

void MeterSetupPanel::FillLists(const MeterLists& lists) {
  const auto fill = [](ComboBox& list, std::vector<ComboBox::Item> items, std::int16_t value) {
    if (list.Items() != items) list.SetItems(std::move(items));
    list.SelectValue(value);
  };
  fill(cboOpMode, Numbered({"Fast Reset", "Medium Reset", "Slow Reset", "VSWR Dip"}), pending_.OperationMode);
  fill(cboDispInt, Numbered({"Level 1", "Level 2", "Level 3", "Level 4"}), pending_.Intensity);
  fill(cboVSWRAlarm, VSWRItems(), pending_.VSWRAlarm);
  fill(cboLoPwrAlarm, LowPowerItems(lists), pending_.LowPowerAlarm);
  fill(cboRangeScale, RangeItems(lists), pending_.RangeScale);
  fill(cboRelayPolarity, Numbered({"A Closes", "A Opens"}), pending_.RelayPolarity);
}

// Limits as the bar counts, upside down: a meter that takes -10 to 25 has a bar from -25 to 10.
void MeterSetupPanel::FillTrim(VScrollBar& bar, PanelLabel& label, const MeterLists& lists,
                               std::int16_t percent) {
  const int least = -lists.TrimHigh;
  const int most = -lists.TrimLow;
  bar.SetRange(least >= -kFarthestTrim && least <= -1 ? least : bar.Min(),
               most >= 1 && most <= kFarthestTrim ? most : bar.Max());
  bar.SetValue(-percent);
  ShowTrim(label, percent);
}

void MeterSetupPanel::Show() {
  FrameMeterSetup.SetVisible(true);
  txtFWVer.SetFocus();
}

void MeterSetupPanel::Close() {
  if (!Visible()) return;
  FrameMeterSetup.SetVisible(false);
  if (Closed) Closed();
}

}  // namespace orvane
