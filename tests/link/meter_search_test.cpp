#include "base/text.h"
#include "link/frame.h"
#include "tests/link/link_fixture.h"

#include <limits>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kAsk =
    "ask Meter Not Detected: Orvane Meter Not Detected. Please verify connections and power to meter. Click "
    "OK to try again.";
constexpr std::string_view kNoPort =
    "box No Port Selected: Comm Port = 0 No Port Selected. Please Select a Comm Port.";

class Search : public LinkTest {
 protected:
  using LinkTest::LinkTest;

  /// The next `count` attempts, each with the speed at which "v?" went out.
  Texts Speeds(int count) {
    Texts speeds;
    events.EnableFindMeter(true);
    port.ClearWrites();
    for (int i = 0; i < 10000 && static_cast<int>(speeds.size()) < count; ++i) {
      time.RunFor(100);
      for (const auto& written : port.Writes()) {
        if (CommandText(written.bytes) == "v?")
          speeds.push_back(written.settings.substr(0, written.settings.find(',')));
      }
      port.ClearWrites();
    }
    return speeds;
  }
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

TEST_F(Search, ALateAnswer) {
  replies["v?"] = "vVersion";
  reply_ms = 1700;
  link.FindMeter();
  EXPECT_TRUE(link.Flags().MeterFound);
  EXPECT_EQ(port.Writes()[2].at - port.Writes()[1].at, 1700 + 51);
  replies.clear();
  link.ApplyPortSettings();
  link.FindMeter();
  Feed(Line("vVersion"));  // too late for its attempt: it keeps the next one from starting
  EXPECT_FALSE(events.FindMeterEnabled());
  EXPECT_FALSE(link.Flags().MeterSearchRunning);
}

TEST_F(Search, ASilentMeterCostsTwoSecondsAndTheNextSpeedIsTried) {
  std::string openings;
  port.SetPeer({{}, [&](bool open, std::string_view) { openings += open ? '+' : '-'; }});
  link.FindMeter();
  EXPECT_EQ(Commands(), (Texts{"D0", "v?", "D0"}));
  EXPECT_EQ(port.Writes()[2].at - port.Writes()[1].at, 251 + 1501 + 51);
  EXPECT_EQ(events.log, (Texts{"status 38400,N,8,1"}));
  EXPECT_EQ(settings.saves, 1);
  EXPECT_EQ(settings.baud_rate, "38400");
  EXPECT_EQ(openings, "+-++") << "opened, closed after the failure, opened by D0, set to the next speed";
  EXPECT_TRUE(events.FindMeterEnabled());
  link.FindMeter();
  EXPECT_EQ(port.Settings(), "19200,N,8,1");
  EXPECT_EQ(settings.baud_rate, "19200");
  EXPECT_TRUE(link.Flags().MeterSearchRunning);
}

TEST_F(Search, TheOrderOfSpeeds) {
  settings.baud_rate = "4800";
  EXPECT_EQ(Speeds(9), (Texts{"4800", "38400", "19200", "9600", "38400", "38400", "19200", "9600", "38400"}));
}

TEST_F(Search, TheOperatorIsAskedOnceAfterTenFailures) {
  int asked_after = 0;
  events.on_box = [&] { asked_after = settings.saves; };
  EXPECT_EQ(Speeds(21).size(), 21U);
  EXPECT_EQ(events.Count(kAsk), 1);
  EXPECT_EQ(asked_after, 10);
  EXPECT_EQ(settings.saves, 20);  // by every failure but the one that asked
  time.RunFor(4000);
  EXPECT_EQ(Speeds(1).size(), 1U);
  EXPECT_EQ(events.Count(kAsk), 2);
  EXPECT_FALSE(link.Flags().SearchAbandoned);
}

TEST_F(Search, CancelEndsTheSearch) {
  events.answer = false;
  replies["v?"] = "!Hello";  // a notice asks for another attempt, which a cancelled search does not make
  EXPECT_EQ(Speeds(12).size(), 11U);
  EXPECT_EQ(events.Count(kAsk), 1);
  EXPECT_TRUE(link.Flags().SearchAbandoned);
  EXPECT_FALSE(events.FindMeterEnabled());
  EXPECT_EQ(settings.baud_rate, "38400");
  EXPECT_EQ(port.Settings(), "38400,N,8,1");
}

TEST_F(Search, SavedRanges) {
  AnswerAll();
  const std::tuple<int, int, bool, Texts> rows[] = {{0, 8, false, {"forward 0", "reflected 8"}},
                                                    {9, 3, false, {"reflected 3"}},
                                                    {3, -1, false, {"forward 3"}},
                                                    {-1, 9, false, {}},
                                                    {3, 3, true, {}}};
  for (const auto& [forward, reflected, dip, expected] : rows) {
    settings.f_pwr_index = static_cast<std::int16_t>(forward);
    settings.r_pwr_index = static_cast<std::int16_t>(reflected);
    events.dip_mode = dip;
    events.log.clear();
    link.FindMeter();
    Texts clicks;
    for (const auto& entry : events.log) {
      if (entry.starts_with("forward") || entry.starts_with("reflected")) clicks.push_back(entry);
    }
    EXPECT_EQ(clicks, expected) << forward << ' ' << reflected;
  }
}

TEST_F(Search, WithoutAPortItEnds) {
  for (const char* text : {"0", "", "COM3", "-2", "99999", "7"}) {
    settings.comm_port = text;
    port.SetBusy(settings.comm_port == "7");
    events.log.clear();
    link.FindMeter();
    time.RunFor(10000);
    EXPECT_EQ(events.log, (Texts{std::string(kNoPort)})) << text;
    EXPECT_FALSE(events.FindMeterEnabled());
    EXPECT_TRUE(link.Flags().SearchAbandoned);
  }
  EXPECT_TRUE(port.Writes().empty());
}

TEST_F(Search, APortUnpluggedDuringAnAttemptEndsIt) {
  events.EnableFindMeter(true);
  time.Post(EventKind::kArrival, 1500, [this] { port.Lose(); });
  time.RunFor(20000);
  EXPECT_EQ(events.Count(kNoPort), 0) << "its return is watched for, nobody is asked";
  EXPECT_EQ(events.Count("stopped"), 1) << "old readings are dropped at once";
  EXPECT_FALSE(events.FindMeterEnabled());
}

TEST_F(Search, ANoticeDuringAnAttemptDoesNotNestAnother) {
  AnswerAll();
  meter_settings = "19200,N,8,1";
  events.EnableFindMeter(true);
  for (int at : {1400, 1900, 2400, 2900, 3400})
    time.Post(EventKind::kArrival, at, [this] { port.Deliver(Line("!Hello")); });
  time.RunFor(20000);
  const auto commands = Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "v?"), 3);  // 38400 twice, then 19200
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "D1"), 1);
  EXPECT_TRUE(link.Flags().MeterFound);
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

TEST_F(Search, StopAndClose) {
  AnswerAll();
  link.FindMeter();
  port.ClearWrites();
  const auto start = time.Now();
  bool ran = false;
  time.Post(EventKind::kInput, 200, [&] { ran = true; });
  link.StopAndClose();
  EXPECT_EQ(Commands(), (Texts{"D0"}));
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(time.Now() - start, 51 + 250 + 250);
  EXPECT_FALSE(ran);
  settings.comm_port = "0";
  link.StopAndClose();
  EXPECT_EQ(time.Now() - start, 51 + 250 + 250);
}

struct SearchAtTheWrap : Search {
  SearchAtTheWrap() : Search(std::numeric_limits<std::int32_t>::max() - 100) {}
};

// A wait that does not fit before the wrap of the tick count is a fault like any other; the next attempt is
// well behind it.
TEST_F(SearchAtTheWrap, ADeadlinePastTheLastTickEndsTheAttempt) {
  AnswerAll();
  link.FindMeter();
  EXPECT_EQ(events.Count(kNoPort), 1);
  EXPECT_FALSE(link.Flags().MeterFound);
  time.RunFor(200);
  link.FindMeter();
  EXPECT_TRUE(link.Flags().MeterFound);
}

}  // namespace
}  // namespace orvane
