#pragma once

#include "forms/panel_control.h"
#include "platform/port_list.h"
#include "settings/user_settings.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvane {

/// Port and speed of the meter's line.
struct LineChoice {
  int Port = 0;       ///< 0 is none
  std::string Speed;  ///< bits per second
  bool operator==(const LineChoice&) const = default;
};

/// The panel of the program's own settings: the line to the meter, the program that gets the readings, and
/// whether the window stays on top. The client's name counts at once, everything else when it is applied.
class ProgramSettingsPanel {
 public:
  /// @param place of the panel on the form, twips; designed for 6300 x 2910
  ProgramSettingsPanel(WindowSystem& windows, WindowedControl& form, Point place, PortList& ports);

  /// `cmdAction` was pressed: choices are to be applied, and the panel closed.
  std::function<void()> Apply;
  /// The client's name as it stands after each change.
  std::function<void(std::string_view name)> ClientNamed;
  /// The panel was closed.
  std::function<void()> Closed;

  /// Fills the panel. @param in_use the kept port is open now, so that it is there whatever the system's list
  /// says
  void LoadFrameSettings(const LineChoice& kept, bool in_use, const UserSettings& settings);
  /// Devices came or went: lists the ports anew, with the same one selected.
  void RefreshPorts();
  /// What becomes of the readings, in a few words.
  void ShowClientState(std::string_view text) {
    lblClientState.SetCaption(text);
    txtClient.SetSpokenNote(text);
  }
  /// Shows the panel with the keyboard in it.
  void Show();
  void Close();
  bool Visible() const { return FrameSettings.Visible(); }

  LineChoice Chosen() const;
  /// Another line is chosen than the one that the panel was filled with. (The kept speed may be another one
  /// by now: a search steps through them.)
  bool LineChanged() const { return Chosen() != kept_; }
  /// What the box was when it was last clicked, false when it never was: an apply without a click takes the
  /// window from the top.
  bool PendingOnTop() const { return pending_on_top_; }

  // In the order of the Tab key.
  Frame FrameSettings;
  Frame FramePort;
  PanelLabel lblCommPort;
  ComboBox cboCommPort;
  PanelLabel lblBaudRate;
  ComboBox cboBaudRate;
  Frame FrameClient;
  TextBox txtClient;
  PanelLabel lblClientState;
  Frame FrameOnTop;
  CheckBox chkOnTop;
  PanelButton cmdAction;
  PanelButton cmdCloseSettings;

 private:
  void ListPorts(int selected);

  PortList& ports_;
  LineChoice kept_;
  bool in_use_ = false;
  bool pending_on_top_ = false;
};

}  // namespace orvane
