#pragma once

#include "platform/win32/handles.h"
#include "platform/win32/windows_api.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orvane {

/// The thread of an open port, and what it shares with the program.
///
/// It waits for one byte with an overlapped read, asks how many more are queued, and reads exactly those: the
/// one way of waiting that sleeps on every driver and on Wine alike. Writes are its work too, because a line
/// that takes nothing can hold a write for as long as its time-out. Any failure that is not our own cancel
/// means that the port is lost; no list of error codes would ever be whole, drivers disagree too much about
/// them.
///
/// A call on a port that was unplugged may never end. Closing therefore waits for the thread only briefly and
/// then leaves it alone with the handle; the share that the thread holds keeps everything it touches alive.
class PortWorker : public std::enable_shared_from_this<PortWorker> {
 public:
  /// @param port    open for overlapped work, line set up
  /// @param target  window that gets the posts
  PortWorker(UniqueHandle port, HWND target);

  /// @return false when the system gives no thread
  bool Start();
  /// Ends the thread: briefly waits for it, and leaves it behind when it hangs in a call.
  void Stop();

  HANDLE port() const { return port_.get(); }
  bool Lost() const { return lost_; }
  /// Takes the event bits that stand, and lets the next post happen.
  std::uint32_t TakeBits();
  bool HasBits() const { return bits_.load() != 0; }
  void TakeReceived(std::string& buffer);
  /// @return false when an earlier write has not gone out yet
  bool QueueWrite(std::string_view bytes);
  void DiscardWrites();

 private:
  static DWORD WINAPI ThreadMain(void* parameter);
  void Run();
  bool StartRead();
  bool FinishRead();
  bool StartWrite();
  bool FinishWrite();
  bool ReadQueued(DWORD count);
  void Raise(std::uint32_t bits);
  void AppendReceived(const char* bytes, std::size_t count);

  UniqueHandle port_;
  HWND target_;
  UniqueHandle thread_;
  UniqueHandle stop_;
  UniqueHandle write_request_;
  UniqueHandle read_done_;
  UniqueHandle write_done_;
  UniqueHandle rest_done_;
  OVERLAPPED read_{};
  OVERLAPPED write_{};
  char first_byte_ = 0;
  bool writing_ = false;     // the thread's own: a write is under way
  std::string write_bytes_;  // the thread's own: what it writes

  std::atomic<std::uint32_t> bits_{0};
  std::atomic<bool> lost_{false};
  std::atomic<bool> posted_{false};
  SRWLOCK lock_ = SRWLOCK_INIT;  // over the two below
  std::string received_;
  std::string to_write_;
};

}  // namespace orvane
