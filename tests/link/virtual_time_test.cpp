#include "platform/headless/virtual_time.h"

#include "platform/wait.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace orvane {
namespace {

constexpr std::int32_t kLastTick = std::numeric_limits<std::int32_t>::max();

class VirtualTimeTest : public ::testing::Test {
 protected:
  std::function<void()> Note(char c) {
    return [this, c] { seen += c; };
  }
  VirtualTime time;
  std::string seen;
};

TEST_F(VirtualTimeTest, OrderOfEvents) {
  time.Post(EventKind::kTimer, 20, Note('c'));
  time.Post(EventKind::kInput, 10, Note('a'));
  time.Post(EventKind::kArrival, 10, Note('b'));
  time.Post(EventKind::kArrival, -5, Note('0'));
  time.DeliverPending();
  EXPECT_EQ(seen, "0");
  time.RunFor(19);
  EXPECT_EQ(seen, "0ab");
  time.RunFor(1);
  EXPECT_EQ(seen, "0abc");
  EXPECT_EQ(time.GetTickCount(), 20);
}

TEST_F(VirtualTimeTest, ArrivalsAloneLeaveTheRestWaiting) {
  time.Post(EventKind::kTimer, 0, Note('t'));
  time.Post(EventKind::kArrival, 0, [this] {
    seen += 'a';
    time.Post(EventKind::kArrival, 0, Note('b'));
    time.Post(EventKind::kArrival, 1, Note('c'));
  });
  time.Post(EventKind::kInput, 0, Note('i'));
  time.DeliverArrivals();
  EXPECT_EQ(seen, "ab");
  time.DeliverPending();
  EXPECT_EQ(seen, "abti");
}

TEST_F(VirtualTimeTest, CancelledEventsDoNotRun) {
  VirtualTime::EventId second;
  time.Post(EventKind::kTimer, 0, [&] { EXPECT_TRUE(time.Cancel(second)); });
  second = time.Post(EventKind::kTimer, 0, Note('x'));
  const auto third = time.Post(EventKind::kTimer, 5, Note('x'));
  EXPECT_TRUE(time.Cancel(third));
  EXPECT_FALSE(time.Cancel(third));
  EXPECT_FALSE(time.Cancel({}));
  time.RunFor(10);
  EXPECT_EQ(seen, "");
}

TEST_F(VirtualTimeTest, SleepingStopsAtTheNextEvent) {
  time.Post(EventKind::kTimer, 30, Note('x'));
  time.SleepUntil(50);
  EXPECT_EQ(time.GetTickCount(), 30);
  time.SleepUntil(50);  // it is due still
  EXPECT_EQ(time.GetTickCount(), 30);
  EXPECT_EQ(seen, "");
  time.DeliverPending();
  time.SleepUntil(50);
  time.SleepUntil(40);
  EXPECT_EQ(time.GetTickCount(), 50);
  time.Post(EventKind::kTimer, 5, Note('y'));
  time.Block(100);
  EXPECT_EQ(time.GetTickCount(), 150);
  EXPECT_EQ(seen, "x");
}

TEST_F(VirtualTimeTest, HandlersMayWait) {
  time.Post(EventKind::kTimer, 10, [this] {
    seen += '(';
    WaitTicks(time, time, 20);
    seen += ')';
  });
  time.Post(EventKind::kArrival, 15, Note('a'));
  time.Post(EventKind::kArrival, 60, Note('b'));
  time.RunFor(12);
  EXPECT_EQ(seen, "(a)");
  EXPECT_EQ(time.GetTickCount(), 31);
}

TEST_F(VirtualTimeTest, ChainsWithoutEndAreReported) {
  std::function<void()> again = [&] { time.Post(EventKind::kTimer, 0, again); };
  again();
  EXPECT_THROW(time.DeliverPending(), std::logic_error);
  VirtualTime other;
  std::function<void()> deeper = [&] {
    other.Post(EventKind::kTimer, 0, deeper);
    other.DeliverPending();
  };
  EXPECT_THROW(deeper(), std::logic_error);
}

TEST(VirtualTimeWrap, TheTickCountWrapsAndEventsGoOn) {
  VirtualTime time(kLastTick - 10);
  int ran = 0;
  time.Post(EventKind::kTimer, 30, [&] { ++ran; });
  EXPECT_EQ(time.GetTickCount(), kLastTick - 10);
  time.SleepUntil(kLastTick);
  EXPECT_EQ(time.GetTickCount(), kLastTick);
  time.SleepUntil(std::numeric_limits<std::int32_t>::min() + 3);
  EXPECT_EQ(time.GetTickCount(), std::numeric_limits<std::int32_t>::min() + 3);
  time.SleepUntil(kLastTick);  // long past
  EXPECT_EQ(time.Now(), std::int64_t{kLastTick} + 4);
  time.RunFor(100);
  EXPECT_EQ(ran, 1);
}

}  // namespace
}  // namespace orvane
