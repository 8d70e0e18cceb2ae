// The counting, failing allocator (failing_allocator.h).
#include "support/failing_allocator.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::ptrdiff_t> live = 0;
thread_local bool active = false;
thread_local bool allAfter = false;
thread_local bool struck = false;
thread_local std::size_t untilFailure = 0;

bool Fails() noexcept {
  if (!active) return false;
  if (untilFailure > 0) {
    --untilFailure;
    return false;
  }
  active = allAfter;
  struck = true;
  return true;
}

void* Allocate(std::size_t size) noexcept {
  if (Fails()) return nullptr;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory != nullptr) ++live;
  return memory;
}

void Deallocate(void* memory) noexcept {
  if (memory == nullptr) return;
  --live;
  std::free(memory);
}

}  // namespace

// The others call these.
void* operator new(std::size_t size) {
  if (void* memory = Allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* memory) noexcept {
  Deallocate(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  Deallocate(memory);
}

namespace support {

std::ptrdiff_t LiveAllocations() noexcept {
  return live;
}

FailingAllocations::FailingAllocations(std::size_t failing, bool andAllAfter) noexcept {
  untilFailure = failing;
  allAfter = andAllAfter;
  struck = false;
  active = true;
}

FailingAllocations::~FailingAllocations() {
  active = false;
}

bool FailingAllocations::Struck() const noexcept {
  return struck;
}

}  // namespace support
