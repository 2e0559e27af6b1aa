#pragma once

#include "platform/serial_port.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvane {

/// A port that hands everything on to another one, for tests that listen in or put something in between.
class ForwardedPort : public SerialPort {
 public:
  explicit ForwardedPort(SerialPort& line) : line_(line) {}

  void SetListener(CommListener* listener) override { line_.SetListener(listener); }
  void SetCommPort(int number) override { line_.SetCommPort(number); }
  int CommPort() const override { return line_.CommPort(); }
  void SetSettings(std::string_view settings) override { line_.SetSettings(settings); }
  std::string Settings() const override { return line_.Settings(); }
  void Open() override { line_.Open(); }
  void Close() override { line_.Close(); }
  bool PortOpen() const override { return line_.PortOpen(); }
  bool Works() override { return line_.Works(); }
  void DiscardOutput() override { line_.DiscardOutput(); }
  void Write(std::string_view bytes) override { line_.Write(bytes); }
  void TakeReceived(std::string& buffer) override { line_.TakeReceived(buffer); }

 private:
  SerialPort& line_;
};

/// Tells what the program takes from the line and what it writes.
class TappedPort final : public ForwardedPort {
 public:
  using ForwardedPort::ForwardedPort;
  std::function<void(std::string_view bytes)> on_taken;  ///< before the program looks at them
  std::function<void(std::string_view bytes)> on_write;

  void Write(std::string_view bytes) override {
    if (on_write) on_write(bytes);
    ForwardedPort::Write(bytes);
  }
  void TakeReceived(std::string& buffer) override {
    const std::size_t before = buffer.size();
    ForwardedPort::TakeReceived(buffer);
    if (on_taken) on_taken(std::string_view(buffer).substr(before));
  }
};

}  // namespace orvane
