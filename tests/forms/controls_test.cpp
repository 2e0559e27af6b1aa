#include "forms/command_button.h"
#include "forms/form.h"
#include "forms/label.h"
#include "forms/picture_box.h"
#include "forms/shape.h"
#include "tests/support/paint.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr Color kRed = MakeColor(255, 0, 0);
constexpr Color kGreen = MakeColor(0, 255, 0);
constexpr Rect kPlace{300, 300, 600, 300};

class ControlsTest : public testing::Test {
 protected:
  /// How often `window` is asked to paint again by `change`.
  template <typename Change>
  static int Cost(const HeadlessWindow& window, Change change) {
    const int before = window.Invalidations();
    change();
    return window.Invalidations() - before;
  }
  PaintedDesktop::Made& Last() { return desktop.made.back(); }

  VirtualTime time;
  PaintedDesktop desktop{time};
  Form form{desktop, "form", {3000, 3000}};
};

TEST_F(ControlsTest, EqualValuesOfALabelCostNothing) {
  Label label(desktop, form, kPlace, {{}, kRed, Align::kLeft, std::nullopt}, "text");
  const HeadlessWindow& window = *Last().window;
  const std::tuple<const char*, Color, int> rows[] = {
      {"text", kRed, 0}, {"other", kRed, 1}, {"other", kGreen, 1}, {"other", kGreen, 0}};
  for (const auto& [caption, color, cost] : rows) {
    const int before = window.Invalidations();
    label.SetCaption(caption);
    label.SetForeColor(color);
    EXPECT_EQ(window.Invalidations() - before, cost);
    EXPECT_EQ(window.Text(), caption);
  }
  for (const int cost : {1, 0})
    EXPECT_EQ(Cost(window, [&] { label.SetColors(kRed, kGreen); }), cost) << "both at once";
}

TEST_F(ControlsTest, ALabelPaintsItsTextOverItsGround) {
  Label label(desktop, form, kPlace, {{"Arial", 180, true}, kRed, Align::kRight, std::nullopt}, "text");
  Painting painting = Paint(*Last().client, {300, 300}, {0, 0, 40, 20}, 96);
  ASSERT_EQ(painting.texts.size(), 1U);
  EXPECT_EQ(painting.texts[0].text, "text");
  EXPECT_EQ(painting.texts[0].area, (Rect{0, 0, 40, 20}));
  EXPECT_EQ(painting.texts[0].color, kRed);
  EXPECT_EQ(painting.texts[0].align, Align::kRight);
  form.SetBackColor(kGreen);
  painting = Paint(*Last().client, {300, 300}, {0, 0, 40, 20}, 96);
  EXPECT_EQ(painting.pixels, std::vector<std::uint32_t>(800, 0x00FF00U)) << "the form shows through";
  label.SetColors(kGreen, kRed);
  painting = Paint(*Last().client, {300, 300}, {0, 0, 40, 20}, 96);
  EXPECT_EQ(painting.pixels, std::vector<std::uint32_t>(800, 0xFF0000U));
}

TEST_F(ControlsTest, AnImageShowsThePartOfTheFaceBehindIt) {
  auto face = std::make_shared<PictureData>();
  face->width = face->height = 200;
  for (std::uint32_t i = 0; i < 40000; ++i)
    face->pixels.push_back(0xFF000000 | i);
  form.SetPicture(face);
  PictureBox frame(desktop, form, {300, 450, 1500, 1500});
  Image image(desktop, frame, {150, 75, 150, 150});
  image.SetPicture(std::make_shared<PictureData>(PictureData{1, 1, {0xFFFFFFFF}}));
  const Painting painting = Paint(*Last().client, {450, 525}, {0, 0, 10, 10}, 96);
  EXPECT_EQ(painting.pixels[0], 0xFFFFFFU);
  EXPECT_EQ(painting.pixels[1], 35U * 200 + 31);
  EXPECT_EQ(painting.pixels[99], 44U * 200 + 39);
}

TEST_F(ControlsTest, OnlyARealChangeOfAShapePaintsItsContainer) {
  PictureBox frame(desktop, form, {0, 0, 1500, 1500});
  const HeadlessWindow& window = *Last().window;
  Shape shape(frame, {30, 30, 105, 420}, {});
  EXPECT_EQ(Cost(window,
                 [&] {
                   shape.SetBackStyle(0);
                   shape.SetFillStyle(Shape::kTransparent);
                   shape.SetVisible(true);
                   shape.MoveTo(30, 30);
                   shape.SetContainer(frame);
                   shape.BringToFront();
                 }),
            0);
  EXPECT_EQ(Cost(window, [&] { shape.SetBackStyle(Shape::kOpaque); }), 1);
  EXPECT_EQ(Cost(window, [&] { shape.SetFillStyle(Shape::kSolid); }), 1);
  EXPECT_EQ(Cost(window, [&] { shape.MoveTo(60, 30); }), 2) << "where it was and where it is";
  EXPECT_GE(Cost(window, [&] { shape.SetVisible(false); }), 1);
  EXPECT_EQ(Cost(window, [&] { shape.SetBackStyle(0); }), 0) << "nobody sees it";
  EXPECT_GE(Cost(window, [&] { shape.SetVisible(true); }), 1);
}

TEST_F(ControlsTest, AShapeShowsItsColoursByItsStyles) {
  PictureBox frame(desktop, form, {0, 0, 150, 150});
  const auto seen = [this] { return Paint(*Last().client, {0, 0}, {0, 0, 10, 10}, 96).pixels[55]; };
  {
    Shape shape(frame, {0, 0, 150, 150},
                {Shape::Form::kRectangle, kRed, kGreen, MakeColor(0, 0, 9), std::nullopt});
    const std::tuple<int, int, std::uint32_t> rows[] = {{Shape::kTransparent, Shape::kOpaque, 0xFF0000},
                                                        {Shape::kSolid, Shape::kOpaque, 0x00FF00},
                                                        {Shape::kSolid, 0, 0x00FF00},
                                                        {Shape::kTransparent, 0, 0x000009}};
    for (const auto& [fill, back, color] : rows) {
      shape.SetFillStyle(fill);
      shape.SetBackStyle(back);
      EXPECT_EQ(seen(), color);
    }
  }
  EXPECT_EQ(seen(), 0U) << "a shape that ends is painted no more";
}

TEST_F(ControlsTest, AShapeMovesIntoAnotherContainerInFrontOfWhatIsThere) {
  PictureBox home(desktop, form, {0, 0, 150, 150});
  const PaintedDesktop::Made at_home = Last();
  PictureBox other(desktop, form, {300, 0, 150, 150});
  const PaintedDesktop::Made away = Last();
  Shape below(other, {0, 0, 150, 150}, {});
  Shape guest(home, {0, 0, 150, 150}, {Shape::Form::kRectangle, kRed, kRed, kRed, std::nullopt});
  Shape owner(other, {0, 0, 150, 150}, {Shape::Form::kRectangle, kGreen, kGreen, kGreen, std::nullopt});
  const auto seen = [](const PaintedDesktop::Made& box, int left) {
    return Paint(*box.client, {left, 0}, {0, 0, 10, 10}, 96).pixels[55];
  };
  EXPECT_EQ(seen(at_home, 0), 0xFF0000U);
  EXPECT_EQ(seen(away, 300), 0x00FF00U);
  EXPECT_EQ(Cost(*at_home.window, [&] { guest.SetContainer(other); }), 1) << "it is gone from there";
  EXPECT_EQ(seen(at_home, 0), 0U);
  EXPECT_EQ(seen(away, 300), 0xFF0000U);
  EXPECT_EQ(Cost(*away.window, [&] { owner.BringToFront(); }), 1);
  EXPECT_EQ(seen(away, 300), 0x00FF00U);
  guest.BringToFront();
  EXPECT_EQ(seen(away, 300), 0xFF0000U);
  EXPECT_EQ(Cost(*away.window, [&] { guest.SetContainer(home); }), 1);
  EXPECT_EQ(seen(away, 300), 0x00FF00U);
  EXPECT_EQ(seen(at_home, 0), 0xFF0000U);
}

TEST_F(ControlsTest, PlaceContainerAndVisibilityReachTheWindow) {
  PictureBox first(desktop, form, {0, 0, 900, 900});
  PictureBox second(desktop, form, {900, 0, 900, 900});
  const HeadlessWindow* const target = Last().window;
  Label label(desktop, first, kPlace, {}, "text");
  label.MoveTo(900, 600);
  label.SetContainer(second);
  EXPECT_EQ(Last().window->Container(), target);
  EXPECT_EQ(Last().window->Place(), (Rect{900, 600, 600, 300}));
  label.SetVisible(false);
  EXPECT_FALSE(Last().window->Shown());
  label.SetTop(660);
  EXPECT_FALSE(Last().window->Shown()) << "moving does not show it";
  desktop.Main()->MoveTo({4500, 2250});
  form.SetBounds({0, 0, 3000, 1500});
  EXPECT_EQ(desktop.Main()->Place(), (Rect{4500, 2250, 3000, 1500}))
      << "the form stays where the user put it";
}

class ButtonTest : public ControlsTest {
 protected:
  ButtonTest() {
    button.MouseUp = [this](const MouseEvent& event) { clicks.push_back(event.button); };
  }
  void Tell(MouseAction action, int mouse_button, Point at = {300, 150}) {
    Last().client->OnMouse({action, mouse_button, at});
  }
  void Strike(Key key, bool down) { taken = Last().client->OnKey({key, down}); }
  std::vector<std::uint32_t> Look() { return Paint(*Last().client, {300, 300}, {0, 0, 40, 20}, 96).pixels; }

  CommandButton button{desktop, form, kPlace, "caption", "tool tip"};
  std::vector<int> clicks;
  bool taken = false;
};

TEST_F(ButtonTest, SaysWhatItIsForAndTheTabKeyStopsAtIt) {
  EXPECT_EQ(Last().window->Text(), "tool tip");
  EXPECT_EQ(Last().window->Tip(), "tool tip");
  EXPECT_TRUE(Last().window->TabStop());
  const CommandButton bare(desktop, form, kPlace, "caption", {});
  EXPECT_EQ(Last().window->Text(), "caption");
}

TEST_F(ButtonTest, ActsWhenTheMouseIsPressedAndReleasedOnIt) {
  // d down, u up, D double click, m move; capitals U and M outside the button.
  for (const auto& [what, expected] : {std::pair{"du", 1}, {"duDu", 2}, {"dMU", 0}, {"dMmu", 1}, {"mu", 0}}) {
    clicks.clear();
    for (const char c : std::string(what)) {
      const auto action = c == 'd'               ? MouseAction::kDown
                          : c == 'D'             ? MouseAction::kDoubleClick
                          : c == 'u' || c == 'U' ? MouseAction::kUp
                                                 : MouseAction::kMove;
      Tell(action, action == MouseAction::kMove ? 0 : kLeftButton, {c == 'U' || c == 'M' ? 700 : 300, 150});
    }
    EXPECT_EQ(clicks, std::vector<int>(static_cast<std::size_t>(expected), kLeftButton)) << what;
  }
  clicks.clear();
  Tell(MouseAction::kDown, kRightButton);
  Tell(MouseAction::kUp, kRightButton);
  EXPECT_EQ(clicks, (std::vector<int>{kRightButton}));
}

TEST_F(ButtonTest, LooksPressedAsLongAsItIs) {
  const auto without_keyboard = Look();
  Last().client->OnFocus(true);
  const auto idle = Look();
  EXPECT_NE(idle, without_keyboard);
  Tell(MouseAction::kMove, 0);
  const auto hot = Look();
  EXPECT_NE(hot, idle);
  Tell(MouseAction::kDown, kLeftButton);
  const auto pressed = Look();
  EXPECT_NE(pressed, hot);
  EXPECT_NE(pressed, idle);
  Tell(MouseAction::kUp, kLeftButton);
  EXPECT_EQ(Look(), hot);
  Tell(MouseAction::kLeave, 0);
  EXPECT_EQ(Look(), idle);
  Tell(MouseAction::kDown, kRightButton);
  EXPECT_EQ(Look(), idle);
}

TEST_F(ButtonTest, AClickBringsTheKeyboardAndAKeyDoesNotMoveIt) {
  button.Press();
  EXPECT_EQ(Last().window->Focusings(), 0);
  Tell(MouseAction::kDown, kLeftButton);
  EXPECT_EQ(Last().window->Focusings(), 1);
  EXPECT_TRUE(button.Focused());
}

TEST_F(ButtonTest, SpacePressesWhileHeldAndEnterAtOnce) {
  int presses = 0;
  button.MouseDown = [&](const MouseEvent&) { ++presses; };
  const std::tuple<Key, bool, std::size_t> rows[] = {
      {Key::kSpace, true, 0},  {Key::kSpace, true, 0},  // a held key comes again and again
      {Key::kSpace, false, 1}, {Key::kSpace, false, 1}, {Key::kEnter, true, 2}, {Key::kEnter, false, 2}};
  for (const auto& [key, down, expected] : rows) {
    Strike(key, down);
    EXPECT_TRUE(taken || !down);
    EXPECT_EQ(clicks, std::vector<int>(expected, kLeftButton));
    EXPECT_TRUE(presses == 1 || key == Key::kEnter);
  }
}

TEST_F(ButtonTest, OtherKeysGoToTheHandlerAndFurther) {
  std::string heard;
  button.KeyDown = [&](Key key) {
    heard += key == Key::kF1 ? '1' : 'x';
    return key == Key::kF1;
  };
  for (const Key key : {Key::kF1, Key::kLeft, Key::kSpace}) {
    Strike(key, true);
    EXPECT_EQ(taken, key != Key::kLeft);
  }
  EXPECT_EQ(heard, "1x") << "space is the button's own";
}

TEST_F(ButtonTest, LosingTheKeyboardLetsGo) {
  Last().client->OnFocus(true);
  const auto idle = Look();
  Strike(Key::kSpace, true);
  EXPECT_NE(Look(), idle);
  Last().client->OnFocus(false);
  Last().client->OnFocus(true);
  EXPECT_EQ(Look(), idle);
  Strike(Key::kSpace, false);
  EXPECT_TRUE(clicks.empty());
}

}  // namespace
}  // namespace orvane
