#include "outside/client_data.h"

#include <algorithm>
#include <charconv>

namespace orvane {

bool ClientData::LeftAlone() const {
  const std::uint32_t passed = static_cast<std::uint32_t>(clock_.GetTickCount()) - paused_at_;
  return pause_ms_ != 0 && passed < static_cast<std::uint32_t>(pause_ms_);
}

void ClientData::SendClientData(std::int32_t value, std::string_view caption, std::int32_t tag) {
  if (sending_) return;
  // A window without a caption is nobody's client, and there are many of them.
  client_ = caption.empty() ? 0 : windows_.Find(caption);
  const auto end = std::to_chars(text_.data(), text_.data() + text_.size(), value);
  text_length_ = static_cast<std::size_t>(end.ptr - text_.data());
  if (client_ == 0) return;
  if (LeftAlone()) {
    ++skipped_;
    return;
  }
  std::copy_n(text_.begin(), text_length_, buffer_.begin());
  sending_ = true;
  Note(windows_.SendCopyData(client_, static_cast<std::uint32_t>(tag), {buffer_.data(), text_length_ + 1},
                             kTimeoutMs));
  sending_ = false;
  buffer_.fill('\0');
}

void ClientData::Note(ClientWindows::Answer answer) {
  reachable_ = answer.outcome != ClientWindows::Outcome::kUnreachable;
  if (answer.outcome == ClientWindows::Outcome::kTimedOut) {
    pause_ms_ = pause_ms_ == 0 ? kFirstPauseMs : std::min(pause_ms_ * 2, kLongestPauseMs);
    paused_at_ = static_cast<std::uint32_t>(clock_.GetTickCount());
    ++skipped_;
    return;
  }
  pause_ms_ = 0;
  last_result_ = answer.result;
}

}  // namespace orvane
