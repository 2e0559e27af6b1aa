#include "window/region.h"

#include "forms/form.h"
#include "platform/headless/desktop.h"
#include "window/dib_section.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

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
  struct Row {
    const char* what;
    std::vector<std::string> picture;
    const char* runs;  // from-to@row, rows from the bottom up
  };
  const Row rows[] = {{"all transparent", {".....", "....."}, ""},
                      {"no transparent pixel", {"aaaa", "aaaa"}, "0-3@1 0-3@0 "},
                      {"colours do not matter", {"abcd", "wxyz"}, "0-3@1 0-3@0 "},
                      {"one pixel wide", {"a", "a", "a"}, ""},
                      {"one transparent pixel wide", {"."}, ""},
                      {"two pixels wide", {"aa", ".a"}, "0-1@0 "},
                      {"only the last pixel", {"....a", "....."}, ""},
                      {"up to the last pixel", {"..aaa", "....."}, "2-4@0 "},
                      {"from the first pixel", {"aa...", "....."}, "0-2@0 "},
                      {"several runs", {"a.bb.c.d.", "........."}, "0-1@0 2-4@0 5-6@0 7-8@0 "},
                      {"one gap", {"aa.aa", "....."}, "0-2@0 3-4@0 "},
                      {"the last but one", {"...a.", "....."}, "3-4@0 "},
                      {"the top row is 0", {".a...", ".....", "..b.."}, "2-3@2 1-2@0 "}};
  for (const Row& row : rows) {
    const PictureData picture = PictureOf(row.picture);
    Region region;
    Color key = kKey;
    region.ScanPicture(&picture, key);
    EXPECT_EQ(Text(region.Runs()), row.runs) << row.what;
    EXPECT_EQ(key, kKey) << row.what << ": the colour asked for is left as it was";
  }
}

TEST(Region, FindsTheColourOfTheBottomLeftPixelAndTellsIt) {
  const PictureData picture = PictureOf({"aaaa", ".aa."});
  Region region;
  Color key = Region::kBottomLeft;
  region.ScanPicture(&picture, key);
  EXPECT_EQ(key, kKey);
  EXPECT_EQ(Text(region.Runs()), "1-3@1 0-3@0 ");
  key = MakeColor(1, 2, 3);  // a colour that is nowhere
  region.ScanPicture(&picture, key);
  EXPECT_EQ(key, MakeColor(1, 2, 3));
  EXPECT_EQ(Text(region.Runs()), "0-3@1 0-3@0 ") << "the second scan replaces the first";
}

TEST(Region, ComparesColoursExactly) {
  const PictureData picture{4, 1, {0xFF0A141E, 0xFF0A141F, 0xFF0B141E, 0xFF0A151E}};
  Region region;
  Color key = Region::kBottomLeft;
  region.ScanPicture(&picture, key);
  EXPECT_EQ(Text(region.Runs()), "1-3@0 ");
}

TEST(Region, WithoutAPictureIsEmpty) {
  Region region;
  Color key = Region::kBottomLeft;
  region.ScanPicture(nullptr, key);
  EXPECT_TRUE(region.Runs().empty());
  EXPECT_EQ(key, Region::kBottomLeft);
  const PictureData nothing;
  region.ScanPicture(&nothing, key);
  EXPECT_TRUE(region.Runs().empty());
}

TEST(Region, IsMovedPastTheFrameOfAWindowThatHasOne) {
  VirtualTime time;
  HeadlessDesktop desktop(time);
  const Form form(desktop, "form", {900, 900});
  HeadlessTopWindow& window = *desktop.Main();
  const PictureData picture = PictureOf({".aa.", "...."});
  Region region;
  Color key = kKey;
  region.ScanPicture(&picture, key);
  region.OffsetHeader(window);
  EXPECT_EQ(Text(region.Runs()), "1-3@0 ");
  window.border = {4, 23};
  region.OffsetHeader(window);
  EXPECT_EQ(Text(region.Runs()), "5-7@23 ");
}

TEST(Region, MayBeAppliedAsOftenAsAsked) {
  VirtualTime time;
  HeadlessDesktop desktop(time);
  const Form form(desktop, "form", {900, 900});
  const PictureData picture = PictureOf({".aa.", "...."});
  Region region;
  Color key = kKey;
  region.ScanPicture(&picture, key);
  for (int i = 0; i < 2; ++i) {
    desktop.Main()->SetShape({});
    region.ApplyRgn(*desktop.Main());
    EXPECT_EQ(Text(desktop.Main()->Shape()), "1-3@0 ");
  }
}

TEST(DIBSection, RowsAreFilledUpToFourBytes) {
  for (const auto& [width, bytes] : {std::pair{1, 4}, {2, 8}, {3, 12}, {4, 12}, {5, 16}, {640, 1920}}) {
    cDIBSection dib;
    ASSERT_TRUE(dib.Create(width, 2));
    EXPECT_EQ(dib.BytesPerScanLine(), bytes) << width;
    EXPECT_EQ(dib.Width(), width);
    EXPECT_EQ(dib.Height(), 2);
  }
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
    EXPECT_EQ(dib.Width(), 0) << what;
    EXPECT_EQ(dib.Height(), 0) << what;
    EXPECT_EQ(dib.DIBSectionBitsPtr(), nullptr) << what;
  }
}

TEST(DIBSection, CopiesAnyPartOfAPictureOnToItsCorner) {
  struct Row {
    int x, y, width, height;
    const char* copied;  // letters from the top row down, '-' untouched
  };
  const Row rows[] = {
      {0, 0, -1, -1, "abcd efgh ijkl"}, {1, 1, -1, -1, "fgh- jkl- ----"},  {0, 0, 2, 1, "ab-- ---- ----"},
      {2, 0, 9, 9, "cd-- gh-- kl--"},   {0, 3, -1, -1, "---- ---- ----"},  {4, 0, -1, -1, "---- ---- ----"},
      {9, 9, -1, -1, "---- ---- ----"}, {-1, 0, -1, -1, "---- ---- ----"}, {0, 0, 0, -1, "---- ---- ----"}};
  const PictureData picture = PictureOf({"abcd", "efgh", "ijkl"});
  for (const Row& row : rows) {
    cDIBSection dib;
    ASSERT_TRUE(dib.Create(4, 3));
    dib.LoadPictureBlt(picture, row.x, row.y, row.width, row.height);
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
    EXPECT_EQ(copied, row.copied) << row.x << ", " << row.y << ", " << row.width << " x " << row.height;
  }
}

}  // namespace
}  // namespace orvane
