// The chains at each kind of vertex, and the ends of rings (chains.h). At the end of a ring
// every corner that is left must be convex, for it has three convex corners; another one means
// that edges cross.
#include "triangulation/chains.h"

#include "triangulation/region_writer.h"
#include "triangulation/triangle_writer.h"

namespace VORNEX {

template <class Writer>
bool Chains<Writer>::GoOn(Side side, Ends& ends, const Corner& at, std::uint32_t edge) {
  if (side == kLeft) {
    const std::uint32_t step = StepTo(ends, edge, kNone);
    if (!CloseLeft(ends.left, at, step, edge)) return false;
    ends.right = AppendAndCut(ends.right, at, step);
    ends.left = Start(at);
    return ends.right != kNone;
  }
  const std::uint32_t step = StepTo(ends, kNone, edge);
  if (!CloseRight(ends.right, at, step, edge)) return false;
  ends.left = Append(ends.left, at, step);
  ends.right = Start(at);
  return true;
}

template <class Writer>
bool Chains<Writer>::Split(Ends& left, Ends& right, const Corner& at) {
  const std::uint32_t step = writer_.AddDiagonal();
  right.right = AppendAndCut(left.right, at, step);
  right.left = Start(at);
  left.left = Append(left.left, at, step);
  left.right = Start(at);
  return right.right != kNone;
}

template <class Writer>
bool Chains<Writer>::End(const Ends& ends, const Corner& at, std::uint32_t leftEdge,
                         std::uint32_t rightEdge) {
  const std::uint32_t step = StepTo(ends, leftEdge, rightEdge);
  return CloseLeft(ends.left, at, step, leftEdge) && CloseRight(ends.right, at, step, rightEdge);
}

template <class Writer>
bool Chains<Writer>::Merge(Ends& left, const Ends& right, const Corner& at, std::uint32_t rightEdge,
                           std::uint32_t leftEdge) {
  const std::uint32_t stepLeft = StepTo(left, kNone, rightEdge);
  const std::uint32_t stepRight = StepTo(right, leftEdge, kNone);
  if (!CloseRight(left.right, at, stepLeft, rightEdge) ||
      !CloseLeft(right.left, at, stepRight, leftEdge))
    return false;
  left.left = Append(left.left, at, stepLeft);
  left.right = AppendAndCut(right.right, at, stepRight);
  return left.right != kNone;
}

template <class Writer>
bool Chains<Writer>::CloseRight(std::uint32_t chain, const Corner& end, std::uint32_t edge,
                                std::uint32_t single) {
  while (!IsSingle(chain)) {
    if (!EndIsConvex(chain, end)) return false;
    const bool isLast = IsSingle(links_[chain].above);
    if (!CutEnd(chain, end, edge, isLast ? single : writer_.AddDiagonal())) return false;
  }
  Release(chain);
  return true;
}

template <class Writer>
bool Chains<Writer>::CloseLeft(std::uint32_t chain, const Corner& end, std::uint32_t edge,
                               std::uint32_t single) {
  reflex_.clear();
  reflex_.push_back({end, kNone, kNone});
  for (bool isTop = false; !isTop;) {
    const Link& next = links_[chain];
    const std::uint32_t above = next.above;
    isTop = above == kNone;
    for (std::size_t left = reflex_.size(); left > 1; --left, reflex_.pop_back()) {
      ++steps_;
      const Corner& a = reflex_[left - 2].corner;
      const Link& b = reflex_[left - 1];
      if (!IsConvex(a, b.corner, next.corner)) {
        if (isTop) return false;
        break;
      }
      const std::uint32_t third = isTop && left == 2 ? single : writer_.AddDiagonal();
      if (!writer_.Add(a, b.corner, next.corner, {b.edge, edge, third})) return false;
      edge = third;
    }
    reflex_.push_back({next.corner, edge, kNone});
    edge = next.edge;
    Release(chain);
    chain = above;
  }
  return true;
}

template class Chains<TriangleWriter>;
template class Chains<RegionWriter>;

}  // namespace VORNEX
