#include "window/region.h"

#include "forms/form.h"
#include "platform/headless/desktop.h"
#include "window/bitmap_functions.h"
#include "window/dib_section.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr std::uint32_t kKeyPixel = 0xFF0A141E;
constexpr Color kKey = MakeColor(0x0A, 0x14, 0x1E);

/// A picture from rows of text: '.' is the key colour, every other letter a colour of its own.
PictureData PictureOf(const std::vector<std::string>& rows) {
  PictureData picture{static_cast<int>(rows.front().size()), static_cast<int>(rows.size()), {}};
  for (const std::string& row : rows) {
    for (const char c : row)
      picture.pixels.push_back(c == '.' ? kKeyPixel : 0xFF000000 | static_cast<std::uint32_t>(c) * 0x010203);
  }
  return picture;
}

std::string Text(const std::vector<Rect>& runs) {
  std::string text;
  for (const Rect& run : runs) {
    EXPECT_EQ(run.height, 1);
    text +=
        std::to_string(run.left) + "-" + std::to_string(run.right()) + "@" + std::to_string(run.top) + " ";
  }
  return text;
}

TEST(Region, TakesTheRunsOfEachRowWithoutTheLastColumn) {
  // The picture, and its runs as from-to@row, rows from the bottom up.
  const std::tuple<const char*, std::vector<std::string>, const char*> rows[] = {
      {"all transparent", {".....", "....."}, ""},
      {"colours do not matter", {"abcd", "wxyz"}, "0-3@1 0-3@0 "},
      {"one pixel wide", {"a", "a", "a"}, ""},
      {"one transparent pixel wide", {"."}, ""},
      {"two pixels wide", {"aa", ".a"}, "0-1@0 "},
      {"only the last pixel", {"....a", "....."}, ""},
      {"up to the last pixel", {"..aaa", "....."}, "2-4@0 "},
      {"several runs", {"a.bb.c.d.", "........."}, "0-1@0 2-4@0 5-6@0 7-8@0 "},
      {"the last but one", {"...a.", "....."}, "3-4@0 "},
      {"the top row is 0", {".a...", ".....", "..b.."}, "2-3@2 1-2@0 "}};
  for (const auto& [what, picture_rows, runs] : rows) {
    const PictureData picture = PictureOf(picture_rows);
    Region region;
    Color key = kKey;
    region.ScanPicture(&picture, key);
    EXPECT_EQ(Text(region.Runs()), runs) << what;
    EXPECT_EQ(key, kKey) << what << ": the colour asked for is left as it was";
  }
}

TEST(Region, FindsTheColourOfTheBottomLeftPixelAndTellsIt) {
  const PictureData picture{4, 2, {1, 1, 1, 1, 0xFF0A141E, 0xFF0A141F, 0xFF0B141E, 0xFF0A151E}};
  Region region;
  Color key = Region::kBottomLeft;
  region.ScanPicture(&picture, key);
  EXPECT_EQ(key, kKey);
  EXPECT_EQ(Text(region.Runs()), "1-3@1 0-3@0 ") << "colours are compared exactly";
  key = MakeColor(1, 2, 3);  // a colour that is nowhere
  region.ScanPicture(&picture, key);
  EXPECT_EQ(key, MakeColor(1, 2, 3));
  EXPECT_EQ(Text(region.Runs()), "0-3@1 0-3@0 ") << "the second scan replaces the first";
  const PictureData nothing;
  for (const PictureData* none : {static_cast<const PictureData*>(nullptr), &nothing}) {
    key = Region::kBottomLeft;
    region.ScanPicture(&picture, key);
    key = Region::kBottomLeft;
    region.ScanPicture(none, key);
    EXPECT_TRUE(region.Runs().empty());
    EXPECT_EQ(key, Region::kBottomLeft);
  }
}

TEST(Region, IsMovedPastTheFrameOfAWindowAndAppliedAsOftenAsAsked) {
  VirtualTime time;
  HeadlessDesktop desktop(time);
  const Form form(desktop, "form", {900, 900});
  HeadlessTopWindow& window = *desktop.Main();
  const PictureData picture = PictureOf({".aa.", "...."});
  Region region;
  Color key = kKey;
  region.ScanPicture(&picture, key);
  for (int i = 0; i < 2; ++i) {
    window.SetShape({});
    region.ApplyRgn(window);
    EXPECT_EQ(Text(window.Shape()), "1-3@0 ");
  }
  region.OffsetHeader(window);
  EXPECT_EQ(Text(region.Runs()), "1-3@0 ");
  window.border = {4, 23};
  region.OffsetHeader(window);
  EXPECT_EQ(Text(region.Runs()), "5-7@23 ");
}

TEST(DIBSection, RowsRunFromTheBottomAndPixelsAreBlueGreenRed) {
  const PictureData picture{2, 2, {0xFF112233, 0xFF445566, 0x00778899, 0xFFAABBCC}};
  cDIBSection dib;
  ASSERT_TRUE(dib.CreateFromPicture(&picture));
  const std::vector<std::uint8_t> bytes(dib.DIBSectionBitsPtr(), dib.DIBSectionBitsPtr() + 16);
  EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0x99, 0x88, 0x77, 0xCC, 0xBB, 0xAA, 0, 0,  //
                                              0x33, 0x22, 0x11, 0x66, 0x55, 0x44, 0, 0}));
}

TEST(DIBSection, AFailureLeavesItEmpty) {
  const PictureData nothing;
  const std::pair<const char*, std::function<bool(cDIBSection&)>> tries[] = {
      {"no picture", [](cDIBSection& dib) { return dib.CreateFromPicture(nullptr); }},
      {"empty picture", [&](cDIBSection& dib) { return dib.CreateFromPicture(&nothing); }},
      {"no width", [](cDIBSection& dib) { return dib.Create(0, 4); }},
      {"no height", [](cDIBSection& dib) { return dib.Create(4, 0); }},
      {"below zero", [](cDIBSection& dib) { return dib.Create(-4, 4); }},
      {"given up", [](cDIBSection& dib) { return dib.ClearUp(), false; }}};
  for (const auto& [what, attempt] : tries) {
    cDIBSection dib;
    ASSERT_TRUE(dib.Create(3, 3));
    EXPECT_FALSE(attempt(dib)) << what;
    EXPECT_EQ(std::pair(dib.Width(), dib.Height()), std::pair(0, 0)) << what;
    EXPECT_EQ(dib.DIBSectionBitsPtr(), nullptr) << what;
  }
}

TEST(DIBSection, CopiesAnyPartOfAPictureOnToItsCorner) {
  // The last are letters from the top row down, '-' untouched.
  const std::tuple<int, int, int, int, const char*> rows[] = {
      {0, 0, -1, -1, "abcd efgh ijkl"}, {1, 1, -1, -1, "fgh- jkl- ----"},  {0, 0, 2, 1, "ab-- ---- ----"},
      {2, 0, 9, 9, "cd-- gh-- kl--"},   {0, 3, -1, -1, "---- ---- ----"},  {4, 0, -1, -1, "---- ---- ----"},
      {9, 9, -1, -1, "---- ---- ----"}, {-1, 0, -1, -1, "---- ---- ----"}, {0, -1, -1, -1, "---- ---- ----"},
      {0, 0, 0, -1, "---- ---- ----"}};
  const PictureData picture = PictureOf({"abcd", "efgh", "ijkl"});
  for (const auto& [left, top, width, height, expected] : rows) {
    cDIBSection dib;
    ASSERT_TRUE(dib.Create(4, 3));
    dib.LoadPictureBlt(picture, left, top, width, height);
    std::string copied;
    for (int y = 2; y >= 0; --y) {
      for (int x = 0; x < 4; ++x) {
        const int blue = dib.DIBSectionBitsPtr()[y * dib.BytesPerScanLine() + x * 3];
        copied += '-';
        for (char c = 'a'; c <= 'l'; ++c) {
          if ((c * 0x010203 & 0xFF) == blue) copied.back() = c;
        }
      }
      if (y > 0) copied += ' ';
    }
    EXPECT_EQ(copied, expected) << left << ", " << top << ", " << width << " x " << height;
  }
}

TEST(Region, APictureThatIsNotAllThereHasNoShape) {
  const std::tuple<int, int, std::size_t> rows[] = {{2, 2, 3},       {2, 2, 5},        {0, 2, 0},
                                                    {2, 0, 0},       {-2, -2, 4},      {8193, 1, 8193},
                                                    {1, 8193, 8193}, {65536, 65536, 0}};
  for (const auto& [width, height, pixels] : rows) {
    const PictureData picture{width, height, std::vector<std::uint32_t>(pixels, 0xFFFFFFFF)};
    Region region;
    Color key = kKey;
    region.ScanPicture(&picture, key);
    EXPECT_TRUE(region.Runs().empty()) << width << " x " << height;
    cDIBSection dib;
    ASSERT_TRUE(dib.Create(1, 1));
    dib.LoadPictureBlt(picture, 0, 0);
    EXPECT_EQ(dib.DIBSectionBitsPtr()[0], 0) << width << " x " << height;
    EXPECT_FALSE(dib.CreateFromPicture(&picture)) << width << " x " << height;
    EXPECT_EQ(StretchPicture(picture, {1, 1}), nullptr) << width << " x " << height;
  }
}

}  // namespace
}  // namespace orvane
