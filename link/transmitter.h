#pragma once

#include "link/link_context.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// One byte a character. Lets events through after every byte, so that the window lives while a command is
/// made ready; another command may be sent meanwhile. A fault of such an event does not touch the command.
std::string StringToBytes(std::string_view text, EventPump& pump);

/// The sending side of the line. Nothing here fails: a step that cannot be done is left out, and the sequence
/// above sees it by the missing reply. docs/protocol.md, "Commands".
class Transmitter {
 public:
  explicit Transmitter(const LinkContext& link) : link_(link) {}

  /// Frames and writes one command ("D1", "B?"), opening the port if need be and dropping what the line has
  /// not taken yet. Does not wait for a reply.
  void SendCommand(std::string_view text);
  /// Waits 50 ms, then asks the meter for its readings ("D1") or to keep still ("D0").
  void SetDataFlow(bool on);
  /// Lets `delay_ms` pass with events going on; ends early only when AckText contains "A".
  void WaitForAck(std::int32_t delay_ms);

 private:
  LinkContext link_;
};

}  // namespace orvane
