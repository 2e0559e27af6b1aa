#pragma once

#include "platform/client_windows.h"
#include "platform/clock.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// Hands each shown forward power to the program that the operator named, as a data-copy message: the reading
/// as decimal text with a NUL behind it.
///
/// A client that hangs would hold every reading for as long as the time-out. After one that ran out it is
/// left alone for 5 s, after the next for 10 s, and so on up to 60 s; its first answer ends that, and so does
/// another window in its place.
class ClientData {
 public:
  static constexpr int kTimeoutMs = 1000;
  static constexpr std::int32_t kFirstPauseMs = 5000;
  static constexpr std::int32_t kLongestPauseMs = 60000;
  static constexpr std::size_t kBufferBytes = 12;  ///< the longest 32-bit number with its sign and NUL

  ClientData(ClientWindows& windows, Clock& clock) : windows_(windows), clock_(clock) {}

  /// Looks the client up afresh by its caption, so that one started or ended meanwhile is found or dropped,
  /// and sends it the value. Without a client nothing happens. May be called from inside the client's own
  /// handling of a message: nothing is sent then, and the reading counts as skipped.
  void SendClientData(std::int32_t value, std::string_view caption, std::int32_t tag);

  ClientWindows::Handle ClientWnd() const { return client_; }  ///< found by the last call, 0 when none
  std::int32_t LastResult() const { return last_result_; }     ///< what the client returned last
  std::string_view Text() const { return {text_.data(), text_length_}; }
  /// False while the system keeps our messages from the client, which runs with more rights than we do.
  bool Reachable() const { return reachable_; }
  std::uint32_t Skipped() const { return skipped_; }  ///< readings that a slow client did not get

 private:
  class Sending;
  bool LeftAlone() const;
  void Note(ClientWindows::Answer answer);

  ClientWindows& windows_;
  Clock& clock_;
  ClientWindows::Handle client_ = 0;
  std::int32_t last_result_ = 0;
  std::array<char, kBufferBytes> text_{};
  std::size_t text_length_ = 0;
  std::array<char, kBufferBytes> buffer_{};  // what the message points at; all NUL between two sends
  bool sending_ = false;
  bool reachable_ = true;
  std::uint32_t skipped_ = 0;
  ClientWindows::Handle hung_ = 0;  // did not answer in time; 0 when none
  std::int32_t pause_ms_ = 0;       // how long it is left alone
  std::uint32_t paused_at_ = 0;     // tick; unsigned, so that differences outlive the wrap
};

}  // namespace orvane
