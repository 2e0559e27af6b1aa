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

TEST(SingleFaults, EachEndsAsNamedAndLosesNothing) {
  FaultRun clean(0);
  clean.Play();
  EXPECT_EQ(clean.Losses(), "");
  EXPECT_EQ(clean.Result().text, FaultRun::kGoesOn);
  const auto numbers = Chosen(clean.Switch().Calls());
  EXPECT_GE(numbers.size(), kFewest);
  std::map<std::string_view, std::map<std::string, int>> table;  // what became of which calls
  for (const std::size_t number : numbers) {
    const auto& [name, stage] = clean.Switch().Calls()[number - 1];
    const std::string call = std::string(name) + ", " + std::string(stage);
    FaultRun run(number);
    run.Play();
    const auto& [outcome, holds, of] = run.Result();
    EXPECT_EQ(run.Losses(), "") << "call " << number << ", " << call;
    EXPECT_TRUE(
        std::any_of(of.begin(), of.end(), [&](auto beginning) { return call.starts_with(beginning); }))
        << call << ": " << outcome;
    ++table[outcome][call];
  }
  if (std::getenv("ORVANE_SHOW_FAULTS") == nullptr) return;
  for (const auto& [outcome, calls] : table) {
    std::cout << outcome << '\n';
    for (const auto& [call, count] : calls)
      std::cout << std::setw(7) << count << "  " << call << '\n';
  }
}

}  // namespace
}  // namespace orvane
