#pragma once

#include "link/link_settings.h"
#include "link/replies.h"

#include <string_view>

namespace orvane {

/// Finds out what a message is and hands it to its handler. Readings, the scale row and the mode are looked
/// for anywhere in the message, because the meter sends them unasked and may send them right into another
/// reply; all else goes by the letter after the first STX. docs/protocol.md, "How a message finds its
/// handler".
class MessageClassifier {
 public:
  MessageClassifier(MeterState& state, LinkFlags& flags, LinkEvents& events, const LinkSettings& settings)
      : context_{state, flags, events, {}}, settings_(settings) {}

  /// Handles one message, its LF included. A fault of the handler ends the handler and is not reported.
  void ProcessMessage(std::string_view message);

 private:
  void Handle(ReplyHandler handler, std::string_view message, bool beep);

  ReplyContext context_;
  const LinkSettings& settings_;
  /// Letter of the last message that went by its letter. One too short to carry a letter goes by it as well.
  char message_type_ = '\0';
};

}  // namespace orvane
