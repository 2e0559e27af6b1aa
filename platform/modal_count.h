#pragma once

namespace orvane {

/// Counts the menus and boxes that are open, one inside another, while it lives; also when the end of the
/// process ends its life.
class ModalCount {
 public:
  explicit ModalCount(int& count) : count_(count) { ++count_; }
  ~ModalCount() { --count_; }
  ModalCount(const ModalCount&) = delete;
  ModalCount& operator=(const ModalCount&) = delete;

 private:
  int& count_;
};

}  // namespace orvane
