#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// What the port reports, by the numbers under which operators' reports and logs know them.
enum class CommEvent : int {
  kSend = 1,     ///< bytes went out
  kReceive = 2,  ///< bytes are waiting
  kCTS = 3,
  kDSR = 4,
  kCD = 5,
  kRing = 6,
  kEOF = 7,
  kBreak = 1001,     ///< break received
  kFrame = 1004,     ///< framing error
  kOverrun = 1006,   ///< a byte was lost in the hardware
  kRxOver = 1008,    ///< the driver's receive buffer overflowed
  kRxParity = 1009,  ///< parity error
  kTxFull = 1010,    ///< the line did not take its bytes in time; they were given up
  kDCB = 1011,       ///< the line's set-up could not be read back
  kLost = 2001,      ///< the port stopped working: unplugged, driver gone
};

struct CommListener {
  virtual ~CommListener() = default;
  /// Called on the program's thread, never from inside another call of the port.
  virtual void OnComm(CommEvent event) = 0;
};

/// One RS-232 line. DTR and RTS stay low whatever happens: a raised line on a wrong port keys somebody's
/// transmitter.
struct SerialPort {
  virtual ~SerialPort() = default;
  virtual void SetListener(CommListener* listener) = 0;

  /// Chooses the port by its number (COM1 is 1). Takes effect at the next Open.
  virtual void SetCommPort(int number) = 0;
  virtual int CommPort() const = 0;
  /// Chooses speed and framing, "38400,N,8,1". On an open port it takes effect at once.
  /// @throws RuntimeError kInvalidPort when the text is no line setting, kPortLost when the line refuses it
  virtual void SetSettings(std::string_view settings) = 0;
  virtual std::string Settings() const = 0;

  /// Opening an open port does nothing. On failure nothing is left open.
  /// @throws RuntimeError kInvalidPort when there is no such port, kPortUnavailable when it is in use
  virtual void Open() = 0;
  /// Never fails and never waits for a call that does not end.
  virtual void Close() = 0;
  virtual bool PortOpen() const = 0;
  /// A cheap question to the system whether the open port is still there; false when it is closed.
  virtual bool Works() = 0;

  /// Drops what was written and has not gone out. @throws RuntimeError kPortNotOpen
  virtual void DiscardOutput() = 0;
  /// Queues the bytes and returns at once; a line that does not take them within its time reports kTxFull.
  /// @throws RuntimeError kPortNotOpen, kLineBusy when an earlier write is still stuck, kPortLost
  virtual void Write(std::string_view bytes) = 0;
  /// Appends all bytes received since the last call, in order, to `buffer`.
  virtual void TakeReceived(std::string& buffer) = 0;
};

}  // namespace orvane
