#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/wait.h"
#include "window/bitmap_functions.h"
#include "window/orvane.h"

namespace orvane {
namespace {

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
  AddTrayIcon();
  LoadSettings();
  if (!LoadFaces()) {
    platform_.windows.ShowMessageBox(
        "Critical Program File Missing or Corrupt. Please re-run Vesk-2 Voice Keyer setup.", "File Missing!",
        BoxStyle::kCritical);
    Form_Unload(0);
  }
  form_.Window().Show();
  kept_.LoadMeterSettings();
  RestorePosition();
  form_.Window().SetTopMost(kept_.Settings().FormOnTop);
  if (!form_.Window().OnScreen()) form_.Window().MoveTo({kDefaultPlace, kDefaultPlace});
  started_ = true;
  lights_.Reset();
  if (kept_.Trouble() != SettingsTrouble::kNone) status_.ShowLastingAlert(kept_.TroubleText());
  TimerFindMeter_.SetEnabled(true);
  port_watch_.SetEnabled(true);
}

// The window takes its shape before the logo is looked for.
bool Orvane::LoadFaces() {
  const bool large = platform_.windows.PixelsPerInch().width == 120;
  for (OVDigitBox* readout : {meter_controls_.forward.dbxPower.get(),
                              meter_controls_.reflected.dbxPower.get(), meter_controls_.dbxVSWR.get()}) {
    readout->Set_digitresolution(large ? 120 : 96);
    readout->Set_digitsize(large ? 1 : 0);
  }
  if (!faces_.LoadFaces(form_.Window())) return false;
  views_.SetViewStyle(kept_.Settings().FormRegion);
  if (!faces_.LoadLogos()) return false;
  form_controls_.imgLogo->SetPicture(faces_.Logo(FaceImages::kGrey));
  logo_lit_ = false;
  const Size pixels_per_inch = platform_.windows.PixelsPerInch();
  if (ScreenScale(pixels_per_inch.width) != 1.0F) {
    for (PictureBox* box :
         {meter_controls_.pbxModePanel.get(), meter_controls_.forward.pbxRangeButtons.get(),
          meter_controls_.reflected.pbxRangeButtons.get(), meter_controls_.forward.pbxScale.get(),
          meter_controls_.reflected.pbxScale.get()}) {
      StretchPictureBox(*box, pixels_per_inch);
    }
  }
  return true;
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
  tray_retry_.SetEnabled(false);
  Attempt([this] { platform_.windows.Tray().Remove(); });
  if (cancel != kEndAtOnce) {
    TimerFindMeter_.SetEnabled(false);  // a search must not begin inside the pauses
    port_watch_.SetEnabled(false);
    if (!EqualNoCase(kept_.Settings().CommPort, "0")) link_.StopAndClose();
    if (started_) Attempt([this] { RecordPosition(); });  // before, it has not been put at its place yet
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
  form_controls_.imgLogo->SetPicture(nullptr);
  faces_.Release();
}

std::unique_ptr<Orvane> StartProgram(Platform& platform) {
  std::unique_ptr<Orvane> program;
  try {
    program = std::make_unique<Orvane>(platform);
    program->Form_Load();
  } catch (const RuntimeError& fault) {
    platform.windows.ShowMessageBox(std::string("Orvane Lite could not be started.\n\n") + fault.what(),
                                    kCaption, BoxStyle::kCritical);
    if (program) program->Form_Unload(0);
    platform.pump.EndProcess();
  }
  return program;
}

}  // namespace orvane
