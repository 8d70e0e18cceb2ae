// Makes chosen allocations of the test program fail, and counts the live ones.
//
// A scope is for the allocations of its own thread. The program that links failing_allocator.cpp
// takes all its memory from there, the library's objects included. Outside a Scope everything
// succeeds.
#pragma once

#include <cstddef>

namespace support {

/// Number of allocations alive now.
[[nodiscard]] std::ptrdiff_t LiveAllocations() noexcept;

/// While it lives, allocation number `failing` (from 0) from its start fails, and
/// with `andAllAfter` every later one too.
class FailingAllocations {
 public:
  FailingAllocations(std::size_t failing, bool andAllAfter) noexcept;
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;

  /// Whether the scope has made an allocation fail.
  [[nodiscard]] bool Struck() const noexcept;
};

}  // namespace support
