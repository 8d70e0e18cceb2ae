// The engines of Booleans that are compared, one file for each. What is timed starts
// from contours in the peer's own types and ends with the answer's contours made.
#pragma once

#include <memory>
#include <vector>

#include "../job.h"

namespace bench {

enum class Operation { kUnion, kDifference };

/// The first contour united with all others, or all others taken from it.
struct BooleanWork {
  Operation operation;
  std::vector<Xyz> contours;
};

/// Union or Substruct alone, with the contours set and queued.
std::unique_ptr<Job> ZelvanOperation(const BooleanWork& work);
/// SetMainContour, SetHole for each other contour, and the operation.
std::unique_ptr<Job> ZelvanCalls(const BooleanWork& work);
std::unique_ptr<Job> ClipperBoolean(const BooleanWork& work);
std::unique_ptr<Job> GeosBoolean(const BooleanWork& work);
std::unique_ptr<Job> CgalBoolean(const BooleanWork& work);

}  // namespace bench
