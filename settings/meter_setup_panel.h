#pragma once

#include "forms/panel_control.h"
#include "link/meter_lists.h"
#include "link/meter_state.h"
#include "link/parameter_record.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace orvane {

/// The panel of the settings that live in the meter. It shows what the meter reported, keeps what the user
/// chooses as pending values, and gives them out when Apply is pressed.
class MeterSetupPanel {
 public:
  /// @param place of the panel on the form, twips; designed for 6300 x 2910
  MeterSetupPanel(WindowSystem& windows, WindowedControl& form, Point place);

  /// Apply: the pending values are wanted. The focus is on the Close button then.
  std::function<void()> Apply;
  /// Enter was pressed in the call message: it is to be sent at once.
  std::function<void(std::string_view text)> SendCallMessage;
  /// The firmware updater is wanted; the panel closes afterwards.
  std::function<void()> Update;
  /// The panel was closed by the user.
  std::function<void()> Closed;

  /// Choices count for nothing until the next fill: the values that they would change are being fetched.
  void Suspend() { ready_ = false; }
  /// Fills lists, trims, message and version; pending values are the meter's then.
  void LoadMeterSetup(const MeterState& meter, const MeterLists& lists);
  /// Shows the panel with the keyboard in it.
  void Show();
  /// Hides it; nothing is sent, and the pending values are dropped at the next fill.
  void Close();
  bool Visible() const { return FrameMeterSetup.Visible(); }

  const ParameterRecord& Pending() const { return pending_; }
  /// The call message was sent; until it is edited again Apply need not send it.
  void ForgetEdit() { pending_.CallMessageEdited = false; }

  // In the order of the Tab key.
  Frame FrameMeterSetup;
  TextBox txtFWVer;
  PanelButton cmdFUpdate;
  Frame FrameRelay;
  ComboBox cboRelayPolarity;
  Frame FrameRangeScale;
  ComboBox cboRangeScale;
  Frame FrameDispInt;
  ComboBox cboDispInt;
  Frame FrameRefTrim;
  VScrollBar vsRPTrim;
  PanelLabel lblRPTrim;
  PanelButton cmdCancelSettings;
  PanelButton cmdApplySettings;
  Frame FrameFwdTrim;
  VScrollBar vsFPTrim;
  PanelLabel lblFPTrim;
  Frame FrameMode;
  ComboBox cboOpMode;
  Frame FrameLPAlarm;
  ComboBox cboLoPwrAlarm;
  Frame FrameVSWRAlarm;
  ComboBox cboVSWRAlarm;
  Frame FrameCall;
  PanelLabel lblCallMessage;
  TextBox txtCallMsg;
  CheckBox chkDispMessage;

 private:
  using Value = std::int16_t ParameterRecord::*;
  void ConnectList(ComboBox& list, Value value, std::int16_t most);
  void ConnectTrim(VScrollBar& bar, PanelLabel& label, Value value);
  void ConnectCallMessage();
  void FillLists(const MeterLists& lists);
  static void FillTrim(VScrollBar& bar, PanelLabel& label, const MeterLists& lists, std::int16_t percent);
  void OnCallMessageKeyUp(bool enter);

  WindowSystem& windows_;
  ParameterRecord pending_;
  bool ready_ = false;  // false while the lists are not what the meter reported
};

}  // namespace orvane
