// Counts the memory that the program takes through operator new, the library's
// included: the shared library takes its memory from the program's operators.
#pragma once

#include <cstddef>

namespace bench {

/// The most bytes that were held at once between construction and Bytes().
class PeakCounter {
 public:
  PeakCounter();
  ~PeakCounter();
  PeakCounter(const PeakCounter&) = delete;
  PeakCounter& operator=(const PeakCounter&) = delete;
  std::size_t Bytes() const;
};

}  // namespace bench
