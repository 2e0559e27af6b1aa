// In a file of its own, where no compiler sees both ends of an allocation and takes them for a mismatch.
#include "tests/steady/counted_new.h"

#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {
bool counting = false;
orvane::HeapUse use;

void Give(void* memory) {
  if (counting && memory != nullptr) use.bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
  std::free(memory);
}
}  // namespace

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  if (counting) {
    ++use.allocations;
    use.bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
  }
  return memory;
}
void operator delete(void* memory) noexcept {
  Give(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  Give(memory);
}

namespace orvane {

void StartCounting() {
  use = {};
  counting = true;
}

HeapUse StopCounting() {
  counting = false;
  return use;
}

}  // namespace orvane
