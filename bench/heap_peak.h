// The peak of the heap bytes that operator new has given out and not got back, in a
// program that links heap_peak.cpp.
#pragma once

#include <functional>

namespace bench {

/// The peak while `work` runs, beyond what was there before.
double PeakBytes(const std::function<void()>& work);

}  // namespace bench
