#include "tests/contract/line_fixture.h"

#include <atomic>
#include <limits>
#include <thread>
#include <tlhelp32.h>

namespace orvane {
namespace {

/// What the line in memory cannot show: real threads, real time-outs, a real cable.
class Win32SerialPortTest : public LineContract {
 protected:
  static DWORD ElapsedMs(const std::function<void()>& step) {
    const ULONGLONG start = ::GetTickCount64();
    step();
    return static_cast<DWORD>(::GetTickCount64() - start);
  }
  /// Writes with nobody reading until the cable takes no more: large pieces first, then what a command has,
  /// because a cable that refused the rest of a large piece may still have room for a small one.
  void FillTheLine() {
    for (const std::size_t size : {512U, 20U}) {
      events.clear();
      for (int i = 0; i < 400 && Count(CommEvent::kTxFull) == 0; ++i) {
        const auto told = events.size();
        port.Write(Pattern(size));
        ASSERT_TRUE(Within3s([&] { return events.size() > told; })) << i;
      }
      ASSERT_EQ(Count(CommEvent::kTxFull), 1);
    }
    events.clear();
  }
  /// Reads until the cable is empty.
  void EmptyTheLine() {
    while (!peer.Receive(1, 200).empty()) {
    }
  }
};

// User and system time of the process.
ULONGLONG ProcessorMs() {
  FILETIME created{}, ended{}, kernel{}, user{};
  ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user);
  const auto hundred_ns = [](const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) + time.dwLowDateTime;
  };
  return (hundred_ns(kernel) + hundred_ns(user)) / 10000;
}

DWORD HandleCount() {
  DWORD count = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &count);
  return count;
}

int ThreadCount() {
  const UniqueHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  int count = 0;
  for (BOOL more = ::Thread32First(snapshot.get(), &entry); more != 0;
       more = ::Thread32Next(snapshot.get(), &entry)) {
    if (entry.th32OwnerProcessID == ::GetCurrentProcessId()) ++count;
  }
  return count;
}

bool InWine() {
  return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

/// A port of Wine's, COM9, whose device goes away when the first byte is written to it. A program of the host
/// holds it.
class FragilePort {
 public:
  static constexpr int kNumber = 9;
  FragilePort() {
    std::string command =
        "python3 -c \"import os, signal, tty; signal.alarm(20); master, slave = os.openpty(); "
        "tty.setraw(slave); link = os.environ['WINEPREFIX'] + '/dosdevices/com9'; "
        "os.symlink(os.ttyname(slave), link); os.read(master, 1); os.unlink(link); os.close(master)\"";
    STARTUPINFOA start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    if (::CreateProcessA("Z:\\usr\\bin\\python3", command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                         nullptr, &start, &process) == 0)
      throw std::runtime_error("the host's program does not start: " + std::to_string(::GetLastError()));
    const UniqueHandle started(process.hProcess);
    const UniqueHandle thread(process.hThread);
  }
};

TEST_F(Win32SerialPortTest, ARemovedDeviceIsToldOnceAndClosesQuickly) {
  if (!InWine()) GTEST_SKIP() << "no device here that could be removed";
  const FragilePort fragile;
  port.SetCommPort(FragilePort::kNumber);
  ASSERT_TRUE(Within3s([&] {
    clock.Block(50);
    return Attempt([&] { port.Open(); });
  }));
  port.Write("x");
  ASSERT_TRUE(IsTold(CommEvent::kLost));
  EXPECT_TRUE(port.PortOpen());
  EXPECT_FALSE(port.Works());
  EXPECT_EQ(FaultOf([&] { port.Write("x"); }), Fault::kPortLost);
  EXPECT_EQ(FaultOf([&] { port.SetSettings("9600,N,8,1"); }), Fault::kPortLost);
  EXPECT_EQ(port.Settings(), "38400,N,8,1");
  const ULONGLONG before = ProcessorMs();
  Wait(300);
  EXPECT_LT(ProcessorMs() - before, 50U) << "a dead port must not keep the thread busy";
  EXPECT_EQ(Count(CommEvent::kLost), 1);
  EXPECT_LT(ElapsedMs([&] { port.Close(); }), 500U);
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(FaultOf([&] { port.Open(); }), Fault::kInvalidPort);
  port.SetCommPort(LineUnderTest::PortNumber());
  port.Open();
  peer.Send("abc");
  EXPECT_TRUE(Arrives(3)) << "another port works as ever";
}

TEST_F(Win32SerialPortTest, APeerThatGoesAndComesBackIsNoLoss) {
  port.Open();
  for (int i = 0; i < 3; ++i) {
    peer.Close();
    Wait(100);
    peer.Open();
    peer.Send("abc");
    ASSERT_TRUE(Arrives(3)) << i;
    WriteOut("def");
    EXPECT_EQ(peer.Receive(3), "def") << i;
    EXPECT_EQ(received, "abc");
    received.clear();
  }
  EXPECT_EQ(Count(CommEvent::kLost), 0);
}

TEST_F(Win32SerialPortTest, ALineThatTakesNothingIsReportedAndHoldsNobodyUp) {
  port.Open();
  FillTheLine();
  EXPECT_LT(ElapsedMs([&] { port.Write("twenty bytes of text"); }), 50U);
  const DWORD until_told = ElapsedMs([&] { EXPECT_TRUE(IsTold(CommEvent::kTxFull)); });
  EXPECT_GE(until_told, 900U);
  EXPECT_LE(until_told, 1500U);
  EXPECT_EQ(Count(CommEvent::kSend), 0);
  EmptyTheLine();
  WriteOut("free again");
  EXPECT_EQ(peer.Receive(10), "free again");
}

TEST_F(Win32SerialPortTest, BehindAStuckWriteOneMoreIsTakenAndArrivalsStillCome) {
  port.Open();
  FillTheLine();
  port.Write("stuck");
  EXPECT_LT(ElapsedMs([&] { EXPECT_TRUE(port.Works()); }), 50U) << "stuck is not gone";
  peer.Send("abc");
  EXPECT_LT(ElapsedMs([&] { EXPECT_TRUE(Arrives(3)); }), 500U);
  EXPECT_EQ(received, "abc");
  port.Write("the next");
  EXPECT_EQ(FaultOf([&] { port.Write("one too many"); }), Fault::kLineBusy);
  EmptyTheLine();
}

TEST_F(Win32SerialPortTest, DiscardingFreesAStuckLine) {
  port.Open();
  FillTheLine();
  port.Write("stuck");
  Wait(50);
  port.Write("behind it");
  EXPECT_LT(ElapsedMs([&] { port.DiscardOutput(); }), 50U);
  Wait(100);
  EmptyTheLine();
  Wait(1500);
  EXPECT_EQ(events.size(), 0U) << "what was discarded is neither told as sent nor as refused";
  EXPECT_EQ(peer.Receive(1, 100), "");
  WriteOut("free again");
  EXPECT_EQ(peer.Receive(10), "free again");
}

TEST_F(Win32SerialPortTest, ClosingWithAStuckWriteIsQuick) {
  port.Open();
  FillTheLine();
  port.Write("stuck");
  Wait(50);
  EXPECT_LT(ElapsedMs([&] { port.Close(); }), 500U);
  EmptyTheLine();
  port.Open();
  WriteOut("free again");
  EXPECT_EQ(peer.Receive(10), "free again");
}

TEST_F(Win32SerialPortTest, ClosingInAStreamIsQuick) {
  std::atomic<bool> stop{false};
  std::thread stream([&] {
    while (!stop) {
      peer.Send("a reading of some twenty bytes\r\n");
      ::Sleep(2);
    }
  });
  for (int i = 0; i < 20; ++i) {
    port.Open();
    received.clear();
    EXPECT_TRUE(Arrives(100)) << i;
    EXPECT_LT(ElapsedMs([&] { port.Close(); }), 250U) << i;
  }
  stop = true;
  stream.join();
  EXPECT_EQ(Count(CommEvent::kLost), 0);
}

TEST_F(Win32SerialPortTest, WaitingWithAnOpenPortCostsNoProcessorTime) {
  port.Open();
  WriteOut("w");
  peer.Send("a");
  ASSERT_TRUE(Arrives(1));
  const ULONGLONG before = ProcessorMs();
  Wait(2000);
  EXPECT_LT(ProcessorMs() - before, 50U);
}

TEST_F(Win32SerialPortTest, OpeningAndClosingLeavesNothingBehind) {
  const auto cycle = [&] {
    port.Open();
    received.clear();
    peer.Send("a");
    ASSERT_TRUE(Arrives(1));
    WriteOut("w");
    port.Close();
  };
  cycle();
  const DWORD handles = HandleCount();
  const int threads = ThreadCount();
  ASSERT_GE(threads, 1);
  for (int i = 0; i < 50; ++i)
    cycle();
  Wait(100);
  EXPECT_EQ(HandleCount(), handles);
  EXPECT_EQ(ThreadCount(), threads);
}

// Once in 24.8 days the tick count may wrap between the look at it and the sleep.
TEST_F(Win32SerialPortTest, ATickBehindTheWrapIsNoTimeToSleep) {
  struct WrappedClock : Clock {
    std::int32_t GetTickCount() override { return std::numeric_limits<std::int32_t>::min() + 1; }
    void Block(std::int32_t) override {}
  } wrapped;
  EventWindow window;
  Win32SerialPort unused(window);
  Win32EventPump sleeper(wrapped, unused);
  int ticks = 0;
  const auto alarm = line.Windows().StartTimer(1000, [&] { ++ticks; });  // else the test would never end
  EXPECT_LT(ElapsedMs([&] { sleeper.SleepUntil(std::numeric_limits<std::int32_t>::max()); }), 500U);
}

}  // namespace
}  // namespace orvane
