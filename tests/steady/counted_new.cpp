// In a file of its own, where no compiler sees both ends of an allocation and takes them for a mismatch.
#include "tests/steady/counted_new.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {
bool counting = false;
int allocations = 0;
}  // namespace

void* operator new(std::size_t size) {
  if (counting) ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

namespace orvane {

void StartCountingAllocations() {
  allocations = 0;
  counting = true;
}

int StopCountingAllocations() {
  counting = false;
  return allocations;
}

}  // namespace orvane
