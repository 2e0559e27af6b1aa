#pragma once

#include "platform/win32/handles.h"
#include "platform/win32/windows_api.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace orvane {

/// Number of the port that an environment variable names: 5 for COM5.
inline int NumberOfPort(const char* variable) {
  const char* name = std::getenv(variable);
  if (name == nullptr || std::string_view(name).substr(0, 3) != "COM")
    throw std::runtime_error(std::string(variable) + " names no port");
  return std::atoi(name + 3);
}

/// The far end of a null modem, worked with the system's plain calls: nothing of the program is in it that
/// could excuse the program's mistakes.
class NullModemPeer {
 public:
  explicit NullModemPeer(int number) : name_("\\\\.\\COM" + std::to_string(number)) { Open(); }
  ~NullModemPeer() {
    if (sender_.joinable()) sender_.join();
  }
  NullModemPeer(const NullModemPeer&) = delete;
  NullModemPeer& operator=(const NullModemPeer&) = delete;

  void Open() {
    port_.reset(
        ::CreateFileA(name_.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    DCB line{};
    line.DCBlength = sizeof(line);
    line.BaudRate = CBR_38400;
    line.ByteSize = 8;
    line.fBinary = TRUE;
    COMMTIMEOUTS timeouts{};
    timeouts.ReadTotalTimeoutConstant = 200;
    timeouts.WriteTotalTimeoutConstant = 2000;
    if (!port_ || ::SetCommState(port_.get(), &line) == 0 || ::SetCommTimeouts(port_.get(), &timeouts) == 0)
      throw std::runtime_error("the peer's port does not open");
    // What an earlier test left in the cable.
    while (!Receive(1, 30).empty()) {
    }
  }
  void Close() { port_.reset(); }

  void Send(std::string_view bytes) {
    DWORD count = 0;
    if (::WriteFile(port_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) == 0 ||
        count != bytes.size())
      throw std::runtime_error("the cable does not take the peer's bytes");
  }
  void SendAfter(int ms, std::string bytes) {
    if (sender_.joinable()) sender_.join();
    sender_ = std::thread([this, ms, text = std::move(bytes)] {
      ::Sleep(static_cast<DWORD>(ms));
      Send(text);
    });
  }
  /// Lets the time pass that bytes need to the other end; delivers nothing.
  void Settle() { ::Sleep(100); }
  /// What was written to the line, as soon as it is `count` bytes or more, or will not be.
  std::string Receive(std::size_t count, DWORD patience_ms = 2000) {
    std::string bytes;
    const ULONGLONG end = ::GetTickCount64() + patience_ms;
    while (bytes.size() < count && ::GetTickCount64() < end) {
      if (!ReadQueued(bytes)) ::Sleep(2);
    }
    while (ReadQueued(bytes)) {
    }
    return bytes;
  }

 private:
  bool ReadQueued(std::string& bytes) {
    DWORD errors = 0;
    COMSTAT state{};
    if (::ClearCommError(port_.get(), &errors, &state) == 0)
      throw std::runtime_error("the peer's port broke");
    if (state.cbInQue == 0) return false;
    std::string queued(state.cbInQue, '\0');
    DWORD read = 0;
    ::ReadFile(port_.get(), queued.data(), static_cast<DWORD>(queued.size()), &read, nullptr);
    bytes.append(queued, 0, read);
    return read != 0;
  }

  std::string name_;
  UniqueHandle port_;
  std::thread sender_;
};

}  // namespace orvane
