#include "base/text.h"
#include "link/frame.h"
#include "tests/link/link_fixture.h"

#include <limits>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

class Search : public LinkTest {
 protected:
  using LinkTest::LinkTest;

  void AnswerAll() {
    const std::string_view all =
        "vOrvane Meter Version "
        "2.14|B50,250,1250,100,500,2500,200,1000,3000,400,2000,3000|b2|U-10,25|WCoupler|"
        "wRange|CDL0AB|I4|l3|L0,1,2,5|M1|P1|R1|S1|T25|t-3|V2";
    for (const std::string_view reply : Split(all, '|'))
      replies[std::string{reply.front(), '?'}] = reply;
  }
};

TEST_F(Search, TheWholeSequence) {
  AnswerAll();
  settings.f_pwr_index = 8;
  settings.r_pwr_index = 0;
  settings.comm_port = "7";
  settings.baud_rate = "19200";
  events.EnableFindMeter(true);
  time.RunFor(5000);
  // Commands, each with the ms after the one before it.
  const std::pair<const char*, int> steps[] = {
      {"D0", 1051}, {"v?", 251}, {"D0", 302}, {"B?", 51}, {"b?", 51}, {"U?", 51}, {"W?", 51},
      {"w?", 51},   {"C?", 51},  {"I?", 51},  {"l?", 51}, {"L?", 51}, {"M?", 51}, {"P?", 51},
      {"R?", 51},   {"S?", 51},  {"T?", 51},  {"t?", 51}, {"V?", 51}, {"D1", 302}};
  ASSERT_EQ(port.Writes().size(), std::size(steps));
  std::int64_t at = 0;
  for (std::size_t i = 0; i < std::size(steps); ++i) {
    at += steps[i].second;
    const auto& written = port.Writes()[i];
    EXPECT_EQ(std::tuple(written.bytes, written.at, written.settings),
              std::tuple(FrameCommand(steps[i].first), at, "19200,N,8,1"));
  }
  EXPECT_EQ(port.CommPort(), 7);
  EXPECT_EQ(events.log, (Texts{"status Loading Meter Paramaters", "mode", "status ",
                               std::string("message DL\xD8") + "AB", "forward 8", "reflected 0"}));
  EXPECT_FALSE(events.FindMeterEnabled());
  EXPECT_TRUE(link.Flags().MeterFound);
  EXPECT_FALSE(link.Flags().MeterSearchRunning);
  EXPECT_EQ(link.State().FirmwareVersion, "Orvane Meter Version 2.14");
  EXPECT_EQ((std::pair<int, int>(link.State().MeterRange(), link.State().MeterRow())), std::pair(2, 1));
  EXPECT_EQ(link.Lists().TrimHigh, 25);
  EXPECT_EQ(link.Lists().RangeItems[3].Text, "400/2000/3000");
  EXPECT_EQ(settings.saves, 0);
}

TEST_F(Search, EachFailureSavesTheNextSpeedAndOtherSettingsBeginAnew) {
  for (const char* speed : {"38400", "19200"}) {
    link.FindMeter();
    EXPECT_EQ(settings.baud_rate, speed);
  }
  EXPECT_EQ(settings.saves, 2);
  link.ApplyPortSettings();
  link.FindMeter();
  EXPECT_EQ(settings.baud_rate, "38400");
}

// At 1100 before the version is asked for, at 2000 while the answer is waited for.
TEST_F(Search, OtherPortSettingsAppliedInsideAnAttempt) {
  for (const int at : {1100, 2000}) {
    replies.clear();
    settings.comm_port = "2";
    link.ApplyPortSettings();
    port.ClearWrites();
    events.log.clear();
    time.Post(EventKind::kInput, at, [this] {
      AnswerAll();
      meter_settings = "4800,N,8,1";
      settings.comm_port = "12";
      settings.baud_rate = "4800";
      link.ApplyPortSettings();
      port.ClearWrites();
    });
    time.RunFor(10000);
    EXPECT_TRUE(link.Flags().MeterFound);
    for (const auto& written : port.Writes())
      EXPECT_EQ(written.port, 12) << at;
    EXPECT_EQ(settings.baud_rate, "4800");
    EXPECT_EQ(events.Count("status 38400,N,8,1"), 0) << "the old attempt went on";
  }
  replies.clear();
  link.ApplyPortSettings();
  time.RunFor(10000);
  EXPECT_FALSE(link.Flags().MeterFound) << "the meter at the old port is forgotten";
}

// Its waits let the operator act to the very end, after the last look at the answer too.
TEST_F(Search, NoPortChosenAtAnyMomentOfAnAttempt) {
  for (const bool answered : {false, true}) {
    for (int at = 1000; at < 3200; at += 10) {
      replies.clear();
      if (answered) AnswerAll();
      settings.comm_port = "2";
      link.ApplyPortSettings();
      events.log.clear();
      time.Post(EventKind::kInput, at, [this] {
        settings.comm_port = "0";
        link.ApplyPortSettings();
      });
      time.RunFor(5000);
      EXPECT_FALSE(link.Flags().MeterFound) << answered << " " << at;
      EXPECT_TRUE(std::none_of(events.log.begin(), events.log.end(),
                               [](const std::string& entry) { return entry.starts_with("box"); }))
          << answered << " " << at;
    }
  }
}
TEST_F(Search, StoppingGivesTheMeterTimeToTakeIt) {
  port.Open();
  link.StopAndClose();
  EXPECT_EQ(Commands(), (Texts{"D0"}));
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(time.Now(), 51 + 250 + 250);
}

struct SearchAtTheWrap : Search {
  SearchAtTheWrap() : Search(std::numeric_limits<std::int32_t>::max() - 100) {}
};

// A wait that does not fit before the wrap of the tick count is a fault like any other; the next attempt is
// well behind it.
TEST_F(SearchAtTheWrap, ADeadlinePastTheLastTickEndsTheAttempt) {
  AnswerAll();
  link.FindMeter();
  EXPECT_EQ(events.Count("box No Port Selected"), 1);
  EXPECT_FALSE(link.Flags().MeterFound);
  time.RunFor(200);
  link.FindMeter();
  EXPECT_TRUE(link.Flags().MeterFound);
}

}  // namespace
}  // namespace orvane
