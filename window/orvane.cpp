#include "window/orvane.h"

#include "window/layout.h"

namespace orvane {
namespace {

constexpr int kFindMeterMs = 1000;
constexpr Color kFaceColor = MakeColor(38, 43, 48);

// Mouse messages that the tray icon sends as a horizontal position in pixels.
constexpr int kTrayDoubleClick = 515;

int TwipsPerPixel(int pixels_per_inch) {
  return kTwipsPerInch / pixels_per_inch;
}

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
               link_.Lists().Auto, mode_, [](std::int32_t) {}),
      modes_(meter_controls_, mode_),
      TimerFindMeter_(platform.windows, platform.clock, kFindMeterMs) {
  form_.SetBackColor(kFaceColor);
  ConnectHandlers();
}

void Orvane::ConnectHandlers() {
  TimerFindMeter_.Tick = [this] { link_.FindMeter(); };
  modes_.SendCommand = [this](std::string_view command) { link_.SendCommand(command); };
  form_.CloseRequested = [this] { Form_Unload(0); };
  form_.MouseUp = [this](const MouseEvent& event) { OnFaceMouseUp(event); };

  const auto on_left = [](WindowedControl& control, std::function<void()> action) {
    control.MouseUp = [action = std::move(action)](const MouseEvent& event) {
      if (event.button == kLeftButton) action();
    };
  };
  for (int i = 0; i < static_cast<int>(kRangeButtons); ++i) {
    const auto k = static_cast<std::size_t>(i);
    on_left(*meter_controls_.forward.cmdRange[k], [this, i] { OnForwardRange(i); });
    on_left(*meter_controls_.reflected.cmdRange[k], [this, i] { OnReflectedRange(i); });
  }
  for (std::int16_t i = 0; i < static_cast<std::int16_t>(kModes); ++i) {
    on_left(*meter_controls_.cmdMode[static_cast<std::size_t>(i)], [this, i] { modes_.Choose(i); });
  }
  on_left(*form_controls_.cmdMinimize, [this] { form_.Window().SetState(WindowState::kMinimized); });
  on_left(*form_controls_.cmdClose, [this] { Form_Unload(0); });
}

void Orvane::OnForwardRange(int index) {
  kept_.Settings().FPwrIndex = static_cast<std::int16_t>(index);
  display_.ChooseForwardRange(index);
}

void Orvane::OnReflectedRange(int index) {
  kept_.Settings().RPwrIndex = static_cast<std::int16_t>(index);
  display_.ChooseReflectedRange(index);
}

// A release over the tray icon comes in here as well; its message number is the horizontal position in
// pixels.
void Orvane::OnFaceMouseUp(const MouseEvent& event) {
  const int pixel = event.at.x / TwipsPerPixel(platform_.windows.PixelsPerInch().width);
  if (pixel != kTrayDoubleClick) return;
  TopWindow& window = form_.Window();
  window.SetState(window.State() == WindowState::kNormal ? WindowState::kMinimized : WindowState::kNormal);
}

void Orvane::ShowStatus(std::string_view text, StatusTone tone) {
  if (tone == StatusTone::kUrgent) {
    status_.ShowAlert(text);
    return;
  }
  status_.Show(text);
  status_.StartClearTimer();
}

bool Orvane::AskOkCancel(std::string_view text, std::string_view title) {
  return platform_.windows.ShowMessageBox(text, title, BoxStyle::kOkCancel) == BoxAnswer::kOk;
}

void Orvane::ShowBox(std::string_view text, std::string_view title) {
  platform_.windows.ShowMessageBox(text, title, BoxStyle::kPlain);
}

}  // namespace orvane
