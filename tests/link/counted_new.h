#pragma once

namespace orvane {

/// Counts what is taken from the heap while it lives.
class AllocationCount {
 public:
  AllocationCount();
  ~AllocationCount();
  AllocationCount(const AllocationCount&) = delete;
  AllocationCount& operator=(const AllocationCount&) = delete;
  int Value() const;
};

}  // namespace orvane
