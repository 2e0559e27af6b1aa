#include "outside/about.h"

#include "outside/about_text.h"
#include "outside/addresses.h"

namespace orvane {
namespace {

// Places in the box, twips
namespace at {
constexpr Size kBox{6900, 2880};
constexpr Rect kAppInfo{240, 240, 6420, 270};
constexpr Rect kVersion{240, 600, 6420, 270};
constexpr Rect kPath{240, 960, 6420, 270};
constexpr Rect kCopyright{240, 1320, 6420, 270};
constexpr Rect kWeb{240, 1800, 2700, 360};
constexpr Rect kMail{240, 2280, 2700, 360};
constexpr Rect kSysInfo{3120, 2280, 1980, 360};
constexpr Rect kClose{5280, 2280, 1380, 360};
}  // namespace at

}  // namespace

About::About(Platform& platform, Launches& launches)
    : form(platform.windows, kAboutCaption, at::kBox, WindowLook::kDialog),
      frame(platform.windows, form, {0, 0, at::kBox.width, at::kBox.height}, {}, FrameKind::kPanel),
      lblAppInfo(platform.windows, frame, at::kAppInfo),
      lblVersion(platform.windows, frame, at::kVersion),
      lblPath(platform.windows, frame, at::kPath),
      lblCopyright(platform.windows, frame, at::kCopyright),
      cmdQuorranSln(platform.windows, frame, at::kWeb, "Quorran on the &Web", "Open the maker's web site"),
      lblEMail(platform.windows, frame, at::kMail, kSupportAddress, "Write to the maker's support"),
      cmdSysInfo(platform.windows, frame, at::kSysInfo, "&System Info...",
                 "Start the system's information tool"),
      cmdClose(platform.windows, frame, at::kClose, "&Close", "Close this box"),
      platform_(platform) {
  cmdQuorranSln.Click = [this, &launches] {
    Try(launches.OpenDocument(kWebSite), "The browser could not be started.");
  };
  lblEMail.Click = [this, &launches] {
    Try(launches.SendSupportMail(), "The mail program could not be started.");
  };
  cmdSysInfo.Click = [this, &launches] {
    Try(launches.ShowSystemInfo(), "System Info could not be started.");
  };
  cmdClose.Click = [this] { Close(); };
  // The Tab key passes by its lines.
  form.Describing = [this](Accessible& what) {
    what.role = Role::kDialog;
    for (const PanelLabel* line : {&lblAppInfo, &lblVersion, &lblPath, &lblCopyright})
      what.description += (what.description.empty() ? "" : "\n") + line->Caption();
  };
  form.CloseRequested = [this] { Close(); };
  form.KeyDown = [this](Key key) {
    if (key != Key::kEscape && key != Key::kEnter) return false;
    Close();
    return true;
  };
  frame.SetVisible(true);
}

void About::Show(TopWindow& main) {
  const AboutText text = MakeAboutText(platform_.system, platform_.files);
  lblAppInfo.SetCaption(text.lblAppInfo);
  lblVersion.SetCaption(text.lblVersion);
  lblPath.SetCaption(text.lblPath);
  lblCopyright.SetCaption(text.lblCopyright);
  form.Window().CenterOnScreenOf(main);
  visible_ = true;
  form.Window().Show();
  cmdClose.SetFocus();
}

void About::Close() {
  if (!visible_) return;
  visible_ = false;
  form.Window().SetVisible(false);
  if (Closed) Closed();
}

void About::Try(bool started, std::string_view sentence) const {
  if (!started && LaunchFailed) LaunchFailed(sentence);
}

}  // namespace orvane
