#include "display/indicators.h"

#include "display/mode_panel.h"
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
  /// SWR, power and reset lamp: '*' lit, '.' dark.
  std::string Lamps() const {
    std::string lamps;
    for (const Shape* lamp :
         {controls.shpSWRAlarm.get(), controls.shpPowerAlarm.get(), controls.shpResetAlarm.get()})
      lamps += lamp->FillStyle() == Shape::kSolid ? '*' : '.';
    return lamps;
  }
  ActivityLights lights{desktop, time, controls};
  StatusLine status{desktop, time, *controls.lblShowStatus};
};

TEST_F(IndicatorsTest, LampsAreLitByExactlyTrue) {
  struct Row {
    Bool16 swr, power;
    const char* lamps;
  };
  for (const Row& row : {Row{kTrue, kFalse, "*.*"},
                         {kFalse, kTrue, ".**"},
                         {kTrue, kTrue, "***"},
                         {kFalse, kFalse, "..."},
                         {Bool16{1}, Bool16{2}, "..."}}) {
    meter.SWRAlarm = row.swr;
    meter.PwrAlarm = row.power;
    display.Lamps().ShowAlarmLamps();
    EXPECT_EQ(Lamps(), row.lamps) << row.swr << ", " << row.power;
  }
}

TEST_F(IndicatorsTest, ResetPutsTheLampsOutWhateverTheMeterSaid) {
  meter.SWRAlarm = meter.PwrAlarm = kTrue;
  display.Lamps().ShowAlarmLamps();
  display.Lamps().Reset();
  EXPECT_EQ(Lamps(), "...");
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

TEST_F(IndicatorsTest, ALightStaysUntilATenthOfASecondAfterTheLastBurst) {
  lights.Reset();
  EXPECT_EQ(Lights(), "..");
  lights.ShowRx();
  time.RunFor(60);
  EXPECT_EQ(Lights(), "*.");
  lights.ShowRx();
  for (int ms = 1; ms < 100; ++ms) {
    time.RunFor(1);
    ASSERT_EQ(Lights(), "*.") << ms;
  }
  time.RunFor(1);
  EXPECT_EQ(Lights(), "..");
  time.RunFor(1000);
  EXPECT_EQ(Lights(), "..");
}

TEST_F(IndicatorsTest, TheLightsDoNotTouchEachOther) {
  lights.Reset();
  lights.ShowRx();
  time.RunFor(60);
  lights.ShowTx();
  EXPECT_EQ(Lights(), "**");
  time.RunFor(40);
  EXPECT_EQ(Lights(), ".*");
  time.RunFor(60);
  EXPECT_EQ(Lights(), "..");
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
  struct Write {
    std::int64_t at;
    const char* text;  ///< null starts the timer alone
    bool alert;
  };
  struct Row {
    const char* what;
    std::vector<Write> writes;
    std::int64_t blank_at;
  };
  const Row rows[] = {{"one text", {{0, "a", false}}, 5000},
                      {"one alert", {{0, "a", true}}, 5000},
                      {"a text while the timer runs", {{0, "a", false}, {4000, "b", false}}, 9000},
                      {"an alert while the timer runs", {{0, "a", false}, {4999, "b", true}}, 9999},
                      {"the timer alone", {{0, "a", false}, {3000, nullptr, false}}, 8000}};
  for (const Row& row : rows) {
    const std::int64_t start = time.Now();
    std::string expected;
    for (const Write& write : row.writes) {
      time.RunFor(start + write.at - time.Now());
      EXPECT_EQ(controls.lblShowStatus->Caption(), expected) << row.what;
      if (write.text != nullptr) {
        expected = write.text;
        if (write.alert) {
          status.ShowAlert(write.text);
        } else {
          status.Show(write.text);
        }
      }
      status.StartClearTimer();
    }
    time.RunFor(start + row.blank_at - 1 - time.Now());
    EXPECT_EQ(controls.lblShowStatus->Caption(), expected) << row.what;
    time.RunFor(1);
    EXPECT_EQ(controls.lblShowStatus->Caption(), "") << row.what;
    EXPECT_EQ(controls.lblShowStatus->ForeColor(), MakeColor(0, 0, 128)) << row.what;
  }
}

TEST_F(IndicatorsTest, AnAlertIsRedAndItsTimerStartsByItself) {
  EXPECT_EQ(controls.lblShowStatus->ForeColor(), MakeColor(0, 0, 128));
  status.ShowAlert("Overrun");
  EXPECT_EQ(controls.lblShowStatus->ForeColor(), 255U);
  EXPECT_NE(controls.lblShowStatus->look().back, kStatusGround) << "red cannot be read on the pale ground";
  time.RunFor(5000);
  EXPECT_EQ(controls.lblShowStatus->Caption(), "");
  EXPECT_EQ(controls.lblShowStatus->ForeColor(), MakeColor(0, 0, 128));
  EXPECT_EQ(controls.lblShowStatus->look().back, kStatusGround);
}

class ModePanelTest : public DisplayTest {
 protected:
  ModePanelTest() {
    panel.SendCommand = [this](std::string_view command) { heard.push_back(std::string(command)); };
    panel.ShowVSWRMode = [this](bool dip) { layouts.push_back(dip); };
  }
  std::string Markers() const {
    std::string markers;
    for (const auto& marker : controls.shpMode)
      markers += marker->FillStyle() == Shape::kSolid ? '*' : '.';
    return markers;
  }
  ModePanel panel{controls, mode};
  std::vector<std::string> heard;
  std::vector<bool> layouts;
};

TEST_F(ModePanelTest, AChosenModeIsSentMarkedAndInForceAtOnce) {
  EXPECT_EQ(Markers(), "*...");
  struct Row {
    std::int16_t index;
    const char* command;
    const char* markers;
    bool dip;
  };
  for (const Row& row : {Row{2, "2M", "..*.", false},
                         {3, "3M", "...*", true},
                         {0, "0M", "*...", false},
                         {1, "1M", ".*..", false}}) {
    heard.clear();
    layouts.clear();
    panel.Choose(row.index);
    EXPECT_EQ(heard, (std::vector<std::string>{row.command}));
    EXPECT_EQ(Markers(), row.markers);
    EXPECT_EQ(layouts, (std::vector<bool>{row.dip}));
    EXPECT_EQ(mode.mode, row.index);
    EXPECT_EQ(mode.HoldTime, HoldTimes[static_cast<std::size_t>(row.index)]);
    panel.Choose(row.index);
    EXPECT_EQ(heard.size(), 1U) << "the mode in force does nothing";
  }
}

TEST_F(ModePanelTest, AReportedModeIsFollowedWithoutAWord) {
  panel.Follow(3);
  EXPECT_EQ(Markers(), "...*");
  EXPECT_EQ(mode.HoldTime, HoldTimes[3]);
  EXPECT_EQ(layouts, (std::vector<bool>{true}));
  panel.Follow(3);
  EXPECT_EQ(layouts.size(), 1U);
  panel.Follow(1);
  EXPECT_EQ(Markers(), ".*..");
  EXPECT_EQ(layouts, (std::vector<bool>{true, false}));
  EXPECT_TRUE(heard.empty());
}

}  // namespace
}  // namespace orvane
