#include "simulator/line_scanner.h"

#include "simulator/crc.h"

#include <utility>

namespace orvane::sim {
namespace {

constexpr std::size_t kFrameLimit = 64;
constexpr std::size_t kTailLength = 3;  // ETX and two digits

// Upper-case digits only: a peer that sends lower case is to be found out.
ScannedFrame Judge(std::string content) {
  const std::size_t size = content.size();
  if (size <= kTailLength || content[size - kTailLength] != kEtx) {
    return {std::move(content), Verdict::kMalformed};
  }
  const std::string text = content.substr(0, size - kTailLength);
  if (content.substr(size - 2) != HexDigits(WireCrc(text))) return {text, Verdict::kBadCrc};
  return {text, std::nullopt};
}

}  // namespace

std::optional<ScannedFrame> LineScanner::Next(std::string_view& bytes) {
  while (!bytes.empty()) {
    const char byte = bytes.front();
    bytes.remove_prefix(1);
    if (byte == kStx) {
      frame_.emplace();
    } else if (frame_ && byte == kCr) {
      return Judge(*std::exchange(frame_, std::nullopt));
    } else if (frame_ && frame_->size() >= kFrameLimit) {
      frame_.reset();
    } else if (frame_) {
      *frame_ += byte;
    }
  }
  return std::nullopt;
}

}  // namespace orvane::sim
