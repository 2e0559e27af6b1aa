#include "outside/client_data.h"

#include <algorithm>
#include <charconv>

namespace orvane {

/// Has the text in the buffer for as long as the message is under way, however that ends.
class ClientData::Sending {
 public:
  explicit Sending(ClientData& of) : of_(of) {
    std::copy_n(of_.text_.begin(), of_.text_length_, of_.buffer_.begin());
    of_.sending_ = true;
  }
  ~Sending() {
    of_.buffer_.fill('\0');
    of_.sending_ = false;
  }
  Sending(const Sending&) = delete;
  Sending& operator=(const Sending&) = delete;

 private:
  ClientData& of_;
};

// Only the window that hung: one that has taken its place is somebody else.
bool ClientData::LeftAlone() const {
  const std::uint32_t passed = static_cast<std::uint32_t>(clock_.GetTickCount()) - paused_at_;
  return client_ == hung_ && passed < static_cast<std::uint32_t>(pause_ms_);
}

void ClientData::SendClientData(std::int32_t value, std::string_view caption, std::int32_t tag) {
  if (sending_) {
    ++skipped_;
    return;
  }
  // A window without a caption is nobody's client, and there are many of them.
  client_ = caption.empty() ? 0 : windows_.Find(caption);
  const auto end = std::to_chars(text_.data(), text_.data() + text_.size(), value);
  text_length_ = static_cast<std::size_t>(end.ptr - text_.data());
  if (client_ == 0) return;
  if (LeftAlone()) {
    ++skipped_;
    return;
  }
  const Sending sending(*this);
  Note(windows_.SendCopyData(client_, static_cast<std::uint32_t>(tag), {buffer_.data(), text_length_ + 1},
                             kTimeoutMs));
}

void ClientData::Note(ClientWindows::Answer answer) {
  reachable_ = answer.outcome != ClientWindows::Outcome::kUnreachable;
  if (answer.outcome == ClientWindows::Outcome::kTimedOut) {
    pause_ms_ = client_ == hung_ ? std::min(pause_ms_ * 2, kLongestPauseMs) : kFirstPauseMs;
    hung_ = client_;
    paused_at_ = static_cast<std::uint32_t>(clock_.GetTickCount());
    ++skipped_;
    return;
  }
  hung_ = 0;
  last_result_ = answer.result;
}

}  // namespace orvane
