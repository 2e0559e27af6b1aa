#include "link/message_classifier.h"

#include "base/runtime_error.h"
#include "link/data_packet.h"
#include "link/frame.h"

#include <array>
#include <cstddef>

namespace orvane {
namespace {

constexpr std::size_t kShortReply = 8;  // STX, letter, digit, ETX, two checksum digits, CR, LF

std::size_t FindFrame(std::string_view message, char letter) {
  const std::array<char, 2> start{kSTX, letter};
  return message.find(std::string_view(start.data(), start.size()));
}

}  // namespace

void MessageClassifier::ProcessMessage(std::string_view message) {
  if (message.empty()) return;
  if (const auto at = FindFrame(message, 'D'); at != std::string_view::npos) {
    if (ProcessDataPacket(message.substr(at), context_.state)) ++context_.flags.Readings;
    return;
  }
  if (const auto at = FindFrame(message, 'R'); at != std::string_view::npos) {
    return Handle(HandleRowReply, message.substr(at, kShortReply), true);
  }
  if (const auto at = FindFrame(message, 'M'); at != std::string_view::npos) {
    return Handle(HandleModeReply, message.substr(at, kShortReply), true);
  }
  const auto stx = message.find(kSTX);
  const std::size_t letter_at = stx == std::string_view::npos ? 0 : stx + 1;
  // At least two characters behind the letter, else it is no letter but the rest of something.
  if (message.size() > letter_at + 2) message_type_ = message[letter_at];
  if (const Reply* reply = FindReply(message_type_)) Handle(reply->handler, message, reply->beep);
}

void MessageClassifier::Handle(ReplyHandler handler, std::string_view message, bool beep) {
  ++context_.flags.Replies;
  Attempt([&] { handler(context_, message); });
  if (beep && settings_.PktNotify()) context_.events.Beep();
}

}  // namespace orvane
