#include "heap_peak.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

bool counting = false;
std::size_t bytes = 0;
std::size_t peak = 0;

void* CountedAllocation(std::size_t size) {
  void* memory = std::malloc(size);
  if (counting && memory != nullptr) {
    bytes += malloc_usable_size(memory);
    peak = std::max(peak, bytes);
  }
  return memory;
}

void CountedRelease(void* memory) {
  if (counting && memory != nullptr) bytes -= std::min(bytes, malloc_usable_size(memory));
  std::free(memory);
}

}  // namespace

// A shared library takes its memory from these too: the program's come first.
void* operator new(std::size_t size) {
  if (void* memory = CountedAllocation(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return CountedAllocation(size);
}
void operator delete(void* memory) noexcept {
  CountedRelease(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  CountedRelease(memory);
}

namespace bench {

double PeakBytes(const std::function<void()>& work) {
  bytes = peak = 0;
  counting = true;
  work();
  counting = false;
  return static_cast<double>(peak);
}

}  // namespace bench
