// Winding numbers, and the rules that turn them into inside or outside.
//
// The winding number of a point in an operand is how often the operand's rings run
// around it counter-clockwise, less how often clockwise. It changes only across
// edges: from the right of an edge to its left it grows by one. Edges that coincide
// add up. A rule makes a region of any set of closed rings.
#pragma once

#include <cstdint>

#include "boolean/labels.h"

namespace zelvan {

/// The winding numbers of one point in both operands, or the change of both across
/// an edge. Bounded by the number of edges, which 32 bits hold.
struct Winding {
  std::int32_t a = 0;
  std::int32_t b = 0;

  constexpr Winding& operator+=(Winding w) noexcept { return a += w.a, b += w.b, *this; }
  constexpr Winding& operator-=(Winding w) noexcept { return a -= w.a, b -= w.b, *this; }
  friend constexpr Winding operator+(Winding v, Winding w) noexcept { return v += w; }
  friend constexpr Winding operator-(Winding v, Winding w) noexcept { return v -= w; }
  friend constexpr bool operator==(const Winding&, const Winding&) noexcept = default;
};

/// The change from the right of one edge of an operand to its left.
[[nodiscard]] constexpr Winding StepOverEdgeOf(OperandSet operand) noexcept {
  return operand == OPERAND_A ? Winding{1, 0} : Winding{0, 1};
}

/// The winding numbers of the points inside an operand.
enum class WindingRule : std::uint8_t {
  kOdd,       ///< of operations: what an operand covers twice is outside
  kPositive,  ///< of a contour that its grid made meet itself, counter-clockwise
  kNegative   ///< of such a one that runs clockwise
};

/// The operands that contain a point with these winding numbers.
[[nodiscard]] constexpr OperandSet OperandsAround(Winding w, WindingRule rule) noexcept {
  const auto isInside = [rule](std::int32_t n) {
    if (rule == WindingRule::kOdd) return n % 2 != 0;
    return rule == WindingRule::kPositive ? n > 0 : n < 0;
  };
  return (isInside(w.a) ? OPERAND_A : 0) | (isInside(w.b) ? OPERAND_B : 0);
}

}  // namespace zelvan
