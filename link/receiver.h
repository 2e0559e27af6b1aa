#pragma once

#include "link/link_context.h"
#include "link/message_classifier.h"
#include "link/rx_buffer.h"

#include <string>

namespace orvane {

/// The receiving side of the line. Garbage is no event: bytes are collected until an LF ends a line, a line
/// that nobody understands is passed over, and the next reading is near. Line errors are shown, never raised;
/// a framing error means that the speeds have parted, and starts the search again. docs/protocol.md, "When
/// the line fails".
class Receiver : public CommListener {
 public:
  Receiver(const LinkContext& link, MessageClassifier& classifier) : link_(link), classifier_(classifier) {}

  /// Bytes that arrive while a line is being shown are appended, and taken in order by the loop that is
  /// already running: the receive path does not enter itself.
  void OnComm(CommEvent event) override;

 private:
  void Receive();
  void HandleLines();
  void TakeLoss();
  void ShowError(std::string_view text) { link_.events.ShowStatus(text, StatusTone::kUrgent); }
  void HandleFramingError();

  LinkContext link_;
  MessageClassifier& classifier_;
  RxBuffer buffer_;
  std::string line_;  // the line being handled; kept for its memory
  bool draining_ = false;
  bool lost_ = false;  // the port, while a line was being shown
};

}  // namespace orvane
