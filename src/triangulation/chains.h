// The chains of the sweep, and the triangles that are cut off them.
//
// What the diagonals between the top and the bottom vertices of the trapezoids leave
// of an area are rings with a single edge on one side (Fournier and Montuno 1984). A
// chain is the part above the sweep line of the other side of such a ring: it starts
// where the single edge does, at its upper end, and goes down. A ring is cut greedily in
// the direction of the contour, in which the area lies on the left (Garey, Johnson,
// Preparata and Tarjan 1978): down the chain where the single edge is on the right, so
// that corners are cut while the chain grows; up the chain where it is on the left, so
// that it has to be complete.
//
// What holds here: every link but the first of its chain carries the number of the edge
// that leads to it from the link above; in a chain opposite a right edge no corner
// between two of these edges is convex.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

/// @tparam Writer  takes the triangles: TriangleWriter or RegionWriter
template <class Writer>
class Chains {
 public:
  explicit Chains(Writer& writer) noexcept : writer_(writer) {}

  /// Starts with nothing. Throws std::bad_alloc.
  void Begin() {
    constexpr std::size_t usual = 32;  // spares small areas the growing
    links_.clear();
    links_.reserve(usual);
    reflex_.reserve(usual);
    free_ = kNone;
  }

  /// The lowest links of the two chains of an interval: opposite its left edge and opposite
  /// its right edge. Both end in the last vertex that the interval met.
  struct Ends {
    std::uint32_t left;
    std::uint32_t right;
  };

  // What a vertex does to the intervals that it meets (area_sweep.h). Edges that end in it
  // are given by name. False is a contradiction.

  void Open(Ends& ends, const Corner& at) { ends = {Start(at), Start(at)}; }
  /// `edge` is the one on that side of the interval.
  [[nodiscard]] bool GoOn(Side side, Ends& ends, const Corner& at, std::uint32_t edge);
  /// `left` is what is split, and becomes what lies left of the vertex.
  [[nodiscard]] bool Split(Ends& left, Ends& right, const Corner& at);
  [[nodiscard]] bool End(const Ends& ends, const Corner& at, std::uint32_t leftEdge,
                         std::uint32_t rightEdge);
  /// The right edge of `left` and the left edge of `right` end; `left` becomes both.
  [[nodiscard]] bool Merge(Ends& left, const Ends& right, const Corner& at, std::uint32_t rightEdge,
                           std::uint32_t leftEdge);

  /// Links looked at so far.
  [[nodiscard]] std::uint64_t steps() const noexcept { return steps_; }

 private:
  struct Link {
    Corner corner;
    std::uint32_t edge;   // from the link above
    std::uint32_t above;  // kNone for the first
  };

  [[nodiscard]] std::uint32_t Allocate(const Corner& corner, std::uint32_t edge,
                                       std::uint32_t above) {
    if (free_ == kNone) {
      links_.push_back({corner, edge, above});
      return static_cast<std::uint32_t>(links_.size() - 1);
    }
    const std::uint32_t link = free_;
    free_ = links_[link].above;
    links_[link] = {corner, edge, above};
    return link;
  }

  void Release(std::uint32_t link) noexcept {
    links_[link].above = free_;
    free_ = link;
  }

  [[nodiscard]] std::uint32_t Start(const Corner& corner) { return Allocate(corner, kNone, kNone); }

  // Does a chain consist of its first link alone?
  [[nodiscard]] bool IsSingle(std::uint32_t chain) const noexcept {
    return links_[chain].above == kNone;
  }

  // The edge from the last vertex of an interval to a new one, at which its edge `left`
  // or `right` ends, or neither.
  [[nodiscard]] std::uint32_t StepTo(const Ends& ends, std::uint32_t left, std::uint32_t right) {
    if (left != kNone && IsSingle(ends.left)) return left;
    if (right != kNone && IsSingle(ends.right)) return right;
    return writer_.AddDiagonal();
  }

  // Continues a chain opposite a left edge. @return the new end
  [[nodiscard]] std::uint32_t Append(std::uint32_t chain, const Corner& corner,
                                     std::uint32_t edge) {
    return Allocate(corner, edge, chain);
  }

  // Continues a chain opposite a right edge and cuts what becomes convex.
  // @return the new end, or kNone for a contradiction
  [[nodiscard]] std::uint32_t AppendAndCut(std::uint32_t chain, const Corner& corner,
                                           std::uint32_t edge) {
    while (!IsSingle(chain) && EndIsConvex(chain, corner)) {
      if (!CutEnd(chain, corner, edge, writer_.AddDiagonal())) return kNone;
    }
    return Allocate(corner, edge, chain);
  }

  // Ends the ring of the right edge `single`, and its chain, in the lower end of that
  // edge, to which the chain has the last step `edge`. @return false for a contradiction
  [[nodiscard]] bool CloseRight(std::uint32_t chain, const Corner& end, std::uint32_t edge,
                                std::uint32_t single);

  // The same for the left edge `single`.
  [[nodiscard]] bool CloseLeft(std::uint32_t chain, const Corner& end, std::uint32_t edge,
                               std::uint32_t single);

  [[nodiscard]] static bool IsConvex(const Corner& a, const Corner& b, const Corner& c) noexcept {
    return zelvan::Cross(a.point, b.point, c.point) > 0;
  }

  // Is the corner between the last edge of a chain and the step to a new end convex?
  [[nodiscard]] bool EndIsConvex(std::uint32_t chain, const Corner& next) noexcept {
    ++steps_;
    const Link& end = links_[chain];
    return IsConvex(links_[end.above].corner, end.corner, next);
  }

  // Cuts that corner off; `third` is the side that cuts, and becomes the step.
  [[nodiscard]] bool CutEnd(std::uint32_t& chain, const Corner& next, std::uint32_t& edge,
                            std::uint32_t third) {
    const Link& end = links_[chain];
    const std::uint32_t above = end.above;
    if (!writer_.Add(links_[above].corner, end.corner, next, {end.edge, edge, third})) return false;
    edge = third;
    Release(chain);
    chain = above;
    return true;
  }

  Writer& writer_;
  std::vector<Link> links_;
  std::vector<Link> reflex_;  // what is left of a chain that is being cut upward
  std::uint32_t free_ = kNone;
  std::uint64_t steps_ = 0;
};

}  // namespace VORNEX
