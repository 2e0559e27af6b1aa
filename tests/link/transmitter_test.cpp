#include "link/transmitter.h"

#include "base/runtime_error.h"
#include "tests/link/link_fixture.h"

#include <limits>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

using TransmitterTest = LinkTest;

TEST_F(TransmitterTest, ANewCommandReplacesOneThatTheLineDidNotTake) {
  port.Open();
  port.SetStuck(true);
  link.SendCommand("T1");
  link.SendCommand("T2");
  port.SetStuck(false);
  EXPECT_EQ(Commands(), (Texts{"T2"}));
}

TEST_F(TransmitterTest, ACommandMaySendItselfBetweenTheBytesOfAnother) {
  time.Post(EventKind::kInput, 0, [this] {
    link.SendCommand("M1");
    throw RuntimeError(Fault::kOverflow, "in a handler");
  });
  std::string text = "V3";
  time.Post(EventKind::kInput, 0, [&text] { text = "changed since"; });
  link.SendCommand(text);
  EXPECT_EQ(Commands(), (Texts{"M1", "V3"}));
  EXPECT_EQ(link.Flags().LastCommand, "M1");
}

TEST_F(TransmitterTest, WaitsTakeTheirTimeWithEventsGoingOn) {
  link.SetDataFlow(true);
  ASSERT_EQ(Commands(), (Texts{"D1"}));
  EXPECT_EQ(port.Writes()[0].at, 51);  // past 50
  Feed(Line("A"));                     // an acknowledgement does not end it
  int events_run = 0;
  for (int at : {0, 60, 124, 126})
    time.Post(EventKind::kInput, at, [&] { ++events_run; });
  link.WaitForAck(125);
  EXPECT_EQ(time.Now(), 51 + 126);
  EXPECT_EQ(events_run, 4);
}

struct AtTheWrap : TransmitterTest {
  AtTheWrap() : LinkTest(std::numeric_limits<std::int32_t>::max() - 100) {}
};

TEST_F(AtTheWrap, WaitsEndAndCommandsAreSent) {
  link.WaitForAck(125);  // its deadline lies past the last tick: no wait
  EXPECT_EQ(time.Now(), std::numeric_limits<std::int32_t>::max() - 100);
  link.WaitForAck(100);  // up to the last tick
  EXPECT_EQ(time.GetTickCount(), std::numeric_limits<std::int32_t>::max());
  link.SetDataFlow(true);  // no room for the 50 ms
  time.RunFor(1);
  EXPECT_EQ(time.GetTickCount(), std::numeric_limits<std::int32_t>::min());
  link.SetDataFlow(false);
  EXPECT_EQ(Commands(), (Texts{"D1", "D0"}));
  EXPECT_EQ(port.Writes()[1].at - port.Writes()[0].at, 52);
}

TEST_F(AtTheWrap, AWaitWhoseClockWrapsUnderItEnds) {
  time.Post(EventKind::kTimer, 10, [this] { time.Block(200); });
  link.WaitForAck(50);
  EXPECT_LT(time.GetTickCount(), 0);
}

}  // namespace
}  // namespace orvane
