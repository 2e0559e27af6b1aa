#include "window/layout.h"

#include "platform/surface_canvas.h"
#include "tests/support/face.h"

#include <algorithm>

namespace orvane {
namespace {

/// The looks of the window: full view, short view, dip mode.
class LayoutTest : public testing::TestWithParam<const char*>, public RunningFace {
 protected:
  void SetUp() override {
    ASSERT_TRUE(Start(GetParam() == std::string("short") ? "FORM-REGION=0\r\n" : "FORM-REGION=1\r\n"));
    if (GetParam() == std::string("dip")) face.ClickMode(3);
  }
  std::vector<HeadlessWindow*> SeenWindows() const {
    std::vector<HeadlessWindow*> seen;
    for (HeadlessWindow* window : face.All()) {
      if (Face::Seen(*window)) seen.push_back(window);
    }
    return seen;
  }
  static bool Holds(const HeadlessWindow* outer, const HeadlessWindow* inner) {
    for (; inner != nullptr; inner = inner->Container()) {
      if (inner == outer) return true;
    }
    return false;
  }
  static std::string Name(const HeadlessWindow& window) {
    const Rect place = Face::PlaceOnFace(window);
    return "\"" + window.Text() + "\" at " + std::to_string(place.left) + ", " + std::to_string(place.top);
  }
};

TEST_P(LayoutTest, WindowsLieInsideWhatHoldsThemAndOverlapNoOther) {
  const auto seen = SeenWindows();
  EXPECT_GT(seen.size(), 15U);
  for (const HeadlessWindow* one : seen) {
    const Rect& outer = one->Container()->Place();
    EXPECT_EQ(Intersection(one->Place(), {0, 0, outer.width, outer.height}), one->Place()) << Name(*one);
    for (const HeadlessWindow* other : seen) {
      if (Holds(one, other) || Holds(other, one)) continue;
      EXPECT_TRUE(Intersection(Face::PlaceOnFace(*one), Face::PlaceOnFace(*other)).Empty())
          << Name(*one) << " and " << Name(*other);
    }
  }
}

// Shapes are painted by the form itself; a window over one of them would hide it.
TEST_P(LayoutTest, LampsLieOnTheBareFaceBesideTheirTexts) {
  const MeterControls& meter = face.Meter();
  const auto middle = [](const Rect& place) { return place.top + place.height / 2; };
  EXPECT_EQ(middle(meter.shpSWRAlarm->Bounds()), middle(meter.lblSWRAlarm->Bounds()));
  EXPECT_EQ(middle(meter.shpPowerAlarm->Bounds()), middle(meter.lblPwrAlarm->Bounds()));
  for (const Shape* lamp : {meter.shpSWRAlarm.get(), meter.shpPowerAlarm.get(), meter.shpResetAlarm.get()}) {
    if (!lamp->Visible()) continue;
    const Size size{face.Main().Place().width, face.Main().Place().height};
    EXPECT_EQ(Intersection(lamp->Bounds(), {0, 0, size.width, size.height}), lamp->Bounds());
    for (const HeadlessWindow* window : SeenWindows())
      EXPECT_TRUE(Intersection(lamp->Bounds(), Face::PlaceOnFace(*window)).Empty()) << Name(*window);
  }
}

TEST_P(LayoutTest, SegmentsLieInTheirFramesClearOfEachOtherAndOfTheScale) {
  for (const GraphControls* graph : {&face.Meter().forward, &face.Meter().reflected}) {
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kLastSegment); ++i) {
      const Shape& segment = *graph->shpGraph[i];
      const HeadlessWindow& frame = face.Of(dynamic_cast<const PictureBox&>(segment.Container()));
      EXPECT_TRUE(Face::Seen(frame)) << i;
      EXPECT_EQ(Intersection(segment.Bounds(), {0, 0, frame.Place().width, frame.Place().height}),
                segment.Bounds())
          << i;
      for (const HeadlessWindow* child : frame.Children())
        EXPECT_TRUE(Intersection(segment.Bounds(), child->Place()).Empty()) << i << " under " << Name(*child);
      if (i > 0) {
        EXPECT_GE(segment.Left(), graph->shpGraph[i - 1]->Bounds().right()) << i;
      }
    }
  }
}

// One that is wider or stands closer than its neighbours is seen at once.
TEST_P(LayoutTest, SegmentsAreEvenInPixels) {
  for (const int pixels_per_inch : {96, 120}) {
    for (const GraphControls* graph : {&face.Meter().forward, &face.Meter().reflected}) {
      const HeadlessWindow& frame = face.Of(dynamic_cast<const PictureBox&>(graph->shpGraph[0]->Container()));
      const int origin = Face::PlaceOnFace(frame).left;
      const auto pixels = [&](int twips) { return ToPixels(origin + twips, pixels_per_inch); };
      for (std::size_t i = 1; i <= static_cast<std::size_t>(kLastSegment); ++i) {
        const Rect each = graph->shpGraph[i]->Bounds();
        const Rect before = graph->shpGraph[i - 1]->Bounds();
        const int width = pixels(each.right()) - pixels(each.left);
        ASSERT_EQ(pixels(each.left) - pixels(before.left), pixels_per_inch / 12) << i;
        ASSERT_EQ(width, pixels(before.right()) - pixels(before.left)) << i;
        ASSERT_LT(width, pixels_per_inch / 12) << "a gap between the segments";
      }
    }
  }
}

TEST_P(LayoutTest, ButtonsAreLargeEnoughToBeHit) {
  int buttons = 0;
  for (const HeadlessWindow* window : SeenWindows()) {
    if (window->Describe().action != "Press") continue;
    ++buttons;
    EXPECT_GE(ToPixels(window->Place().height, 96), 15) << "too small to hit: " << Name(*window);
  }
  EXPECT_GE(buttons, 6);
}

INSTANTIATE_TEST_SUITE_P(Looks, LayoutTest, testing::Values("full", "short", "dip"));

}  // namespace
}  // namespace orvane
