#pragma once

#include "platform/profile_store.h"
#include "tests/support/temp_folder.h"

// The one place where the contracts learn which system they run on.
#ifdef _WIN32
#include "platform/win32/event_pump.h"
#include "platform/win32/files.h"
#include "platform/win32/handles.h"
#include "platform/win32/profile_store.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/window_system.h"
#include "tests/contract/null_modem_peer.h"
#else
#include "platform/headless/desktop.h"
#include "platform/headless/files.h"
#include "platform/headless/profile_store.h"
#include "platform/headless/serial_port.h"
#endif

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {

/// Settings store and files of the system that the test was built for, and a folder to try them in.
class PlatformUnderTest {
 public:
  ProfileStore& Profiles() { return profiles_; }
  Files& TheFiles() { return files_; }
  const TempFolder& Folder() const { return folder_; }

  /// Lets another program have the file for itself until Release.
  void Hold(const std::string& path) {
#ifdef _WIN32
    holder_.reset(::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
#else
    files_.SetHeld(path);
#endif
  }
  void Release([[maybe_unused]] const std::string& path) {
#ifdef _WIN32
    holder_.reset();
#else
    files_.SetHeld(path, 0);
#endif
  }

 private:
  TempFolder folder_;
#ifdef _WIN32
  UniqueHandle holder_;
  Win32Files files_;
  Win32ProfileStore profiles_;
#else
  HeadlessFiles files_{folder_.Path()};
  HeadlessProfileStore profiles_{files_};
#endif
};

#ifdef _WIN32

using LinePeer = NullModemPeer;

/// Clock, event loop, timers and a serial line with a peer at its other end.
class LineUnderTest {
 public:
  Clock& TheClock() { return clock_; }
  EventPump& Pump() { return pump_; }
  SerialPort& Port() { return port_; }
  WindowSystem& Windows() { return windows_; }
  LinePeer& Peer() { return peer_; }
  static int PortNumber() { return NumberOfPort("ORVANE_TEST_PORT"); }
  void MakePortMissing() { port_.SetCommPort(77); }
  /// Milliseconds by the finest clock there is; the tick count has a grain of 16 ms here.
  double FineNow() const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
  }

 private:
  EventWindow events_;
  Win32Clock clock_;
  Win32SerialPort port_{events_};
  Win32EventPump pump_{clock_, port_};
  Win32WindowSystem windows_{events_, 96};
  LinePeer peer_{NumberOfPort("ORVANE_TEST_PEER")};
};

#else

/// The other end of the line in memory.
class LinePeer {
 public:
  explicit LinePeer(HeadlessSerialPort& port) : port_(port) {}
  void Send(std::string_view bytes) { port_.Deliver(bytes); }
  void SendAfter(int ms, std::string bytes) { port_.Schedule(ms, std::move(bytes)); }
  /// Lets the time pass that bytes need to the other end; delivers nothing.
  void Settle() {}
  /// What was written to the line, as soon as it is `count` bytes or more, or will not be.
  std::string Receive(std::size_t) {
    std::string bytes;
    for (const auto& written : port_.Writes())
      bytes += written.bytes;
    port_.ClearWrites();
    return bytes;
  }

 private:
  HeadlessSerialPort& port_;
};

/// Clock, event loop, timers and a serial line with a peer at its other end.
class LineUnderTest {
 public:
  Clock& TheClock() { return clock_; }
  EventPump& Pump() { return clock_; }
  SerialPort& Port() { return port_; }
  WindowSystem& Windows() { return windows_; }
  LinePeer& Peer() { return peer_; }
  static int PortNumber() { return 5; }
  void MakePortMissing() { port_.SetPresent(false); }
  /// Milliseconds by the finest clock there is.
  double FineNow() const { return static_cast<double>(clock_.Now()); }

 private:
  VirtualTime clock_;
  HeadlessSerialPort port_{clock_};
  HeadlessDesktop windows_{clock_};
  LinePeer peer_{port_};
};

#endif

}  // namespace orvane
