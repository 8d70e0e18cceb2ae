// The flat interface for the library's own rows: a refused call ends the entry.
#pragma once

#include <zelvan/zelvan.h>

#include <stdexcept>

#include "../contours.h"

namespace bench {

inline void Require(int result) {
  if (result != 1) throw std::runtime_error("the library refused a benchmark contour");
}

inline void Set(const Xyz& contour) {
  Require(SetMainContour(static_cast<int>(contour.size()), contour.data()));
}

inline void Queue(const Xyz& contour) {
  Require(SetHole(static_cast<int>(contour.size()), contour.data()));
}

}  // namespace bench
