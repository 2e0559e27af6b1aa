#include "display/indicators.h"

#include "tests/display/display_fixture.h"

namespace orvane {
namespace {

class IndicatorsTest : public DisplayTest {
 protected:
  /// '*' for a light that is on, '.' for one that is off, '?' for any other picture.
  char Light(const Image& light) const {
    if (light.CurrentPicture() == controls.imgLed[3]) return '*';
    return light.CurrentPicture() == controls.imgLed[2] ? '.' : '?';
  }
  std::string Lights() const { return {Light(*controls.imgRx), Light(*controls.imgTx)}; }
  ActivityLights lights{desktop, time, controls};
  StatusLine status{desktop, time, *controls.lblShowStatus};
};

TEST_F(IndicatorsTest, LampsAreLitByExactlyTrue) {
  for (const std::int16_t each : {kFastMode, kDipMode}) {
    mode.Choose(each);
    for (const auto& [flag, lamps] : {std::pair{Bool16{1}, "..."}, {kTrue, "***"}, {kFalse, "..."}}) {
      meter.SWRAlarm = meter.PwrAlarm = flag;
      Line(1, 0, 1.5F);
      EXPECT_EQ(Lamps(controls), lamps) << flag << ", mode " << each;
    }
  }
}

TEST_F(IndicatorsTest, OnAndOffAreDifferentPicturesAsLargeAsTheLight) {
  ASSERT_TRUE(controls.imgLed[1] && controls.imgLed[2] && controls.imgLed[3]);
  EXPECT_EQ(controls.imgLed[3]->width, 12);
  EXPECT_EQ(controls.imgLed[3]->height, 12);
  EXPECT_NE(controls.imgLed[3]->pixels, controls.imgLed[2]->pixels);
  EXPECT_EQ(controls.imgLed[1]->pixels, controls.imgLed[2]->pixels) << "both are a light that is off";
  EXPECT_EQ(controls.imgLed[3]->pixels.front() >> 24, 0U) << "round: nothing in the corner";
  EXPECT_EQ(controls.imgLed[3]->pixels[6 * 12 + 6] >> 24, 255U);
}

TEST_F(IndicatorsTest, ALightStaysUntilATenthOfASecondAfterItsLastBurst) {
  lights.Reset();
  EXPECT_EQ(Lights(), "..");
  lights.ShowRx();
  time.RunFor(60);
  EXPECT_EQ(Lights(), "*.");
  lights.ShowRx();
  time.RunFor(60);
  lights.ShowTx();
  for (const auto& [ms, seen] : {std::pair{39, "**"}, {1, ".*"}, {59, ".*"}, {1, ".."}, {1000, ".."}}) {
    time.RunFor(ms);
    EXPECT_EQ(Lights(), seen);
  }
}

TEST_F(IndicatorsTest, ALightThatIsOnIsNotPaintedAgainForEachBurst) {
  lights.ShowRx();
  HeadlessWindow* window = nullptr;
  for (HeadlessWindow* each : desktop.Main()->Children()) {
    if (each->Place() == controls.imgRx->Bounds()) window = each;
  }
  ASSERT_NE(window, nullptr);
  const int before = window->Invalidations();
  for (int i = 0; i < 200; ++i) {
    lights.ShowRx();
    time.RunFor(5);
  }
  EXPECT_EQ(window->Invalidations(), before);
}

TEST_F(IndicatorsTest, AStatusStaysFiveSecondsAfterTheTimerWasLastStarted) {
  struct Row {
    const char* what;
    std::vector<std::pair<std::int64_t, const char*>> writes;  // null starts the timer alone, '!' is urgent
    std::int64_t blank_at;
  };
  const Row rows[] = {{"one text", {{0, "a"}}, 5000},
                      {"one alert", {{0, "!a"}}, 5000},
                      {"a text while the timer runs", {{0, "a"}, {4000, "b"}}, 9000},
                      {"an alert while the timer runs", {{0, "a"}, {4999, "!b"}}, 9999},
                      {"the timer alone", {{0, "a"}, {3000, nullptr}}, 8000}};
  for (const Row& row : rows) {
    const std::int64_t start = time.Now();
    std::string expected;
    for (const auto& [at, text] : row.writes) {
      time.RunFor(start + at - time.Now());
      EXPECT_EQ(controls.lblShowStatus->Caption(), expected) << row.what;
      if (text != nullptr && *text == '!') {
        status.ShowAlert(expected = text);
        EXPECT_EQ(controls.lblShowStatus->ForeColor(), 255U) << row.what;
        EXPECT_NE(controls.lblShowStatus->look().back, kStatusGround) << "red is not read on the pale ground";
      } else {
        if (text != nullptr) status.Show(expected = text);
        status.StartClearTimer();
      }
    }
    time.RunFor(start + row.blank_at - 1 - time.Now());
    EXPECT_EQ(controls.lblShowStatus->Caption(), expected) << row.what;
    time.RunFor(1);
    EXPECT_EQ(controls.lblShowStatus->Caption(), "") << row.what;
    EXPECT_EQ(controls.lblShowStatus->ForeColor(), MakeColor(0, 0, 128)) << row.what;
    EXPECT_EQ(controls.lblShowStatus->look().back, kStatusGround) << row.what;
  }
}

}  // namespace
}  // namespace orvane
