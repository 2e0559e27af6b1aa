#include "forms/digit_box.h"

#include "forms/form.h"
#include "tests/support/paint.h"

#include <gtest/gtest.h>
#include <map>

namespace orvane {
namespace {

class DigitBoxTest : public testing::Test {
 protected:
  Painting Show(OVDigitBox& box, std::string_view text, int pixels_per_inch = 96) {
    box.Set_digitdisplay(text);
    return Paint(*desktop.made[&box == &whole ? 0 : 1].client, {box.Left(), box.Top()},
                 {0, 0, ToPixels(box.Width(), pixels_per_inch), ToPixels(box.Height(), pixels_per_inch)},
                 pixels_per_inch);
  }
  static int Lit(const Painting& painting) {
    return painting.Count([](std::uint32_t pixel) { return Brightness(pixel) > 190; });
  }

  VirtualTime time;
  PaintedDesktop desktop{time};
  Form form{desktop, "form", {9600, 3900}};
  OVDigitBox whole{desktop, form, {600, 600, 1200, 420}, OVDigitBox::kWholeFormat, "0"};
  OVDigitBox ratio{desktop, form, {600, 1200, 1200, 420}, OVDigitBox::kRatioFormat, ".0"};
};

TEST_F(DigitBoxTest, DigitsAreToldApartAndFullOnesHaveMoreLight) {
  for (const int pixels_per_inch : {96, 120}) {
    std::map<std::vector<std::uint32_t>, char> seen;
    for (const char digit : std::string("0123456789- ")) {
      const Painting painting = Show(whole, std::string(1, digit), pixels_per_inch);
      const auto [other, is_new] = seen.insert({painting.pixels, digit});
      EXPECT_TRUE(is_new) << digit << " looks like " << other->second;
    }
    // Segments of each: 1 has two, 7 three, 4 four, 2 five, 0 six, 8 seven.
    int before = Lit(Show(whole, "", pixels_per_inch));
    EXPECT_EQ(before, 0);
    for (const char* digit : {"1", "7", "4", "2", "0", "8"}) {
      const int lit = Lit(Show(whole, digit, pixels_per_inch));
      EXPECT_GT(lit, before) << digit << " at " << pixels_per_inch;
      before = lit;
    }
  }
}

TEST_F(DigitBoxTest, NumbersStandAtTheRight) {
  const Painting painting = Show(whole, "8");
  const int width = ToPixels(whole.Width(), 96);
  for (std::size_t i = 0; i < painting.pixels.size(); ++i) {
    if (Brightness(painting.pixels[i]) > 190) {
      ASSERT_GE(static_cast<int>(i) % width, width * 4 / 5 - 2);
    }
  }
  EXPECT_NEAR(Lit(Show(whole, "88888")), 5 * Lit(painting), Lit(painting) / 3) << "five of them";
}

TEST_F(DigitBoxTest, ATextTooLongForThePlacesIsARowOfDashesAndNeverCut) {
  const std::tuple<OVDigitBox*, const char*, bool> rows[] = {
      {&whole, "99999", true},  {&whole, "123456", false}, {&whole, "-32768", false},
      {&whole, "-9999", true},  {&ratio, "99.99", true},   {&ratio, "100.00", false},
      {&ratio, "12345", false}, {&ratio, ".1234", false},  {&ratio, "1.2345", false}};
  for (const auto& [box, text, fits] : rows) {
    const Painting painting = Show(*box, text);
    EXPECT_EQ(painting.pixels != Show(*box, box == &whole ? "-----" : "----").pixels, fits) << text;
  }
  EXPECT_EQ(Lit(Show(whole, "-----")), 5 * Lit(Show(whole, "-")));
}

TEST_F(DigitBoxTest, ThePointLightsWhereTheTextHasIt) {
  for (const int pixels_per_inch : {96, 120}) {
    const int without = Lit(Show(ratio, "150", pixels_per_inch));
    const int with_point = Lit(Show(ratio, "1.50", pixels_per_inch));
    EXPECT_GT(with_point, without) << pixels_per_inch;
    EXPECT_NE(Show(ratio, "1.50", pixels_per_inch).pixels, Show(ratio, "15.0", pixels_per_inch).pixels);
    EXPECT_GT(Lit(Show(ratio, ".50", pixels_per_inch)), Lit(Show(ratio, "50", pixels_per_inch)))
        << "also without a digit before it";
  }
}

TEST_F(DigitBoxTest, UnlitSegmentsAreDimlySeenAndEdgesAreSmooth) {
  const Painting blank = Show(whole, "");
  const std::uint32_t ground = blank.pixels.front();
  EXPECT_GT(blank.Count([&](std::uint32_t pixel) { return pixel != ground; }), 100);
  const Painting eights = Show(whole, "88888");
  EXPECT_GT(
      eights.Count([](std::uint32_t pixel) { return Brightness(pixel) > 60 && Brightness(pixel) < 190; }),
      50);
}

TEST_F(DigitBoxTest, AlarmIsRed) {
  const auto reddish = [](std::uint32_t pixel) { return (pixel >> 16 & 0xFF) > 190 && (pixel & 0xFF) < 120; };
  EXPECT_EQ(Show(whole, "888").Count(reddish), 0);
  whole.Set_digitcolor(OVDigitBox::kAlarmColor);
  EXPECT_GT(Show(whole, "888").Count(reddish), 50);
  whole.Set_digitcolor(OVDigitBox::kNormalColor);
  EXPECT_EQ(Show(whole, "888").Count(reddish), 0);
}

TEST_F(DigitBoxTest, OnlyARealChangeIsPaintedAgain) {
  const HeadlessWindow& window = *desktop.made[0].window;
  whole.Set_digitresolution(96);
  whole.Set_digitsize(0);
  EXPECT_EQ(window.Text(), "0");
  for (const auto& [text, color, cost] :
       {std::tuple{"25", 0, 1}, {"25", 0, 0}, {"26", 0, 1}, {"26", int{OVDigitBox::kAlarmColor}, 1}}) {
    const int before = window.Invalidations();
    whole.Set_digitdisplay(text);
    whole.Set_digitcolor(color);
    whole.Set_digitresolution(96);
    whole.Set_digitsize(0);
    EXPECT_EQ(window.Invalidations() - before, cost) << text << ", " << color;
    EXPECT_EQ(window.Text(), text);
  }
}

}  // namespace
}  // namespace orvane
