// In a file of its own, where no compiler sees both ends of an allocation and takes them for a mismatch.
#include "fuzz/live_bytes.h"

#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {
bool counting = false;
std::int64_t bytes = 0;

void Give(void* memory) {
  if (counting && memory != nullptr) bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
  std::free(memory);
}
}  // namespace

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  if (counting) bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
  return memory;
}
void operator delete(void* memory) noexcept {
  Give(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  Give(memory);
}

namespace orvane::fuzz {

void StartCountingBytes() {
  bytes = 0;
  counting = true;
}

std::int64_t StopCountingBytes() {
  counting = false;
  return bytes;
}

}  // namespace orvane::fuzz
