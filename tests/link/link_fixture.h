// A link on a line in memory, with a window that writes down what it is told.
#pragma once

#include "link/crc8.h"
#include "link/meter_link.h"
#include "platform/headless/serial_port.h"
#include "platform/headless/virtual_time.h"
#include "tests/support/quiet_link.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A line of the meter: "V3" becomes STX V3 ETX, checksum, CR, LF.
inline std::string Line(std::string_view text) {
  return "\x02" + std::string(text) + "\x03" + CRCToHex(CalcCRC8(text, true, false)) + "\r\n";
}

/// The text of a command frame.
inline std::string CommandText(std::string_view frame) {
  return std::string(frame.substr(1, frame.find('\x03') - 1));
}

struct TestSettings : QuietSettings {
  std::string comm_port = "2";
  std::string baud_rate = "38400";
  bool pkt_notify = false;
  std::int16_t f_pwr_index = -1;
  std::int16_t r_pwr_index = -1;
  int saves = 0;

  std::string CommPort() const override { return comm_port; }
  std::string BaudRate() const override { return baud_rate; }
  void SetBaudRate(std::string_view speed) override { baud_rate = speed; }
  bool PktNotify() const override { return pkt_notify; }
  std::int16_t FPwrIndex() const override { return f_pwr_index; }
  std::int16_t RPwrIndex() const override { return r_pwr_index; }
  void SaveMeterSettings() override { ++saves; }
};

/// Keeps a record of what is shown; runs `TimerFindMeter` in virtual time.
class RecordingEvents : public QuietEvents {
 public:
  explicit RecordingEvents(VirtualTime& time) : time_(time) {}

  std::vector<std::string> log;
  int lines = 0;
  int rx = 0;
  std::function<void()> on_line = [] {};
  std::function<void()> on_mode = [] {};
  std::function<void()> on_find_meter = [] {};

  bool FindMeterEnabled() const { return enabled_; }
  int Count(std::string_view entry) const {
    return static_cast<int>(std::count(log.begin(), log.end(), entry));
  }

  void LineHandled() override {
    ++lines;
    on_line();
  }
  void RxActivity() override { ++rx; }
  void SetModeCommand() override {
    log.emplace_back("mode");
    on_mode();
  }
  void ShowStatus(std::string_view text, StatusTone) override {
    log.push_back("status " + std::string(text));
  }
  void ShowMessageText(std::string_view text) override { log.push_back("message " + std::string(text)); }
  void Beep() override { log.emplace_back("beep"); }
  void SetHourglass(bool on) override { log.emplace_back(on ? "hourglass" : "arrow"); }
  void EnableFindMeter(bool on) override {
    if (on && !enabled_) tick_ = time_.Post(EventKind::kTimer, 1000, [this] { Tick(); });
    if (!on) time_.Cancel(tick_);
    enabled_ = on;
  }
  void ClickFwdPwrRange(std::int16_t index) override { log.push_back("forward " + std::to_string(index)); }
  void ClickRefPwrRange(std::int16_t index) override { log.push_back("reflected " + std::to_string(index)); }
  void ShowBox(std::string_view, std::string_view title) override {
    log.push_back("box " + std::string(title));
  }

 private:
  void Tick() {
    tick_ = time_.Post(EventKind::kTimer, 1000, [this] { Tick(); });
    on_find_meter();
  }

  VirtualTime& time_;
  bool enabled_ = false;
  VirtualTime::EventId tick_;
};

class LinkTest : public ::testing::Test {
 protected:
  explicit LinkTest(std::int32_t start_tick = 0) : time(start_tick) {
    events.on_find_meter = [this] { link.FindMeter(); };
    port.SetPeer({[this](std::string_view bytes, std::int64_t) { OnCommand(CommandText(bytes)); }, {}});
  }

  /// Bytes from the meter, handled.
  void Feed(std::string_view bytes) {
    if (!port.PortOpen()) port.Open();
    port.Deliver(bytes);
    time.DeliverPending();
  }
  /// A meter that understands its own line speed only, and answers what `replies` says.
  void OnCommand(const std::string& text) {
    if (!meter_settings.empty() && port.Settings() != meter_settings) return;
    if (const auto reply = replies.find(text); reply != replies.end())
      port.Schedule(reply_ms, Line(reply->second));
  }
  std::vector<std::string> Commands() const {
    std::vector<std::string> texts;
    for (const auto& written : port.Writes())
      texts.emplace_back(CommandText(written.bytes));
    return texts;
  }

  VirtualTime time;
  HeadlessSerialPort port{time};
  TestSettings settings;
  RecordingEvents events{time};
  MeterLink link{time, time, port, settings, events};
  std::map<std::string, std::string> replies;
  std::string meter_settings;
  int reply_ms = 5;
};

}  // namespace orvane
