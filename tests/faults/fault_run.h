#pragma once

#include "tests/faults/faulty_platform.h"
#include "tests/support/panels.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// One run of the program from its start to its end, in which one call of the system fails: search, a
/// reading, a change in each of the two panels with the search that follows, the save, the shutdown. The
/// operator does again what had no effect, and presses Apply where a search was given up.
class FaultRun {
 public:
  /// What an operator meets, and the calls of which it may come, by the beginnings of their names.
  struct Outcome {
    std::string_view text;
    bool (*holds)(const FaultRun&);
    std::vector<std::string_view> calls;
  };
  static constexpr std::string_view kGoesOn = "goes on";

  /// @param fails number of the call that fails, 0 for none
  explicit FaultRun(std::size_t fails);
  ~FaultRun() { program_.orvane.reset(); }  // before what stands in front of its platform
  FaultRun(const FaultRun&) = delete;
  FaultRun& operator=(const FaultRun&) = delete;
  void Play();

  const FaultSwitch& Switch() const { return faults_; }
  const Outcome& Result() const;
  /// What was lost, a line for each; empty when nothing was.
  const std::string& Losses() const { return losses_; }

 private:
  bool Lives(std::int64_t within_ms);
  bool Act(const std::function<void()>& step);
  void PlayReading();
  void SetUpMeter();
  bool MeterTookIt() const;
  void SetUpProgram();
  bool ProgramTookIt() const;
  void ReadAbout();
  void Recover();
  void Close();
  void CheckSettings(bool unchanged);
  HeadlessFrame& FrameOf(const WindowedControl& panel) const;
  static const std::vector<Outcome>& Outcomes();
  bool Said(const char* text) const;
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

}  // namespace orvane
