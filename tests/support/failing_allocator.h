// Makes chosen allocations of the test program fail, and counts the live ones.
//
// A scope is for the allocations of its own thread. The program that links failing_allocator.cpp
// takes all its memory from there, the library's objects included. Outside a Scope everything
// succeeds.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

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

/// Runs session() with each of its allocations failing in turn, alone and with all that follow,
/// until it meets none that fails; after each run judge(struck). Throws std::logic_error where a
/// run, judged, leaves more or less allocated than there was. @return how often session() failed
template <class Session, class Judge>
std::size_t FailEachInTurn(Session session, Judge judge) {
  const std::ptrdiff_t before = LiveAllocations();
  std::size_t failures = 0;
  for (const bool andAllAfter : {false, true}) {
    bool struck = true;
    for (std::size_t failing = 0; struck; ++failing) {
      {
        const FailingAllocations scope(failing, andAllAfter);
        failures += session() ? 0 : 1;
        struck = scope.Struck();
      }
      judge(struck);
      if (LiveAllocations() != before) {
        throw std::logic_error("not balanced: allocation " + std::to_string(failing));
      }
    }
  }
  return failures;
}

}  // namespace support
