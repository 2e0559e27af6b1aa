#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define ORVANE_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVANE_UNDER_ASAN 1
#endif
#endif

#if defined(ORVANE_UNDER_ASAN)
#include <sanitizer/allocator_interface.h>
#else
#include <malloc.h>
#endif

namespace orvane {

/// Bytes that the process holds from the heap.
inline std::size_t HeapInUse() {
#if defined(ORVANE_UNDER_ASAN)
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

}  // namespace orvane
