// Days of readings in virtual time, all stories and faults in turn, each event compared with the naive
// reading. ./test runs a part of a day; ORVANE_SOAK_DAYS=30 takes thirty, about 13 million readings.
#include "tests/reliability/heap_in_use.h"
#include "tests/reliability/witness.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace orvane {
namespace {

using sim::FaultKind;

constexpr std::int64_t kMinute = 60000;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;

class Soak {
 public:
  explicit Soak(std::int32_t start_tick) : program_(Meter(), start_tick) {
    program_.PutSettings(Witness::kSettings);
  }

  void Run(std::int64_t ms) {
    ASSERT_TRUE(program_.Start());
    const std::int64_t start = program_.time.Now();
    ASSERT_TRUE(witness_.RunFor(10000));
    while (program_.time.Now() < start + ms) {
      Stretch();
      ASSERT_FALSE(witness_.Failed())
          << "after " << (program_.time.Now() - start) / 1000 << " s, fault " << turn_;
      const bool first_hour = program_.time.Now() < start + kHour;
      std::size_t& peak = first_hour ? first_peak_ : later_peak_;
      peak = std::max(peak, HeapInUse());
    }
    EXPECT_LE(later_peak_, first_peak_ + 16384) << "memory grows";
    EXPECT_TRUE(program_.desktop.boxes.empty());
    std::cout << "  " << static_cast<double>(program_.time.Now() - start) / kDay << " days, "
              << witness_.Readings() << " readings, heap " << first_peak_ << " bytes in the first hour, "
              << later_peak_ << " later\n";
  }
  std::uint64_t Readings() const { return witness_.Readings(); }

 private:
  static sim::MeterOptions Meter() {
    sim::MeterOptions options = MeterAt(38400);
    options.LogLimit = 10;
    return options;
  }

  // Two minutes under one fault, then it is mended; readings have to be live again at the end.
  void Stretch() {
    sim::MeterModel& meter = program_.line.Meter;
    const auto stories = sim::Scenarios();
    meter.SetScenario(stories[turn_ / 2 % stories.size()].Name);
    // In the last seconds before the tick count wraps a search ends with a box: that is known, and not looked
    // for here. Peaks of speech are what would stick.
    const std::int64_t to_wrap = (std::int64_t{1} << 31) - program_.time.Now();
    const bool wraps = to_wrap > -3 * kMinute && to_wrap < 3 * kMinute;
    if (wraps) meter.SetScenario("ssb");
    if (!wraps) Strike(turn_ % 14);
    ++turn_;
    witness_.RunFor(90000);
    meter.ClearFaults();
    program_.port.SetPresent(true);
    Forget();
    ASSERT_TRUE(witness_.RunUntil([this] { return witness_.State() == "streaming"; }, 60000))
        << witness_.State();
    witness_.RunFor(30000);
  }

  // What the platform in memory keeps for tests to look at.
  void Forget() {
    program_.port.ClearWrites();
    for (HeadlessWindow* window : program_.desktop.Main()->Children())
      window->ForgetTold();
  }

  void Strike(std::uint64_t which) {
    constexpr std::array<std::pair<FaultKind, double>, 8> kLine{{{FaultKind::kWrongCrc, 5},
                                                                 {FaultKind::kLowerCaseCrc, 5},
                                                                 {FaultKind::kTornLine, 10},
                                                                 {FaultKind::kCutLine, 3},
                                                                 {FaultKind::kMergedLines, 5},
                                                                 {FaultKind::kNoise, 10},
                                                                 {FaultKind::kOverlongLine, 1},
                                                                 {FaultKind::kReset, 0.3}}};
    sim::MeterModel& meter = program_.line.Meter;
    if (which < kLine.size()) {
      meter.SetFault(kLine[which].first, kLine[which].second);
    } else if (which == 8) {
      meter.Silence(7000);
    } else if (which == 9) {
      witness_.Unplug();
      program_.time.Post(EventKind::kInput, 4000, [this] { program_.port.SetPresent(true); });
    } else if (which == 10) {
      for (int i = 0; i < 1000; ++i)
        program_.port.Raise(CommEvent::kFrame);
    }
    // 11 to 13: nothing goes wrong
  }

  Program program_;
  Witness witness_{program_};
  std::uint64_t turn_ = 0;
  std::size_t first_peak_ = 0;
  std::size_t later_peak_ = 0;
};

// A hold that stuck would be seen at once, so each run passes one of the odd places of the tick count: the
// wrap from the highest to the lowest value, the lowest value itself, and zero.
TEST(Soak, DaysOfReadings) {
  const char* const wanted = std::getenv("ORVANE_SOAK_DAYS");  // NOLINT(concurrency-mt-unsafe): one thread
  if (wanted != nullptr) {
    Soak soak(0);  // 24.9 days to the wrap
    soak.Run(static_cast<std::int64_t>(std::strtod(wanted, nullptr) * kDay));
    return;
  }
  constexpr std::int64_t kEach = 8 * kHour;
  for (const std::int64_t start :
       {std::int64_t{INT32_MAX} - kEach / 2, std::int64_t{INT32_MIN}, -kEach / 2}) {
    Soak soak(static_cast<std::int32_t>(start));
    soak.Run(kEach);
    EXPECT_GT(soak.Readings(), kEach / 200 * 9 / 10);
  }
}

}  // namespace
}  // namespace orvane
