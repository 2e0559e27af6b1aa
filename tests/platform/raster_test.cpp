#include "platform/raster.h"

#include "tests/support/paint.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

constexpr Color kWhite = MakeColor(255, 255, 255);
using Outline = std::vector<PixelPoint>;

Outline Box(double left, double top, double right, double bottom) {
  return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

Outline Moved(const Outline& outline, double dx, double dy) {
  Outline moved;
  for (const PixelPoint& corner : outline)
    moved.push_back({corner.x + dx, corner.y + dy});
  return moved;
}

GuardedSurface Drawn(int width, int height, const Outline& outline, int alpha = 255) {
  GuardedSurface surface(width, height);
  Rasterizer().FillPolygon(surface.Get(), outline, kWhite, alpha);
  return surface;
}

double Overlap(int pixel, double from, double to) {
  return std::max(0.0, std::min(pixel + 1.0, to) - std::max(static_cast<double>(pixel), from));
}

TEST(Rasterizer, APixelGetsTheShareOfItsAreaThatIsCovered) {
  const std::tuple<double, double, double, double, int> rows[] = {
      {2, 3, 7, 8, 255},
      {2.5, 3, 7, 8, 255},
      {2.25, 3.75, 7.5, 8.125, 255},
      {4.2, 4.3, 4.8, 4.9, 255},  // within one pixel
      {4.8, 4.9, 5.1, 5.2, 255},  // a corner where four pixels meet
      {0, 0, 12, 12, 255},
      {-3.5, -2.5, 15.5, 14.5, 255},
      {2.25, 3.75, 7.5, 8.125, 128},
      {2, 3, 7, 8, 1},
      {2, 3, 7, 8, 0}};
  for (const auto& [left, top, right, bottom, alpha] : rows) {
    for (const bool clockwise : {true, false}) {
      Outline outline = Box(left, top, right, bottom);
      if (!clockwise) std::reverse(outline.begin(), outline.end());
      GuardedSurface surface = Drawn(12, 12, outline, alpha);
      for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
          const double cover = Overlap(x, left, right) * Overlap(y, top, bottom);
          EXPECT_NEAR(surface.Grey(x, y), cover * alpha, 1.5)
              << "pixel " << x << ", " << y << " of " << left << ", " << top << ", alpha " << alpha;
        }
      }
    }
  }
}

TEST(Rasterizer, SlopedEdgesCoverTheirTrueArea) {
  const Outline outlines[] = {{{1, 1}, {9, 4}, {3, 10}},
                              {{5, 0}, {10, 5}, {5, 10}, {0, 5}},
                              {{0.5, 5.2}, {11.5, 5.4}, {11.5, 6.1}, {0.5, 5.9}},
                              {{5.2, 0.5}, {5.4, 11.5}, {6.1, 11.5}, {5.9, 0.5}}};
  for (const Outline& outline : outlines) {
    double area = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
      const PixelPoint& a = outline[i];
      const PixelPoint& b = outline[(i + 1) % outline.size()];
      area += (a.x * b.y - b.x * a.y) / 2;
    }
    GuardedSurface surface = Drawn(12, 12, outline);
    double covered = 0;
    for (const std::uint32_t pixel : surface.Pixels())
      covered += (pixel & 0xFF) / 255.0;
    EXPECT_NEAR(covered, std::fabs(area), 0.25) << "from " << outline[0].x << ", " << outline[0].y;
  }
}

// A control is often painted in parts; a seam would show where they meet.
TEST(Rasterizer, WhatIsCutAtABorderLooksLikeThePartOfTheWhole) {
  Outline circle;
  for (int i = 0; i < 40; ++i)
    circle.push_back({7 + 6.7 * std::cos(i * 0.15707963), 7 + 6.7 * std::sin(i * 0.15707963)});
  const std::pair<const char*, Outline> shapes[] = {
      {"triangle", {{0, 0}, {14, 5}, {3, 13}}},
      {"flat sliver", {{0, 6}, {14, 7}, {14, 8}, {0, 7.3}}},
      {"steep sliver", {{6, 0}, {7, 14}, {8, 14}, {7.3, 0}}},
      {"circle", circle},
      {"digit segment", {{1.5, 4}, {3.1, 2.4}, {11, 2.4}, {12.6, 4}, {11, 5.6}, {3.1, 5.6}}}};
  constexpr int kWindow = 10;
  constexpr int kAround = 20;
  for (const auto& [name, shape] : shapes) {
    for (int dx = -14; dx <= 10; dx += 2) {
      for (int dy = -14; dy <= 10; dy += 2) {
        GuardedSurface cut = Drawn(kWindow, kWindow, Moved(shape, dx, dy));
        GuardedSurface whole =
            Drawn(kWindow + 2 * kAround, kWindow + 2 * kAround, Moved(shape, dx + kAround, dy + kAround));
        int worst = 0;
        for (int y = 0; y < kWindow; ++y) {
          for (int x = 0; x < kWindow; ++x)
            worst = std::max(worst, Difference(cut.At(x, y), whole.At(x + kAround, y + kAround)));
        }
        EXPECT_LE(worst, 1) << name << " moved by " << dx << ", " << dy;
        EXPECT_TRUE(cut.GuardIntact()) << name << " moved by " << dx << ", " << dy;
      }
    }
  }
}

TEST(Rasterizer, NothingIsWrittenOutsideTheSurface) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> place(-25, 40);
  std::uniform_int_distribution<int> kind(0, 3);
  Rasterizer rasterizer;
  for (int round = 0; round < 3000; ++round) {
    GuardedSurface surface(13, 9);
    Outline outline;
    for (int i = 0; i < 5; ++i) {
      PixelPoint corner{place(random), place(random)};
      if (kind(random) == 0) corner.x = 13;  // edges on the border itself
      if (kind(random) == 0) corner.y = std::round(corner.y);
      if (kind(random) == 0 && !outline.empty()) corner.x = outline.back().x;
      outline.push_back(corner);
    }
    rasterizer.FillPolygon(surface.Get(), outline, kWhite, 200);
    ASSERT_TRUE(surface.GuardIntact()) << "round " << round;
  }
}

TEST(Rasterizer, ShapesWithoutAreaDrawNothing) {
  const Outline outlines[] = {{},
                              {{1, 1}},
                              {{1, 1}, {5, 5}},
                              {{1, 1}, {5, 5}, {3, 3}},
                              {{2, 2}, {2, 2}, {2, 2}},
                              Box(12, 0, 20, 9),
                              Box(-9, 0, 0, 9)};
  for (const Outline& outline : outlines) {
    GuardedSurface surface = Drawn(12, 12, outline);
    EXPECT_EQ(surface.Pixels(), std::vector<std::uint32_t>(144, 0U)) << outline.size() << " corners";
  }
}

TEST(Rasterizer, ColoursAreMixedByTheirChannels) {
  GuardedSurface surface(3, 1, 0x204060);
  GuardedSurface other(40, 40);
  Rasterizer rasterizer;
  rasterizer.FillPolygon(other.Get(), Box(2, 3, 38, 37), kWhite, 255);  // leaves no trace in the next shape
  rasterizer.FillPolygon(surface.Get(), Box(0.5, 0, 2, 1), MakeColor(0xE0, 0x80, 0x20), 255);
  EXPECT_LE(Difference(surface.At(0, 0), 0x806040), 1);
  EXPECT_EQ(surface.At(1, 0), 0xE08020U);
  EXPECT_EQ(surface.At(2, 0), 0x204060U);
}

TEST(Rasterizer, RectanglesAreCutOnAllSides) {
  const Rect areas[] = {{-5, 2, 8, 3}, {7, 2, 9, 3}, {2, -4, 3, 7}, {2, 8, 3, 9}, {-5, -5, 50, 50},
                        {3, 3, 2, 2},  {3, 3, 0, 4}, {3, 3, -2, 4}, {20, 3, 2, 2}};
  for (const Rect& area : areas) {
    GuardedSurface surface(10, 10);
    Rasterizer::FillRect(surface.Get(), area, MakeColor(1, 2, 3));
    for (int y = 0; y < 10; ++y) {
      for (int x = 0; x < 10; ++x)
        EXPECT_EQ(surface.At(x, y), area.Contains({x, y}) ? 0x010203U : 0U) << area.left << ", " << area.top;
    }
    EXPECT_TRUE(surface.GuardIntact());
  }
}

TEST(Rasterizer, PicturesKeepTheirTransparencyAndAreCutOnAllSides) {
  PictureData picture{4, 3, {}};
  for (std::uint32_t i = 0; i < 12; ++i)
    picture.pixels.push_back(0xFF000000 | (i + 1) * 0x101010);
  picture.pixels[0] = 0x00FFFFFF;
  picture.pixels[1] = 0x80FFFFFF;
  const auto expected = [&](int x, int y) -> std::uint32_t {
    if (x < 0 || y < 0 || x >= 4 || y >= 3 || (x == 0 && y == 0)) return 0x202020;
    if (x == 1 && y == 0) return 0x909090;
    return picture.pixels[static_cast<std::size_t>(y * 4 + x)] & 0xFFFFFF;
  };
  for (const Point at : {Point{2, 2}, {-2, 1}, {8, 1}, {1, -2}, {1, 8}, {-4, 0}, {10, 0}, {0, -3}, {0, 10}}) {
    GuardedSurface surface(10, 10, 0x202020);
    Rasterizer::DrawPicture(surface.Get(), at.x, at.y, picture);
    for (int y = 0; y < 10; ++y) {
      for (int x = 0; x < 10; ++x)
        EXPECT_LE(Difference(surface.At(x, y), expected(x - at.x, y - at.y)), 1)
            << x << ", " << y << " with the picture at " << at.x << ", " << at.y;
    }
    EXPECT_TRUE(surface.GuardIntact());
  }
}

}  // namespace
}  // namespace orvane
