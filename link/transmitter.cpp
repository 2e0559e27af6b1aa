#include "link/transmitter.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "link/frame.h"
#include "platform/wait.h"

namespace orvane {

std::string StringToBytes(std::string_view text, EventPump& pump) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char c : text) {
    bytes += c;
    Attempt([&pump] { pump.DeliverPending(); });
  }
  return bytes;
}

void Transmitter::SendCommand(std::string_view text) {
  link_.flags.LastCommand = text;
  if (!link_.port.PortOpen()) Attempt([this] { link_.port.Open(); });
  Attempt([this] { link_.port.DiscardOutput(); });
  // The frame is complete before events run: `text` may not outlive them.
  const std::string frame = FrameCommand(text);
  const std::string bytes = StringToBytes(frame, link_.pump);
  Attempt([this, &bytes] { link_.port.Write(bytes); });
}

void Transmitter::SetDataFlow(bool on) {
  Attempt([this] { WaitTicks(link_.clock, link_.pump, 50); });
  SendCommand(on ? "D1" : "D0");
}

void Transmitter::WaitForAck(std::int32_t delay_ms) {
  Attempt([this, delay_ms] {
    WaitTicksUnless(link_.clock, link_.pump, delay_ms,
                    [this] { return ContainsNoCase(link_.flags.AckText, "A"); });
  });
}

}  // namespace orvane
