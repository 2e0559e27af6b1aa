#pragma once

#include "base/runtime_error.h"
#include "platform/headless/virtual_time.h"
#include "platform/serial_port.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A serial line in memory. One side is the program's SerialPort, the other a peer of two hooks and
/// Deliver(). What the program is told comes as arrival events of the VirtualTime, never from inside a call
/// of the port, with at most one "bytes are waiting" under way: as on a real system. The VirtualTime must not
/// deliver events after the port is gone.
class HeadlessSerialPort final : public SerialPort {
 public:
  /// What hangs at the other end.
  struct Peer {
    /// The program's bytes, when they left. May call Deliver.
    std::function<void(std::string_view bytes, std::int64_t now_ms)> on_write;
    /// The port was opened or closed, or got another line setting.
    std::function<void(bool open, std::string_view settings)> on_line;
  };
  struct Written {
    std::int64_t at = 0;  ///< VirtualTime::Now
    std::string bytes;
    std::string settings;
    int port = 0;  ///< number of the port that was opened
  };
  /// How long the line may refuse its bytes before kTxFull, milliseconds.
  static constexpr std::int64_t kTakeLimitMs = 1000;

  explicit HeadlessSerialPort(VirtualTime& time) : time_(time) {}

  void SetListener(CommListener* listener) override { listener_ = listener; }
  void SetCommPort(int number) override { number_ = number; }
  int CommPort() const override { return number_; }
  void SetSettings(std::string_view settings) override;
  std::string Settings() const override { return settings_; }
  void Open() override;
  void Close() override;
  bool PortOpen() const override { return open_; }
  bool Works() override { return open_ && !dead_; }
  void DiscardOutput() override;
  void Write(std::string_view bytes) override;
  void TakeReceived(std::string& buffer) override;

  // The peer's side.
  void SetPeer(Peer peer) { peer_ = std::move(peer); }
  /// Bytes for the program, now. Lost while the port is closed.
  void Deliver(std::string_view bytes);
  /// The same after `delay_ms`.
  void Schedule(std::int64_t delay_ms, std::string bytes);
  /// An event of the line: an error, a changed control line.
  void Raise(CommEvent event);

  // What can go wrong.
  void SetPresent(bool present) { present_ = present; }  ///< no such port: Open fails
  void SetBusy(bool busy) { busy_ = busy; }              ///< held by another program: Open fails
  void SetStuck(bool stuck);  ///< the line takes nothing; what waits goes out when it is freed
  void Lose();  ///< unplugged: kLost, then every call fails until it is closed and present again
  /// The n-th of the following calls that can fail (Open, SetSettings, DiscardOutput, Write) fails; 1 is the
  /// next one.
  void FailCall(int n, Fault fault);

  /// Everything written so far, when and with which line setting.
  const std::vector<Written>& Writes() const { return writes_; }
  void ClearWrites() { writes_.clear(); }

 private:
  void CountCall(const char* doing);
  void RequireLine(const char* doing) const;
  void SendOut(const std::string& bytes);
  void TellLine() const;
  void Notify(CommEvent event);

  VirtualTime& time_;
  CommListener* listener_ = nullptr;
  Peer peer_;
  int number_ = 1;
  int opened_number_ = 0;
  std::string settings_ = "9600,N,8,1";
  bool open_ = false;
  std::uint32_t opening_ = 0;  // events of an earlier opening do not reach the program
  bool receive_posted_ = false;
  std::string received_;
  std::string unsent_;  // a write that the stuck line has not taken
  VirtualTime::EventId give_up_;
  std::vector<Written> writes_;

  bool present_ = true;
  bool busy_ = false;
  bool stuck_ = false;
  bool dead_ = false;  // lost while open
  int calls_to_failure_ = 0;
  Fault failure_ = Fault::kPortLost;
};

}  // namespace orvane
