#include "window/face_images.h"

#include "tests/support/face.h"
#include "window/bitmap_functions.h"

namespace orvane {
namespace {

TEST(ScreenScale, ZeroCountsAs96) {
  for (const auto& [pixels, scale] : {std::pair{96, 1.0F}, {120, 1.25F}, {144, 1.5F}, {72, 0.75F}, {0, 1.0F}})
    EXPECT_EQ(ScreenScale(pixels), scale) << pixels;
}

// Only the pictures of the resolution are needed.
TEST(FaceImages, TheResolutionChoosesPicturesAndDigits) {
  struct Row {
    int pixels_per_inch;
    int full_height, short_height;
    int digit_resolution, digit_size;
  };
  for (const Row& row : {Row{96, 260, 124, 96, 0},
                         {120, 325, 155, 120, 1},
                         {144, 325, 155, 96, 0},
                         {0, 260, 124, 96, 0},
                         {72, 325, 155, 96, 0}}) {
    for (const bool full : {true, false}) {
      RunningFace run;
      run.program.desktop.pixels_per_inch = {row.pixels_per_inch, row.pixels_per_inch};
      for (const char* other : row.full_height == 260 ? std::array{"OVFace120.ovl", "OVFaceSm120.ovl"}
                                                      : std::array{"OVFace.ovl", "OVFaceSm.ovl"})
        std::filesystem::remove(run.program.ImagePath(other));
      ASSERT_TRUE(run.Start(full ? "FORM-REGION=1\r\n" : "FORM-REGION=0\r\n")) << row.pixels_per_inch;
      EXPECT_EQ(run.face.ShapeHeight(), full ? row.full_height : row.short_height) << row.pixels_per_inch;
      const MeterControls& meter = run.face.Meter();
      for (const auto* box : {&meter.forward.dbxPower, &meter.reflected.dbxPower, &meter.dbxVSWR}) {
        EXPECT_EQ((*box)->digitresolution(), row.digit_resolution) << row.pixels_per_inch;
        EXPECT_EQ((*box)->digitsize(), row.digit_size) << row.pixels_per_inch;
      }
    }
  }
}

TEST(FaceImages, ADamagedFileEndsTheProgramByTheOrdinaryWayAfterOneBox) {
  struct Row {
    const char* name;
    int pixels_per_inch;
    char damage;  // missing, corrupt, hidden
    bool shaped;  // the window has taken its shape before
  };
  for (const Row& row : {Row{"OVFace.ovl", 96, 'm', false},
                         {"OVFace.ovl", 96, 'c', false},
                         {"OVFaceSm.ovl", 96, 'm', false},
                         {"OVFaceSm.ovl", 96, 'c', false},
                         {"OVFaceSm.ovl", 96, 'h', false},
                         {"OVFace120.ovl", 120, 'm', false},
                         {"OVFaceSm120.ovl", 144, 'c', false},
                         {"TamskLogoBW.ovl", 96, 'm', true},
                         {"TamskLogoBW.ovl", 120, 'c', true},
                         {"TamskLogo.ovl", 96, 'm', true},
                         {"TamskLogo.ovl", 96, 'c', true}}) {
    SCOPED_TRACE(std::string(row.name) + " at " + std::to_string(row.pixels_per_inch) + ", " + row.damage);
    Program program(MeterAt(38400));
    program.desktop.pixels_per_inch = {row.pixels_per_inch, row.pixels_per_inch};
    const std::string kept = "FORM-TOP=2700\r\nFORM-LEFT=4200\r\nFORM-REGION=0\r\nF-PWR-INDEX=3\r\n";
    program.PutSettings("[USER-SETTINGS]\r\n" + kept);
    if (row.damage == 'c') program.desktop.pictures[std::string("/") + row.name] = nullptr;
    if (row.damage == 'm') std::filesystem::remove(program.ImagePath(row.name));
    if (row.damage == 'h') program.files.SetHidden(program.ImagePath(row.name));
    std::vector<Rect> shape;
    bool tray_shown = false;
    program.desktop.on_box = [&](const ShownBox& box) {
      EXPECT_EQ(box.text,
                "Critical Program File Missing or Corrupt. Please re-run Vesk-2 Voice Keyer setup.");
      EXPECT_EQ(box.title, "File Missing!");
      EXPECT_EQ(box.style, BoxStyle::kCritical);
      shape = program.desktop.Main()->Shape();
      tray_shown = program.desktop.Tray().Shown();
    };
    EXPECT_FALSE(program.Start());
    EXPECT_EQ(program.desktop.boxes.size(), 1U);
    EXPECT_EQ(!shape.empty(), row.shaped);
    EXPECT_TRUE(tray_shown);
    EXPECT_FALSE(program.desktop.Tray().Shown());
    EXPECT_TRUE(program.Keeps(kept) && program.Keeps("CLIENT-MSG-ID=14300\r\n")) << program.SettingsText();
    EXPECT_FALSE(program.port.PortOpen());
  }
}

class LogoTest : public testing::Test, public RunningFace {
 protected:
  LogoTest() {
    auto colour = std::make_shared<PictureData>(*Program::FacePicture({96, 24}));
    colour->pixels[100] = 0xFFFF8800;
    program.desktop.pictures["/TamskLogo.ovl"] = colour_logo = colour;
    EXPECT_TRUE(Start());
  }
  HeadlessWindow& Logo() { return face.Of(*face.Controls().imgLogo); }
  const Picture& Shown() { return face.Controls().imgLogo->CurrentPicture(); }
  Picture colour_logo;
  Picture grey_logo = program.desktop.pictures["/TamskLogoBW.ovl"];
};

TEST_F(LogoTest, LightsUnderThePointerAndGoesGreyOverTheBareFace) {
  EXPECT_EQ(Shown(), grey_logo);
  const int before = Logo().Invalidations();
  face.Main().Mouse(MouseAction::kMove, 0);
  EXPECT_EQ(Logo().Invalidations(), before);
  Logo().Mouse(MouseAction::kMove, 0);
  EXPECT_EQ(Shown(), colour_logo);
  Logo().Mouse(MouseAction::kMove, 0);
  EXPECT_EQ(Logo().Invalidations(), before + 1) << "painted once for many moves";
  face.Of(*face.Meter().lblShowStatus).Mouse(MouseAction::kMove, 0);
  EXPECT_EQ(Shown(), colour_logo) << "only the bare face puts it out";
  face.Main().Mouse(MouseAction::kMove, 0);
  EXPECT_EQ(Shown(), grey_logo);
}

TEST_F(LogoTest, ALeftClickMinimisesAndOpensTheMakersSite) {
  Logo().Click(kRightButton);
  EXPECT_EQ(face.Main().State(), WindowState::kNormal);
  EXPECT_EQ(program.desktop.menus.size(), 1U);
  EXPECT_TRUE(program.shell.launches.empty());
  Logo().Click();
  EXPECT_EQ(face.Main().State(), WindowState::kMinimized);
  ASSERT_EQ(program.shell.launches.size(), 1U);
  EXPECT_TRUE(program.shell.launches[0].target.starts_with("https://"));
  EXPECT_EQ(program.Status(), "");
  program.shell.works = false;
  Logo().Click();
  EXPECT_EQ(program.Status(), "The browser could not be started.");
  EXPECT_EQ(face.Meter().lblShowStatus->ForeColor(), MakeColor(255, 0, 0));
}

TEST(Logo, TheWindowIsMinimisedBeforeTheBrowserStarts) {
  Program program(MeterAt(38400));
  std::vector<WindowState> states;
  program.shell.on_launch = [&] { states.push_back(program.desktop.Main()->State()); };
  ASSERT_TRUE(program.Start());
  Face::In(*program.desktop.Main(), *program.orvane->Controls().imgLogo).Click();
  EXPECT_EQ(states, (std::vector<WindowState>{WindowState::kMinimized}));
}

}  // namespace
}  // namespace orvane
