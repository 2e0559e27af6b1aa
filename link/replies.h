#pragma once

#include "link/link_context.h"

#include <cstdint>
#include <string_view>

namespace orvane {

// The meter's replies. One handler a letter: it takes the payload out of the message, replaces what the
// program cannot use by a fixed value, and stores it. Nothing is reported back: the next query tells what the
// meter really has. A number beyond 16 bits is a fault, and the field keeps what it had.
// Letters, ranges and what stands for the unusable: docs/protocol.md, "Replies".

/// The last numbers of three letters, before and then after they were replaced.
struct LastNumbers {
  std::int16_t M = 0;
  std::int16_t R = 0;
  std::int16_t B2 = 0;
};

/// What the handlers work on.
struct ReplyContext {
  MeterState& state;
  LinkFlags& flags;
  LinkEvents& events;
  LastNumbers last;
};

/// Handles a whole message, or the eight characters from the STX for "R" and "M".
/// @throws RuntimeError kOverflow, kTypeMismatch; later steps of the handler are left out then
using ReplyHandler = void (*)(ReplyContext& context, std::string_view message);

/// What becomes of the replies of one letter.
struct Reply {
  char letter;  ///< case counts
  ReplyHandler handler;
  bool beep;  ///< the operator may want to hear it
};

/// The row of a letter, none for a letter that means nothing. "D", "R" and "M" have none: they are found
/// anywhere in a message, see MessageClassifier.
const Reply* FindReply(char letter);

void HandleRowReply(ReplyContext& context, std::string_view message);   ///< "R"
void HandleModeReply(ReplyContext& context, std::string_view message);  ///< "M"

}  // namespace orvane
