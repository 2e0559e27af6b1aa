#include "tests/faults/fault_run.h"

#include "settings/ov_user_settings.h"
#include "window/menus.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::int64_t kSearchMs = 60000;

const std::string kOldSettings =
    "[USER-SETTINGS]\r\nFORM-ON-TOP=False\r\nFORM-TOP=2700\r\nFORM-LEFT=4200\r\nFORM-REGION=1\r\n"
    "F-PWR-INDEX=5\r\nR-PWR-INDEX=4\r\nCLIENT-APP=Old\r\nCLIENT-MSG-ID=77\r\n"
    "[METER-SETTINGS]\r\nPKTNOTIFY=True\r\nCOMM-PORT=2\r\nBAUD-RATE=38400\r\n";

UserSettings Wanted() {
  return {"5", "38400", true, true, 1500, 3000, 1, 3, 4, "New", 77};
}

/// The settings of a file of this content.
UserSettings Read(const std::string& content, std::string& losses) {
  TempFolder folder;
  PutFile(folder.Path("Orvane.dat"), content);
  HeadlessFiles files(folder.Path());
  HeadlessProfileStore store(files);
  VirtualTime time;
  OVUserSettings kept(store, files, time, [](const std::string&) {});
  if (!Attempt([&] { kept.LoadUserSettings(); })) losses += "a value of the settings file is no value\n";
  kept.LoadMeterSettings();
  return kept.Settings();
}

}  // namespace

FaultRun::FaultRun(std::size_t fails)
    : faults_(fails), program_(MeterAt(38400)), front_(faults_, program_.platform) {
  program_.files.SetFlushing(false);
  program_.PutSettings(kOldSettings);
  // What was before the file: nobody wants it back while the file is good.
  program_.files.Replace(program_.SettingsPath() + ".bak", "[USER-SETTINGS]\r\nCLIENT-APP=Oldest\r\n");
  program_.ports.ports = {{2, ""}, {5, "USB Serial Port"}};
  program_.line.Meter.SetPower(500, 20);
}

// The system's own traps stand round each act of the operator.
bool FaultRun::Act(const std::function<void()>& step) {
  return program_.StillRuns([&] { Attempt(step); });
}

bool FaultRun::Lives(std::int64_t within_ms) {
  return program_.RunUntil(
      [&] {
        return !program_.Fwd().empty() && program_.line.Meter.Streaming() &&
               program_.orvane->Link().Flags().MeterFound;
      },
      within_ms);
}

void FaultRun::Play() {
  faults_.stage = "start";
  if (!program_.Start(front_.platform)) return CheckSettings(true);
  faults_.stage = "search";
  Lives(kSearchMs);
  faults_.stage = "reading";
  PlayReading();
  faults_.stage = "meter panel";
  SetUpMeter();
  faults_.stage = "program panel";
  SetUpProgram();
  faults_.stage = "about box";
  ReadAbout();
  faults_.stage = "search again";
  Lives(kSearchMs);
  faults_.stage = "recovery";
  Recover();
  faults_.stage = "shutdown";
  Close();
}

void FaultRun::PlayReading() {
  Act([&] { program_.desktop.Main()->MoveTo({3000, 1500}); });
  const auto& button = *program_.orvane->Meter().forward.cmdRange[3];
  Act([&] {
    auto& buttons = PanelWindow<HeadlessWindow>(*program_.desktop.Main(),
                                                *program_.orvane->Meter().forward.pbxRangeButtons);
    PanelWindow<HeadlessWindow>(buttons, button).Click();
  });
  program_.line.Meter.SetPower(100, 0);
  program_.RunFor(1500);
  program_.line.Meter.SetPower(500, 20);
  program_.RunFor(1500);
}

// Both panels lie at one place.
HeadlessFrame& FaultRun::FrameOf(const WindowedControl& panel) const {
  return dynamic_cast<HeadlessFrame&>(*program_.desktop.Main()->Find(panel.WindowText()));
}

void FaultRun::SetUpMeter() {
  Act([&] { program_.desktop.Main()->Press(Key::kF2); });
  const auto& opened = program_.orvane->Panels().MeterSetup();
  if (!opened) return;
  const MeterSetupPanel& panel = *opened;
  HeadlessFrame& frame = FrameOf(panel.FrameMeterSetup);
  const auto in = [&](const WindowedControl& group) -> HeadlessFrame& {
    return PanelWindow<HeadlessFrame>(frame, group);
  };
  Act([&] { PanelWindow<HeadlessList>(in(panel.FrameRangeScale), panel.cboRangeScale).Choose(2); });
  Act([&] { PanelWindow<HeadlessScrollBar>(in(panel.FrameFwdTrim), panel.vsFPTrim).MoveTo(-7); });
  Act([&] {
    auto& text = PanelWindow<HeadlessTextBox>(in(panel.FrameCall), panel.txtCallMsg);
    text.Paste("");
    text.Type("CQ");
  });
  Act([&] { PanelWindow<HeadlessButton>(frame, panel.cmdApplySettings).Push(); });
  program_.RunFor(1000);
  Act([&] { PanelWindow<HeadlessButton>(frame, panel.cmdCancelSettings).Push(); });
}

bool FaultRun::MeterTookIt() const {
  const sim::MeterSettings& meter = program_.line.Meter.Settings();
  return meter.RangeScale == 2 && meter.ForwardTrim == 7 && meter.CallText == "CQ";
}

void FaultRun::SetUpProgram() {
  Act([&] { program_.desktop.Main()->Press(Key::kF3); });
  const auto& opened = program_.orvane->Panels().ProgramSettings();
  if (!opened) return;
  const ProgramSettingsPanel& panel = *opened;
  HeadlessFrame& frame = FrameOf(panel.FrameSettings);
  const auto in = [&](const WindowedControl& group) -> HeadlessFrame& {
    return PanelWindow<HeadlessFrame>(frame, group);
  };
  Act([&] {
    auto& list = PanelWindow<HeadlessList>(in(panel.FramePort), panel.cboCommPort);
    const auto line = std::find_if(list.Items().begin(), list.Items().end(),
                                   [](const std::string& item) { return item.starts_with("COM5"); });
    if (line != list.Items().end()) list.Choose(static_cast<int>(line - list.Items().begin()));
  });
  Act([&] { PanelWindow<HeadlessTextBox>(in(panel.FrameClient), panel.txtClient).Paste("New"); });
  Act([&] {
    auto& box = PanelWindow<HeadlessCheckBox>(in(panel.FrameOnTop), panel.chkOnTop);
    if (box.Checked()) box.Toggle();
    box.Toggle();
  });
  Act([&] { PanelWindow<HeadlessButton>(frame, panel.cmdAction).Push(); });
}

bool FaultRun::ProgramTookIt() const {
  const UserSettings& settings = program_.orvane->Settings();
  return settings.CommPort == "5" && settings.ClientApp == "New" && settings.FormOnTop;
}

void FaultRun::ReadAbout() {
  HeadlessTopWindow& main = *program_.desktop.Main();
  const int tries = 2;
  for (int i = 0; i < tries && !program_.orvane->AboutBox(); ++i) {
    program_.desktop.choices = {menus::kAbout};
    Act([&] { PanelWindow<HeadlessWindow>(main, *program_.orvane->Controls().cmdMenu[2]).Click(); });
  }
  HeadlessTopWindow* box = program_.desktop.Dialog();
  if (box == nullptr) return Lose("no About box");
  Act([&] { box->Close(); });
  if (main.State() != WindowState::kNormal) Act([&] { main.SetState(WindowState::kNormal); });
}

// The program gets over it by itself, or by what the operator does again.
void FaultRun::Recover() {
  if (!ProgramTookIt()) {
    applied_again_ = true;
    SetUpProgram();
  }
  if (!Lives(kSearchMs)) {
    retried_ = true;
    SetUpProgram();
    if (!Lives(kSearchMs)) Lose("no readings after a retry");
  }
  if (!MeterTookIt()) {
    applied_again_ = true;
    SetUpMeter();
  }
  if (program_.orvane->Settings().FPwrIndex != 3) {
    applied_again_ = true;
    PlayReading();
  }
  if (!MeterTookIt()) Lose("the meter did not take its settings");
  if (!ProgramTookIt()) Lose("the program did not take its settings");
  if (!Lives(kSearchMs)) Lose("no readings");
}

void FaultRun::Close() {
  const bool up = program_.port.PortOpen();
  const std::int64_t before = program_.time.Now();
  if (!program_.Close()) Lose("it does not close");
  if (program_.time.Now() - before >= 2000) Lose("closing takes more than two seconds");
  told_ = !up || !program_.line.Meter.Streaming();
  if (program_.port.PortOpen()) Lose("the port stays open");
  CheckSettings(false);
}

// A start that failed leaves them as they were. A window that the system says nothing true of goes to the
// default place.
void FaultRun::CheckSettings(bool unchanged) {
  const std::string content = program_.SettingsText();
  UserSettings kept = Read(content, losses_);
  const UserSettings wanted = unchanged ? Read(kOldSettings, losses_) : Wanted();
  place_forgotten_ = kept.FormTop == 100 || kept.FormLeft == 0;
  if (place_forgotten_) {
    kept.FormTop = wanted.FormTop;
    kept.FormLeft = wanted.FormLeft;
  }
  if (kept != wanted) Lose("the settings file is not what it should be:\n" + content);
}

bool FaultRun::Said(const char* text) const {
  return faults_.said.contains(text);
}

bool FaultRun::Boxed(std::string_view part) const {
  return std::any_of(program_.desktop.boxes.begin(), program_.desktop.boxes.end(),
                     [&](const ShownBox& box) { return box.text.find(part) != std::string::npos; });
}

// The first that holds.
const std::vector<FaultRun::Outcome>& FaultRun::Outcomes() {
  using Run = const FaultRun&;
  static const std::vector<Outcome> rows{
      {"ends with the box \"Already Running\"",
       [](Run run) { return run.Boxed("Already Running"); },
       {"SingleInstance::Claim, start"}},
      {"ends with the box \"File Missing!\"",
       [](Run run) { return run.Boxed("Critical Program File"); },
       {"Files::IsNormalFile, start", "WindowSystem::LoadPicture, start"}},
      {"ends with the box \"could not be started\"",
       [](Run run) { return run.Boxed("could not be started"); },
       {"WindowSystem::Create", "WindowSystem::StartTimer, start"}},
      {"box \"No Port Selected\"; Apply searches again",
       [](Run run) { return run.Boxed("No Port Selected"); },
       {"SerialPort::Open", "SerialPort::SetSettings"}},
      {"\"Settings cannot be saved here\" at the start; saved all the same",
       [](Run run) { return run.Said("Settings cannot be saved here"); },
       {"Files::CanWrite, start"}},
      {"the meter goes on sending; the next start stops it",
       [](Run run) { return !run.told_; },
       {"SerialPort::Write, shutdown"}},
      {"\"Port Lost\", and readings again by themselves",
       [](Run run) { return run.Said("Port Lost"); },
       {"SerialPort::Works"}},
      {"\"The panel could not be opened.\" or \"The box could not be opened.\", and it opens when asked for "
       "again",
       [](Run run) {
         return run.Said("The panel could not be opened.") || run.Said("The box could not be opened.");
       },
       {"PanelControls::Create", "WindowSystem::CreateTopWindow, about box"}},
      {"no readings until the operator applies the port again",
       [](Run run) { return run.retried_; },
       {"WindowSystem::StartTimer, program panel"}},
      {"a choice had no effect, and is seen to have none; made again it has",
       [](Run run) { return run.applied_again_; },
       {"CheckWidget::", "ListWidget::", "ScrollWidget::", "TextWidget::", "PortList::",
        "SerialPort::Write, meter panel", "WindowSystem::StartTimer, reading"}},
      {"the search takes another attempt",
       [](Run run) { return run.program_.Count("v?") > 2; },
       {"SerialPort::", "WindowSystem::StartTimer, search"}},
      {"\"No Data\", and readings again by themselves",
       [](Run run) { return run.Said("No Data"); },
       {"Clock::GetTickCount"}},
      {"the window goes to its default place",
       [](Run run) { return run.place_forgotten_; },
       {"TopWindow::Bounds, shutdown", "WindowSystem::ScreenSize, shutdown"}},
      {kGoesOn, [](Run) { return true; }, {""}},
  };
  return rows;
}

const FaultRun::Outcome& FaultRun::Result() const {
  return *std::find_if(Outcomes().begin(), Outcomes().end(),
                       [this](const Outcome& outcome) { return outcome.holds(*this); });
}

}  // namespace orvane
