#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/wait.h"
#include "window/orvane.h"

namespace orvane {
namespace {

constexpr int kDefaultPlace = 100;  // twips, where a window goes whose kept place the screen does not have
constexpr int kLowestTopMargin =
    500;  // twips below a kept top edge that the screen must have, whatever the window's height
constexpr std::int32_t kPauseMs = 250;
constexpr std::int32_t kWindDownMs = 50;

int InBounds(int place, int most) {
  return place < 0 || place > most ? kDefaultPlace : place;
}

}  // namespace

void Orvane::Form_Load() {
  if (!platform_.instance.Claim()) {
    platform_.windows.ShowMessageBox("Orvane Lite is Already Running. Just 1 Instance Is Required.", kCaption,
                                     BoxStyle::kInformation);
    Form_Unload(kEndAtOnce);
  }
  display_.Lamps().Reset();
  display_.ResetPowerDisplay();
  platform_.windows.Tray().Add(form_.Window(), std::string(kCaption) + " For Quorran");
  LoadSettings();
  form_.Window().Show();
  kept_.LoadMeterSettings();
  RestorePosition();
  form_.Window().SetTopMost(kept_.Settings().FormOnTop);
  lights_.Reset();
  if (kept_.Trouble() != SettingsTrouble::kNone) status_.ShowAlert(kept_.TroubleText());
  TimerFindMeter_.SetEnabled(true);
}

// A value that cannot be read costs that value: the operator is told once which, and its default is used.
void Orvane::LoadSettings() {
  try {
    kept_.LoadUserSettings();
  } catch (const SettingsFault& fault) {
    platform_.windows.ShowMessageBox(std::string("The settings file holds values that cannot be used:\n\n") +
                                         fault.what() + "\n\nTheir defaults are used instead.",
                                     kCaption, BoxStyle::kInformation);
  }
}

void Orvane::RestorePosition() {
  const Size screen = platform_.windows.ScreenSize();
  form_.Window().MoveTo({InBounds(kept_.Settings().FormLeft, screen.width - form_.Width()),
                         InBounds(kept_.Settings().FormTop, screen.height - kLowestTopMargin)});
}

void Orvane::RecordPosition() {
  const Size screen = platform_.windows.ScreenSize();
  const Rect place = form_.Window().Bounds();
  kept_.Settings().FormLeft = InBounds(place.left, screen.width - place.width);
  kept_.Settings().FormTop = InBounds(place.top, screen.height - kLowestTopMargin);
}

// Every step is tried, whatever became of the one before; nothing may keep the program from ending.
void Orvane::Form_Unload(std::int16_t cancel) {
  if (closing_) return;  // a second click while the first is being carried out
  closing_ = true;
  Attempt([this] { platform_.windows.Tray().Remove(); });
  if (cancel != kEndAtOnce) {
    TimerFindMeter_.SetEnabled(false);  // a search must not begin inside the pauses
    if (!EqualNoCase(kept_.Settings().CommPort, "0")) link_.StopAndClose();
    Attempt([this] { RecordPosition(); });
    Attempt([this] { kept_.SaveUserSettings(); });
    WindDown();
    Attempt([this] { BlockTicks(platform_.clock, kPauseMs); });
  }
  platform_.pump.EndProcess();
}

void Orvane::WindDown() {
  meter_controls_.forward.dbxPower->Set_digitdisplay("");
  meter_controls_.reflected.dbxPower->Set_digitdisplay("");
  meter_controls_.dbxVSWR->Set_digitdisplay("");
  Attempt([this] { BlockTicks(platform_.clock, kWindDownMs); });
  display_.Lamps().Reset();
  display_.ResetPowerDisplay();
  form_.SetPicture(nullptr);
}

}  // namespace orvane
