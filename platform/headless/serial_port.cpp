#include "platform/headless/serial_port.h"

#include "base/text.h"

#include <utility>

namespace orvane {
namespace {

// "38400,N,8,1": speed, parity, data bits, stop bits.
bool IsLineSetting(std::string_view text) {
  const auto fields = Split(text, ',');
  if (fields.size() != 4 || fields[0].empty() || fields[0].size() > 7) return false;
  if (fields[0].find_first_not_of("0123456789") != std::string_view::npos) return false;
  if (fields[0].find_first_not_of('0') == std::string_view::npos) return false;
  const bool parity = fields[1].size() == 1 && std::string_view("NOEMSnoems").find(fields[1]) < 10;
  const bool bits = fields[2].size() == 1 && fields[2][0] >= '4' && fields[2][0] <= '8';
  return parity && bits && (fields[3] == "1" || fields[3] == "1.5" || fields[3] == "2");
}

}  // namespace

void HeadlessSerialPort::SetSettings(std::string_view settings) {
  CountCall("setting the line");
  if (!IsLineSetting(settings)) {
    throw RuntimeError(Fault::kInvalidPort, "setting the line to \"" + std::string(settings) + "\"");
  }
  if (open_) RequireLine("setting the line");
  settings_ = settings;
  if (open_) TellLine();
}

void HeadlessSerialPort::Open() {
  if (open_) return;
  CountCall("opening the port");
  if (!present_ || number_ < 1) throw RuntimeError(Fault::kInvalidPort, "opening a port that is not there");
  if (busy_) throw RuntimeError(Fault::kPortUnavailable, "opening a port that is in use");
  open_ = true;
  opened_number_ = number_;
  ++opening_;
  TellLine();
}

void HeadlessSerialPort::Close() {
  if (!open_) return;
  open_ = false;
  dead_ = false;
  ++opening_;
  receive_posted_ = false;
  received_.clear();
  unsent_.clear();
  time_.Cancel(give_up_);
  TellLine();
}

void HeadlessSerialPort::DiscardOutput() {
  CountCall("dropping output");
  RequireLine("dropping output");
  unsent_.clear();
  time_.Cancel(give_up_);
}

void HeadlessSerialPort::Write(std::string_view bytes) {
  CountCall("writing");
  RequireLine("writing");
  if (!unsent_.empty()) throw RuntimeError(Fault::kLineBusy, "writing while the line takes nothing");
  if (bytes.empty()) return;
  if (!stuck_) return SendOut(std::string(bytes));
  unsent_ = bytes;
  give_up_ = time_.Post(EventKind::kArrival, kTakeLimitMs, [this] {
    unsent_.clear();
    Notify(CommEvent::kTxFull);
  });
}

void HeadlessSerialPort::TakeReceived(std::string& buffer) {
  buffer += received_;
  received_.clear();
}

void HeadlessSerialPort::Deliver(std::string_view bytes) {
  if (!open_ || dead_ || bytes.empty()) return;
  received_ += bytes;
  if (receive_posted_) return;
  receive_posted_ = true;
  Raise(CommEvent::kReceive);
}

void HeadlessSerialPort::Schedule(std::int64_t delay_ms, std::string bytes) {
  time_.Post(EventKind::kArrival, delay_ms, [this, text = std::move(bytes)] { Deliver(text); });
}

void HeadlessSerialPort::Raise(CommEvent event) {
  time_.Post(EventKind::kArrival, 0, [this, event, opening = opening_] {
    if (open_ && opening == opening_) Notify(event);
  });
}

void HeadlessSerialPort::SetStuck(bool stuck) {
  stuck_ = stuck;
  if (stuck_ || unsent_.empty()) return;
  time_.Cancel(give_up_);
  SendOut(std::exchange(unsent_, {}));
}

void HeadlessSerialPort::Lose() {
  present_ = false;
  if (!open_) return;
  dead_ = true;
  received_.clear();
  unsent_.clear();
  time_.Cancel(give_up_);
  Raise(CommEvent::kLost);
}

void HeadlessSerialPort::FailCall(int n, Fault fault) {
  calls_to_failure_ = n;
  failure_ = fault;
}

void HeadlessSerialPort::CountCall(const char* doing) {
  if (calls_to_failure_ > 0 && --calls_to_failure_ == 0) throw RuntimeError(failure_, doing);
}

void HeadlessSerialPort::RequireLine(const char* doing) const {
  if (!open_) throw RuntimeError(Fault::kPortNotOpen, doing);
  if (dead_) throw RuntimeError(Fault::kPortLost, doing);
}

void HeadlessSerialPort::SendOut(const std::string& bytes) {
  writes_.push_back({time_.Now(), bytes, settings_, opened_number_});
  Raise(CommEvent::kSend);
  if (peer_.on_write) peer_.on_write(bytes, time_.Now());
}

void HeadlessSerialPort::TellLine() const {
  if (peer_.on_line) peer_.on_line(open_, settings_);
}

void HeadlessSerialPort::Notify(CommEvent event) {
  if (event == CommEvent::kReceive) receive_posted_ = false;
  if (listener_ != nullptr) listener_->OnComm(event);
}

}  // namespace orvane
