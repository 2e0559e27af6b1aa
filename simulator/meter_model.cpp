#include "simulator/meter_model.h"

#include "simulator/crc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace orvane::sim {
namespace {

constexpr std::int64_t kRestartMs = 300;
constexpr std::int64_t kTornGapMs = 20;
constexpr std::int64_t kSampleStepMs = 10;    // how finely a scenario is searched for its peak
constexpr std::int64_t kSampleSpanMs = 2000;  // the longest packet interval
constexpr double kSlowestRate = 0.001;
constexpr double kFastestRate = 1000;    // one packet a tick of the clock
constexpr std::size_t kNoiseShown = 64;  // bytes of noise kept in a log record

template <typename T>
void KeepLatest(std::deque<T>& records, T record, std::size_t limit) {
  records.push_back(std::move(record));
  while (records.size() > limit)
    records.pop_front();
}

}  // namespace

MeterModel::MeterModel(MeterOptions options)
    : options_(std::move(options)),
      bank_(options_.Facts, options_.Settings),
      faults_(options_.Seed),
      line_noise_(options_.Seed + 1) {}

// ---- commands

void MeterModel::Receive(std::string_view bytes, std::int64_t now_ms) {
  Advance(now_ms);
  if (bytes.empty()) return;
  if (clock_ < deaf_until_ || !SpeedsAgree()) {
    scanner_.Clear();
    Record(bytes.substr(0, kNoiseShown), Verdict::kNoise);
    return;
  }
  while (const auto frame = scanner_.Next(bytes)) {
    const Verdict outcome = frame->Refusal ? *frame->Refusal : Execute(frame->Text);
    Record(frame->Text, outcome);
    if (outcome == Verdict::kAccepted) Reply("A");
    if (outcome != Verdict::kAccepted && outcome != Verdict::kAnswered) Reply("N");
    if (clock_ < deaf_until_) return;  // a fault turned the answer into a restart
  }
}

Verdict MeterModel::Execute(const std::string& text) {
  if (text == "A") {
    sensor_.ResetAlarms();
    return Verdict::kAccepted;
  }
  if (text == "D0" || text == "D1") {
    SetStreaming(text == "D1");
    return Verdict::kAccepted;
  }
  if (text.size() == 2 && text[1] == '?') return Query(text[0]);
  return Change(text);
}

Verdict MeterModel::Query(char letter) {
  if (letter == 'R') {
    sensor_.Measure(PowerNow(), bank_, clock_);
    told_row_ = sensor_.Row();
    Reply("R" + std::to_string(told_row_));
    return Verdict::kAnswered;
  }
  const std::optional<std::string> answer = bank_.Answer(letter);
  if (!answer) return Verdict::kUnknown;
  Reply(*answer);
  return Verdict::kAnswered;
}

Verdict MeterModel::Change(std::string_view command) {
  const Verdict outcome = bank_.Set(command);
  if (outcome == Verdict::kAccepted) Repace();
  return outcome;
}

bool MeterModel::ChangeAtMeter(std::string_view command) {
  if (Change(command) != Verdict::kAccepted) return false;
  const char letter = command.back() == 'M' ? 'M' : command.front();
  Say(bank_.Answer(letter).value_or(""));
  return true;
}

void MeterModel::Reply(std::string_view text) {
  const auto fault = faults_on_replies_ ? faults_.Pick() : std::nullopt;
  SendLine(MessageFrame(text), clock_ + options_.ReplyDelayMs, fault);
}

void MeterModel::Record(std::string_view text, Verdict outcome) {
  ++log_.CommandTotal;
  KeepLatest(log_.Commands, CommandRecord{clock_, std::string(text), outcome}, options_.LogLimit);
}

// ---- time

void MeterModel::Advance(std::int64_t now_ms) {
  if (!started_) {
    started_ = true;
    clock_ = now_ms;
    scenario_start_ = now_ms;
  }
  clock_ = std::max(clock_, now_ms);
  while (true) {
    const bool ready = !queue_.empty() && queue_.front().AtMs <= clock_;
    const bool tick = streaming_ && NextTick() <= clock_;
    if (ready && (!tick || queue_.front().AtMs <= NextTick())) {
      Due due = std::move(queue_.front());
      queue_.pop_front();
      Emit(std::move(due));
    } else if (tick) {
      const std::int64_t at_ms = NextTick();
      ++tick_count_;
      Measure(at_ms);
      last_tick_ = at_ms;
    } else {
      return;
    }
  }
}

std::string MeterModel::Run(std::int64_t now_ms) {
  Advance(now_ms);
  std::string bytes;
  bool more = true;
  while (more && !sent_.empty()) {
    bytes += sent_.front().Bytes;
    more = !sent_.front().EndsRead;
    sent_.pop_front();
  }
  return bytes;
}

std::optional<std::int64_t> MeterModel::NextDue() const {
  if (!sent_.empty()) return clock_;
  std::optional<std::int64_t> due;
  if (!queue_.empty()) due = queue_.front().AtMs;
  if (streaming_) due = due ? std::min(*due, NextTick()) : NextTick();
  return due;
}

double MeterModel::StreamRate() const {
  constexpr std::array<double, 4> kModeRates = {5, 1, 0.5, 5};
  if (options_.StreamRate > 0) return std::clamp(options_.StreamRate, kSlowestRate, kFastestRate);
  return kModeRates.at(static_cast<std::size_t>(bank_.Values().Mode));
}

std::int64_t MeterModel::NextTick() const {
  return tick_base_ + static_cast<std::int64_t>(static_cast<double>(tick_count_) * 1000 / StreamRate());
}

void MeterModel::Pace(std::int64_t first_ms) {
  tick_base_ = first_ms;
  tick_count_ = 0;
}

// A new pace counts from the last packet, but owes nothing for the past.
void MeterModel::Repace() {
  const auto interval = static_cast<std::int64_t>(1000 / StreamRate());
  Pace(std::max(last_tick_ + interval, clock_));
}

void MeterModel::SetStreaming(bool on) {
  if (on && !streaming_) {
    last_tick_ = clock_;
    Pace(clock_ + options_.ReplyDelayMs);  // right behind the acknowledgement
  }
  streaming_ = on;
}

void MeterModel::SetStreamRate(double per_second) {
  options_.StreamRate = std::max(per_second, 0.0);
  Repace();
}

// ---- power

void MeterModel::SetPower(double forward, double reflected) {
  scenario_ = nullptr;
  power_ = {std::max(forward, 0.0), std::max(reflected, 0.0)};
}

bool MeterModel::SetScenario(std::string_view name) {
  const Scenario* found = FindScenario(name);
  if (found == nullptr) return false;
  scenario_ = found;
  scenario_start_ = clock_;
  return true;
}

std::string_view MeterModel::ScenarioName() const {
  return scenario_ == nullptr ? std::string_view() : scenario_->Name;
}

// The greatest forward power in (after, to], with the reflected power of that moment; of equal ones the
// latest.
Power MeterModel::PeakPower(std::int64_t after_ms, std::int64_t to_ms) const {
  if (scenario_ == nullptr) return power_;
  const std::int64_t start = std::max({scenario_start_, after_ms + 1, to_ms - kSampleSpanMs});
  Power peak = scenario_->At(options_.Seed, std::max<std::int64_t>(to_ms - scenario_start_, 0));
  for (std::int64_t time = to_ms - kSampleStepMs; time >= start; time -= kSampleStepMs) {
    const Power sample = scenario_->At(options_.Seed, time - scenario_start_);
    if (sample.Forward > peak.Forward) peak = sample;
  }
  return peak;
}

// ---- output

void MeterModel::Measure(std::int64_t at_ms) {
  const Reading reading = sensor_.Measure(PeakPower(last_tick_, at_ms), bank_, at_ms);
  if (SilentAt(at_ms)) {
    ++log_.LostLines;
    return;
  }
  if (sensor_.Row() != told_row_) {
    told_row_ = sensor_.Row();
    const auto fault = faults_on_replies_ ? faults_.Pick() : std::nullopt;
    SendLine(MessageFrame("R" + std::to_string(told_row_)), at_ms, fault);
    if (!streaming_) return;  // the fault was a restart
  }
  const auto fault = faults_.Pick();
  if (fault != FaultKind::kReset) {
    const double vswr = static_cast<double>(reading.VSWRHundredths) / 100;
    ++log_.PacketTotal;
    KeepLatest(log_.Packets,
               PacketRecord{at_ms, reading.ForwardPower, reading.ReflectedPower, vswr, reading.SWRAlarm,
                            reading.PwrAlarm, fault},
               options_.LogLimit);
  }
  SendLine(MessageFrame(PacketText(reading)), at_ms, fault);
}

void MeterModel::SendLine(std::string line, std::int64_t at_ms, std::optional<FaultKind> fault) {
  if (fault == FaultKind::kReset) {
    ++log_.LostLines;
    Restart(at_ms);
    return;
  }
  // At a high rate the pause within a torn line must not hold up the lines after it for ever.
  const auto half_interval = static_cast<std::int64_t>(500 / StreamRate());
  const std::int64_t gap = std::clamp<std::int64_t>(half_interval, 1, kTornGapMs);
  for (Burst& burst : faults_.Shape(std::move(line), fault, gap)) {
    Enqueue(std::move(burst.Bytes), at_ms + burst.AfterMs, burst.EndsRead);
  }
}

// Nothing overtakes on a serial line.
void MeterModel::Enqueue(std::string bytes, std::int64_t at_ms, bool ends_read) {
  const std::int64_t due = queue_.empty() ? at_ms : std::max(at_ms, queue_.back().AtMs);
  queue_.push_back({due, std::move(bytes), ends_read});
}

void MeterModel::Emit(Due due) {
  if (SilentAt(due.AtMs)) {
    log_.LostLines += static_cast<std::uint64_t>(std::count(due.Bytes.begin(), due.Bytes.end(), kLf));
    return;
  }
  if (!SpeedsAgree()) {
    for (char& byte : due.Bytes)
      byte = static_cast<char>(line_noise_.Below(256));
  }
  sent_.push_back(std::move(due));
}

void MeterModel::Say(std::string_view text) {
  SendLine(MessageFrame(text), clock_, std::nullopt);
}

void MeterModel::SendRaw(std::string_view bytes) {
  Enqueue(std::string(bytes), clock_, false);
}

void MeterModel::SetBaud(int baud) {
  options_.Baud = baud;
  scanner_.Clear();
}

void MeterModel::Restart(std::int64_t at_ms) {
  for (const Due& due : queue_) {
    log_.LostLines += static_cast<std::uint64_t>(std::count(due.Bytes.begin(), due.Bytes.end(), kLf));
  }
  queue_.clear();
  faults_.Forget();
  scanner_.Clear();
  sensor_.ResetAlarms();
  streaming_ = false;
  deaf_until_ = at_ms + kRestartMs;
  Enqueue(MessageFrame("!Meter Restarted"), deaf_until_, false);
}

}  // namespace orvane::sim
