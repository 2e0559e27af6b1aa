#include "link/meter_lists.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using FullScales = std::array<std::int16_t, 12>;
constexpr FullScales kDefault{50, 100, 200, 400, 250, 500, 1000, 2000, 1250, 2500, 3000, 3000};

// One list for all rows: another meter starts from the defaults.
TEST(MeterLists, FullScalesOfTheAutomaticRange) {
  const std::pair<const char*, FullScales> rows[] = {
      {"1,2,3,4,5,6,7,8,9,10,11,12", {1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12}},
      {"", kDefault},
      {"1,2,3,4,5,6,7,8,9,10,11,12,13", {1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12}},
      {"10,20", {10, 100, 200, 400, 20, 500, 1000, 2000, 1250, 2500, 3000, 3000}},
      {"x,0,-5,0.5,,40000,1E999,nan, 75 ,32767,32768,1E3",
       {50, 100, 200, 32767, 250, 500, 1000, 2000, 1250, 2500, 75, 1000}},
  };
  MeterState state;
  MeterLists lists;
  EXPECT_EQ(lists.Auto.AutoFullScale, kDefault);
  for (const auto& [text, full_scales] : rows) {
    state.ParamBText = text;
    lists.Build(state);
    EXPECT_EQ(lists.Auto.AutoFullScale, full_scales) << text;
    for (std::size_t i = 0; i < full_scales.size(); ++i)
      EXPECT_EQ(lists.Auto.AutoScale[i], static_cast<float>(51.0 / full_scales[i]));
  }
}

TEST(MeterLists, Items) {
  using Items = std::vector<MeterLists::Item>;
  const std::tuple<const char*, Items, const char*, std::vector<std::string>> rows[] = {
      {"1,2,3,4,5,6,7,8,9,10,11,12",
       {{"1/2/3", 0}, {"4/5/6", 1}, {"7/8/9", 2}, {"10/11/12", 3}},
       "0,1,2,5",
       {"0", "1", "2", "5"}},
      {"10,100,1000,20,200", {{"10/100/1000", 0}}, "", {}},
      {"", {}, "", {}}};
  MeterState state;
  MeterLists lists;
  for (const auto& [ranges, items, low_power, watts] : rows) {
    state.ParamBText = ranges;
    state.ParamLText = low_power;
    lists.Build(state);
    EXPECT_EQ(lists.RangeItems, items) << ranges;
    EXPECT_EQ(lists.LowPowerWatts, watts) << low_power;
  }
}

TEST(MeterLists, TrimLimits) {
  const std::tuple<int, int, int> rows[] = {{-20, 20, 20}, {-10, 25, 10}, {-98, 98, 20}, {-98, 5, 5},
                                            {0, 0, 0},     {3, 9, 0},     {-9, -3, 0},   {-32767, 32767, 20}};
  for (const auto& [low, high, menu] : rows) {
    MeterState state;
    state.RangeMinNeg = static_cast<std::int16_t>(-low);
    state.RangeMaxNeg = static_cast<std::int16_t>(-high);
    MeterLists lists;
    lists.Build(state);
    EXPECT_EQ(std::tuple(lists.TrimLow, lists.TrimHigh, lists.TrimMenuLimit), std::tuple(low, high, menu));
  }
}

}  // namespace
}  // namespace orvane
