// The simulated meter: bytes and a clock in, bytes out. No input or output of its own, no threads, no real
// time; the same calls with the same seed give the same bytes on every platform.
#pragma once

#include "simulator/faults.h"
#include "simulator/line_scanner.h"
#include "simulator/meter_log.h"
#include "simulator/random.h"
#include "simulator/scenarios.h"
#include "simulator/sensor.h"
#include "simulator/settings.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::sim {

struct MeterOptions {
  MeterFacts Facts = {};
  MeterSettings Settings = {};
  std::uint64_t Seed = 1;
  int Baud = 0;                   // the meter's own line speed; 0 understands any
  std::int64_t ReplyDelayMs = 5;  // from the end of a command to its answer
  double StreamRate = 0;          // packets a second; 0 paces by the operation mode (5, 1, 1/2, 5)
  std::size_t LogLimit = 100000;  // records kept of each kind
};

// Times are milliseconds on any clock that never goes back; an earlier time counts as the latest one seen.
// Calls without a time happen at the latest time seen, so a host calls Run(now) before them.
class MeterModel {
 public:
  explicit MeterModel(MeterOptions options = {});

  // Bytes that the peer sent, in any portions.
  void Receive(std::string_view bytes, std::int64_t now_ms);

  // The bytes that left the meter up to now. A torn line ends the result early: its rest comes with the next
  // call, so a host calls again until NextDue() lies in the future.
  std::string Run(std::int64_t now_ms);

  // When Run has something to do next: not after the latest time seen when bytes wait already, nothing when
  // the meter stays quiet until it is spoken to. While the meter is silenced Run may then give no bytes.
  std::optional<std::int64_t> NextDue() const;

  // The meter's line speed and that of its peer; 0 (the default of both) fits every speed. While they
  // differ, each side receives noise from the other.
  void SetBaud(int baud);
  void SetPeerBaud(int baud) { peer_baud_ = baud; }
  void SetReplyDelay(std::int64_t delay_ms) { options_.ReplyDelayMs = delay_ms; }
  // Packets a second whatever the mode, up to 1000; 0 goes back to the pace of the mode.
  void SetStreamRate(double per_second);

  // Steady power in watts; ends a scenario.
  void SetPower(double forward, double reflected);
  // Starts a scenario of scenarios.h from its beginning; false, and no change, for an unknown name. The
  // meter reads the peak of the time since its last packet.
  bool SetScenario(std::string_view name);

  // Faults strike measurement packets, and with SetFaultsOnReplies(true) every message of the meter.
  void SetFault(FaultKind kind, double rate_percent) { faults_.SetShare(kind, rate_percent); }
  void SetFaultEvery(FaultKind kind, int n) { faults_.SetEvery(kind, n); }
  void ClearFaults() { faults_.Clear(); }
  void SetFaultsOnReplies(bool on) { faults_on_replies_ = on; }

  // The meter goes on working and listening but nothing leaves it, for a time or until it is switched back.
  void Silence(std::int64_t for_ms) { silent_until_ = clock_ + for_ms; }
  void SetMute(bool mute) { muted_ = mute; }
  // A restart: output not yet sent is lost, the stream ends, alarms clear, settings stay. The meter is deaf
  // for 300 ms and then sends a "!" notice.
  void Reset() { Restart(clock_); }

  // Sends a message of the host's choice, framed ("R1"), or bytes as they are. Never struck by faults.
  void Say(std::string_view text);
  void SendRaw(std::string_view bytes);
  // Someone turns a knob on the meter itself: carries out a set command ("M2", "b3") and reports the new
  // value unasked. False when the meter refuses it.
  bool ChangeAtMeter(std::string_view command);

  const MeterSettings& Settings() const { return bank_.Values(); }
  const MeterFacts& Facts() const { return bank_.Facts(); }
  const MeterLog& Log() const { return log_; }
  void ClearLog() { log_ = {}; }
  bool Streaming() const { return streaming_; }
  double StreamRate() const;  // packets a second while streaming
  bool SWRAlarm() const { return sensor_.SWRAlarm(); }
  bool PwrAlarm() const { return sensor_.PwrAlarm(); }
  int Row() const { return sensor_.Row(); }
  std::string_view ScenarioName() const;  // empty with steady power
  // True power at the coupler at the latest time seen.
  Power PowerNow() const { return PeakPower(clock_, clock_); }

 private:
  struct Due {
    std::int64_t AtMs;
    std::string Bytes;
    bool EndsRead;
  };

  // Commands.
  Verdict Execute(const std::string& text);
  Verdict Query(char letter);
  Verdict Change(std::string_view command);
  void Reply(std::string_view text);
  void Record(std::string_view text, Verdict outcome);
  bool SpeedsAgree() const { return options_.Baud == 0 || peer_baud_ == 0 || options_.Baud == peer_baud_; }

  // Time.
  void Advance(std::int64_t now_ms);
  std::int64_t NextTick() const;
  void Pace(std::int64_t first_ms);
  void Repace();
  void SetStreaming(bool on);

  // Output.
  void Measure(std::int64_t at_ms);
  Power PeakPower(std::int64_t after_ms, std::int64_t to_ms) const;
  void SendLine(std::string line, std::int64_t at_ms, std::optional<FaultKind> fault);
  void Enqueue(std::string bytes, std::int64_t at_ms, bool ends_read);
  void Emit(Due due);
  bool SilentAt(std::int64_t at_ms) const { return muted_ || at_ms < silent_until_; }
  void Restart(std::int64_t at_ms);

  MeterOptions options_;
  SettingsBank bank_;
  Sensor sensor_;
  LineScanner scanner_;
  FaultInjector faults_;
  Random line_noise_;
  MeterLog log_;

  bool started_ = false;    // the clock is known
  std::int64_t clock_ = 0;  // latest time seen
  int peer_baud_ = 0;

  Power power_;
  const Scenario* scenario_ = nullptr;
  std::int64_t scenario_start_ = 0;

  bool streaming_ = false;
  std::int64_t tick_base_ = 0;   // the n-th packet from here on is due at tick_base_ + n / rate
  std::int64_t tick_count_ = 0;  // packets since tick_base_
  std::int64_t last_tick_ = 0;
  int told_row_ = 0;  // scale row the peer knows

  std::deque<Due> queue_;  // on its way, in order of time
  std::deque<Due> sent_;   // left the meter, not yet fetched
  bool faults_on_replies_ = false;
  bool muted_ = false;
  std::int64_t silent_until_ = 0;
  std::int64_t deaf_until_ = 0;
};

}  // namespace orvane::sim
