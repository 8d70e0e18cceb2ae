// The rules of the operations (op_rules.h).
#include "boolean/op_rules.h"

namespace zelvan {

namespace {

constexpr std::uint32_t Bit(EdgeLabel label) {
  return 1u << label;
}

// The labels whose edges an operation takes in their own direction, and those
// that it takes in the opposite one.
struct Rule {
  std::uint32_t forward;
  std::uint32_t backward;
};

constexpr std::uint32_t kInside = Bit(LABEL_INSIDE);
constexpr std::uint32_t kOutside = Bit(LABEL_OUTSIDE);
constexpr std::uint32_t kShared = Bit(LABEL_SHARED);
constexpr std::uint32_t kReversed = Bit(LABEL_SHARED_REVERSED);

// Indexed by operation, then by operand: A, B.
constexpr Rule kRules[4][2] = {
    {{kOutside | kShared, 0}, {kOutside | kShared, 0}},     // UNION
    {{kInside | kShared, 0}, {kInside | kShared, 0}},       // INTERSECT
    {{kOutside | kReversed, 0}, {0, kInside | kReversed}},  // SUBTRACT
    {{kOutside, kInside}, {kOutside, kInside}},             // XOR
};

std::optional<Direction> Apply(BoolOp op, OperandSet operand, EdgeLabel label,
                               bool turned) noexcept {
  const Rule& rule = kRules[op][operand - OPERAND_A];
  const std::uint32_t bit = Bit(label);
  if (((rule.forward | rule.backward) & bit) == 0) return std::nullopt;
  const bool backward = (rule.backward & bit) != 0;
  return backward != turned ? Direction::BACKWARD : Direction::FORWARD;
}

}  // namespace

std::optional<Direction> StartRule(BoolOp op, const VertexNode* v) noexcept {
  return Apply(op, OperandOf(v), LabelOf(v), (v->flags & TURNED) != 0);
}

std::optional<Direction> ContourRule(BoolOp op, const Contour* contour) noexcept {
  if (LabelOf(contour) == CONTOUR_UNLABELLED) return std::nullopt;
  const EdgeLabel label = LabelOf(contour) == CONTOUR_INSIDE ? LABEL_INSIDE : LABEL_OUTSIDE;
  const VertexNode* head = contour->head;
  return Apply(op, OperandOf(head), label, (head->flags & TURNED) != 0);
}

}  // namespace zelvan
