#include "outside/client_data.h"

#include "base/runtime_error.h"
#include "platform/headless/client_windows.h"
#include "platform/headless/virtual_time.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace orvane {
namespace {

class ClientDataTest : public testing::Test {
 protected:
  void Send(std::int32_t value) { client.SendClientData(value, "OVClient", 14300); }

  VirtualTime time;
  HeadlessClientWindows windows;
  ClientData client{windows, time};
};

TEST_F(ClientDataTest, TheTextIsTheNumberAndANul) {
  for (const auto& [value, text] : {std::pair{1250, "1250"},
                                    {7, "7"},
                                    {-5, "-5"},
                                    {std::numeric_limits<std::int32_t>::min(), "-2147483648"},
                                    {0, "0"}}) {
    Send(value);
    ASSERT_FALSE(windows.messages.empty());
    EXPECT_EQ(windows.messages.back().data, text + std::string(1, '\0'));
    EXPECT_EQ(windows.messages.back().tag, 14300U);
  }
  EXPECT_EQ(client.LastResult(), 1);
}

TEST_F(ClientDataTest, TheClientIsLookedUpForEveryReading) {
  for (const bool open : {false, true, false}) {
    windows.open = open;
    Send(1);
    EXPECT_EQ(client.ClientWnd() != 0, open);
  }
  EXPECT_EQ(windows.messages.size(), 1U);
  EXPECT_EQ(windows.lookups, 3);
  windows.open = true;
  windows.caption = "";
  client.SendClientData(1, "", 14300);
  EXPECT_EQ(windows.messages.size(), 1U) << "no caption means no client";
}

TEST_F(ClientDataTest, AHangingClientIsLeftAloneLongerAndLongerUntilItAnswers) {
  windows.answer.outcome = ClientWindows::Outcome::kTimedOut;
  windows.on_message = [this](int timeout) { time.Block(timeout); };
  std::vector<std::int64_t> tries;
  for (int i = 0; i < 1600; ++i) {
    const std::size_t before = windows.messages.size();
    const std::int64_t at = time.Now();
    Send(i);
    if (windows.messages.size() != before) tries.push_back(at);
    time.Block(200);
  }
  ASSERT_GE(tries.size(), 6U);
  const std::int64_t pauses[] = {5000, 10000, 20000, 40000, 60000};
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_GE(tries[i + 1] - tries[i], pauses[i] + 1000);
    EXPECT_LE(tries[i + 1] - tries[i], pauses[i] + 1400);
  }
  EXPECT_EQ(client.Skipped(), 1600U);
  windows.answer.outcome = ClientWindows::Outcome::kAnswered;
  windows.on_message = nullptr;
  time.Block(60000);
  for (int i = 0; i < 3; ++i)
    Send(i);
  EXPECT_EQ(client.Skipped(), 1600U);
  EXPECT_EQ(windows.messages.back().data, std::string("2") + '\0');
}

// Somebody ended the client that hung and started it again: nobody must wait a minute for its first reading.
TEST_F(ClientDataTest, AnotherWindowOfThatCaptionIsTriedAtOnce) {
  windows.answer.outcome = ClientWindows::Outcome::kTimedOut;
  Send(1);
  Send(2);
  ASSERT_EQ(windows.messages.size(), 1U);
  windows.current = 8;
  windows.answer.outcome = ClientWindows::Outcome::kAnswered;
  Send(3);
  Send(4);
  ASSERT_EQ(windows.messages.size(), 3U);
  EXPECT_EQ(windows.messages[1].window, 8U);
  EXPECT_EQ(client.Skipped(), 2U);

  // It hangs in its turn: its first pause is a short one again.
  windows.answer.outcome = ClientWindows::Outcome::kTimedOut;
  Send(5);
  time.Block(ClientData::kFirstPauseMs);
  Send(6);
  EXPECT_EQ(windows.messages.size(), 5U);
}

TEST_F(ClientDataTest, AReadingThatComesWhileTheClientIsBusyIsLeftOutAndAFaultEndsNothing) {
  windows.on_message = [this](int) {
    Send(99);
    throw RuntimeError(Fault::kOverflow, "Test");
  };
  EXPECT_FALSE(Attempt([this] { Send(1); }));
  ASSERT_EQ(windows.messages.size(), 1U);
  EXPECT_EQ(client.Text(), "1");
  EXPECT_EQ(client.Skipped(), 1U);
  windows.on_message = nullptr;
  Send(7);
  EXPECT_EQ(windows.messages.back().data, std::string("7") + '\0');
}

TEST_F(ClientDataTest, AClientBehindAWallIsNotedAndTriedOn) {
  for (const bool reachable : {false, true}) {
    windows.answer.outcome =
        reachable ? ClientWindows::Outcome::kAnswered : ClientWindows::Outcome::kUnreachable;
    Send(1);
    EXPECT_EQ(client.Reachable(), reachable);
  }
}

}  // namespace
}  // namespace orvane
