#pragma once

#include <cstdint>

namespace orvane::fuzz {

/// Between the two calls the bytes taken from the heap are counted, less those given back. Not in the
/// sanitizer build, whose own count of leaks stands for it.
#ifdef ORVANE_FUZZ_COUNTS_BYTES
void StartCountingBytes();
std::int64_t StopCountingBytes();
#else
inline void StartCountingBytes() {}
inline std::int64_t StopCountingBytes() {
  return 0;
}
#endif

}  // namespace orvane::fuzz
