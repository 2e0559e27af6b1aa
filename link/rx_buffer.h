#pragma once

#include <cstddef>
#include <string>

namespace orvane {

/// Everything received and not yet consumed. Each byte is looked at once for the end of a line and moved a
/// bounded number of times, however the bytes arrive. docs/protocol.md, "Frames".
class RxBuffer {
 public:
  /// What arrived last goes to the end of this text; nothing else may be done to it.
  std::string& Tail() { return text_; }

  /// Cuts the first line, its LF included, into `line`.
  /// @return false, with `line` untouched, when no LF is there
  bool CutLine(std::string& line);

  /// Bytes. More than an hour of the fastest line without an end is noise of a wrong port or a wrong speed,
  /// and all but its last part is given up: a program that runs for weeks must not fill the memory with it.
  static constexpr std::size_t kLongestLine = 16 << 20;

  /// Bytes waiting.
  std::size_t Size() const { return text_.size() - read_; }

 private:
  void DropRead();
  void DropNoise();

  std::string text_;
  std::size_t read_ = 0;     // consumed
  std::size_t scanned_ = 0;  // looked through without finding an LF
};

}  // namespace orvane
