#include "platform/surface_canvas.h"

#include "tests/support/paint.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr Color kWhite = MakeColor(255, 255, 255);

TEST(Twips, AreRoundedToTheNearestPixelOnBothSidesOfZero) {
  const std::tuple<int, int, int> rows[] = {{0, 96, 0},   {7, 96, 0},   {8, 96, 1},      {15, 96, 1},
                                            {-7, 96, 0},  {-8, 96, -1}, {9600, 96, 640}, {6, 120, 1},
                                            {5, 120, 0},  {30, 120, 3}, {-6, 120, 0},    {-7, 120, -1},
                                            {60, 120, 5}, {60, 144, 6}, {-60, 120, -5},  {1440, 96, 96}};
  for (const auto& [twips, pixels_per_inch, pixels] : rows)
    EXPECT_EQ(ToPixels(twips, pixels_per_inch), pixels) << twips << " at " << pixels_per_inch;
  for (const int pixels_per_inch : {96, 120, 144, 110, 192}) {
    for (int pixel = -3000; pixel <= 3000; ++pixel)
      ASSERT_EQ(ToPixels(ToTwips(pixel, pixels_per_inch), pixels_per_inch), pixel) << pixels_per_inch;
  }
}

/// A canvas for a whole control at a place on the form.
struct Sheet {
  Sheet(int width, int height, Point origin, int pixels_per_inch, const Rect& part)
      : surface(width, height),
        canvas(surface.Get(), rasterizer, origin, part, {pixels_per_inch, pixels_per_inch}) {}
  Sheet(int width, int height, Point origin, int pixels_per_inch)
      : Sheet(width, height, origin, pixels_per_inch, {0, 0, width, height}) {}
  GuardedSurface surface;
  Rasterizer rasterizer;
  NotingCanvas canvas;
};

TEST(SurfaceCanvas, NeighboursMeetWithoutGapOrOverlapAtEveryResolution) {
  for (const int pixels_per_inch : {96, 120, 144}) {
    for (const int left : {0, 7, 22, 130}) {
      Sheet sheet(100, 4, {left, 45}, pixels_per_inch);
      for (int i = 0; i < 12; ++i)
        sheet.canvas.FillRect({i * 67, 0, 67, 60}, MakeColor(i + 1, 0, 0));
      int before = 1;
      const int end = ToPixels(left + 12 * 67, pixels_per_inch) - ToPixels(left, pixels_per_inch);
      for (int x = 0; x < end; ++x) {
        const int band = static_cast<int>(sheet.surface.At(x, 0) >> 16);
        EXPECT_TRUE(band == before || band == before + 1) << x << " at " << pixels_per_inch;
        before = band;
      }
      EXPECT_EQ(before, 12);
    }
  }
}

TEST(SurfaceCanvas, EqualLampsLookEqualWhereverTheyStand) {
  for (const int pixels_per_inch : {96, 120}) {
    std::vector<std::uint32_t> first;
    for (const Point at : {Point{0, 0}, {60, 120}, {300, 60}, {1440, 720}}) {
      Sheet sheet(14, 14, at, pixels_per_inch);
      sheet.canvas.FillEllipse({0, 0, 150, 150}, kWhite, 255);
      if (first.empty()) first = sheet.surface.Pixels();
      EXPECT_EQ(sheet.surface.Pixels(), first) << at.x << " at " << pixels_per_inch;
    }
  }
}

TEST(SurfaceCanvas, RoundShapesFillTheirBoxAndNoMore) {
  Sheet sheet(20, 20, {0, 0}, 96);
  sheet.canvas.FillEllipse({60, 60, 150, 150}, kWhite, 255);
  sheet.canvas.FillRounded({30, 225, 240, 60}, 30, kWhite, 255);
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 20; ++x) {
      const bool in_box = Rect{4, 4, 10, 10}.Contains({x, y}) || Rect{2, 15, 16, 4}.Contains({x, y});
      if (!in_box) {
        EXPECT_EQ(sheet.surface.At(x, y), 0U) << x << ", " << y;
      }
    }
  }
  EXPECT_EQ(sheet.surface.Grey(9, 9), 255);
  EXPECT_GT(sheet.surface.Grey(9, 4), 200) << "the top touches the box";
  EXPECT_LT(sheet.surface.Grey(4, 4), 40) << "the corner is round";
  EXPECT_EQ(sheet.surface.Grey(9, 15), 255) << "straight between the round corners";
  EXPECT_LT(sheet.surface.Grey(2, 15), 255);
}

void DrawScene(Canvas& canvas) {
  canvas.FillRect({0, 0, 900, 600}, MakeColor(20, 30, 40));
  canvas.FillRounded({37, 22, 470, 225}, 45, MakeColor(200, 40, 90), 255);
  canvas.FillEllipse({301, 190, 333, 290}, MakeColor(40, 220, 90), 180);
  const std::array<PointF, 4> sliver{{{10, 400}, {880, 455}, {890, 480}, {5, 430}}};
  canvas.FillPolygon(sliver, MakeColor(255, 255, 255), 255);
}

TEST(SurfaceCanvas, PaintingInPartsGivesThePictureOfTheWhole) {
  for (const int pixels_per_inch : {96, 120}) {
    const Point origin{307, 98};
    const int width = 60;
    const int height = 40;
    Sheet whole(width, height, origin, pixels_per_inch);
    DrawScene(whole.canvas);
    for (const Rect& part : {Rect{0, 0, 20, 40}, {20, 0, 40, 13}, {20, 13, 40, 27}, {31, 17, 1, 1}}) {
      Sheet piece(part.width, part.height, origin, pixels_per_inch, part);
      DrawScene(piece.canvas);
      int worst = 0;
      for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x)
          worst = std::max(worst,
                           Difference(piece.surface.At(x, y), whole.surface.At(part.left + x, part.top + y)));
      }
      EXPECT_LE(worst, 2) << part.left << ", " << part.top << " at " << pixels_per_inch;
    }
  }
}

TEST(SurfaceCanvas, TheOriginMovesThereAndBackAndDirtyIsThePartBeingPainted) {
  const PictureData picture{2, 1, {0xFFAABBCC, 0xFF112233}};
  for (const int pixels_per_inch : {96, 120}) {
    const int pixel = 1440 / pixels_per_inch;  // in twips
    Sheet sheet(20, 20, {30 * pixel, 30 * pixel}, pixels_per_inch, {10, 20, 20, 20});
    const Rect dirty{10 * pixel, 20 * pixel, 20 * pixel, 20 * pixel};
    EXPECT_EQ(sheet.canvas.Dirty(), dirty);
    sheet.canvas.FillRect(dirty, MakeColor(0, 0, 9));
    EXPECT_EQ(sheet.surface.Pixels(), std::vector<std::uint32_t>(400, 9U));
    sheet.canvas.MoveOrigin(12 * pixel, 23 * pixel);
    EXPECT_EQ(sheet.canvas.Dirty(), dirty.Shifted(-12 * pixel, -23 * pixel));
    sheet.canvas.DrawPicture({pixel, 0}, picture);
    EXPECT_EQ(sheet.surface.At(3, 3), 0xAABBCCU);
    EXPECT_EQ(sheet.surface.At(4, 3), 0x112233U);
    EXPECT_EQ(sheet.surface.At(5, 3), 9U);
    sheet.canvas.MoveOrigin(-12 * pixel, -23 * pixel);
    EXPECT_EQ(sheet.canvas.Dirty(), dirty);
  }
}

TEST(SurfaceCanvas, TextGetsItsBoxInPixelsAndIsLeftOutWhereNothingIsPainted) {
  Sheet sheet(20, 20, {0, 0}, 120, {10, 10, 20, 20});
  sheet.canvas.DrawText({120, 120, 240, 60}, "seen", {"Arial", 180, false}, kWhite, Align::kRight);
  sheet.canvas.DrawText({0, 0, 120, 120}, "beside", {}, kWhite, Align::kLeft);
  sheet.canvas.DrawText({120, 120, 240, 60}, "", {}, kWhite, Align::kLeft);
  ASSERT_EQ(sheet.canvas.texts.size(), 1U);
  EXPECT_EQ(sheet.canvas.texts[0].text, "seen");
  EXPECT_EQ(sheet.canvas.texts[0].area, (Rect{0, 0, 20, 5}));
  EXPECT_EQ(sheet.canvas.texts[0].height, 15);
  EXPECT_EQ(sheet.canvas.texts[0].align, Align::kRight);
}

}  // namespace
}  // namespace orvane
