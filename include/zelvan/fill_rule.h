/// @file
/// The rules by which rings bound a region.
#ifndef ZELVAN_FILL_RULE_H
#define ZELVAN_FILL_RULE_H

#include <cstdint>

namespace zelvan {

/// A point is inside where its winding number is ...: the times that rings run around it
/// counter-clockwise, less the times clockwise.
enum class FillRule : std::int32_t {
  EvenOdd,   ///< odd
  NonZero,   ///< not 0
  Positive,  ///< above 0
  Negative   ///< below 0
};

}  // namespace zelvan

#endif
