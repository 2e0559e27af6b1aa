#pragma once

#include "forms/form.h"
#include "forms/panel_control.h"
#include "outside/launches.h"
#include "platform/platform.h"

#include <functional>
#include <string_view>

namespace orvane {

inline constexpr std::string_view kAboutCaption = "About";

/// The About box: what program this is, on what system it runs, and ways to help. A window of its own that
/// blocks nothing; Escape and Enter close it.
class About {
 public:
  About(Platform& platform, Launches& launches);

  /// Something could not be started; one sentence for the user.
  std::function<void(std::string_view sentence)> LaunchFailed;
  std::function<void()> Closed;

  /// Fills the lines afresh and shows the box in the middle of the screen on which `main` is.
  void Show(TopWindow& main);
  void Close();
  bool Visible() const { return visible_; }

  // In the order of the Tab key.
  Form form;
  Frame frame;
  PanelLabel lblAppInfo;
  PanelLabel lblVersion;
  PanelLabel lblPath;
  PanelLabel lblCopyright;
  PanelButton cmdQuorranSln;
  PanelButton lblEMail;
  PanelButton cmdSysInfo;
  PanelButton cmdClose;

 private:
  void Try(bool started, std::string_view sentence) const;

  Platform& platform_;
  bool visible_ = false;
};

}  // namespace orvane
