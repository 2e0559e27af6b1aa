#include "link/meter_search.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "link/parameter_load.h"
#include "link/port_setup.h"
#include "link/readings.h"
#include "link/scoped_true.h"
#include "platform/wait.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvane {
namespace {

constexpr std::array<std::string_view, 3> kSpeeds{"38400", "19200", "9600"};
constexpr std::int16_t kAttemptsBeforeAsking = 10;
constexpr std::int16_t kLastRangeButton = 8;
constexpr std::int32_t kSettleMs = 250;
constexpr std::int32_t kAnswerMs = 1500;

bool IsRangeButton(std::int16_t index) {
  return index >= 0 && index <= kLastRangeButton;
}

}  // namespace

void MeterSearch::FindMeter() {
  if (attempt_running_ || !link_.events.MayWait()) return;
  const ScopedTrue guard(attempt_running_);
  restarted_ = false;
  link_.events.EnableFindMeter(false);
  if (Attempt([this] { TryOnce(); })) return;
  // Also when the next attempt was due already: a port that cannot be opened is not tried again each second,
  // with a box each time.
  link_.events.EnableFindMeter(false);
  // A lost port's return is watched for.
  if (link_.flags.PortGone || LostBetweenAttempts()) return;
  link_.flags.SearchAbandoned = true;
  link_.flags.PortRefused = PortNumber(link_.settings.CommPort()) != 0;
  link_.events.ShowBox("Comm Port = 0 No Port Selected. Please Select a Comm Port.", "No Port Selected");
}

bool MeterSearch::FindMeterQuietly() {
  if (attempt_running_ || !link_.events.MayWait()) return false;
  const ScopedTrue guard(attempt_running_);
  const ScopedTrue quiet(quiet_);
  restarted_ = false;
  readings_before_ = link_.flags.Readings;
  link_.flags.MeterFound = false;
  link_.state.FirmwareVersion.clear();
  Attempt([this] { TryOnce(); });
  LostBetweenAttempts();
  return link_.flags.MeterFound;
}

// A port that worked and does not open again was lost in the moment for which it was closed; one that is open
// and does not work, before the system told so.
bool MeterSearch::LostBetweenAttempts() {
  if (link_.flags.GoodSpeed.empty() || link_.flags.PortGone || link_.port.Works()) return false;
  LosePort(link_);
  return true;
}

void MeterSearch::GoOnAfterLateAnswer() {
  const bool stuck =
      !attempt_running_ && !link_.flags.MeterFound && !link_.flags.SearchAbandoned && Answered();
  if (stuck) FindMeter();
}

void MeterSearch::TryOnce() {
  if (!link_.flags.MeterSearchRunning) SetUpPort(link_);
  link_.flags.MeterSearchRunning = true;
  OpenPort();
  transmitter_.SetDataFlow(false);
  link_.flags.AckText.clear();
  WaitTicks(link_.clock, link_.pump, kSettleMs);
  transmitter_.SendCommand("v?");
  WaitTicks(link_.clock, link_.pump, kSettleMs);
  if (!Answered()) {
    WaitTicksUnless(link_.clock, link_.pump, kAnswerMs, [this] { return Answered() || Overtaken(); });
  }
  if (Overtaken()) return;
  if (Answered()) {
    Succeed();
  } else {
    Fail();
  }
}

void MeterSearch::OpenPort() {
  if (PortNumber(link_.settings.CommPort()) == 0) {
    throw RuntimeError(Fault::kInvalidPort, "opening the meter's port: none is chosen");
  }
  link_.port.Open();
}

bool MeterSearch::Answered() const {
  return ContainsNoCase(link_.state.FirmwareVersion, "Version");
}

void MeterSearch::Succeed() {
  LoadMeterParameters(link_, transmitter_, 0);
  lists_.Build(link_.state);
  if (link_.state.ParamS != 0) update_.ShowCallMessage(link_.state.MeterCallText.Text(), false);
  WaitTicks(link_.clock, link_.pump, kSettleMs);
  if (Overtaken()) return;
  RestoreRanges();
  // A search that the operator sees ends with readings, whatever was stopped before it.
  const bool stream = !quiet_ || !link_.flags.FlowStopped;
  if (stream) transmitter_.SetDataFlow(true);
  if (Overtaken()) return;
  link_.flags.MeterFound = true;
  link_.flags.GoodSpeed = link_.settings.BaudRate();
  link_.flags.SearchAbandoned = false;
  link_.flags.ResyncPending = false;
  link_.flags.DataFlowWanted = stream;
  link_.flags.FlowStopped = !stream;
  if (quiet_) link_.settings.SaveMeterSettings();
}

void MeterSearch::RestoreRanges() {
  if (link_.events.InDipMode()) return;
  const std::int16_t forward = link_.settings.FPwrIndex();
  if (IsRangeButton(forward)) link_.events.ClickFwdPwrRange(forward);
  const std::int16_t reflected = link_.settings.RPwrIndex();
  if (IsRangeButton(reflected)) link_.events.ClickRefPwrRange(reflected);
}

void MeterSearch::Fail() {
  // Readings that come all the same say that the speed is right: the meter does not hear us.
  if (quiet_ && link_.flags.Readings != readings_before_) return;
  link_.port.Close();
  const std::string speed = NextBaudRate(baud_rate_index_);
  if (Overtaken()) return;
  link_.port.SetSettings(LineSettings(speed));
  link_.port.Open();
}

// The step back to the first speed happens one failure late, so that 38400, which nearly every meter has, is
// tried twice in each round.
std::string MeterSearch::NextBaudRate(std::int16_t& baud_rate_index) {
  const bool in_list = baud_rate_index >= 0 && static_cast<std::size_t>(baud_rate_index) < kSpeeds.size();
  std::string speed(kSpeeds[in_list ? static_cast<std::size_t>(baud_rate_index) : 0]);
  baud_rate_index = in_list ? static_cast<std::int16_t>(baud_rate_index + 1) : std::int16_t{0};
  link_.settings.SetBaudRate(speed);
  if (quiet_) return speed;
  if (search_attempts_ == kAttemptsBeforeAsking) {
    AskToGoOn();
    link_.settings.SetBaudRate(kSpeeds[0]);
    return std::string(kSpeeds[0]);
  }
  ++search_attempts_;
  link_.events.EnableFindMeter(true);
  link_.events.ShowStatus(LineSettings(speed), StatusTone::kNormal);
  link_.settings.SaveMeterSettings();
  transmitter_.SetDataFlow(false);
  return speed;
}

void MeterSearch::AskToGoOn() {
  const bool again = link_.events.AskOkCancel(
      "Orvane Meter Not Detected. Please verify connections and power to meter. Click OK to try again.",
      "Meter Not Detected");
  if (again) {
    search_attempts_ = 0;
  } else {
    link_.flags.SearchAbandoned = true;
  }
  link_.events.EnableFindMeter(again);
}

void MeterSearch::Restart() {
  link_.port.Close();
  link_.flags.MeterFound = false;
  link_.flags.ResyncPending = false;
  link_.flags.MeterSearchRunning = false;
  link_.flags.SearchAbandoned = false;
  link_.flags.PortRefused = false;
  link_.flags.PortGone = false;
  link_.flags.DataFlowWanted = false;
  link_.flags.FlowStopped = false;
  link_.flags.GoodSpeed.clear();
  link_.state.FirmwareVersion.clear();
  baud_rate_index_ = 0;
  search_attempts_ = 0;
  restarted_ = attempt_running_;
  // A running attempt may still send; it does so on the port that is wanted now.
  Attempt([this] { SetUpPort(link_); });
  link_.flags.SearchAbandoned = !Attempt([this] { link_.events.EnableFindMeter(true); });
}

}  // namespace orvane
