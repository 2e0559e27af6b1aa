#pragma once

#include "platform/serial_port.h"
#include "platform/win32/event_window.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace orvane {

class PortWorker;

/// Events that wait for the program's thread, one bit each.
namespace port_bits {
inline constexpr std::uint32_t kReceive = 1;
inline constexpr std::uint32_t kSend = 2;
inline constexpr std::uint32_t kBreak = 4;
inline constexpr std::uint32_t kFrame = 8;
inline constexpr std::uint32_t kOverrun = 16;
inline constexpr std::uint32_t kRxOver = 32;
inline constexpr std::uint32_t kParity = 64;
inline constexpr std::uint32_t kTxFull = 128;
inline constexpr std::uint32_t kLost = 256;
}  // namespace port_bits

/// A COM port. One thread waits for its bytes and does its writes; all it tells is one post to the event
/// window, and never a second one before the first was delivered.
class Win32SerialPort : public SerialPort {
 public:
  explicit Win32SerialPort(EventWindow& events);
  ~Win32SerialPort() override;

  void SetListener(CommListener* listener) override { listener_ = listener; }
  void SetCommPort(int number) override { number_ = number; }
  int CommPort() const override { return number_; }
  void SetSettings(std::string_view settings) override;
  std::string Settings() const override { return settings_; }
  void Open() override;
  void Close() override;
  bool PortOpen() const override { return worker_ != nullptr; }
  bool Works() override;
  void DiscardOutput() override;
  void Write(std::string_view bytes) override;
  void TakeReceived(std::string& buffer) override;

  /// Tells the listener what has come in since the last time. Cheap when nothing has.
  void DeliverEvents();

 private:
  EventWindow& events_;
  CommListener* listener_ = nullptr;
  int number_ = 0;
  std::string settings_ = "38400,N,8,1";
  std::shared_ptr<PortWorker> worker_;  // while the port is open; the thread holds a share of its own
};

}  // namespace orvane
