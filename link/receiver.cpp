#include "link/receiver.h"

#include "base/runtime_error.h"
#include "link/readings.h"
#include "link/scoped_true.h"

#include <utility>

namespace orvane {

void Receiver::OnComm(CommEvent event) {
  switch (event) {
    case CommEvent::kReceive:
      return Receive();
    case CommEvent::kSend:
      return link_.events.TxActivity();
    case CommEvent::kFrame:
      return HandleFramingError();
    case CommEvent::kOverrun:
      return ShowError("Overrun");
    case CommEvent::kRxOver:
      // Saved, and cut into lines with the next arrival.
      link_.port.TakeReceived(buffer_.Tail());
      return ShowError("Overflow");
    case CommEvent::kRxParity:
      return ShowError("Parity");
    case CommEvent::kTxFull:
      return ShowError("Tx Full");
    case CommEvent::kDCB:
      return ShowError("DCB Error");
    case CommEvent::kLost:
      lost_ = true;
      if (!draining_) TakeLoss();
      return;
    case CommEvent::kCTS:
    case CommEvent::kDSR:
    case CommEvent::kCD:
    case CommEvent::kRing:
    case CommEvent::kEOF:
    case CommEvent::kBreak:
      return;
  }
}

void Receiver::Receive() {
  link_.port.TakeReceived(buffer_.Tail());
  link_.events.RxActivity();
  if (draining_) return;
  HandleLines();
  TakeLoss();
}

void Receiver::HandleLines() {
  const ScopedTrue guard(draining_);
  while (buffer_.CutLine(line_)) {
    // Noise ends with LF once in a while, and a packet may fail its check for ever: neither is a sign of
    // life.
    const std::uint32_t before = link_.flags.Replies + link_.flags.Readings;
    Attempt([this] { classifier_.ProcessMessage(line_); });
    if (link_.flags.Replies + link_.flags.Readings != before) {
      link_.flags.LastLineTick = static_cast<std::uint32_t>(link_.clock.GetTickCount());
    }
    Attempt([this] { link_.events.LineHandled(); });
  }
}

// Never in the middle of a line that is being shown: what is shown of it afterwards would stay.
void Receiver::TakeLoss() {
  if (std::exchange(lost_, false)) LosePort(link_);
}

void Receiver::HandleFramingError() {
  ShowError("Re-Synching");
  if (!link_.flags.MeterFound || link_.flags.ResyncPending) return;
  // Without its version the meter counts as unknown, and the search asks for it again.
  link_.state.FirmwareVersion.clear();
  link_.events.EnableFindMeter(true);
  link_.flags.ResyncPending = true;
}

}  // namespace orvane
