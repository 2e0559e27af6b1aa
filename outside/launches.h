#pragma once

#include "platform/shell.h"

#include <string_view>

namespace orvane {

/// The program's ways out to other programs. None of them waits for what it started.
class Launches {
 public:
  explicit Launches(Shell& shell) : shell_(shell) {}

  /// Opens a web address or document with its default program, maximised. @return false when nothing was
  /// started
  bool OpenDocument(std::string_view target);

 private:
  Shell& shell_;
};

}  // namespace orvane
