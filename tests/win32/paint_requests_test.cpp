#include "tests/win32/panel_fixture.h"

#include <vector>

namespace orvane {
namespace {

/// Notes what it is asked to paint, in twips.
struct Painted : Face {
  void OnPaint(Canvas& canvas) override { areas.push_back(canvas.Dirty()); }
  std::vector<Rect> areas;
};

class PaintRequestsTest : public PanelTest {
 protected:
  void SetUp() override {
    child = windows.CreateChild(*top, client, {0, 0, 3000, 1500});
    ASSERT_TRUE(Soon([&] { return !client.areas.empty(); }));
    Settle(50);  // the last picture is old
    client.areas.clear();
  }
  void ChangeTwoPlaces() {
    const PaintRequests::Gathering merged(events.Paints());
    child->Invalidate({150, 150, 150, 150});
    child->Invalidate({900, 300, 150, 150});
  }
  Painted client;
  std::unique_ptr<Widget> child;
};

TEST_F(PaintRequestsTest, WhatIsAskedForTogetherIsPaintedAtOnceAndInOneGo) {
  ChangeTwoPlaces();
  EXPECT_EQ(client.areas, (std::vector<Rect>{{150, 150, 900, 300}}));
  Settle(30);
  EXPECT_EQ(client.areas.size(), 1U);
}

TEST_F(PaintRequestsTest, MoreThanAScreenCanShowIsMergedFurther) {
  ChangeTwoPlaces();
  for (int i = 0; i < 10; ++i)
    ChangeTwoPlaces();
  EXPECT_LE(client.areas.size(), 3U);  // a slow machine may have got to the next picture
  Settle(50);
  EXPECT_GE(client.areas.size(), 2U);
  EXPECT_EQ(client.areas.back(), (Rect{150, 150, 900, 300}));
}

TEST_F(PaintRequestsTest, AHiddenWindowIsNotPainted) {
  child->SetVisible(false);
  ChangeTwoPlaces();
  EXPECT_TRUE(client.areas.empty());
}

TEST_F(PaintRequestsTest, AWindowThatGoesTakesItsRequestsWithIt) {
  {
    const PaintRequests::Gathering merged(events.Paints());
    child->Invalidate({150, 150, 150, 150});
    child.reset();
  }
  EXPECT_TRUE(client.areas.empty());
}

}  // namespace
}  // namespace orvane
