#include "link/rx_buffer.h"

#include "link/frame.h"

namespace orvane {

bool RxBuffer::CutLine(std::string& line) {
  const auto end = text_.find(kLF, scanned_);
  if (end == std::string::npos) {
    scanned_ = text_.size();
    if (Size() > kLongestLine) DropNoise();
    return false;
  }
  line.assign(text_, read_, end + 1 - read_);
  read_ = end + 1;
  scanned_ = read_;
  DropRead();
  return true;
}

// Into new memory: the old is the size of the noise.
void RxBuffer::DropNoise() {
  constexpr std::size_t kKept = 65536;
  text_ = text_.substr(text_.size() - kKept);
  read_ = 0;
  scanned_ = kKept;
}

// The consumed part goes when it is all there is (the usual case, free of cost), or when it is the larger
// part of a large buffer, so that the moves together stay below the bytes received.
void RxBuffer::DropRead() {
  constexpr std::size_t kLarge = 65536;
  if (read_ < text_.size() && (read_ < kLarge || read_ < text_.size() / 2)) return;
  text_.erase(0, read_);
  read_ = 0;
  scanned_ = 0;
}

}  // namespace orvane
