// Which labelled edges and contours an operation takes, and in which direction.
#pragma once

#include <cstdint>
#include <optional>

#include "boolean/labels.h"

namespace zelvan {

enum class Direction {
  FORWARD,  ///< from an edge's first vertex to its next one
  BACKWARD
};

namespace detail {

constexpr std::uint32_t Bit(EdgeLabel label) {
  return 1u << label;
}

// The labels whose edges an operation takes in their own direction, and those
// that it takes in the opposite one.
struct Rule {
  std::uint32_t forward;
  std::uint32_t backward;
};

inline constexpr std::uint32_t kInside = Bit(LABEL_INSIDE);
inline constexpr std::uint32_t kOutside = Bit(LABEL_OUTSIDE);
inline constexpr std::uint32_t kShared = Bit(LABEL_SHARED);
inline constexpr std::uint32_t kReversed = Bit(LABEL_SHARED_REVERSED);

// Indexed by operation, then by operand: A, B.
inline constexpr Rule kRules[4][2] = {
    {{kOutside | kShared, 0}, {kOutside | kShared, 0}},     // UNION
    {{kInside | kShared, 0}, {kInside | kShared, 0}},       // INTERSECT
    {{kOutside | kReversed, 0}, {0, kInside | kReversed}},  // SUBTRACT
    {{kOutside, kInside}, {kOutside, kInside}},             // XOR
};

}  // namespace detail

/// The direction in which `op` takes an edge of an operand with this label, turned or not;
/// none when it does not.
[[nodiscard]] inline std::optional<Direction> RuleFor(BoolOp op, OperandSet operand,
                                                      EdgeLabel label, bool turned) noexcept {
  const detail::Rule& rule = detail::kRules[op][operand - OPERAND_A];
  const std::uint32_t bit = detail::Bit(label);
  if (((rule.forward | rule.backward) & bit) == 0) return std::nullopt;
  const bool backward = (rule.backward & bit) != 0;
  return backward != turned ? Direction::BACKWARD : Direction::FORWARD;
}

/// The same for the edge that v holds. Tracing asks it of every edge end that it passes.
[[nodiscard]] inline std::optional<Direction> StartRule(BoolOp op, const VertexNode* v) noexcept {
  return RuleFor(op, OperandOf(v), LabelOf(v), (v->flags & TURNED) != 0);
}

/// Likewise for a contour that meets nothing, BACKWARD for the opposite direction.
[[nodiscard]] inline std::optional<Direction> ContourRule(BoolOp op,
                                                          const Contour* contour) noexcept {
  if (LabelOf(contour) == CONTOUR_UNLABELLED) return std::nullopt;
  const EdgeLabel label = LabelOf(contour) == CONTOUR_INSIDE ? LABEL_INSIDE : LABEL_OUTSIDE;
  const VertexNode* head = contour->head;
  return RuleFor(op, OperandOf(head), label, (head->flags & TURNED) != 0);
}

}  // namespace zelvan
