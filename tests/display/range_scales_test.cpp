#include "base/runtime_error.h"
#include "tests/display/display_fixture.h"

namespace orvane {
namespace {

TEST_F(DisplayTest, FixedScalesAreLabelled) {
  const char* forward[] = {"0|5.0|10",     "0|50.0|100",   "0|100.0|200",   "0|250.0|500",
                           "0|500.0|1000", "0|750.0|1500", "0|1000.0|2000", "0|1500.0|3000"};
  const char* reflected[] = {"0|5.0|10",    "0|12.5|25",   "0|25.0|50",   "0|62.5|125",
                             "0|125.0|250", "0|187.5|375", "0|250.0|500", "0|375.0|750"};
  for (int i = 0; i < 8; ++i) {
    display.ChooseForwardRange(i);
    display.ChooseReflectedRange(i);
    EXPECT_EQ(Labels(controls.forward), forward[i]);
    EXPECT_EQ(Labels(controls.reflected), reflected[i]);
    for (const GraphControls* graph : {&controls.forward, &controls.reflected}) {
      for (std::size_t k = 0; k < 9; ++k)
        EXPECT_EQ(graph->shpRange[k]->FillStyle(), static_cast<int>(k) == i ? 0 : 1);
      const Rect label = graph->lblScale[1]->Bounds();
      const Rect strip = graph->pbxScale->Bounds();
      EXPECT_NEAR(label.left + label.width / 2.0, strip.left + strip.width / 2.0, 1.0);
    }
  }
  for (const auto& [index, factor] : {std::pair{8, 0.0F}, {-1, 0.0F}, {4, 0.051F}})
    EXPECT_EQ(display.ForwardRange().Factor(index), factor);
  EXPECT_EQ(display.ReflectedRange().Factor(7), 0.068F);
}

TEST_F(DisplayTest, AutomaticScaleFollowsTheMeterOneIndexALine) {
  display.ChooseForwardRange(kAutoRange);
  display.ChooseReflectedRange(2);
  EXPECT_EQ(Labels(controls.forward), "0|25|50");
  meter.ParamB2 = 2;
  meter.ParamR = 1;
  Line(100, 0);
  EXPECT_EQ(Labels(controls.forward), "0|500|1000");  // both indexes are read when either changes
  meter.ParamR = 2;
  Line(100, 0);
  Line(100, 0);
  EXPECT_EQ(Labels(controls.forward), "0|1500|3000");
  Line(3000, 0);
  EXPECT_EQ(FwdLit(), 51);
  EXPECT_EQ(Labels(controls.reflected), "0|25.0|50") << "a fixed range stays";
  display.ChooseReflectedRange(kAutoRange);
  Line(1000, 500);
  EXPECT_GT(RefLit(), 0);
  meter.ParamR = 0;
  Line(0, 0);
  EXPECT_EQ(FwdLit() + RefLit(), 0) << "row 0 without power clears both bars";
  meter.ParamR = 1;
  meter.ParamB2 = 0;
  Line(100, 60);
  Line(100, 60);
  Line(100, 50);
  EXPECT_EQ(Labels(controls.reflected), "0|125|250");
  EXPECT_EQ(RefLit(), 11);
  meter.ParamR = 0;
  Line(1, 0);
  EXPECT_EQ(FwdLit(), 1) << "row 0 with some power clears none";
}

TEST_F(DisplayTest, MeterIndexesOutOfBoundsAreAFaultAfterTheMarkerMoved) {
  display.ChooseForwardRange(1);
  meter.ParamR = 3;
  EXPECT_THROW(display.ChooseForwardRange(kAutoRange), RuntimeError);
  EXPECT_EQ(controls.forward.shpRange[8]->FillStyle(), 0);
  meter.ParamR = 0;
  Line(100, 0);
  EXPECT_EQ(Fwd(), "100");
  display.ChooseForwardRange(3);
  Line(40, 0);
  EXPECT_EQ(Fwd(), "40") << "the held 100 has given way";
}

}  // namespace
}  // namespace orvane
