#include "window/face_images.h"

#include "tests/support/face.h"
#include "window/bitmap_functions.h"

#include <set>

namespace orvane {
namespace {

constexpr const char* kMissingText =
    "Critical Program File Missing or Corrupt. Please re-run Vesk-2 Voice Keyer setup.";

void SetResolution(Program& program, int pixels_per_inch) {
  program.desktop.pixels_per_inch = {pixels_per_inch, pixels_per_inch};
}

/// Rows of pixels of the window's shape.
int ShapeHeight(Program& program) {
  int bottom = 0;
  for (const Rect& run : program.desktop.Main()->Shape())
    bottom = std::max(bottom, run.bottom());
  return bottom;
}

TEST(ScreenScale, ZeroCountsAs96) {
  for (const auto& [pixels, scale] : {std::pair{96, 1.0F}, {120, 1.25F}, {144, 1.5F}, {72, 0.75F}, {0, 1.0F}})
    EXPECT_EQ(ScreenScale(pixels), scale) << pixels;
}

TEST(FaceImages, TheResolutionChoosesPicturesAndDigits) {
  struct Row {
    int pixels_per_inch;
    int full_height, short_height;  // pixels, they tell the picture
    int digit_resolution, digit_size;
  };
  const Row rows[] = {{96, 260, 124, 96, 0},
                      {120, 325, 155, 120, 1},
                      {144, 325, 155, 96, 0},
                      {0, 260, 124, 96, 0},
                      {72, 325, 155, 96, 0}};
  for (const Row& row : rows) {
    for (const bool full : {true, false}) {
      Program program(QuickMeter());
      SetResolution(program, row.pixels_per_inch);
      ASSERT_TRUE(
          program.files.Replace(program.SettingsPath(), full ? "[USER-SETTINGS]\r\nFORM-REGION=1\r\n"
                                                             : "[USER-SETTINGS]\r\nFORM-REGION=0\r\n"));
      ASSERT_TRUE(program.Start()) << row.pixels_per_inch;
      EXPECT_EQ(ShapeHeight(program), full ? row.full_height : row.short_height) << row.pixels_per_inch;
      const MeterControls& meter = program.orvane->Meter();
      for (const OVDigitBox* box :
           {meter.forward.dbxPower.get(), meter.reflected.dbxPower.get(), meter.dbxVSWR.get()}) {
        EXPECT_EQ(box->digitresolution(), row.digit_resolution) << row.pixels_per_inch;
        EXPECT_EQ(box->digitsize(), row.digit_size) << row.pixels_per_inch;
      }
    }
  }
}

TEST(FaceImages, OnlyThePicturesOfTheResolutionAreNeeded) {
  for (const int pixels_per_inch : {96, 120}) {
    Program program(QuickMeter());
    SetResolution(program, pixels_per_inch);
    for (const char* other : pixels_per_inch == 96 ? std::array{"OVFace120.ovl", "OVFaceSm120.ovl"}
                                                   : std::array{"OVFace.ovl", "OVFaceSm.ovl"})
      std::filesystem::remove(program.ImagePath(other));
    EXPECT_TRUE(program.Start()) << pixels_per_inch;
    EXPECT_TRUE(program.desktop.boxes.empty());
  }
}

TEST(FaceImages, TheCornersOfTheFaceAreCutAwayAndSoIsItsLastColumn) {
  Program program(QuickMeter());
  ASSERT_TRUE(program.Start());
  const std::vector<Rect>& shape = program.desktop.Main()->Shape();
  std::set<int> rows;
  for (const Rect& run : shape) {
    rows.insert(run.top);
    const bool edge = run.top == 0 || run.top == 259;
    EXPECT_EQ(run, (edge ? Rect{1, run.top, 638, 1} : Rect{0, run.top, 639, 1}));
  }
  EXPECT_EQ(rows.size(), 260U);
}

struct Damage {
  const char* name;
  int pixels_per_inch;
  bool corrupt;
  bool shaped;  // the window has taken its shape before
};

void PrintTo(const Damage& damage, std::ostream* out) {
  *out << damage.name << (damage.corrupt ? " corrupt at " : " missing at ") << damage.pixels_per_inch;
}

class DamagedFiles : public testing::TestWithParam<Damage> {};

TEST_P(DamagedFiles, EndTheProgramByTheOrdinaryWayAfterOneBox) {
  const Damage& damage = GetParam();
  Program program(QuickMeter());
  SetResolution(program, damage.pixels_per_inch);
  ASSERT_TRUE(
      program.files.Replace(program.SettingsPath(), "[USER-SETTINGS]\r\nFORM-REGION=0\r\nF-PWR-INDEX=3\r\n"));
  if (damage.corrupt) {
    program.desktop.pictures[std::string("/") + damage.name] = nullptr;
  } else {
    std::filesystem::remove(program.ImagePath(damage.name));
  }
  std::vector<Rect> shape;
  bool tray_shown = false;
  program.desktop.on_box = [&](const ShownBox&) {
    shape = program.desktop.Main()->Shape();
    tray_shown = program.desktop.Tray().Shown();
  };
  EXPECT_FALSE(program.Start());
  EXPECT_TRUE(program.Ended());
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_EQ(program.desktop.boxes[0].text, kMissingText);
  EXPECT_EQ(program.desktop.boxes[0].title, "File Missing!");
  EXPECT_EQ(program.desktop.boxes[0].style, BoxStyle::kCritical);
  EXPECT_EQ(!shape.empty(), damage.shaped);
  EXPECT_TRUE(tray_shown);
  EXPECT_FALSE(program.desktop.Tray().Shown());
  const std::string kept = program.SettingsText();
  for (const char* line : {"FORM-REGION=0\r\n", "F-PWR-INDEX=3\r\n", "CLIENT-MSG-ID=14300\r\n"})
    EXPECT_NE(kept.find(line), std::string::npos) << line << "in\n" << kept;
  EXPECT_FALSE(program.port.PortOpen());
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedFiles,
    testing::Values(Damage{"OVFace.ovl", 96, false, false}, Damage{"OVFace.ovl", 96, true, false},
                    Damage{"OVFaceSm.ovl", 96, false, false}, Damage{"OVFaceSm.ovl", 96, true, false},
                    Damage{"OVFace120.ovl", 120, false, false}, Damage{"OVFaceSm120.ovl", 144, true, false},
                    Damage{"TamskLogoBW.ovl", 96, false, true}, Damage{"TamskLogoBW.ovl", 120, true, true},
                    Damage{"TamskLogo.ovl", 96, false, true}, Damage{"TamskLogo.ovl", 96, true, true}));

TEST(FaceImages, AHiddenFileCountsAsMissing) {
  Program program(QuickMeter());
  program.files.SetHidden(program.ImagePath("OVFaceSm.ovl"));
  EXPECT_FALSE(program.Start());
  ASSERT_EQ(program.desktop.boxes.size(), 1U);
  EXPECT_EQ(program.desktop.boxes[0].title, "File Missing!");
}

TEST(FaceImages, ADamagedInstallationDoesNotMoveTheKeptWindow) {
  Program program(QuickMeter());
  ASSERT_TRUE(program.files.Replace(program.SettingsPath(),
                                    "[USER-SETTINGS]\r\nFORM-TOP=2700\r\nFORM-LEFT=4200\r\n"));
  std::filesystem::remove(program.ImagePath("TamskLogo.ovl"));
  EXPECT_FALSE(program.Start());
  EXPECT_NE(program.SettingsText().find("FORM-TOP=2700\r\nFORM-LEFT=4200\r\n"), std::string::npos)
      << program.SettingsText();
}

class LogoTest : public testing::Test, public RunningFace {
 protected:
  LogoTest() {
    auto colour = std::make_shared<PictureData>(*Program::FacePicture({96, 24}));
    colour->pixels[100] = 0xFFFF8800;
    program.desktop.pictures["/TamskLogo.ovl"] = colour_logo = colour;
    grey_logo = program.desktop.pictures["/TamskLogoBW.ovl"];
  }
  HeadlessWindow& Logo() { return face.Of(*face.Controls().imgLogo); }
  const Picture& Shown() { return face.Controls().imgLogo->CurrentPicture(); }
  Picture colour_logo;
  Picture grey_logo;
};

TEST_F(LogoTest, LightsUnderThePointerAndGoesGreyOverTheBareFace) {
  ASSERT_TRUE(Start());
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
  ASSERT_TRUE(Start());
  Logo().Click();
  EXPECT_EQ(face.Main().State(), WindowState::kMinimized);
  ASSERT_EQ(program.shell.launches.size(), 1U);
  EXPECT_EQ(program.shell.launches[0].target.rfind("https://", 0), 0U);
  EXPECT_EQ(program.Status(), "");
}

TEST_F(LogoTest, ARightClickOpensTheMenuAndNoBrowser) {
  ASSERT_TRUE(Start());
  Logo().Click(kRightButton);
  EXPECT_EQ(face.Main().State(), WindowState::kNormal);
  EXPECT_TRUE(program.shell.launches.empty());
  EXPECT_EQ(program.desktop.menus.size(), 1U);
}

TEST_F(LogoTest, ABrowserThatDoesNotStartIsSaid) {
  ASSERT_TRUE(Start());
  program.shell.works = false;
  Logo().Click();
  EXPECT_EQ(program.Status(), "The web browser could not be started.");
  EXPECT_EQ(face.Meter().lblShowStatus->ForeColor(), MakeColor(255, 0, 0));
  program.RunFor(5000);
  EXPECT_EQ(program.Status(), "");
}

/// Notes the window's state when something is started.
class WatchingShell : public Shell {
 public:
  explicit WatchingShell(HeadlessDesktop& desktop) : desktop_(desktop) {}
  bool Execute(const Launch&) override {
    states.push_back(desktop_.Main()->State());
    return true;
  }
  std::vector<WindowState> states;

 private:
  HeadlessDesktop& desktop_;
};

TEST(Logo, TheWindowIsMinimisedBeforeTheBrowserStarts) {
  Program program(QuickMeter());
  WatchingShell shell(program.desktop);
  Platform platform{program.time,    program.time,     program.port, program.profiles, program.files,
                    program.desktop, program.instance, shell,        program.clients};
  Orvane orvane(platform);
  orvane.Form_Load();
  Face::In(*program.desktop.Main(), *orvane.Controls().imgLogo).Click();
  EXPECT_EQ(shell.states, (std::vector<WindowState>{WindowState::kMinimized}));
}

}  // namespace
}  // namespace orvane
