#include "link/meter_lists.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using FullScales = std::array<std::int16_t, 12>;
constexpr FullScales kDefault{50, 100, 200, 400, 250, 500, 1000, 2000, 1250, 2500, 3000, 3000};

MeterLists Built(const std::string& ranges, const std::string& low_power = "") {
  MeterState state;
  state.ParamBText = ranges;
  state.ParamLText = low_power;
  MeterLists lists;
  lists.Build(state);
  return lists;
}

TEST(MeterLists, FullScalesOfTheAutomaticRange) {
  struct Row {
    const char* text;
    FullScales full_scales;
  };
  const Row rows[] = {
      {"", kDefault},
      {"1,2,3,4,5,6,7,8,9,10,11,12", {1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12}},
      {"1,2,3,4,5,6,7,8,9,10,11,12,13", {1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12}},
      {"10,20", {10, 100, 200, 400, 20, 500, 1000, 2000, 1250, 2500, 3000, 3000}},
      {"x,0,-5,0.5,,40000,1E999,nan, 75 ,32767,32768,1E3",
       {50, 100, 200, 32767, 250, 500, 1000, 2000, 1250, 2500, 75, 1000}},
  };
  for (const Row& row : rows) {
    const MeterLists lists = Built(row.text);
    EXPECT_EQ(lists.Auto.AutoFullScale, row.full_scales) << row.text;
    for (std::size_t i = 0; i < row.full_scales.size(); ++i)
      EXPECT_EQ(lists.Auto.AutoScale[i], static_cast<float>(51.0 / row.full_scales[i]));
  }
}

TEST(MeterLists, AnotherMeterStartsFromTheDefaults) {
  MeterState state;
  MeterLists lists;
  EXPECT_EQ(lists.Auto.AutoFullScale, kDefault);
  state.ParamBText = "1,2,3,4,5,6,7,8,9,10,11,12";
  state.ParamLText = "0,1";
  lists.Build(state);
  state.ParamBText = state.ParamLText = "";
  lists.Build(state);
  EXPECT_EQ(lists.Auto.AutoFullScale, kDefault);
  EXPECT_TRUE(lists.RangeItems.empty());
  EXPECT_TRUE(lists.LowPowerWatts.empty());
}

TEST(MeterLists, Items) {
  using Items = std::vector<MeterLists::Item>;
  EXPECT_EQ(Built("1,2,3,4,5,6,7,8,9,10,11,12").RangeItems,
            (Items{{"1/2/3", 0}, {"4/5/6", 1}, {"7/8/9", 2}, {"10/11/12", 3}}));
  EXPECT_EQ(Built("10,100,1000,20,200").RangeItems, (Items{{"10/100/1000", 0}}));
  EXPECT_EQ(Built("", "0,1,2,5").LowPowerWatts, (std::vector<std::string>{"0", "1", "2", "5"}));
}

TEST(MeterLists, TrimLimits) {
  struct Row {
    int low;
    int high;
    int menu;
  };
  for (const Row& row : {Row{-20, 20, 20},
                         {-10, 25, 10},
                         {-98, 98, 20},
                         {-98, 5, 5},
                         {0, 0, 0},
                         {3, 9, 0},
                         {-9, -3, 0},
                         {-32767, 32767, 20}}) {
    MeterState state;
    state.RangeMinNeg = static_cast<std::int16_t>(-row.low);
    state.RangeMaxNeg = static_cast<std::int16_t>(-row.high);
    MeterLists lists;
    lists.Build(state);
    EXPECT_EQ(lists.TrimLow, row.low);
    EXPECT_EQ(lists.TrimHigh, row.high);
    EXPECT_EQ(lists.TrimMenuLimit, row.menu) << row.low << ".." << row.high;
  }
}

}  // namespace
}  // namespace orvane
