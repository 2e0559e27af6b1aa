#pragma once

namespace orvane {

/// Holds a flag true while it lives, also when an exception (the end of the process is one) ends its life.
class ScopedTrue {
 public:
  explicit ScopedTrue(bool& flag) : flag_(flag) { flag = true; }
  ~ScopedTrue() { flag_ = false; }
  ScopedTrue(const ScopedTrue&) = delete;
  ScopedTrue& operator=(const ScopedTrue&) = delete;

 private:
  bool& flag_;
};

}  // namespace orvane
