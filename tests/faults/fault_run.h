#pragma once

#include "base/text.h"
#include "settings/setting_rows.h"
#include "tests/faults/faulty_platform.h"
#include "tests/support/panels.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What an operator meets when one call of the system fails.
enum class Outcome {
  kGoesOn,
  kSearchGoesOn,
  kPortLost,
  kNoData,
  kAppliedAgain,
  kRetried,
  kBoxNoPort,
  kEndsAlreadyRunning,
  kEndsFileMissing,
  kEndsCannotStart,
  kSaysUnsaved,
  kPlaceForgotten,
  kMeterNotTold,
};

/// One run of the program from its start to its end, in which one call of the system fails: search, a
/// reading, a change in each of the two panels with the search that follows, the save, the shutdown. The
/// operator does again what had no effect, and presses Apply where a search was given up.
class FaultRun {
 public:
  /// @param fails number of the call that fails, 0 for none
  explicit FaultRun(std::size_t fails);
  void Play();

  const FaultSwitch& Switch() const { return faults_; }
  Outcome Result() const;
  /// What was lost, a line for each; empty when nothing was.
  const std::string& Losses() const { return losses_; }
  int Searches() const { return static_cast<int>(program_.Count("v?")); }

  static constexpr std::string_view kOldSettings =
      "[USER-SETTINGS]\r\nFORM-ON-TOP=False\r\nFORM-TOP=2700\r\nFORM-LEFT=4200\r\nFORM-REGION=1\r\n"
      "F-PWR-INDEX=5\r\nR-PWR-INDEX=4\r\nCLIENT-APP=Old\r\nCLIENT-MSG-ID=77\r\n"
      "[METER-SETTINGS]\r\nPKTNOTIFY=True\r\nCOMM-PORT=2\r\nBAUD-RATE=38400\r\n";

 private:
  bool Lives(std::int64_t within_ms);
  bool Act(const std::function<void()>& step);
  void PlayReading();
  void SetUpMeter();
  bool MeterTookIt() const;
  void SetUpProgram();
  bool ProgramTookIt() const;
  void Recover();
  void Close();
  void CheckSettings(bool unchanged);
  HeadlessFrame& FrameOf(const WindowedControl& panel) const;
  bool Boxed(std::string_view part) const;
  void Lose(const std::string& what) { losses_ += what + '\n'; }

  FaultSwitch faults_;
  Program program_;
  FaultyPlatform front_;
  std::string losses_;
  bool retried_ = false;
  bool applied_again_ = false;
  bool place_forgotten_ = false;
  bool told_ = true;
};

/// The outcome in words.
std::string_view OutcomeText(Outcome outcome);

}  // namespace orvane
