// Allocation on command (failing_allocation.h).
#include "support/failing_allocation.h"

#include <cstdlib>
#include <new>

namespace {

constexpr int kUnlimited = -1;
int successesLeft = kUnlimited;

void* Allocate(std::size_t size) noexcept {
  if (successesLeft == 0) return nullptr;
  if (successesLeft > 0) --successesLeft;
  return std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

namespace zelvan::test {

FailingAllocation::FailingAllocation(int successes) noexcept {
  successesLeft = successes;
}

FailingAllocation::~FailingAllocation() {
  successesLeft = kUnlimited;
}

}  // namespace zelvan::test

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
