#pragma once

#include <cstdint>

namespace orvane {

struct HeapUse {
  int allocations = 0;
  std::int64_t bytes = 0;  ///< taken from the heap, less those given back
};

/// Between these two calls the heap's use is counted. Not by the fuzzers of the sanitizer build, whose own
/// count of leaks stands for it.
#ifndef ORVANE_HEAP_IS_NOT_COUNTED
void StartCounting();
HeapUse StopCounting();
#else
inline void StartCounting() {}
inline HeapUse StopCounting() {
  return {};
}
#endif

}  // namespace orvane
