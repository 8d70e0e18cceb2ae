// Makes one allocation of the process fail, to test that failure is reported and
// nothing is lost. A program that uses it gets its own operator new.
#pragma once

namespace zelvan::test {

/// While it lives, the allocation after `successes` further ones fails, and each one
/// after it. operator new then throws std::bad_alloc, or gives null when nothrow.
class FailingAllocation {
 public:
  explicit FailingAllocation(int successes) noexcept;
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();
};

}  // namespace zelvan::test
