#include "tests/faults/fault_run.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iomanip>
#include <iostream>
#include <map>

namespace orvane {
namespace {

constexpr std::size_t kFewest = 500;  // faults
// Calls that are made all the time, as asking the clock, are tried in so many places of each stage.
constexpr std::size_t kPlaces = 6;

/// What else than kGoesOn may become of which calls, by the beginnings of their names.
const std::map<Outcome, std::vector<std::string_view>> kMayEndIn{
    {Outcome::kSearchGoesOn, {"SerialPort::", "WindowSystem::StartTimer, search"}},
    {Outcome::kPortLost, {"SerialPort::Works"}},
    {Outcome::kNoData, {"Clock::GetTickCount"}},
    {Outcome::kAppliedAgain,
     {"CheckWidget::", "ListWidget::", "ScrollWidget::", "TextWidget::", "PortList::",
      "SerialPort::Write, meter panel", "WindowSystem::StartTimer, reading"}},
    {Outcome::kRetried, {"WindowSystem::StartTimer, program panel"}},
    {Outcome::kBoxNoPort, {"SerialPort::Open", "SerialPort::SetSettings"}},
    {Outcome::kEndsAlreadyRunning, {"SingleInstance::Claim, start"}},
    {Outcome::kEndsFileMissing, {"Files::IsNormalFile, start", "WindowSystem::LoadPicture, start"}},
    {Outcome::kEndsCannotStart,
     {"PanelControls::Create", "WindowSystem::Create", "WindowSystem::StartTimer, start"}},
    {Outcome::kSaysUnsaved, {"Files::CanWrite, start"}},
    {Outcome::kPlaceForgotten, {"TopWindow::Bounds, shutdown", "WindowSystem::ScreenSize, shutdown"}},
    {Outcome::kMeterNotTold, {"SerialPort::Write, shutdown"}},
};

bool MayEndIn(const std::string& call, Outcome outcome) {
  if (outcome == Outcome::kGoesOn) return true;
  const auto found = kMayEndIn.find(outcome);
  return found != kMayEndIn.end() &&
         std::any_of(found->second.begin(), found->second.end(),
                     [&](std::string_view beginning) { return call.starts_with(beginning); });
}

/// The numbers of the calls to be tried, counted from 1.
std::vector<std::size_t> Chosen(const std::vector<FaultSwitch::Call>& calls) {
  std::map<std::pair<std::string_view, std::string_view>, std::vector<std::size_t>> groups;
  for (std::size_t i = 0; i < calls.size(); ++i)
    groups[{calls[i].name, calls[i].stage}].push_back(i + 1);
  const bool all = std::getenv("ORVANE_ALL_FAULTS") != nullptr;
  std::vector<std::size_t> chosen;
  for (const auto& [group, numbers] : groups) {
    const std::size_t count = all ? numbers.size() : std::min(numbers.size(), kPlaces);
    for (std::size_t i = 0; i < count; ++i)
      chosen.push_back(numbers[i * (numbers.size() - 1) / std::max<std::size_t>(count - 1, 1)]);
  }
  return chosen;
}

/// What became of which calls. Printed when ORVANE_SHOW_FAULTS is set.
class Table {
 public:
  void Count(Outcome outcome, const std::string& call) { ++rows_[outcome][call]; }
  ~Table() {
    if (std::getenv("ORVANE_SHOW_FAULTS") == nullptr) return;
    for (const auto& [outcome, calls] : rows_) {
      int sum = 0;
      for (const auto& [call, count] : calls)
        sum += count;
      std::cout << std::setw(5) << sum << "  " << OutcomeText(outcome) << '\n';
      for (const auto& [call, count] : calls)
        std::cout << std::setw(14) << count << "  " << call << '\n';
    }
  }

 private:
  std::map<Outcome, std::map<std::string, int>> rows_;
};

TEST(SingleFaults, EachEndsAsNamedAndLosesNothing) {
  FaultRun clean(0);
  clean.Play();
  EXPECT_EQ(clean.Losses(), "");
  EXPECT_EQ(clean.Result(), Outcome::kGoesOn) << OutcomeText(clean.Result());
  const auto numbers = Chosen(clean.Switch().Calls());
  EXPECT_GE(numbers.size(), kFewest);
  Table table;
  for (const std::size_t number : numbers) {
    const auto& [name, stage] = clean.Switch().Calls()[number - 1];
    const std::string call = std::string(name) + ", " + std::string(stage);
    FaultRun run(number);
    run.Play();
    EXPECT_EQ(run.Losses(), "") << "call " << number << ", " << call;
    EXPECT_TRUE(MayEndIn(call, run.Result())) << call << ": " << OutcomeText(run.Result());
    table.Count(run.Result(), call);
  }
}

}  // namespace
}  // namespace orvane
