// Which places belong to the region, by their winding numbers.
#pragma once

#include <zelvan/fill_rule.h>

#include <cstdint>

#include "overlay/edges.h"

namespace zelvan::overlay {

/// The operations on two operands; bit i tells whether a place belongs to the result that lies
/// in the set i of operands (1 the first, 2 the second, 3 both).
enum class Operation : std::uint32_t {
  kUnite = 0b1110,
  kIntersect = 0b1000,
  kSubtract = 0b0010,
  kExclusiveOr = 0b0110
};

/// A fill rule for each operand and an operation. A place far away belongs to no operand.
class Selection {
 public:
  Selection() = default;
  Selection(Operation operation, FillRule first, FillRule second) noexcept
      : operation_(operation), first_(first), second_(second) {}

  [[nodiscard]] bool Holds(Windings w) const noexcept {
    const std::uint32_t operands =
        (IsInside(first_, w.first) ? 1U : 0U) | (IsInside(second_, w.second) ? 2U : 0U);
    return ((static_cast<std::uint32_t>(operation_) >> operands) & 1U) != 0;
  }

 private:
  static bool IsInside(FillRule rule, std::int32_t number) noexcept {
    switch (rule) {
      case FillRule::EvenOdd:
        return (number & 1) != 0;
      case FillRule::NonZero:
        return number != 0;
      case FillRule::Positive:
        return number > 0;
      case FillRule::Negative:
        return number < 0;
    }
    return false;
  }

  Operation operation_ = Operation::kUnite;
  FillRule first_ = FillRule::EvenOdd;
  FillRule second_ = FillRule::EvenOdd;
};

}  // namespace zelvan::overlay
